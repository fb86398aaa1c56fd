#include "views/frmReportForm.h"

#include <QFontMetrics>
#include <algorithm>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

#include "views/report_font.h"

namespace ira::views {
namespace {

// Wide enough for the widest report line, tall enough for a page's worth.
constexpr int kShownColumns = 84;
constexpr int kShownLines = 40;

}  // namespace

QString WindowText(const std::string& reportText) {
  QString text = QString::fromStdString(reportText);
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  // The last line's end would show as an empty line of its own.
  if (text.endsWith(QLatin1Char('\n'))) text.chop(1);
  return text;
}

frmReportForm::frmReportForm(QWidget* parent) : QWidget(parent, Qt::Window) {
  setAttribute(Qt::WA_DeleteOnClose);
  setObjectName(QStringLiteral("frmReportForm"));
  setWindowTitle(QStringLiteral("Report Form"));

  pnlToolBar = new QWidget(this);
  pnlToolBar->setObjectName(QStringLiteral("pnlToolBar"));
  btn3DExit = new QPushButton(style()->standardIcon(QStyle::SP_DialogCloseButton), QStringLiteral("&Close"), pnlToolBar);
  btn3DExit->setObjectName(QStringLiteral("btn3DExit"));
  btn3DExit->setToolTip(QStringLiteral("Close this report"));
  auto* bar = new QHBoxLayout(pnlToolBar);
  bar->setContentsMargins(0, 0, 0, 0);
  bar->addWidget(btn3DExit);
  bar->addStretch();

  txtReport = new QPlainTextEdit(this);
  txtReport->setObjectName(QStringLiteral("txtReport"));
  txtReport->setReadOnly(true);
  txtReport->setLineWrapMode(QPlainTextEdit::NoWrap);
  txtReport->setFont(ReportQFont());

  // The text follows the window's size.
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(pnlToolBar);
  layout->addWidget(txtReport, 1);

  connect(btn3DExit, &QPushButton::clicked, this, &QWidget::close);
}

void frmReportForm::SetReport(const std::string& text) {
  const int h = txtReport->horizontalScrollBar()->value();
  const int v = txtReport->verticalScrollBar()->value();
  txtReport->setPlainText(WindowText(text));
  txtReport->horizontalScrollBar()->setValue(h);
  txtReport->verticalScrollBar()->setValue(v);
}

void frmReportForm::AppendReport(const std::string& text) {
  txtReport->setPlainText(txtReport->toPlainText() + WindowText(text));
  txtReport->moveCursor(QTextCursor::Start);
}

void frmReportForm::Place() {
  const QFontMetrics fm(txtReport->font());
  const QRect screen = this->screen()->availableGeometry();
  const int frame = 2 * txtReport->frameWidth() + style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 24;
  const int width = std::min(fm.horizontalAdvance(QLatin1Char('X')) * kShownColumns + frame, screen.width() * 9 / 10);
  const int height = std::min(fm.lineSpacing() * kShownLines + pnlToolBar->sizeHint().height() + frame,
                              screen.height() * 9 / 10);
  resize(width, height);
  move(screen.center() - rect().center());
}

void frmReportForm::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
    close();
    return;
  }
  QWidget::keyPressEvent(event);
}

}  // namespace ira::views
