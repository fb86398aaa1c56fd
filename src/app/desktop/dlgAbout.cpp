#include "app/desktop/dlgAbout.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>

#include "app/shell/commands.h"
#include "core/base/messages.h"
#include "core/base/program.h"

namespace ira::desktop {

dlgAbout::dlgAbout(long startTime, QWidget* parent) : QDialog(parent), m_startTime(startTime) {
  setWindowTitle(QStringLiteral("About ") + QString::fromLatin1(shell::kProductName));
  auto* icon = new QLabel(this);
  icon->setPixmap(QApplication::windowIcon().pixmap(64, 64));
  icon->setAlignment(Qt::AlignTop);
  auto* title = new QLabel(QString::fromLatin1(shell::kProductName), this);
  QFont big = title->font();
  big.setPointSizeF(big.pointSizeF() * 1.6);
  big.setBold(true);
  title->setFont(big);
  auto* version = new QLabel(QStringLiteral("Version: ") + QString::fromStdString(VersionText()), this);
  auto* purpose = new QLabel(QStringLiteral("Required distributions from individual retirement arrangements."), this);
  lblUsage = new QLabel(this);
  lblUsage->setWordWrap(true);
  lblUsage->setFrameShape(QFrame::StyledPanel);
  lblUsage->setMargin(8);
  auto* ordering = new QLabel(QString::fromLatin1(shell::kOrderingLines) + QStringLiteral("\nTechnical support: ") +
                                  QString::fromLatin1(kSupportPhone),
                              this);
  ordering->setWordWrap(true);
  ordering->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

  auto* text = new QVBoxLayout;
  text->addWidget(title);
  text->addWidget(version);
  text->addWidget(purpose);
  text->addSpacing(10);
  text->addWidget(lblUsage);
  text->addSpacing(10);
  text->addWidget(ordering);
  auto* top = new QHBoxLayout;
  top->addWidget(icon);
  top->addLayout(text, 1);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(top);
  layout->addWidget(buttons);
  setMinimumWidth(520);

  tmrUsage = new QTimer(this);
  tmrUsage->setInterval(1000);
  connect(tmrUsage, &QTimer::timeout, this, &dlgAbout::tmrUsage_Timer);
  tmrUsage_Timer();
  tmrUsage->start();
}

void dlgAbout::tmrUsage_Timer() {
  const long seconds = shell::UsageSeconds(m_startTime, shell::SecondsSinceMidnight());
  lblUsage->setText(QString::fromStdString(shell::UsageText(seconds)));
}

}  // namespace ira::desktop
