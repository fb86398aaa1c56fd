#include "dialogs/frmIraHelp.h"

#include <QDialogButtonBox>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace ira::dialogs {

frmIraHelp::frmIraHelp(const QString& title, const QString& text, QWidget* parent) : QDialog(parent) {
  setWindowTitle(title);
  txtHelp = new QPlainTextEdit(this);
  txtHelp->setReadOnly(true);
  txtHelp->setPlainText(text);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(txtHelp);
  layout->addWidget(buttons);
  resize(480, 260);
}

void ShowHelp(const std::string& title, const std::string& text, QWidget* parent) {
  frmIraHelp help(QString::fromStdString(title), QString::fromStdString(text), parent);
  help.exec();
}

}  // namespace ira::dialogs
