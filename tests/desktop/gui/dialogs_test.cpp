#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <algorithm>
#include <map>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QRadioButton>
#include <QSpinBox>
#include <QTest>

#include "core/base/checked.h"
#include "dialogs/dlgGenInputs.h"
#include "dialogs/dlgIraInputs.h"
#include "dialogs/dlgIraList.h"
#include "dialogs/dlgProjOptions.h"
#include "core/reports/display_master.h"
#include "dialogs/dlgRptChoices.h"
#include "dialogs/widgets/entry_controls.h"
#include "support/recording_sinks.h"

using namespace ira;
using namespace ira::dialogs;
using ira::testing::RecordingScope;

namespace {

class Dialogs : public ::testing::Test {
 protected:
  void SetUp() override { SetTodayForTesting(MakeDate(2014, 6, 1)); }
  void TearDown() override { SetTodayForTesting(std::nullopt); }
  RecordingScope rec;
};

TEST_F(Dialogs, ProjectionOptionsStoreOnlyWhatPassesTheChecks) {
  GeneralInputs gen;  // early type, no projection yet
  dlgProjOptions dlg(gen);
  EXPECT_EQ(dlg.txtProjYrs->Text(), "5");
  EXPECT_FALSE(dlg.txtOverMin->isEnabled());
  EXPECT_TRUE(dlg.CSOptIncomeNo->isChecked());

  dlg.txtProjYrs->SetText("many");
  dlg.btnOK_Click();
  EXPECT_EQ(dlg.result(), QDialog::Rejected);
  EXPECT_EQ(gen.ProjectionYears, 0);  // nothing written while the dialog stays open
  EXPECT_EQ(rec.messages.Last().title, "WARNING");

  dlg.txtProjYrs->SetText("-3");
  dlg.CSOptIncomeYes->setChecked(true);
  dlg.btnOK_Click();
  EXPECT_EQ(dlg.txtProjYrs->Text(), "0");
  EXPECT_EQ(dlg.result(), QDialog::Accepted);
  EXPECT_EQ(gen.ProjectionYears, 5);
  EXPECT_EQ(gen.IncomeCalc, kTrue);
}

TEST_F(Dialogs, GeneralInputsApplyTheRulesAsEntriesAreLeft) {
  GeneralInputs gen;
  gen.DistType = kTrue;
  dlgGenInputs dlg(gen);
  EXPECT_TRUE(dlg.CSOptDistType[ginputs::kAfter70Half]->isChecked());
  EXPECT_FALSE(dlg.CStxtIntRate->isEnabled());

  dlg.CSDtOwnerBD->SetText("2/30/1950");
  emit dlg.CSDtOwnerBD->editingFinished();
  EXPECT_TRUE(rec.messages.Last().text.starts_with("The Owner's Birthday date entered as 2/30/1950 is not valid."));

  dlg.CSDtOwnerBD->SetText("1/1/1950");
  dlg.txtDCY->SetText("15");
  dlg.DcyAndTypeLeft();  // 2015, before the owner's 70 1/2 year
  EXPECT_EQ(dlg.txtDCY->Text(), "2020");

  dlg.CSOptDistType[ginputs::kBefore59Half]->click();  // 2020 is no year for a maximum distribution
  EXPECT_EQ(rec.messages.messages.size(), 2u);        // but nothing is said while the type is chosen
  dlg.DcyAndTypeLeft();
  EXPECT_EQ(rec.messages.messages.size(), 3u);
  EXPECT_EQ(dlg.txtDCY->Text(), "2020");  // what was there stays for the user to correct
  dlg.buttons->button(QDialogButtonBox::Ok)->click();  // OK asks again and stays
  EXPECT_EQ(dlg.result(), QDialog::Rejected);
  dlg.txtDCY->SetText("");
  EXPECT_TRUE(dlg.CSoptEarlyDistMeth[kMethodAmortization]->isEnabled());
  dlg.CSoptEarlyDistMeth[kMethodAmortization]->click();
  EXPECT_TRUE(dlg.CStxtIntRate->isEnabled());

  dlg.buttons->button(QDialogButtonBox::Ok)->click();  // the DCY is missing: refused
  EXPECT_EQ(dlg.result(), QDialog::Rejected);
  EXPECT_EQ(gen.OwnerBirthDate, kNoDate);
  dlg.txtDCY->SetText("2008");
  dlg.CStxtIntRate->SetText("5");
  dlg.buttons->button(QDialogButtonBox::Ok)->click();
  EXPECT_EQ(dlg.result(), QDialog::Accepted);
  EXPECT_EQ(gen.OwnerBirthDate, MakeDate(1950, 1, 1));
  EXPECT_EQ(gen.DCY, 2008);
  EXPECT_EQ(gen.DistType, 0);
  EXPECT_EQ(gen.EarlyMethod, kMethodAmortization);
  EXPECT_EQ(gen.IntRate, 5.0f);
}

TEST_F(Dialogs, IraListKeepsCountAndListInStep) {
  Scenario sc;
  sc.AddIra().IraName = FixedText("First", kIraNameWidth);
  dlgIraList dlg(sc);
  int added = 0;
  dlg.EditIra = [&](const GeneralInputs&, IraRecord& ira) {
    ira.IraName = FixedText("Added " + std::to_string(++added), kIraNameWidth);
    return true;
  };
  dlg.btnAdd_Click();
  dlg.btnAdd_Click();
  EXPECT_EQ(dlg.lstIras->topLevelItemCount(), 3);
  EXPECT_EQ(sc.Gen.IraCount, 1);  // the scenario waits for OK

  dlg.SetCurrentRow(2);
  dlg.MoveSelected(-1);
  dlg.MoveSelected(-1);
  EXPECT_EQ(dlg.CurrentRow(), 0);
  dlg.SetCurrentRow(1);
  dlg.btnDelete_Click();
  dlg.btnOK_Click();
  ASSERT_EQ(sc.Gen.IraCount, 2);
  ASSERT_EQ(sc.Ira.size(), 2u);
  EXPECT_EQ(RTrim(sc.Ira[0].IraName), "Added 2");
  EXPECT_EQ(RTrim(sc.Ira[1].IraName), "Added 1");
}

TEST_F(Dialogs, IraInputsOfferTheElectionsThatCount) {
  GeneralInputs gen;
  gen.DistType = kTrue;
  gen.OwnerBirthDate = MakeDate(1940, 1, 1);
  gen.SpouseBirthDate = MakeDate(1955, 1, 1);
  gen.DCY = 2014;
  IraRecord ira;
  ira.SpouseBen = kTrue;
  ira.bRecalc = 3;
  dlgIraInputs dlg(gen, ira);
  EXPECT_EQ(dlg.lstRecalc->count(), 4);
  EXPECT_EQ(dlg.lstRecalc->currentData().toInt(), 3);

  // A beneficiary younger than the spouse governs: only the owner's election is left.
  dlg.CSOptOtherBen->setChecked(true);
  dlg.txtBeneName->SetText("  Kim  ");
  dlg.CSDtBeneBD->SetText("1/1/2012");
  rec.messages.answers = {MsgAnswer::Ok};
  emit dlg.CSDtBeneBD->editingFinished();
  EXPECT_EQ(dlg.lstRecalc->count(), 2);
  EXPECT_EQ(dlg.lstRecalc->currentData().toInt(), 1);
  ASSERT_EQ(rec.messages.messages.size(), 2u);
  EXPECT_EQ(rec.messages.messages[0].title, "Please Note!");
  EXPECT_EQ(rec.messages.messages[1].title, "Help on Beneficiary's Age");

  dlg.CSCurBenefit->SetText("12,345.678");
  dlg.buttons->button(QDialogButtonBox::Ok)->click();
  EXPECT_EQ(dlg.result(), QDialog::Accepted);
  EXPECT_EQ(RTrim(ira.BeneficiaryName), "Kim");
  EXPECT_EQ(ira.Benefit, Money::FromString("12345.678"));
  EXPECT_EQ(ira.bRecalc, 1);
  EXPECT_EQ(ira.BeneBirthDate, MakeDate(2012, 1, 1));
}

TEST_F(Dialogs, BeneficiaryKindAndSpouseChoiceOnlyWhenTheyMatter) {
  GeneralInputs gen;
  gen.RuleSet = kRulesCurrent;
  gen.OwnerBirthDate = MakeDate(1945, 1, 1);
  IraRecord ira;
  ira.SpouseBen = kTrue;
  {
    dlgIraInputs living(gen, ira);
    EXPECT_FALSE(living.lstBeneKind->isEnabled());
    EXPECT_FALSE(living.lstSpouseChoice->isEnabled());
  }
  gen.OwnerDeathDate = MakeDate(2022, 6, 1);
  dlgIraInputs dlg(gen, ira);
  EXPECT_FALSE(dlg.lstBeneKind->isEnabled());  // no non-spouse beneficiary
  EXPECT_TRUE(dlg.lstSpouseChoice->isEnabled());
  EXPECT_FALSE(dlg.spnSpouseChoiceYear->isEnabled());  // remaining beneficiary needs no year
  dlg.lstSpouseChoice->setCurrentIndex(dlg.lstSpouseChoice->findData(kSpouseTreatedAsOwner));
  EXPECT_TRUE(dlg.spnSpouseChoiceYear->isEnabled());
  EXPECT_NE(dlg.lstSpouseChoice->toolTip().indexOf(QStringLiteral("proposed rules")), -1);
  dlg.spnSpouseChoiceYear->setValue(2025);
  dlg.buttons->button(QDialogButtonBox::Ok)->click();
  EXPECT_EQ(ira.SpouseChoice, kSpouseTreatedAsOwner);
  EXPECT_EQ(ira.SpouseChoiceYear, 2025);

  // A non-spouse beneficiary beside the spouse: the kind governs, the choice does not.
  ira.OtherBen = kTrue;
  dlgIraInputs both(gen, ira);
  EXPECT_TRUE(both.lstBeneKind->isEnabled());
  EXPECT_FALSE(both.lstSpouseChoice->isEnabled());
  both.lstBeneKind->setCurrentIndex(both.lstBeneKind->findData(kBeneNotIndividual));
  both.buttons->button(QDialogButtonBox::Ok)->click();
  EXPECT_EQ(ira.BeneKind, kBeneNotIndividual);
}

TEST_F(Dialogs, EnterMovesToTheNextControl) {
  GeneralInputs gen;
  gen.DistType = kTrue;
  gen.ProjectionYears = 3;
  dlgProjOptions dlg(gen);
  dlg.show();
  QApplication::setActiveWindow(&dlg);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&dlg));
  dlg.txtProjYrs->setFocus();
  QTest::keyClick(dlg.txtProjYrs, Qt::Key_Return);
  EXPECT_EQ(QApplication::focusWidget(), dlg.txtOverMin);
  EXPECT_TRUE(dlg.isVisible());  // Enter in an entry is no OK
  QTest::keyClick(dlg.txtOverMin, Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_NE(QApplication::focusWidget(), dlg.txtOverMin);
  EXPECT_EQ(dlg.txtHelp->toPlainText().toStdString(),
            "0% uses the Min. Dist. amount. 10 uses 110% of the Min. Dist. amount, etc.");
}

}  // namespace

TEST_F(Dialogs, GeneralInputsChooseTheRuleSetAndThe1959Age) {
  GeneralInputs gen;  // rule set 0, as a file without the extension block
  gen.DistType = kTrue;
  dlgGenInputs dlg(gen);
  EXPECT_EQ(dlg.cboRuleSet->currentIndex(), kRulesDescribed);
  EXPECT_FALSE(dlg.cboAge1959->isEnabled());  // no birthday yet

  dlg.CSDtOwnerBD->SetText("6/1/1959");
  EXPECT_FALSE(dlg.cboAge1959->isEnabled());  // the described rules know no such choice
  dlg.cboRuleSet->setCurrentIndex(kRulesCurrent);
  EXPECT_TRUE(dlg.cboAge1959->isEnabled());
  EXPECT_TRUE(dlg.cboAge1959->currentText().contains(QStringLiteral("proposed regulation")));
  EXPECT_FALSE(dlg.lblRuleHint->text().isEmpty());
  dlg.cboAge1959->setCurrentIndex(1);
  dlg.CSDtOwnerBD->SetText("6/1/1960");
  EXPECT_FALSE(dlg.cboAge1959->isEnabled());
  dlg.CSDtOwnerBD->SetText("6/1/1959");

  dlg.txtDCY->SetText("2034");
  dlg.btnOK_Click();
  ASSERT_EQ(dlg.result(), QDialog::Accepted);
  EXPECT_EQ(gen.RuleSet, kRulesCurrent);
  EXPECT_EQ(gen.Age1959, kAge1959Alternative);
}

// The focusable widgets of a dialog in its tab chain, from `first` on.
std::vector<QWidget*> TabChain(QWidget* first) {
  std::vector<QWidget*> chain;
  QWidget* w = first;
  do {
    if (w->focusPolicy() & Qt::TabFocus) chain.push_back(w);
    w = w->nextInFocusChain();
  } while (w != first && chain.size() < 200);
  return chain;
}

TEST_F(Dialogs, GeneralInputsTabAsTheEyeReads) {
  GeneralInputs gen;
  dlgGenInputs dlg(gen);
  const std::vector<QWidget*> chain = TabChain(dlg.txtOwnerName);
  const auto at = [&](QWidget* w) { return std::find(chain.begin(), chain.end(), w) - chain.begin(); };
  EXPECT_LT(at(dlg.txtOwnerName), at(dlg.CSDtOwnerBD));
  EXPECT_LT(at(dlg.CSDtSpouseBD), at(dlg.txtDCY));
  // The year, then its type, then the inflation rate below them.
  EXPECT_LT(at(dlg.txtDCY), at(dlg.CSOptDistType[0]));
  EXPECT_LT(at(dlg.CSOptDistType[2]), at(dlg.txtInflateRate));
  EXPECT_LT(at(dlg.txtInflateRate), at(dlg.CStxtIntRate));
}

TEST_F(Dialogs, InvalidDatesAreQuestionedOnceAtOk) {
  GeneralInputs gen;
  gen.DistType = kTrue;
  dlgGenInputs dlg(gen);
  dlg.CSDtOwnerBD->SetText("1/1/1950");
  dlg.txtDCY->SetText("2020");
  dlg.CSDtSpouseBD->SetText("2/30/1952");
  rec.messages.answers = {MsgAnswer::No};
  dlg.btnOK_Click();
  EXPECT_EQ(dlg.result(), QDialog::Rejected);
  ASSERT_EQ(rec.messages.messages.size(), 1u);
  EXPECT_EQ(rec.messages.Last().text, "The Spouse's Birthday is not a valid date. Keep it anyway?");
  EXPECT_EQ(rec.messages.Last().buttons, MsgButtons::YesNo);

  rec.messages.answers = {MsgAnswer::Yes};
  dlg.btnOK_Click();
  EXPECT_EQ(dlg.result(), QDialog::Accepted);
  EXPECT_EQ(rec.messages.messages.size(), 2u);
  EXPECT_EQ(gen.SpouseBirthDate, kNoDate);
}

// The letter after "&" in a text (nothing when there is none).
QChar Mnemonic(const QString& text) {
  for (qsizetype i = 0; i + 1 < text.size(); ++i) {
    if (text[i] == QLatin1Char('&')) {
      if (text[i + 1] != QLatin1Char('&')) return text[i + 1].toLower();
      ++i;
    }
  }
  return {};
}

// Every entry label and every button of a dialog has its own Alt letter.
void ExpectUniqueMnemonics(QWidget* dialog) {
  std::map<QChar, QString> seen;
  const auto take = [&](const QString& text) {
    const QChar m = Mnemonic(text);
    EXPECT_FALSE(m.isNull()) << text.toStdString();
    if (m.isNull()) return;
    const auto [it, fresh] = seen.emplace(m, text);
    EXPECT_TRUE(fresh) << text.toStdString() << " and " << it->second.toStdString() << " share Alt+"
                       << QString(m).toStdString();
  };
  for (QLabel* label : dialog->findChildren<QLabel*>())
    if (label->buddy() != nullptr) take(label->text());
  for (QAbstractButton* button : dialog->findChildren<QAbstractButton*>())
    if (!button->text().isEmpty()) take(button->text());
}

TEST_F(Dialogs, EveryLabelAndButtonHasItsOwnMnemonic) {
  GeneralInputs gen;
  IraRecord ira;
  Scenario sc;
  dlgGenInputs general(gen);
  dlgIraInputs inputs(gen, ira);
  dlgProjOptions projection(gen);
  dlgRptChoices choices(reports::ReportMode::View);
  dlgIraList list(sc);
  for (QWidget* d : std::initializer_list<QWidget*>{&general, &inputs, &projection, &choices, &list}) {
    SCOPED_TRACE(d->windowTitle().toStdString());
    ExpectUniqueMnemonics(d);
  }
}

TEST_F(Dialogs, ReportChoicesGiveTheFlagsRememberTheLastTicksAndRefuseNone) {
  dlgRptChoices::ForgetChoice();
  {
    dlgRptChoices dlg(reports::ReportMode::View);
    EXPECT_EQ(dlg.windowTitle().toStdString(), "Report Choices (View)");
    dlg.btnOK_Click();
    EXPECT_EQ(dlg.result(), QDialog::Rejected);
    EXPECT_EQ(rec.messages.Last().title, "Please Note!");
    dlg.chkReport->item(1)->setCheckState(Qt::Checked);
    dlg.chkReport->item(3)->setCheckState(Qt::Checked);
    EXPECT_EQ(dlg.Flags(), reports::kRptGenInfo | reports::kRptCalSumm);
    dlg.btnOK_Click();
    EXPECT_EQ(dlg.result(), QDialog::Accepted);
  }
  dlgRptChoices again(reports::ReportMode::Print);
  EXPECT_EQ(again.windowTitle().toStdString(), "Report Choices (Print)");
  EXPECT_EQ(again.Flags(), reports::kRptGenInfo | reports::kRptCalSumm);
  again.chkAll->setChecked(true);
  EXPECT_EQ(again.Flags(), reports::kRptAll);
  dlgRptChoices::ForgetChoice();
}

// Each entry names its range in its tooltip; OK refuses a value outside it,
// naming the field and the range, and keeps the dialog open on that entry.
TEST_F(Dialogs, RangesAreHintedAndEnforcedAtOk) {
  GeneralInputs gen;
  IraRecord ira;
  dlgIraInputs dlg(gen, ira);
  EXPECT_TRUE(dlg.CStxtRateOfReturn->toolTip().contains(QStringLiteral("Valid range: -100 to 100.")));
  EXPECT_TRUE(dlg.CSCurBenefit->toolTip().contains(QStringLiteral("0.00 to 9,999,999,999.99")));
  EXPECT_TRUE(dlg.CSDtBeneBD->toolTip().contains(QStringLiteral("from 1/1/1880 to 12/31/2150")));

  dlg.CStxtRateOfReturn->SetText("150");
  dlg.btnOK_Click();
  EXPECT_EQ(dlg.result(), QDialog::Rejected);
  EXPECT_EQ(rec.messages.Last().text,
            "The value entered for 'Rate Of Return' is outside its range. Please enter a value from -100 to 100.");
  dlg.CStxtRateOfReturn->SetText("100");  // the bound itself is in range
  dlg.btnOK_Click();
  EXPECT_EQ(dlg.result(), QDialog::Accepted);
  EXPECT_EQ(ira.RateOfReturn, 100.0f);

  gen.DistType = kTrue;
  dlgGenInputs general(gen);
  general.CSDtOwnerBD->SetText("1/1/1850");
  general.txtDCY->SetText("2020");
  general.btnOK_Click();
  EXPECT_EQ(general.result(), QDialog::Rejected);
  EXPECT_TRUE(rec.messages.Last().text.starts_with("The Owner's Birthday is outside the dates"));
}
