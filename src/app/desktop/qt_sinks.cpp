#include "app/desktop/qt_sinks.h"

#include <QApplication>
#include <QCursor>
#include <QMessageBox>

#include "app/desktop/frmError.h"
#include "dialogs/frmIraHelp.h"

namespace ira::desktop {

MsgAnswer QtMessageSink::Show(const Message& message) {
  // Help texts read better in a window of their own than in a message box.
  if (message.title.rfind(kHelpTitlePrefix, 0) == 0) {
    dialogs::ShowHelp(message.title, message.text, QApplication::activeWindow());
    return MsgAnswer::Ok;
  }
  QMessageBox box(QApplication::activeWindow());
  box.setWindowTitle(QString::fromStdString(message.title.empty() ? kProgramTitle : message.title));
  box.setText(QString::fromStdString(message.text));
  switch (message.icon) {
    case MsgIcon::Information: box.setIcon(QMessageBox::Information); break;
    case MsgIcon::Exclamation: box.setIcon(QMessageBox::Warning); break;
    case MsgIcon::Critical: box.setIcon(QMessageBox::Critical); break;
    case MsgIcon::Question: box.setIcon(QMessageBox::Question); break;
    case MsgIcon::None: break;
  }
  switch (message.buttons) {
    case MsgButtons::Ok: box.setStandardButtons(QMessageBox::Ok); break;
    case MsgButtons::OkCancel: box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel); break;
    case MsgButtons::YesNo: box.setStandardButtons(QMessageBox::Yes | QMessageBox::No); break;
    case MsgButtons::YesNoCancel:
      box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
      box.setEscapeButton(QMessageBox::Cancel);  // Escape must never throw work away
      break;
  }
  // A busy cursor must not hide that the program waits for an answer.
  const bool busy = QApplication::overrideCursor() != nullptr;
  if (busy) QApplication::setOverrideCursor(Qt::ArrowCursor);
  const int answer = box.exec();
  if (busy) QApplication::restoreOverrideCursor();
  switch (answer) {
    case QMessageBox::Cancel: return MsgAnswer::Cancel;
    case QMessageBox::Yes: return MsgAnswer::Yes;
    case QMessageBox::No: return MsgAnswer::No;
    case QMessageBox::Ok: return MsgAnswer::Ok;
    default: return message.buttons == MsgButtons::Ok ? MsgAnswer::Ok : MsgAnswer::Cancel;  // closed by Escape
  }
}

QtProgressSink::~QtProgressSink() {
  while (m_busyDepth-- > 0) QApplication::restoreOverrideCursor();
}

void QtProgressSink::Show(std::string_view text) {
  if (m_statusBar) m_statusBar->showMessage(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
  // Long work runs on this thread: let the notice paint before it starts.
  QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void QtProgressSink::Hide() {
  if (m_statusBar) m_statusBar->clearMessage();
}

void QtProgressSink::SetBusy(bool busy) {
  if (busy) {
    ++m_busyDepth;
    QApplication::setOverrideCursor(Qt::WaitCursor);
  } else if (m_busyDepth > 0) {
    --m_busyDepth;
    QApplication::restoreOverrideCursor();
  }
}

void QtErrorReport::Report(int number, std::string_view text, std::string_view where) {
  if (number == kErrInvalidProperty && m_hide380) return;
  if (m_reporting) return;  // an error while the form is up: the first one ends the program anyway
  m_reporting = true;
  bool save = false;
  if (AskToSave) {
    save = AskToSave(number, text, where);
  } else {
    while (QApplication::overrideCursor() != nullptr) QApplication::restoreOverrideCursor();
    frmError form(number, QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())),
                  QString::fromUtf8(where.data(), static_cast<qsizetype>(where.size())),
                  QApplication::activeWindow());
    save = form.exec() == QDialog::Accepted;
  }
  m_shutDown(save);
  m_reporting = false;
}

}  // namespace ira::desktop
