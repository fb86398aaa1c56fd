#include "core/reports/cal_summ.h"

#include <gtest/gtest.h>

#include <functional>

#include "core/base/checked.h"
#include "core/base/program.h"
#include "core/reports/prnmastr.h"
#include "core/tables/tables.h"
#include "grid_test_util.h"
#include "report_test_util.h"
#include "support/fake_print_device.h"
#include "support/recording_sinks.h"

namespace ira::reports {
namespace {

using namespace ira::reports::test;

// Amounts from the published tables by hand (the Distribution Calculations
// tests show the same accounts line by line).
const std::string M(9, ' ');
const std::string kBlank = M;
const std::string kHead1 = M + "                                                      Total          Amount            Net";
const std::string kHead2Required =
    M + "                                     Adjusted        Required        Already         Required  ";
const std::string kHead2Maximum =
    M + "                                     Adjusted        Maximum         Already         Maximum   ";
const std::string kHead3 =
    M + "Description                          Benefit       Distribution    Distributed     Distribution ";
const std::string kDashes =
    M + "--------------------------------  --------------  --------------  --------------  -------------- ";
const std::string kTotalsRule =
    M + "                                  --------------  --------------  --------------  -------------- ";
const std::string kDoubleRule =
    M + "                                  ==============  ==============  ==============  ============== ";
const std::vector<std::string> kFootnote = {
    kBlank,
    M + "* Calculations can not be made for this account because either the Owner's or a ",
    M + "    beneficiary's age is not supported by this system's life-expectancy tables. ",
    M + "    The Totals do not include this account.",
};

std::vector<std::string> Section(const char* title, const std::string& head2) {
  return {kBlank, M + title, kBlank, kHead1, head2, kHead3, kDashes, kBlank};
}
const char* const k2002 = "COMPUTATIONS USING 2002 FINAL REGULATIONS:";
const char* const k1987 = "COMPUTATIONS USING 1987 PROPOSED REGULATIONS:";

std::vector<std::string> Join(std::initializer_list<std::vector<std::string>> parts) {
  std::vector<std::string> all;
  for (const auto& p : parts) all.insert(all.end(), p.begin(), p.end());
  return all;
}

class CalSummTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    SetProgramFolder(TALLYRA_PROGRAM_DIR);
    tables::ReadTableVI();
    tables::ReadTableV();
  }
  void SetUp() override { TheScenario().Reset(); }
  void TearDown() override { TheScenario().Reset(); }

  static IraRecord& AddIra(const char* name, const char* benefit) {
    IraRecord& ira = TheScenario().AddIra();
    ira.IraName = FixedText(name, kIraNameWidth);
    ira.Benefit = Money::FromString(benefit);
    return ira;
  }

  // An owner dead in 2003; a child heir is below the tables in 2004.
  static void InheritedAccounts() {
    GeneralInputs& gen = TheScenario().Gen;
    SetNames(gen, "Estate of Carl Late", "Inherited accounts");
    gen.OwnerBirthDate = D(1, 1, 1930);
    gen.OwnerDeathDate = D(5, 10, 2003);
    gen.DCY = 2005;
    gen.DistType = kTrue;
    IraRecord& a = AddIra("Young Heir IRA", "10000");
    a.OtherBen = kTrue;
    a.BeneBirthDate = D(1, 1, 2000);
    IraRecord& b = AddIra("Inherited IRA", "80000");  // / 38.8 = 2,061.8557
    b.OtherBen = kTrue;
    b.BeneBirthDate = D(1, 1, 1960);
    IraRecord& c = AddIra("Trust IRA", "1234567.50");  // / 38.8 = 31,818.75 exactly
    c.OtherBen = kTrue;
    c.BeneBirthDate = D(1, 1, 1960);
    c.DistributedThisYear = Money::FromString("567.50");
  }

  // DCY 2001: 1987 and 2001 amounts; a spouse of 1 has no table figure.
  static void Year2001() {
    GeneralInputs& gen = TheScenario().Gen;
    gen.OwnerBirthDate = D(1, 1, 1930);
    gen.SpouseBirthDate = D(1, 1, 1999);
    gen.DCY = 2001;
    gen.DistType = kTrue;
    IraRecord& a = AddIra("Old IRA", "50000");
    a.FirstYearDist = Money::FromString("2000");
    a.DistributedThisYear = Money::FromString("4000");
    AddIra("Spouse IRA", "10000").SpouseBen = kTrue;
  }

  ira::testing::RecordingScope rec;
};

TEST_F(CalSummTest, PrintedLayoutBySetOfRules) {
  const std::string inherited = M + "Inherited IRA                          80,000.00        2,061.86            0.00        2,061.86";
  const std::string trust = M + "Trust IRA                           1,234,567.50       31,818.75          567.50       31,251.25";
  const std::string notComputable = M + "Young Heir IRA                                 *               *               *               *";
  const std::string oldLater = M + "Old IRA                                48,000.00        1,897.23        4,000.00       -2,102.77";
  const std::string old1987 = M + "Old IRA                                48,000.00        3,137.25        4,000.00         -862.75";
  const std::string spouse = M + "Spouse IRA                                     *               *               *               *";
  struct Row {
    const char* name;
    std::function<void()> setUp;
    std::vector<std::string> expected;
  } const rows[] = {
      {"2005: the 2002 rules only; a non-computable account is starred, footnoted and left out of the totals",
       InheritedAccounts,
       Join({Section(k2002, kHead2Required), {notComputable, inherited, trust, kBlank, kTotalsRule},
             {M + "Totals:                             1,314,567.50       33,880.61          567.50       33,313.11"},
             {kDoubleRule}, kFootnote})},
      {"2001: the 2002 section, then the 1987 one, each with its own totals and footnote",
       Year2001,
       Join({Section(k2002, kHead2Required), {oldLater, spouse, kBlank, kTotalsRule},
             {M + "Totals:                                48,000.00        1,897.23        4,000.00       -2,102.77"},
             {kDoubleRule}, kFootnote, Section(k1987, kHead2Required), {old1987, spouse, kBlank, kTotalsRule},
             {M + "Totals:                                48,000.00        3,137.25        4,000.00         -862.75"},
             {kDoubleRule}, kFootnote})},
      {"early series: Maximum in the headings",
       [] {
         GeneralInputs& gen = TheScenario().Gen;
         gen.OwnerBirthDate = D(6, 30, 1950);
         gen.DCY = 2005;
         gen.EarlyMethod = kMethodAmortization;
         gen.IntRate = 5.5f;
         IraRecord& a = AddIra("Series IRA", "100000");
         a.chkUse2002Table = kTrue;
         a.DistributedThisYear = Money::FromString("1000");
       },
       Join({Section(k2002, kHead2Maximum),
             {M + "Series IRA                            100,000.00        6,918.13        1,000.00        5,918.13",
              kBlank, kTotalsRule,
              M + "Totals:                               100,000.00        6,918.13        1,000.00        5,918.13",
              kDoubleRule}})},
      {"no accounts before 2001: the 1987 headings and zero totals",
       [] {
         TheScenario().Gen.DCY = 2000;
         TheScenario().Gen.DistType = kTrue;
       },
       Join({Section(k1987, kHead2Required),
             {kBlank, kTotalsRule,
              M + "Totals:                                     0.00            0.00            0.00            0.00",
              kDoubleRule}})},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    TheScenario().Reset();
    row.setUp();
    EXPECT_EQ(RunText(DisplayCalSumm, ReportMode::File), CrLfText(row.expected));
  }
  EXPECT_TRUE(rec.messages.messages.empty());
}

TEST_F(CalSummTest, WindowCellsAndLabels) {
  InheritedAccounts();
  TextSink sink(ReportMode::View);
  DisplayCalSumm(sink);
  ASSERT_TRUE(sink.HasGrid());
  const GridReport& grid = sink.Grid();
  EXPECT_EQ(grid.caption, "Calendar Year Summary Report");
  EXPECT_EQ(grid.heading, "Estate of Carl Late\r\nInherited accounts\r\n2005 Distribution Calendar Year Summary");
  EXPECT_EQ(grid.columnWidths, (std::vector<int>{33, 13, 13, 13, 13}));
  EXPECT_EQ(grid.fixedRows, 1);
  const std::vector<std::vector<std::string>> cells = {
      {"\r\n\r\nDescription of IRA", "\r\nAdjusted\r\nBenefit", "Total\r\nRequired\r\nDistribution",
       "Amount\r\nAlready\r\nDistributed", "Net\r\nRequired\r\nDistribution"},
      {"Young Heir IRA", "*", "*", "*", "*"},
      {"Inherited IRA", "80,000.00", "2,061.86", "0.00", "2,061.86"},
      {"Trust IRA", "1,234,567.50", "31,818.75", "567.50", "31,251.25"},
      {"", "------------", "------------", "------------", "------------"},
      {"Totals:", "1,314,567.50", "33,880.61", "567.50", "33,313.11"},
      {"", "============", "============", "============", "============"},
  };
  EXPECT_EQ(grid.cells, cells);
  EXPECT_EQ(LabelLines(grid),
            (std::vector<std::string>{
                "lblRegUsed: COMPUTED USING 2001 PROPOSED REGULATIONS",
                "lblNoData: * Calculations can not be made for this account because either the Owner's or a "
                "Beneficiary's age is not         supported by this system's life expectancy tables. Totals do not "
                "include this account.",
            }));
}

TEST_F(CalSummTest, WindowOf2001FollowsTheTypeOfDistribution) {
  // Born 3/1/1929, 72 in 2001: required, 100,000 / VI(72, 62) 24.4 under the 2001
  // rules; early, 100,000 / V(72) 14.6 under the 1987 rules.
  for (const std::int16_t distType : {kTrue, kFalse}) {
    const bool early = distType == kFalse;
    TheScenario().Reset();
    GeneralInputs& gen = TheScenario().Gen;
    gen.OwnerBirthDate = D(3, 1, 1929);
    gen.DCY = 2001;
    gen.DistType = distType;
    AddIra("Only IRA", "100000");
    TextSink sink(ReportMode::View);
    DisplayCalSumm(sink);
    const GridReport& grid = sink.Grid();
    const std::string amount = early ? "6,849.32" : "4,098.36";
    EXPECT_EQ(grid.cells[0][4], early ? "Net\r\nMaximum\r\nDistribution" : "Net\r\nRequired\r\nDistribution");
    EXPECT_EQ(grid.cells[1], (std::vector<std::string>{"Only IRA", "100,000.00", amount, "0.00", amount}));
    EXPECT_EQ(LabelLines(grid)[0], early ? "lblRegUsed: COMPUTED USING 1987 PROPOSED REGULATIONS"
                                         : "lblRegUsed: COMPUTED USING 2001 PROPOSED REGULATIONS");
    EXPECT_FALSE(grid.labels[1].visible);
  }
}

TEST_F(CalSummTest, LongListBreaksOnlyBetweenAccountLines) {
  TheScenario().Gen.DCY = 2005;
  TheScenario().Gen.DistType = kTrue;
  TheScenario().Gen.OwnerBirthDate = D(1, 1, 1930);
  for (int i = 1; i <= 25; ++i) AddIra(("IRA " + std::to_string(i)).c_str(), "1000");
  ira::testing::FakePrintDevice device(40);  // footer from line 34
  PrnManager2(device, kPrnReset, "", "", "");
  PrintSink sink(device);
  DisplayCalSumm(sink);
  PrnManager2(device, kPrnEndDocument, "", "", "");
  // Page 1: heading (7 counted) + section (8) + 18 accounts = 33 lines; the 19th would reach 34.
  ASSERT_EQ(device.pages.size(), 2u);
  EXPECT_EQ(device.pages[0][4], "      2005 Distribution Calendar Year Summary");
  EXPECT_EQ(device.pages[0][2], "      " + std::string(51, ' '));
  EXPECT_EQ(device.pages[0][31].substr(0, 15), M + "IRA 18");
  EXPECT_EQ(device.pages[0][32], "");
  EXPECT_EQ(device.pages[0][33], "Page 1");
  // The section heading is not repeated; the page heading is.
  EXPECT_EQ(device.pages[1][4], "      2005 Distribution Calendar Year Summary");
  EXPECT_EQ(device.pages[1][6].substr(0, 15), M + "IRA 19");
  EXPECT_EQ(device.pages[1][13], kBlank);
  EXPECT_EQ(device.pages[1][14], kTotalsRule);
  EXPECT_EQ(device.pages[1].back(), "Page 2");
}

}  // namespace
}  // namespace ira::reports
