#include "dialogs/dlgIraInputs.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSpinBox>
#include <QVBoxLayout>

#include "core/base/checked.h"
#include "core/base/text.h"
#include "dialogs/rules/entries.h"
#include "dialogs/widgets/entry_controls.h"

namespace ira::dialogs {
namespace {

constexpr int kNoChoiceYear = 1986;

// A list of choices, each with its hint as the item's tooltip; the list's
// own tooltip follows the current item.
QComboBox* ChoiceList(QWidget* parent, const std::vector<irainputs::Choice>& choices) {
  auto* list = new QComboBox(parent);
  for (const auto& c : choices) {
    list->addItem(QString::fromStdString(c.label), c.value);
    list->setItemData(list->count() - 1, QString::fromStdString(c.hint), Qt::ToolTipRole);
  }
  QObject::connect(list, &QComboBox::currentIndexChanged, list,
                   [list](int i) { list->setToolTip(list->itemData(i, Qt::ToolTipRole).toString()); });
  return list;
}

void SelectValue(QComboBox* list, std::int16_t value) {
  const int i = list->findData(value);
  list->setCurrentIndex(i < 0 ? 0 : i);
  list->setToolTip(list->itemData(list->currentIndex(), Qt::ToolTipRole).toString());
}

}  // namespace

dlgIraInputs::dlgIraInputs(const GeneralInputs& gen, IraRecord& ira, QWidget* parent)
    : QDialog(parent), m_gen(gen), m_target(ira), m_ira(ira) {
  const std::string name = RTrim(ira.IraName);
  setWindowTitle(name.empty() ? QStringLiteral("IRA Inputs") : QStringLiteral("IRA Inputs - ") + QString::fromStdString(name));

  txtIraName = new widgets::EntryEdit(this, static_cast<int>(kIraNameWidth));

  auto* bene = new QGroupBox(QStringLiteral("Beneficiaries"), this);
  CSOptSpouseBen = new QCheckBox(QStringLiteral("&Spouse is a beneficiary on this IRA."), bene);
  CSOptOtherBen = new QCheckBox(QStringLiteral("There is a &Non-Spouse beneficiary on this IRA."), bene);
  txtBeneName = new widgets::EntryEdit(bene, static_cast<int>(kBeneficiaryNameWidth));
  CSDtBeneBD = new widgets::DateEdit(bene);
  auto* beneForm = new QFormLayout(bene);
  beneForm->addRow(CSOptSpouseBen);
  beneForm->addRow(CSOptOtherBen);
  beneForm->addRow(QStringLiteral("Non-Spouse &Beneficiary:"), txtBeneName);
  beneForm->addRow(QStringLiteral("Beneficiary's Birt&hday:"), CSDtBeneBD);
  lstBeneKind = ChoiceList(bene, irainputs::BeneKindChoices());
  lstSpouseChoice = ChoiceList(bene, irainputs::SpouseChoices());
  spnSpouseChoiceYear = new QSpinBox(bene);
  // The lowest value stands for 0: the first year the choice can apply.
  spnSpouseChoiceYear->setRange(kNoChoiceYear, 2200);
  spnSpouseChoiceYear->setSpecialValueText(QStringLiteral("First year it can"));
  spnSpouseChoiceYear->setToolTip(QStringLiteral("The year from which the spouse's choice applies."));
  beneForm->addRow(QStringLiteral("Non-Spouse Beneficiary &Type:"), lstBeneKind);
  beneForm->addRow(QStringLiteral("S&pouse's Choice:"), lstSpouseChoice);
  beneForm->addRow(QStringLiteral("Spouse's Choice From Y&ear:"), spnSpouseChoiceYear);

  auto* amounts = new QGroupBox(QStringLiteral("Amounts"), this);
  CSCurBenefit = new widgets::CurrencyEdit(amounts);
  CSCurBenefit->setToolTip(QStringLiteral("The balance at December 31 of the year before the DCY."));
  CSCurDistributed = new widgets::CurrencyEdit(amounts);
  CSCurFirstYear = new widgets::CurrencyEdit(amounts);
  CSCurFirstYear->setToolTip(
      QStringLiteral("First-year required distributions paid from 1/1 to 4/1 of the second DCY."));
  CStxtRateOfReturn = new widgets::EntryEdit(amounts, 10);
  CStxtRateOfReturn->setAlignment(Qt::AlignRight);
  CStxtRateOfReturn->setMaximumWidth(CSCurBenefit->maximumWidth() / 2);
  auto* rate = new QHBoxLayout;
  rate->addWidget(CStxtRateOfReturn);
  rate->addWidget(new QLabel(QStringLiteral("%"), amounts));
  rate->addStretch();
  auto* amountForm = new QFormLayout(amounts);
  amountForm->addRow(QStringLiteral("Bene&fit (before adjustments): $"), CSCurBenefit);
  amountForm->addRow(QStringLiteral("Amount &already distributed this year: $"), CSCurDistributed);
  amountForm->addRow(QStringLiteral("1st &Year Distributions (1/1-4/1): $"), CSCurFirstYear);
  auto* rateLabel = new QLabel(QStringLiteral("&Rate Of Return:"), amounts);
  rateLabel->setBuddy(CStxtRateOfReturn);
  amountForm->addRow(rateLabel, rate);

  widgets::ShowRange(CSCurBenefit, rules::RangeHint(rules::kBenefitRange));
  widgets::ShowRange(CSCurDistributed, rules::RangeHint(rules::kDistributedRange));
  widgets::ShowRange(CSCurFirstYear, rules::RangeHint(rules::kFirstYearRange));
  widgets::ShowRange(CStxtRateOfReturn, rules::RangeHint(rules::kRateOfReturnRange));
  widgets::ShowRange(CSDtBeneBD, rules::DateRangeHint());

  auto* elections = new QGroupBox(QStringLiteral("Elections"), this);
  lstRecalc = new QComboBox(elections);
  chkUse2002Table = new QCheckBox(QStringLiteral("Use the &2002 life expectancy tables for early distributions"),
                                  elections);
  auto* electionForm = new QFormLayout(elections);
  electionForm->addRow(QStringLiteral("Recalc&ulation:"), lstRecalc);
  electionForm->addRow(chkUse2002Table);

  buttons = widgets::OkCancelButtons(this);
  auto* nameForm = new QFormLayout;
  nameForm->addRow(QStringLiteral("&IRA:"), txtIraName);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(nameForm);
  layout->addWidget(bene);
  layout->addWidget(amounts);
  layout->addWidget(elections);
  layout->addWidget(buttons);

  const irainputs::IraEntries e = irainputs::EntriesOf(m_ira);
  txtIraName->SetText(e.name);
  CSOptSpouseBen->setChecked(e.spouseBen);
  CSOptOtherBen->setChecked(e.otherBen);
  txtBeneName->SetText(e.beneficiaryName);
  CSDtBeneBD->SetText(e.beneficiaryBirthday);
  CSCurBenefit->SetText(e.benefit);
  CSCurDistributed->SetText(e.distributedThisYear);
  CSCurFirstYear->SetText(e.firstYearDist);
  CStxtRateOfReturn->SetText(e.rateOfReturn);
  chkUse2002Table->setChecked(e.use2002Table);
  SelectValue(lstBeneKind, e.beneKind);
  SelectValue(lstSpouseChoice, e.spouseChoice);
  spnSpouseChoiceYear->setValue(e.spouseChoiceYear == 0 ? kNoChoiceYear : e.spouseChoiceYear);
  FillRecalcChoices(e.bRecalc);
  SetIraEnables();

  connect(buttons, &QDialogButtonBox::accepted, this, &dlgIraInputs::btnOK_Click);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  const auto refresh = [this] {
    FillRecalcChoices(SelectedRecalc());
    SetIraEnables();
  };
  connect(CSOptSpouseBen, &QCheckBox::toggled, this, refresh);
  connect(CSOptOtherBen, &QCheckBox::toggled, this, refresh);
  connect(lstSpouseChoice, &QComboBox::currentIndexChanged, this, [this] { SetIraEnables(); });
  connect(CSDtBeneBD, &QLineEdit::editingFinished, this, [this, refresh] {
    irainputs::BeneficiaryBirthdayEntered(m_gen, Entries());
    refresh();
  });
  widgets::InstallEnterMovesFocus(this);
}

std::int16_t dlgIraInputs::SelectedRecalc() const {
  return lstRecalc->currentIndex() < 0 ? std::int16_t{0}
                                       : static_cast<std::int16_t>(lstRecalc->currentData().toInt());
}

void dlgIraInputs::FillRecalcChoices(std::int16_t bRecalc) {
  IraRecord probe = m_ira;
  const irainputs::IraEntries e = Entries();
  probe.SpouseBen = ToFlag(e.spouseBen);
  probe.OtherBen = ToFlag(e.otherBen);
  probe.BeneBirthDate = rules::ReadDate(e.beneficiaryBirthday);
  const auto choices = irainputs::OfferedRecalcChoices(m_gen, probe);
  lstRecalc->clear();
  for (const auto& c : choices) lstRecalc->addItem(QString::fromStdString(c.label), c.value);
  lstRecalc->setCurrentIndex(static_cast<int>(irainputs::RecalcChoiceIndex(choices, bRecalc)));
}

void dlgIraInputs::SetIraEnables() {
  const bool early = IsEarly(m_gen);
  txtBeneName->setEnabled(CSOptOtherBen->isChecked());
  CSDtBeneBD->setEnabled(CSOptOtherBen->isChecked());
  lstRecalc->setEnabled(!early);
  chkUse2002Table->setEnabled(early);
  lstBeneKind->setEnabled(irainputs::BeneKindMatters(m_gen, CSOptOtherBen->isChecked()));
  const bool spouse = irainputs::SpouseChoiceMatters(m_gen, CSOptSpouseBen->isChecked(), CSOptOtherBen->isChecked());
  lstSpouseChoice->setEnabled(spouse);
  spnSpouseChoiceYear->setEnabled(spouse && lstSpouseChoice->currentData().toInt() != kSpouseRemainBeneficiary);
}

irainputs::IraEntries dlgIraInputs::Entries() const {
  irainputs::IraEntries e;
  e.name = txtIraName->Text();
  e.spouseBen = CSOptSpouseBen->isChecked();
  e.otherBen = CSOptOtherBen->isChecked();
  e.beneficiaryName = txtBeneName->Text();
  e.beneficiaryBirthday = CSDtBeneBD->Text();
  e.distributedThisYear = CSCurDistributed->Text();
  e.benefit = CSCurBenefit->Text();
  e.firstYearDist = CSCurFirstYear->Text();
  e.rateOfReturn = CStxtRateOfReturn->Text();
  e.bRecalc = lstRecalc != nullptr && lstRecalc->count() > 0 ? SelectedRecalc() : m_ira.bRecalc;
  e.use2002Table = chkUse2002Table->isChecked();
  e.beneKind = static_cast<std::int16_t>(lstBeneKind->currentData().toInt());
  e.spouseChoice = static_cast<std::int16_t>(lstSpouseChoice->currentData().toInt());
  const int year = spnSpouseChoiceYear->value();
  e.spouseChoiceYear = year == kNoChoiceYear ? std::int16_t{0} : static_cast<std::int16_t>(year);
  return e;
}

void dlgIraInputs::btnOK_Click() {
  if (!rules::KeepInvalidDate(CSDtBeneBD->Text(), "Beneficiary's Birthday")) {
    CSDtBeneBD->setFocus();
    CSDtBeneBD->selectAll();
    return;
  }
  if (!widgets::DatesWithinRange({{CSDtBeneBD, "Beneficiary's Birthday"}})) return;
  if (!widgets::EntriesWithinRange({{CSCurBenefit, &rules::kBenefitRange},
                                    {CSCurDistributed, &rules::kDistributedRange},
                                    {CSCurFirstYear, &rules::kFirstYearRange},
                                    {CStxtRateOfReturn, &rules::kRateOfReturnRange}}))
    return;
  if (!irainputs::ApplyIraEntries(Entries(), m_ira)) return;
  m_target = m_ira;
  accept();
}

}  // namespace ira::dialogs
