#include "core/reports/proj_rpt.h"

#include <gtest/gtest.h>

#include "core/base/checked.h"
#include "report_test_util.h"

namespace ira::reports {
namespace {

using namespace ira::reports::test;

class ProjRptTest : public ReportTest {
 protected:
  GeneralInputs& Owner(Date birth, std::int16_t dcy, std::int16_t years, std::int16_t distType = kTrue) {
    gen.OwnerBirthDate = birth;
    gen.DCY = dcy;
    gen.ProjectionYears = years;
    gen.DistType = distType;
    return gen;
  }
  static IraRecord& AddIra(const std::string& name, const char* benefit, float rate) {
    IraRecord& ira = ReportTest::AddIra(name, benefit);
    ira.RateOfReturn = rate;
    return ira;
  }

  void ExcessYears() {
    Owner(D(1, 1, 1975), 2050, 2);
    AddIra("Big IRA", "10000000", 0.0f);
  }

  // The lines of a report run in file mode.
  static std::vector<std::string> FileLines() {
    const std::string text = RunText(DisplayProjRpt, ReportMode::File);
    std::vector<std::string> lines;
    for (std::size_t at = 0, end; (end = text.find("\r\n", at)) != std::string::npos; at = end + 2)
      lines.push_back(text.substr(at, end - at));
    return lines;
  }
};

TEST_F(ProjRptTest, WindowCellsAndLabels) {
  ExcessYears();
  SetNames(gen, "Ann Sample", "Excess years");
  TextSink sink(ReportMode::View);
  DisplayProjRpt(sink);
  ASSERT_TRUE(sink.HasGrid());
  const GridReport& grid = sink.Grid();
  EXPECT_EQ(grid.caption, "Projection of Distributions Report");
  EXPECT_EQ(grid.heading,
            "Ann Sample\r\nExcess years\r\nProjection of distributions at 0% over Required Minimum Distribution");
  EXPECT_EQ(grid.columnWidths, (std::vector<int>{33, 13, 13}));
  EXPECT_EQ(grid.fixedRows, 2);
  EXPECT_EQ(grid.fixedCols, 1);
  const std::string sep = "----------------------";
  const std::vector<std::vector<std::string>> cells = {
      {"Year:", "2050", "2051"},
      {"Age(Owner):", "75", "76"},
      {"Big IRA", "", ""},
      {"Beg. Balance", "10,000,000.00", "9,563,318.78"},
      {"Annual Income", "0.00", "0.00"},
      {"Distributions", "436,681.22", "434,696.31"},
      {"Ending Balance", "9,563,318.78", "9,128,622.47"},
      {sep, sep, sep},
      {"Total Distributions for Year", "436,681.22", "434,696.31*"},
      {"Excess Distribution Limit", "No Limit", "160,000.00"},
      {"Excess Distribution", "0.00", "274,696.31"},
      {"Excess Dist. Tax Rate", "15.", "15."},
      {"Excess Distribution Tax", "0.00", "41,204.45"},
      {sep, sep, sep},
      {"Combined Ending Balance", "9,563,318.78", "9,128,622.47"},
      {"", "=============", "============="},
  };
  EXPECT_EQ(grid.cells, cells);
  EXPECT_EQ(LabelLines(grid),
            (std::vector<std::string>{
                "Label1: Computations made using 2002 final regulations",
                "lblAADNote: The distributions are net of any Amounts Already Distributed.",
                "lblIncomeCalc: ~ Income not calculated for 2050 ~",
                "lblNoData: ** Calculations can not be made for this account because either the Owner's or a "
                "Beneficiary's age      is not supported by this system's life expectancy tables. Totals do not "
                "include this account. (hidden)",
                "lblXSPenalty: * Possible Penalty for Excess Distributions",
            }));
}

TEST_F(ProjRptTest, YearsPrintInGroupsOfAtMostTen) {
  // Born 7/1/1933; one account that lasts the whole projection.
  for (int years : {3, 23}) {
    SCOPED_TRACE(years);
    TheScenario().Reset();
    Owner(D(7, 1, 1933), 2005, static_cast<std::int16_t>(years));
    AddIra("Main IRA", "100000", 5.0f);
    std::vector<std::string> yearLines;
    for (const std::string& line : FileLines())
      if (line.rfind("                           Year: ", 0) == 0) yearLines.push_back(line);
    ASSERT_EQ(yearLines.size(), static_cast<std::size_t>((years + 9) / 10));
    for (std::size_t g = 0; g < yearLines.size(); ++g) {
      const int first = 2005 + 10 * static_cast<int>(g);
      const int columns = std::min(10, years - 10 * static_cast<int>(g));
      EXPECT_EQ(yearLines[g].size(), 33u + 15u * static_cast<std::size_t>(columns));
      EXPECT_EQ(yearLines[g].substr(33, 15), "          " + std::to_string(first) + " ");
      EXPECT_EQ(yearLines[g].substr(yearLines[g].size() - 5), std::to_string(first + columns - 1) + " ");
    }
  }
}

TEST_F(ProjRptTest, YearsAfterTheLastProjectedOneAreEmpty) {
  // Everything is taken out in the first year: the engine stops there.
  Owner(D(7, 1, 1933), 2005, 4);
  AddIra("Small IRA", "1000", 0.0f).DistributedThisYear = Money::FromString("1000");
  const std::vector<std::string> lines = FileLines();
  ASSERT_GT(lines.size(), 2u);
  EXPECT_EQ(lines[2], "                           Year:           2005 ");
  TextSink sink(ReportMode::View);
  DisplayProjRpt(sink);
  const GridReport& grid = sink.Grid();
  EXPECT_EQ(grid.cells[0], (std::vector<std::string>{"Year:", "2005", "2006", "2007", "2008"}));
  // 1,000 / 25.6 = 39.06, less than the 1,000 already taken: nothing more to distribute.
  EXPECT_EQ(grid.cells[5], (std::vector<std::string>{"Distributions", "0.00", "", "", ""}));
  EXPECT_EQ(grid.cells[6], (std::vector<std::string>{"Ending Balance", "0.00", "", "", ""}));
}

TEST_F(ProjRptTest, PageBreaksRepeatTheColumnHeadingsAboveWholeBlocks) {
  Owner(D(7, 1, 1933), 2005, 2);
  for (int i = 1; i <= 6; ++i) AddIra("IRA " + std::to_string(i), "1000", 0.0f);
  ira::testing::FakePrintDevice device(50);  // footer from line 44
  PrintDocument(DisplayProjRpt, device);
  // Each account is announced as its 6 lines and the 4 heading lines: after the
  // page heading (7) and the income line (2), three accounts reach line 39 and
  // the fourth goes over; the totals (8 + 4) do the same after three more.
  ASSERT_EQ(device.pages.size(), 3u);
  const std::string yearLine = "                           Year:           2005           2006 ";
  EXPECT_EQ(device.pages[0][4], "Projection of distributions at 0% over Required Minimum Distribution");
  EXPECT_EQ(device.pages[0][7], "Income not calculated for 2005");
  EXPECT_EQ(device.pages[0][8], yearLine);
  EXPECT_EQ(device.pages[0][25], "IRA 3");
  EXPECT_EQ(device.pages[0].size(), 30u + 5u + 1u);
  for (std::size_t page : {1u, 2u}) {
    EXPECT_EQ(device.pages[page][6], yearLine);
    EXPECT_EQ(device.pages[page][10], "");
  }
  EXPECT_EQ(device.pages[1][11], "IRA 4");
  EXPECT_EQ(device.pages[2][11].substr(0, 29), "Total Distributions for year ");
  EXPECT_EQ(device.pages[2].back(), "Page 3");
}

}  // namespace
}  // namespace ira::reports
