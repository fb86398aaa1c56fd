#include "core/reports/dist_calc.h"

#include <gtest/gtest.h>

#include "core/base/checked.h"
#include "core/base/program.h"
#include "core/reports/prnmastr.h"
#include "core/tables/tables.h"
#include "report_test_util.h"
#include "support/fake_print_device.h"
#include "support/recording_sinks.h"

namespace ira::reports {
namespace {

using namespace ira::reports::test;

// Expected texts, from the published tables and hand arithmetic.
const std::vector<std::string> kS1 = {
    "  ",
    "  IRA: Rollover IRA",
    "  **********************************************",
    "  The following computation follows the 2002",
    "  final regulations that must be used for",
    "  Distribution Calendar Years after 2002 and",
    "  may be used for 2002.",
    "  **********************************************",
    "  Life Expectancy for Distribution ",
    "  Calendar Year 2005",
    "  If the spouse is beneficiary, use the",
    "  larger of the life expectancy from the",
    "  Distribution Period table or the joint",
    "  life table with recalculation each year.",
    "  Distribution Period Life Expectancy                            24.70",
    "  Joint Life Expectancy Recalculated This Year                   20.60",
    "  Larger Life Expectancy                                         24.70",
    "  Unadjusted benefit at end of year:                       $250,000.00",
    "  ",
    "                                                        --------------",
    "  Benefit as adjusted:                                     $250,000.00",
    "  Divide by life expectancy                                      24.70",
    "                                                        --------------",
    "  Gross required minimum distribution:                      $10,121.46",
    "  Less, distributions made during year:                      $1,500.00",
    "                                                        --------------",
    "  Minimum distribution to be paid out:                       $8,621.46",
    "                                                        ==============",
    "  ",
    "  IRA: Brokerage IRA",
    "  **********************************************",
    "  The following computation follows the 2002",
    "  final regulations that must be used for",
    "  Distribution Calendar Years after 2002 and",
    "  may be used for 2002.",
    "  **********************************************",
    "  Life Expectancy for Distribution ",
    "  Calendar Year 2005",
    "  If there is a nonspouse beneficiary, even if",
    "  the spouse is a beneficiary, or no beneficiary  ",
    "  use the Distribution Period table amount                       24.70",
    "  Unadjusted benefit at end of year:                     $1,234,567.50",
    "  ",
    "                                                        --------------",
    "  Benefit as adjusted:                                   $1,234,567.50",
    "  Divide by life expectancy                                      24.70",
    "                                                        --------------",
    "  Gross required minimum distribution:                      $49,982.49",
    "  Less, distributions made during year:                          $0.00",
    "                                                        --------------",
    "  Minimum distribution to be paid out:                      $49,982.49",
    "                                                        ==============",
};
const std::vector<std::string> kS2 = {
    "  ",
    "  IRA: Savings IRA",
    "  **********************************************",
    "  The following computation follows the 1987",
    "  proposed regulations that must be used for",
    "  Distribution Calendar Years before 2001 and",
    "  may be used for 2001.",
    "  **********************************************",
    "   Life Expectancies For Required Beginning Date: ",
    "    Life expectancy with: Chris Heir",
    "    Term certain life expectancy for owner and beneficiary:   42.9",
    "    Joint life expectancy - MDIB :                            26.2",
    "    (MDIB=Minimum Distribution Incidental Benefit)",
    "    Use lower life expectancy :                               26.2",
    "   Life Expectancy for Distribution Calendar Year-2000:",
    "    Life expectancy with: Chris Heir",
    "    Term certain life expectancy for owner and beneficiary:   42.9",
    "    Joint life expectancy - MDIB :                            26.2",
    "    (MDIB=Minimum Distribution Incidental Benefit)",
    "    Use lower life expectancy :                               26.2",
    "  Unadjusted benefit at end of year:                       $100,000.00",
    "  Minimum Distributions made this year:                          $0.00",
    "                                                        --------------",
    "  Benefit as adjusted:                                     $100,000.00",
    "  Divide by life expectancy                                      26.20",
    "                                                        --------------",
    "  Gross required minimum distribution:                       $3,816.79",
    "  Less, distributions made during year:                          $0.00",
    "                                                        --------------",
    "  Minimum distribution to be paid out:                       $3,816.79",
    "                                                        ==============",
};
const std::vector<std::string> kS3 = {
    "  ",
    "  IRA: Old IRA",
    "  **********************************************",
    "  The following computation follows the 1987",
    "  proposed regulations that must be used for",
    "  Distribution Calendar Years before 2001 and",
    "  may be used for 2001.",
    "  **********************************************",
    "   Life Expectancies For Required Beginning Date: ",
    "    Single life expectancy :                                  16",
    "    (Life expectancy recalculated each year)",
    "   Life Expectancy for Distribution Calendar Year-2001:",
    "    Single life expectancy :                                  15.3",
    "    (Life expectancy recalculated each year)",
    "  Unadjusted benefit at end of year:                        $50,000.00",
    "  ",
    "                                                        --------------",
    "  Benefit as adjusted:                                      $48,000.00",
    "  Divide by life expectancy                                      15.30",
    "                                                        --------------",
    "  Gross required minimum distribution:                       $3,137.25",
    "  Less, distributions made during year:                      $4,000.00",
    "                                                        --------------",
    "  Minimum distribution to be paid out:                       ($862.75)",
    "                                                        ==============",
    "  **********************************************",
    "  The following computation follows the 2001",
    "  proposed regulations that must be used for",
    "  Distribution Calendar Years after 2001 and",
    "  may be used for 2001.",
    "  **********************************************",
    "  Life Expectancy for Distribution ",
    "  Calendar Year 2001",
    "  If there is a nonspouse beneficiary, even if",
    "  the spouse is a beneficiary, or no beneficiary  ",
    "  use the Distribution Period table amount                       25.30",
    "  Unadjusted benefit at end of year:                        $50,000.00",
    "  ",
    "                                                        --------------",
    "  Benefit as adjusted:                                      $48,000.00",
    "  Divide by life expectancy                                      25.30",
    "                                                        --------------",
    "  Gross required minimum distribution:                       $1,897.23",
    "  Less, distributions made during year:                      $4,000.00",
    "                                                        --------------",
    "  Minimum distribution to be paid out:                     ($2,102.77)",
    "                                                        ==============",
};
const std::vector<std::string> kS4 = {
    "  ",
    "  Pat Young",
    "  Series review",
    "  Distribution Calculations",
    "  ",
    "  The distributions are for a series of substantially equal",
    "  periodic payments for a period of five years or more.",
    "  Since the Amortization or Annuity method is being used, it",
    "  is essential that the Distribution Calendar Year is the FIRST",
    "  year of the series of annual payments. If a subsequent year is",
    "  used, the payment amounts will be incorrect!",
    "  Method Used: Amortization",
    "  Reasonable Interest Rate: 5.5%",
    "  Term or Life Expectancy (Years) using 1986 table: 28.6",
    "  Term or Life Expectancy (Years) using 2002 table: 29.6",
    "  ",
    "  IRA: Series IRA",
    "  Calculated distribution:                                   $6,918.13",
    "  Less, distributions made during year:                      $1,000.00",
    "                                                        --------------",
    "  Amount to be distributed:                                  $5,918.13",
    "                                                        ==============",
};
const std::vector<std::string> kS5 = {
    "  ",
    "  IRA: Young Heir IRA",
    "  Calculations can not be performed for this account, either because the ",
    "  Owner's or a Beneficiary's age is not supported by this systems life-",
    "  expectancy tables. Please refer to the manual for the ages this system ",
    "  supports.",
    "  ",
    "  IRA: Inherited IRA",
    "  **********************************************",
    "  The following computation follows the 2002",
    "  final regulations that must be used for",
    "  Distribution Calendar Years after 2002 and",
    "  may be used for 2002.",
    "  **********************************************",
    "  Life Expectancy for Distribution ",
    "  Calendar Year 2005",
    "  If there is a nonspouse beneficiary, use the",
    "  single life life expectancy in the year",
    "  after death and subtract by 1 for each",
    "  subsequent year.",
    "  Nonspouse's Life Expectancy 1 Year After Death                 39.80",
    "  Nonspouse's Life Expectancy In Dist. Cal. Year                 38.80",
    "  Unadjusted benefit at end of year:                        $80,000.00",
    "  ",
    "                                                        --------------",
    "  Benefit as adjusted:                                      $80,000.00",
    "  Divide by life expectancy                                      38.80",
    "                                                        --------------",
    "  Gross required minimum distribution:                       $2,061.86",
    "  Less, distributions made during year:                          $0.00",
    "                                                        --------------",
    "  Minimum distribution to be paid out:                       $2,061.86",
    "                                                        ==============",
};

class DispCalcResultsTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    SetProgramFolder(TALLYRA_PROGRAM_DIR);
    tables::ReadTableVI();
    tables::ReadTableV();
  }
  void SetUp() override { TheScenario().Reset(); }
  void TearDown() override { TheScenario().Reset(); }

  IraRecord& AddIra(const char* name, const char* benefit) {
    IraRecord& ira = TheScenario().AddIra();
    ira.IraName = FixedText(name, kIraNameWidth);
    ira.Benefit = Money::FromString(benefit);
    return ira;
  }

  GeneralInputs& gen = TheScenario().Gen;
  ira::testing::RecordingScope rec;
};

TEST_F(DispCalcResultsTest, LaterRulesForSpouseAndNonSpouseAccounts) {
  gen.OwnerBirthDate = D(3, 15, 1932);
  gen.SpouseBen = kTrue;
  gen.SpouseBirthDate = D(7, 4, 1935);
  gen.DCY = 2005;
  gen.DistType = kTrue;
  IraRecord& a = AddIra("Rollover IRA", "250000");
  a.SpouseBen = kTrue;
  a.DistributedThisYear = Money::FromString("1500");
  IraRecord& b = AddIra("Brokerage IRA", "1234567.50");
  b.OtherBen = kTrue;
  b.BeneficiaryName = FixedText("Mary Sample", kBeneficiaryNameWidth);
  b.BeneBirthDate = D(2, 28, 1960);
  EXPECT_EQ(RunText(DispCalcResults, ReportMode::File), CrLfText(kS1));
  EXPECT_TRUE(rec.messages.messages.empty());
}

TEST_F(DispCalcResultsTest, FirstYearUnder1987RulesWithTheMdibLimit) {
  gen.OwnerBirthDate = D(1, 1, 1930);
  gen.DCY = 2000;
  gen.DistType = kTrue;
  IraRecord& a = AddIra("Savings IRA", "100000");
  a.OtherBen = kTrue;
  a.BeneficiaryName = FixedText("Chris Heir", kBeneficiaryNameWidth);
  a.BeneBirthDate = D(1, 1, 1960);
  a.bRecalc = 1;
  EXPECT_EQ(RunText(DispCalcResults, ReportMode::File), CrLfText(kS2));
}

TEST_F(DispCalcResultsTest, Year2001ShowsBothRegimesAndNegativeAmounts) {
  gen.OwnerBirthDate = D(1, 1, 1930);
  gen.DCY = 2001;
  gen.DistType = kTrue;
  IraRecord& a = AddIra("Old IRA", "50000");
  a.FirstYearDist = Money::FromString("2000");
  a.DistributedThisYear = Money::FromString("4000");
  EXPECT_EQ(RunText(DispCalcResults, ReportMode::File), CrLfText(kS3));
}

TEST_F(DispCalcResultsTest, EarlyAmortizationOnScreen) {
  SetNames(gen, "Pat Young", "Series review");
  gen.OwnerBirthDate = D(6, 30, 1950);
  gen.DCY = 2005;
  gen.DistType = 0;
  gen.EarlyMethod = kMethodAmortization;
  gen.IntRate = 5.5f;
  IraRecord& a = AddIra("Series IRA", "100000");
  a.chkUse2002Table = kTrue;
  a.DistributedThisYear = Money::FromString("1000");
  std::string caption;
  EXPECT_EQ(RunText(DispCalcResults, ReportMode::View, &caption), CrLfText(kS4));
  EXPECT_EQ(caption, "Distribution Calculations");
}

TEST_F(DispCalcResultsTest, DeceasedOwnerWithUnsupportedAndSupportedBeneficiaries) {
  gen.OwnerBirthDate = D(1, 1, 1930);
  gen.OwnerDeathDate = D(5, 10, 2003);
  gen.DCY = 2005;
  gen.DistType = kTrue;
  IraRecord& a = AddIra("Young Heir IRA", "10000");
  a.OtherBen = kTrue;
  a.BeneBirthDate = D(1, 1, 2000);  // 4 in the year after death: below the tables
  IraRecord& b = AddIra("Inherited IRA", "80000");
  b.OtherBen = kTrue;
  b.BeneBirthDate = D(1, 1, 1960);
  EXPECT_EQ(RunText(DispCalcResults, ReportMode::File), CrLfText(kS5));
}

TEST_F(DispCalcResultsTest, PrintedSectionsAreNotSplitAcrossPages) {
  gen.OwnerBirthDate = D(1, 1, 1930);
  gen.DCY = 2001;
  gen.DistType = kTrue;
  AddIra("Old IRA", "50000");
  ira::testing::FakePrintDevice device(45);  // footer after line 39
  PrnManager2(device, kPrnReset, "", "", "");
  PrintSink sink(device);
  DispCalcResults(sink);
  PrnManager2(device, kPrnEndDocument, "", "", "");
  // The 1987 section (25 lines with the account's name) fills page 1; the
  // 2001 section (22 lines) would pass line 39 and opens page 2.
  ASSERT_EQ(device.pages.size(), 2u);
  EXPECT_EQ(device.pages[0][7], "  IRA: Old IRA");
  EXPECT_EQ(device.pages[0][6 + 24], kS3[24]);
  EXPECT_EQ(device.pages[0].size(), 39u);
  EXPECT_EQ(device.pages[0].back(), "Page 1");
  EXPECT_EQ(device.pages[1][6], "  **********************************************");
  EXPECT_EQ(device.pages[1][4], "Distribution Calculations");
}

}  // namespace
}  // namespace ira::reports
