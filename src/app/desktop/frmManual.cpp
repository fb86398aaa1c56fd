#include "app/desktop/frmManual.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QListWidget>
#include <QSplitter>
#include <QTextBrowser>
#include <QUrl>

namespace ira::desktop {
namespace {

// A chapter's title: its first "# " line, else its file name.
QString ChapterTitle(const QString& path) {
  QFile f(path);
  if (f.open(QIODevice::ReadOnly | QIODevice::Text)) {
    while (!f.atEnd()) {
      const QString line = QString::fromUtf8(f.readLine()).trimmed();
      if (line.startsWith(QStringLiteral("# "))) return line.mid(2).trimmed();
    }
  }
  return QFileInfo(path).completeBaseName();
}

}  // namespace

QStringList ManualChapters(const QString& folder) {
  QStringList chapters;
  const QDir dir(folder);
  for (const QString& name : dir.entryList({QStringLiteral("*.md")}, QDir::Files, QDir::Name))
    chapters << dir.absoluteFilePath(name);
  return chapters;
}

frmManual::frmManual(const QStringList& chapters, QWidget* parent)
    : QWidget(parent, Qt::Window), m_chapters(chapters) {
  setAttribute(Qt::WA_DeleteOnClose);
  setObjectName(QStringLiteral("frmManual"));
  setWindowTitle(QStringLiteral("User Manual"));

  lstChapters = new QListWidget(this);
  for (const QString& c : chapters) lstChapters->addItem(ChapterTitle(c));
  lstChapters->setMaximumWidth(lstChapters->sizeHintForColumn(0) + 40);
  txtChapter = new QTextBrowser(this);
  txtChapter->setOpenExternalLinks(true);

  auto* splitter = new QSplitter(this);
  splitter->addWidget(lstChapters);
  splitter->addWidget(txtChapter);
  splitter->setStretchFactor(1, 1);
  auto* layout = new QHBoxLayout(this);
  layout->addWidget(splitter);

  connect(lstChapters, &QListWidget::currentRowChanged, this, &frmManual::ShowChapter);
  // Escape closes, as in the report windows.
  auto* close = new QAction(this);
  close->setShortcut(Qt::Key_Escape);
  close->setShortcutContext(Qt::WindowShortcut);
  connect(close, &QAction::triggered, this, &QWidget::close);
  addAction(close);
  resize(980, 720);
  if (!chapters.isEmpty()) lstChapters->setCurrentRow(0);
}

void frmManual::ShowChapter(int index) {
  if (index < 0 || index >= m_chapters.size()) return;
  // The chapter's pictures are named relative to it, as the printed manual has them.
  txtChapter->setSource(QUrl::fromLocalFile(m_chapters[index]), QTextDocument::MarkdownResource);
}

}  // namespace ira::desktop
