#include "dialogs/dlgGenInputs.h"

#include <QApplication>
#include <QButtonGroup>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "dialogs/rules/entries.h"
#include "dialogs/widgets/entry_controls.h"

namespace ira::dialogs {
namespace {

widgets::EntryEdit* RateEdit(QWidget* parent) {
  auto* edit = new widgets::EntryEdit(parent, 10);
  edit->setAlignment(Qt::AlignRight);
  edit->setMaximumWidth(edit->fontMetrics().horizontalAdvance(QStringLiteral("0000.0000")) + 16);
  return edit;
}

// An entry followed by its unit.
QWidget* WithUnit(QWidget* edit, const QString& unit) {
  auto* box = new QWidget(edit->parentWidget());
  auto* row = new QHBoxLayout(box);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(edit);
  row->addWidget(new QLabel(unit, box));
  row->addStretch();
  box->setFocusProxy(edit);  // the label's Alt letter reaches the entry
  return box;
}

}  // namespace

dlgGenInputs::dlgGenInputs(GeneralInputs& gen, QWidget* parent) : QDialog(parent), m_target(gen), m_gen(gen) {
  setWindowTitle(QStringLiteral("General Inputs"));

  // The owner.
  auto* owner = new QGroupBox(QStringLiteral("IRA Owner"), this);
  txtOwnerName = new widgets::EntryEdit(owner, static_cast<int>(kOwnerNameWidth));
  txtOtherInfo = new widgets::EntryEdit(owner, static_cast<int>(kOtherInfoWidth));
  const int nameWidth = txtOwnerName->fontMetrics().averageCharWidth() * 34;
  txtOwnerName->setMinimumWidth(nameWidth);
  txtOtherInfo->setMinimumWidth(nameWidth);
  CSDtOwnerBD = new widgets::DateEdit(owner);
  CSDtDeath = new widgets::DateEdit(owner);
  CSDtDeath->setToolTip(QStringLiteral("Leave empty while the owner is living."));
  auto* ownerForm = new QFormLayout(owner);
  ownerForm->addRow(QStringLiteral("IRA Own&er:"), txtOwnerName);
  ownerForm->addRow(QStringLiteral("Other In&fo.:"), txtOtherInfo);
  ownerForm->addRow(QStringLiteral("IRA Owner's &Birthday:"), CSDtOwnerBD);
  ownerForm->addRow(QStringLiteral("IRA Owner's Date of &Death:"), CSDtDeath);

  // The spouse.
  auto* spouse = new QGroupBox(QStringLiteral("Spouse"), this);
  CSOptSpouseBenYes = new QRadioButton(QStringLiteral("&Spouse is a beneficiary on some/all accounts."), spouse);
  CSOptSpouseBenNo = new QRadioButton(QStringLiteral("Spouse is &not a beneficiary on any account."), spouse);
  auto* spouseGroup = new QButtonGroup(this);
  spouseGroup->addButton(CSOptSpouseBenYes);
  spouseGroup->addButton(CSOptSpouseBenNo);
  CSDtSpouseBD = new widgets::DateEdit(spouse);
  auto* spouseForm = new QFormLayout(spouse);
  spouseForm->addRow(CSOptSpouseBenYes);
  spouseForm->addRow(CSOptSpouseBenNo);
  spouseForm->addRow(QStringLiteral("S&pouse's Birthday:"), CSDtSpouseBD);

  // The year and the type of distribution.
  auto* dist = new QGroupBox(QStringLiteral("Distribution"), this);
  txtDCY = new widgets::EntryEdit(dist, 4);
  txtDCY->setMaximumWidth(txtDCY->fontMetrics().horizontalAdvance(QStringLiteral("00000")) + 16);
  txtDCY->setToolTip(QStringLiteral("A two-digit year counts in the current century."));
  const char* types[3] = {"After &70 1/2 (required minimum distributions)", "Between &59 1/2 and 70 1/2",
                          "Before 5&9 1/2 (maximum distribution without penalty)"};
  auto* typeGroup = new QButtonGroup(this);
  txtInflateRate = RateEdit(dist);
  cboRuleSet = new QComboBox(dist);
  for (const char* r : ginputs::kRuleSetChoices) cboRuleSet->addItem(QString::fromLatin1(r));
  cboAge1959 = new QComboBox(dist);
  for (const char* a : ginputs::kAge1959Choices) cboAge1959->addItem(QString::fromLatin1(a));
  cboAge1959->setToolTip(QStringLiteral("The applicable age of an owner born in 1959 under the law in force."));
  lblRuleHint = new QLabel(dist);
  lblRuleHint->setWordWrap(true);
  lblRuleHint->setObjectName(QStringLiteral("lblRuleHint"));
  auto* distForm = new QFormLayout(dist);
  distForm->addRow(QStringLiteral("&Rules:"), cboRuleSet);
  distForm->addRow(lblRuleHint);
  distForm->addRow(QStringLiteral("Applicable &Age if Born in 1959:"), cboAge1959);
  distForm->addRow(QStringLiteral("Distribution Calendar &Year:"), txtDCY);
  for (int i = 0; i < 3; ++i) {
    CSOptDistType[i] = new QRadioButton(QString::fromLatin1(types[i]), dist);
    typeGroup->addButton(CSOptDistType[i], i);
    // Each choice has its own Alt letter; the caption only names them.
    distForm->addRow(new QLabel(i == 0 ? QStringLiteral("Type of Distribution:") : QString(), dist), CSOptDistType[i]);
  }
  distForm->addRow(QStringLiteral("&Inflation Rate:"), WithUnit(txtInflateRate, QStringLiteral("%")));

  // The early distribution method.
  auto* early = new QGroupBox(QStringLiteral("Method to Determine Early Distributions"), this);
  const char* methods[3] = {"&Minimum distribution", "Amorti&zation", "Ann&uity"};
  auto* methodGroup = new QButtonGroup(this);
  auto* methodRow = new QHBoxLayout;
  for (int i = 0; i < 3; ++i) {
    CSoptEarlyDistMeth[i] = new QRadioButton(QString::fromLatin1(methods[i]), early);
    methodGroup->addButton(CSoptEarlyDistMeth[i], i);
    methodRow->addWidget(CSoptEarlyDistMeth[i]);
  }
  methodRow->addStretch();
  CStxtIntRate = RateEdit(early);
  lstAnnuityMethod = new QListWidget(early);
  for (const char* m : ginputs::kAnnuityMethods) lstAnnuityMethod->addItem(QString::fromLatin1(m));
  lstAnnuityMethod->setMaximumHeight(lstAnnuityMethod->sizeHintForRow(0) * 2 + 2 * lstAnnuityMethod->frameWidth() + 4);
  lstAnnuityMethod->setMaximumWidth(lstAnnuityMethod->sizeHintForColumn(0) + 40);
  CStxtAnnuityIntRate = RateEdit(early);
  CStxtAnnuityFactor = RateEdit(early);
  auto* earlyForm = new QFormLayout(early);
  earlyForm->addRow(methodRow);
  earlyForm->addRow(QStringLiteral("Interest Ra&te:"), WithUnit(CStxtIntRate, QStringLiteral("%")));
  earlyForm->addRow(QStringLiteral("Annuity Met&hod:"), lstAnnuityMethod);
  earlyForm->addRow(QStringLiteral("Interest Rate for &Life Table 90CM:"),
                    WithUnit(CStxtAnnuityIntRate, QStringLiteral("%")));
  earlyForm->addRow(QStringLiteral("User O&verride Annuity Factor:"), CStxtAnnuityFactor);

  buttons = widgets::OkCancelButtons(this);

  auto* grid = new QGridLayout;
  grid->addWidget(owner, 0, 0);
  grid->addWidget(spouse, 1, 0);
  grid->addWidget(dist, 0, 1);
  grid->addWidget(early, 1, 1);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(grid);
  layout->addWidget(buttons);

  Fill(ginputs::EntriesOf(m_gen));

  connect(buttons, &QDialogButtonBox::accepted, this, &dlgGenInputs::btnOK_Click);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(txtDCY, &QLineEdit::textEdited, this, [this] { m_dcyTypePending = true; });
  connect(typeGroup, &QButtonGroup::idClicked, this, [this] {
    m_dcyTypePending = true;
    SetGenIPEnables();
  });
  connect(qApp, &QApplication::focusChanged, this, &dlgGenInputs::FocusChanged);
  connect(spouseGroup, &QButtonGroup::buttonClicked, this, &dlgGenInputs::SetGenIPEnables);
  connect(methodGroup, &QButtonGroup::idClicked, this, &dlgGenInputs::SetGenIPEnables);
  connect(lstAnnuityMethod, &QListWidget::currentRowChanged, this, &dlgGenInputs::SetGenIPEnables);
  connect(cboRuleSet, &QComboBox::currentIndexChanged, this, &dlgGenInputs::SetGenIPEnables);
  connect(CSDtOwnerBD, &QLineEdit::textChanged, this, &dlgGenInputs::SetGenIPEnables);
  connect(CSDtOwnerBD, &QLineEdit::editingFinished, this, [this] { ginputs::OwnerBirthdayEntered(Entries()); });
  connect(CSDtSpouseBD, &QLineEdit::editingFinished, this, [this] { ginputs::SpouseBirthdayEntered(Entries()); });
  connect(CSDtDeath, &QLineEdit::editingFinished, this, [this] { ginputs::DeathDateEntered(Entries()); });
  connect(txtInflateRate, &QLineEdit::editingFinished, this,
          [this] { ginputs::Chk_InflationRate(txtInflateRate->Text()); });
  connect(CStxtIntRate, &QLineEdit::editingFinished, this,
          [this] { ginputs::Chk_IntRateRate(CStxtIntRate->Text(), Entries().earlyMethod); });
  connect(CStxtAnnuityIntRate, &QLineEdit::editingFinished, this,
          [this] { ginputs::Chk_AnnuityIntRateRate(CStxtAnnuityIntRate->Text()); });
  for (const auto& [edit, range] : {std::pair<QLineEdit*, const rules::Range*>{txtDCY, &rules::kDcyRange},
                                    {txtInflateRate, &rules::kInflationRange},
                                    {CStxtIntRate, &rules::kIntRateRange},
                                    {CStxtAnnuityIntRate, &rules::kAnnuityIntRateRange},
                                    {CStxtAnnuityFactor, &rules::kAnnuityFactorRange}})
    widgets::ShowRange(edit, rules::RangeHint(*range));
  for (QLineEdit* date : {static_cast<QLineEdit*>(CSDtOwnerBD), static_cast<QLineEdit*>(CSDtDeath),
                          static_cast<QLineEdit*>(CSDtSpouseBD)})
    widgets::ShowRange(date, rules::DateRangeHint());

  // The tab chain follows the eye: the owner and the spouse on the left, then
  // the rules, the year, its type and the rates on the right.
  QWidget* chain[] = {txtOwnerName, txtOtherInfo, CSDtOwnerBD, CSDtDeath, CSOptSpouseBenYes, CSOptSpouseBenNo,
                      CSDtSpouseBD, cboRuleSet, cboAge1959, txtDCY, CSOptDistType[0], CSOptDistType[1],
                      CSOptDistType[2], txtInflateRate, CSoptEarlyDistMeth[0], CSoptEarlyDistMeth[1],
                      CSoptEarlyDistMeth[2], CStxtIntRate, lstAnnuityMethod, CStxtAnnuityIntRate,
                      CStxtAnnuityFactor, buttons};
  for (std::size_t i = 1; i < std::size(chain); ++i) setTabOrder(chain[i - 1], chain[i]);
  widgets::InstallEnterMovesFocus(this);
}

bool dlgGenInputs::InDcyAndType(const QWidget* w) const {
  if (w == nullptr) return false;
  if (w == txtDCY) return true;
  for (const QRadioButton* b : CSOptDistType)
    if (w == b) return true;
  return false;
}

void dlgGenInputs::FocusChanged(QWidget* old, QWidget* now) {
  // OK runs the check itself; a press on a button must not run it twice.
  if (!m_dcyTypePending || !InDcyAndType(old) || InDcyAndType(now)) return;
  if (now != nullptr && buttons->isAncestorOf(now)) return;
  if (now != nullptr && now->window() != this) return;  // a message box of our own
  DcyAndTypeLeft();
}

void dlgGenInputs::Fill(const ginputs::GenEntries& e) {
  m_filling = true;
  txtOwnerName->SetText(e.ownerName);
  txtOtherInfo->SetText(e.otherInfo);
  CSDtOwnerBD->SetText(e.ownerBirthday);
  CSDtDeath->SetText(e.deathDate);
  (e.spouseBen ? CSOptSpouseBenYes : CSOptSpouseBenNo)->setChecked(true);
  CSDtSpouseBD->SetText(e.spouseBirthday);
  txtDCY->SetText(e.dcy);
  CSOptDistType[e.distType >= 0 && e.distType < 3 ? e.distType : 0]->setChecked(true);
  CSoptEarlyDistMeth[e.earlyMethod >= 0 && e.earlyMethod < 3 ? e.earlyMethod : 0]->setChecked(true);
  CStxtIntRate->SetText(e.intRate);
  lstAnnuityMethod->setCurrentRow(e.annuityMethod == ginputs::kAnnuityUserOverride ? 1 : 0);
  CStxtAnnuityIntRate->SetText(e.annuityIntRate);
  CStxtAnnuityFactor->SetText(e.annuityFactor);
  txtInflateRate->SetText(e.inflationRate);
  cboRuleSet->setCurrentIndex(e.ruleSet == kRulesCurrent ? 1 : 0);
  cboAge1959->setCurrentIndex(e.age1959 == kAge1959Alternative ? 1 : 0);
  m_filling = false;
  SetGenIPEnables();
}

ginputs::GenEntries dlgGenInputs::Entries() const {
  ginputs::GenEntries e;
  e.ownerName = txtOwnerName->Text();
  e.otherInfo = txtOtherInfo->Text();
  e.spouseBen = CSOptSpouseBenYes->isChecked();
  e.ownerBirthday = CSDtOwnerBD->Text();
  e.deathDate = CSDtDeath->Text();
  e.spouseBirthday = CSDtSpouseBD->Text();
  e.dcy = txtDCY->Text();
  for (std::int16_t i = 0; i < 3; ++i) {
    if (CSOptDistType[i]->isChecked()) e.distType = i;
    if (CSoptEarlyDistMeth[i]->isChecked()) e.earlyMethod = i;
  }
  e.intRate = CStxtIntRate->Text();
  e.annuityMethod = lstAnnuityMethod->currentRow() == 1 ? ginputs::kAnnuityUserOverride : ginputs::kAnnuity90CM;
  e.annuityIntRate = CStxtAnnuityIntRate->Text();
  e.annuityFactor = CStxtAnnuityFactor->Text();
  e.inflationRate = txtInflateRate->Text();
  e.ruleSet = cboRuleSet->currentIndex() == 1 ? kRulesCurrent : kRulesDescribed;
  e.age1959 = cboAge1959->currentIndex() == 1 ? kAge1959Alternative : kAge1959Default;
  return e;
}

void dlgGenInputs::SetGenIPEnables() {
  if (m_filling) return;
  const ginputs::GenEnables en = ginputs::SetGenIPEnables(Entries());
  CSDtSpouseBD->setEnabled(en.spouseBirthday);
  for (QRadioButton* b : CSoptEarlyDistMeth) b->setEnabled(en.earlyMethod);
  CStxtIntRate->setEnabled(en.intRate);
  lstAnnuityMethod->setEnabled(en.annuityMethod);
  CStxtAnnuityIntRate->setEnabled(en.annuityIntRate);
  CStxtAnnuityFactor->setEnabled(en.annuityFactor);
  cboAge1959->setEnabled(en.age1959);
  lblRuleHint->setText(QString::fromLatin1(ginputs::kRuleSetHints[cboRuleSet->currentIndex() == 1 ? 1 : 0]));
}

bool dlgGenInputs::RunDcyCheck() {
  m_dcyTypePending = false;
  const ginputs::GenEntries e = Entries();
  ginputs::DcyTypeEntries check{e.dcy, e.distType, e.ownerBirthday, e.deathDate};
  check.ruleSet = e.ruleSet;
  check.age1959 = e.age1959;
  const bool typeChanged = ginputs::CheckDcyAndType(check);
  if (check.dcyText != e.dcy) txtDCY->SetText(check.dcyText);
  if (typeChanged) CSOptDistType[check.distType]->setChecked(true);
  SetGenIPEnables();
  return !check.conflict;
}

void dlgGenInputs::DcyAndTypeLeft() { RunDcyCheck(); }

void dlgGenInputs::btnOK_Click() {
  if (!RunDcyCheck()) {
    txtDCY->setFocus();
    return;
  }
  const std::pair<widgets::DateEdit*, const char*> dates[] = {
      {CSDtOwnerBD, "Owner's Birthday"}, {CSDtDeath, "Date of Death"}, {CSDtSpouseBD, "Spouse's Birthday"}};
  for (const auto& [edit, label] : dates) {
    if (!rules::KeepInvalidDate(edit->Text(), label)) {
      edit->setFocus();
      edit->selectAll();
      return;
    }
  }
  if (!widgets::DatesWithinRange({{CSDtOwnerBD, "Owner's Birthday"},
                                   {CSDtDeath, "Date of Death"},
                                   {CSDtSpouseBD, "Spouse's Birthday"}}))
    return;
  if (!widgets::EntriesWithinRange({{txtDCY, &rules::kDcyRange},
                                    {txtInflateRate, &rules::kInflationRange},
                                    {CStxtIntRate, &rules::kIntRateRange},
                                    {CStxtAnnuityIntRate, &rules::kAnnuityIntRateRange},
                                    {CStxtAnnuityFactor, &rules::kAnnuityFactorRange}}))
    return;
  if (!ginputs::ApplyGenEntries(Entries(), m_gen)) return;
  m_target = m_gen;
  accept();
}

}  // namespace ira::dialogs
