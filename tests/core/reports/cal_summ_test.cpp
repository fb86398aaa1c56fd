#include "core/reports/cal_summ.h"

#include <gtest/gtest.h>

#include "core/base/checked.h"
#include "report_test_util.h"

namespace ira::reports {
namespace {

using namespace ira::reports::test;

const std::string M(9, ' ');  // the printed margin

using CalSummTest = ReportTest;

TEST_F(CalSummTest, WindowCellsAndLabels) {
  // An owner dead in 2003; a child heir is below the tables in 2004.
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
  gen.DCY = 2005;
  gen.DistType = kTrue;
  gen.OwnerBirthDate = D(1, 1, 1930);
  for (int i = 1; i <= 25; ++i) AddIra("IRA " + std::to_string(i), "1000");
  ira::testing::FakePrintDevice device(40);  // footer from line 34
  PrintDocument(DisplayCalSumm, device);
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
  EXPECT_EQ(device.pages[1][13], M);
  EXPECT_EQ(device.pages[1][15].substr(0, 16), M + "Totals:");
  EXPECT_EQ(device.pages[1].back(), "Page 2");
}

}  // namespace
}  // namespace ira::reports
