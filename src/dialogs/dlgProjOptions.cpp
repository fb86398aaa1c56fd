#include "dialogs/dlgProjOptions.h"

#include <QApplication>
#include <QButtonGroup>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QVBoxLayout>

#include "dialogs/widgets/entry_controls.h"

namespace ira::dialogs {
namespace {
constexpr const char* kYearsHint = "How many years do you want to project for?";
constexpr const char* kOverMinHint = "0% uses the Min. Dist. amount. 10 uses 110% of the Min. Dist. amount, etc.";
}  // namespace

dlgProjOptions::dlgProjOptions(GeneralInputs& gen, QWidget* parent)
    : QDialog(parent), m_target(gen), m_gen(gen) {
  setWindowTitle(QStringLiteral("Projection Options"));

  CSCaptProjYrs = new QLabel(QStringLiteral("Number of Years to Pro&ject"), this);
  CSCaptProjYrs->setToolTip(kYearsHint);
  txtProjYrs = new widgets::EntryEdit(this, 6);
  txtProjYrs->setToolTip(kYearsHint);
  CSCaptOverMin = new QLabel(QStringLiteral("&Percentage over Required Minimum Distribution (10=10%)"), this);
  CSCaptOverMin->setToolTip(kOverMinHint);
  txtOverMin = new widgets::EntryEdit(this, 12);
  txtOverMin->setToolTip(kOverMinHint);

  auto* income = new QGroupBox(QStringLiteral("Calculate Income for Current Dist. Cal. Year?"), this);
  CSOptIncomeYes = new QRadioButton(QStringLiteral("&Yes"), income);
  CSOptIncomeNo = new QRadioButton(QStringLiteral("&No"), income);
  auto* incomeGroup = new QButtonGroup(this);
  incomeGroup->addButton(CSOptIncomeYes, projopts::kIncomeYes);
  incomeGroup->addButton(CSOptIncomeNo, projopts::kIncomeNo);
  auto* incomeLayout = new QHBoxLayout(income);
  incomeLayout->addWidget(CSOptIncomeYes);
  incomeLayout->addWidget(CSOptIncomeNo);
  incomeLayout->addStretch();

  csLabel1 = new QLabel(QStringLiteral("Percent &Balance Reduction 1997-1999:"), this);
  CStxtReduction = new widgets::EntryEdit(this, 8);
  CStxtReduction->setToolTip(QStringLiteral("Not needed anymore!"));
  const int entryWidth = txtProjYrs->fontMetrics().horizontalAdvance(QStringLiteral("0000.00")) + 16;
  for (widgets::EntryEdit* e : {txtProjYrs, txtOverMin, CStxtReduction}) {
    e->setMaximumWidth(entryWidth);
    e->setAlignment(Qt::AlignRight);
  }
  auto* reductionNote = new QLabel(QStringLiteral("Not needed anymore!"), this);
  reductionNote->setEnabled(false);

  txtHelp = new QPlainTextEdit(this);
  txtHelp->setReadOnly(true);
  txtHelp->setFocusPolicy(Qt::NoFocus);
  txtHelp->setMaximumHeight(txtHelp->fontMetrics().lineSpacing() * 3 + 12);
  btnOK = new QPushButton(QStringLiteral("&OK"), this);
  btnOK->setDefault(true);

  CSCaptProjYrs->setBuddy(txtProjYrs);
  CSCaptOverMin->setBuddy(txtOverMin);
  csLabel1->setBuddy(CStxtReduction);
  widgets::ShowRange(txtProjYrs, rules::RangeHint(rules::kProjYearsRange));
  widgets::ShowRange(txtOverMin, rules::RangeHint(rules::kOverMinRange));
  auto* form = new QFormLayout;
  form->addRow(CSCaptProjYrs, txtProjYrs);
  form->addRow(CSCaptOverMin, txtOverMin);
  form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
  auto* reduction = new QHBoxLayout;
  reduction->addWidget(CStxtReduction);
  reduction->addWidget(reductionNote);
  reduction->addStretch();
  form->addRow(csLabel1, reduction);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(btnOK);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(income);
  layout->addWidget(txtHelp);
  layout->addLayout(buttons);

  // Opening: prepare the fields, fill the controls.
  projopts::ProjEntries e = projopts::PrepareProjOptions(m_gen);
  txtProjYrs->SetText(e.years);
  txtOverMin->setEnabled(e.overMinEnabled);
  if (e.overMinEnabled) txtOverMin->SetText(e.overMin);
  (e.income == projopts::kIncomeYes ? CSOptIncomeYes : CSOptIncomeNo)->setChecked(true);
  CStxtReduction->SetText(e.reduction);
  txtHelp->clear();

  connect(btnOK, &QPushButton::clicked, this, &dlgProjOptions::btnOK_Click);
  connect(CStxtReduction, &QLineEdit::textEdited, this, [this] {
    std::string text = CStxtReduction->Text();
    projopts::ReductionCheck(text);
    if (text != CStxtReduction->Text()) CStxtReduction->SetText(text);
  });
  m_hints = connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { ShowHint(now); });
  widgets::InstallEnterMovesFocus(this);

  adjustSize();
  if (const QScreen* screen = QGuiApplication::primaryScreen()) {
    move(screen->availableGeometry().center() - rect().center());
  }
}

// The focus moves while the child widgets are deleted, after this class's
// part of the dialog is gone: no hint may be shown then.
dlgProjOptions::~dlgProjOptions() { disconnect(m_hints); }

void dlgProjOptions::ShowHint(QWidget* now) {
  if (now == txtProjYrs) txtHelp->setPlainText(kYearsHint);
  if (now == txtOverMin) txtHelp->setPlainText(kOverMinHint);
}

void dlgProjOptions::btnOK_Click() {
  projopts::ProjEntries e;
  e.years = txtProjYrs->Text();
  e.overMin = txtOverMin->Text();
  e.income = CSOptIncomeYes->isChecked() ? projopts::kIncomeYes : projopts::kIncomeNo;
  const bool accepted = projopts::ApplyProjOptions(e, m_gen);
  if (e.years != txtProjYrs->Text()) txtProjYrs->SetText(e.years);
  if (!accepted) return;
  if (!widgets::EntriesWithinRange({{txtProjYrs, &rules::kProjYearsRange}, {txtOverMin, &rules::kOverMinRange}}))
    return;
  m_target = m_gen;
  accept();
}

}  // namespace ira::dialogs
