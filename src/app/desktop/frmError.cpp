#include "app/desktop/frmError.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include "app/shell/commands.h"

namespace ira::desktop {

QString ErrorFormText(int number, const QString& text, const QString& where) {
  return QStringLiteral("An error has occurred in the ") + QString::fromLatin1(shell::kProductName) +
         QStringLiteral(" program, ") + where + QStringLiteral(".\n\n") + QStringLiteral("Error Number:   ") +
         QString::number(number) + QStringLiteral("\n") + QStringLiteral("Error Type:        ") + text +
         QStringLiteral("\n") + QStringLiteral("Location:           ") + where;
}

frmError::frmError(int number, const QString& text, const QString& where, QWidget* parent) : QDialog(parent) {
  setWindowTitle(QStringLiteral("Error"));
  auto* icon = new QLabel(this);
  icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxCritical).pixmap(48, 48));
  icon->setAlignment(Qt::AlignTop);
  lblError = new QLabel(ErrorFormText(number, text, where), this);
  lblError->setTextInteractionFlags(Qt::TextSelectableByMouse);
  lblError->setWordWrap(true);
  lblQuestion = new QLabel(QString::fromLatin1(kSaveBeforeShutdown), this);
  QFont bold = lblQuestion->font();
  bold.setBold(true);
  lblQuestion->setFont(bold);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Yes | QDialogButtonBox::No, this);
  connect(buttons->button(QDialogButtonBox::Yes), &QPushButton::clicked, this, &QDialog::accept);
  connect(buttons->button(QDialogButtonBox::No), &QPushButton::clicked, this, &QDialog::reject);

  auto* lines = new QVBoxLayout;
  lines->addWidget(lblError);
  lines->addSpacing(8);
  lines->addWidget(lblQuestion);
  auto* top = new QHBoxLayout;
  top->addWidget(icon);
  top->addLayout(lines, 1);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(top);
  layout->addWidget(buttons);
  setMinimumWidth(440);
}

}  // namespace ira::desktop
