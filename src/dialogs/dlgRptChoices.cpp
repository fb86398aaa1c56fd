#include "dialogs/dlgRptChoices.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/base/messages.h"
#include "core/reports/display_master.h"

namespace ira::dialogs {
namespace {

// The ticks of the last report choices confirmed in this session.
int g_lastChoice = 0;
bool g_lastAll = false;

}  // namespace

dlgRptChoices::dlgRptChoices(reports::ReportMode mode, QWidget* parent) : QDialog(parent) {
  setWindowTitle(mode == reports::ReportMode::Print ? QStringLiteral("Report Choices (Print)")
                                                    : QStringLiteral("Report Choices (View)"));
  chkAll = new QCheckBox(QStringLiteral("Run &All Reports"), this);
  chkReport = new QListWidget(this);
  for (const reports::ReportEntry& entry : reports::Reports()) {
    auto* item = new QListWidgetItem(QString::fromLatin1(entry.listName), chkReport);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
    item->setCheckState(Qt::Unchecked);
    item->setData(Qt::UserRole, entry.flag);
  }
  chkReport->setMaximumHeight(chkReport->sizeHintForRow(0) * reports::kReportCount + 2 * chkReport->frameWidth() + 4);
  btnOK = new QPushButton(QStringLiteral("&OK"), this);
  btnOK->setDefault(true);
  btnCancel = new QPushButton(QStringLiteral("&Cancel"), this);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(btnOK);
  buttons->addWidget(btnCancel);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(chkAll);
  auto* listLabel = new QLabel(QStringLiteral("Check &Desired Report(s)"), this);
  listLabel->setBuddy(chkReport);
  layout->addWidget(listLabel);
  layout->addWidget(chkReport);
  layout->addLayout(buttons);

  connect(chkAll, &QCheckBox::toggled, this, [this](bool all) {
    for (int i = 0; i < chkReport->count(); ++i) chkReport->item(i)->setCheckState(all ? Qt::Checked : Qt::Unchecked);
  });
  // The last choice again: most runs repeat it.
  for (int i = 0; i < chkReport->count(); ++i) {
    if ((g_lastChoice & chkReport->item(i)->data(Qt::UserRole).toInt()) != 0)
      chkReport->item(i)->setCheckState(Qt::Checked);
  }
  chkAll->setChecked(g_lastAll);
  connect(btnOK, &QPushButton::clicked, this, &dlgRptChoices::btnOK_Click);
  connect(btnCancel, &QPushButton::clicked, this, &QDialog::reject);
}

int dlgRptChoices::Flags() const {
  if (chkAll->isChecked()) return reports::kRptAll;
  int flags = 0;
  for (int i = 0; i < chkReport->count(); ++i) {
    if (chkReport->item(i)->checkState() == Qt::Checked) flags |= chkReport->item(i)->data(Qt::UserRole).toInt();
  }
  return flags;
}

}  // namespace ira::dialogs

namespace ira::dialogs {

void dlgRptChoices::ForgetChoice() {
  g_lastChoice = 0;
  g_lastAll = false;
}

void dlgRptChoices::btnOK_Click() {
  const int flags = Flags();
  if (flags == 0) {
    ShowMessage("Please Note!", "No report is ticked. Tick the reports you want, or press Cancel.",
                MsgIcon::Information);
    return;
  }
  g_lastChoice = flags;
  g_lastAll = chkAll->isChecked();
  accept();
}

}  // namespace ira::dialogs
