#include "app/desktop/frmManual.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QListWidget>
#include <QSplitter>
#include <QTextBrowser>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QUrl>
#include <QImage>

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
  txtChapter = new QTextBrowser(this);
  txtChapter->setOpenExternalLinks(true);

  auto* splitter = new QSplitter(this);
  splitter->addWidget(lstChapters);
  splitter->addWidget(txtChapter);
  splitter->setStretchFactor(1, 1);
  splitter->setSizes({lstChapters->sizeHintForColumn(0) + 24, 760});
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
  // Pictures wider than the page are shown narrower, as on paper.
  constexpr double kWidest = 620;
  QTextDocument* doc = txtChapter->document();
  for (QTextBlock b = doc->begin(); b.isValid(); b = b.next()) {
    for (auto it = b.begin(); !it.atEnd(); ++it) {
      const QTextFragment f = it.fragment();
      if (!f.charFormat().isImageFormat()) continue;
      QTextImageFormat image = f.charFormat().toImageFormat();
      const QImage picture = doc->resource(QTextDocument::ImageResource, QUrl(image.name())).value<QImage>();
      if (picture.isNull() || picture.width() <= kWidest) continue;
      image.setWidth(kWidest);
      image.setHeight(picture.height() * kWidest / picture.width());
      QTextCursor cursor(doc);
      cursor.setPosition(f.position());
      cursor.setPosition(f.position() + f.length(), QTextCursor::KeepAnchor);
      cursor.setCharFormat(image);
    }
  }
}

}  // namespace ira::desktop
