#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QRadioButton>
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
  emit dlg.txtDCY->editingFinished();  // 2015, before the owner's 70 1/2 year
  EXPECT_EQ(dlg.txtDCY->Text(), "2020");

  dlg.CSOptDistType[ginputs::kBefore59Half]->click();  // 2020 is no year for a maximum distribution
  EXPECT_EQ(dlg.txtDCY->Text(), "");
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

TEST_F(Dialogs, ReportChoicesGiveTheSelectionFlags) {
  dlgRptChoices dlg(reports::ReportMode::Print);
  EXPECT_EQ(dlg.windowTitle().toStdString(), "Report Choices (Print)");
  EXPECT_EQ(dlg.Flags(), 0);
  dlg.chkReport->item(2)->setCheckState(Qt::Checked);
  dlg.chkReport->item(4)->setCheckState(Qt::Checked);
  EXPECT_EQ(dlg.Flags(), reports::kRptDistCalc | reports::kRptProjection);
  dlg.chkAll->setChecked(true);
  EXPECT_EQ(dlg.Flags(), reports::kRptAll);
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
