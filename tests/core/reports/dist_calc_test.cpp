#include "core/reports/dist_calc.h"

#include <gtest/gtest.h>

#include "core/base/checked.h"
#include "grid_test_util.h"
#include "report_test_util.h"

namespace ira::reports {
namespace {

using namespace ira::reports::test;

class DispCalcResultsTest : public GridReportTest {
 protected:
  GeneralInputs& gen = TheScenario().Gen;
};

TEST_F(DispCalcResultsTest, OnlyTheWindowHasTheHeading) {
  SetNames(gen, "  Pat Young", "Series review");
  gen.OwnerBirthDate = D(6, 30, 1950);
  gen.DCY = 2005;
  gen.DistType = 0;
  gen.EarlyMethod = kMethodAmortization;
  gen.IntRate = 5.5f;
  AddIra("Series IRA", "100000");
  const std::string heading = CrLfText({"  ", "  Pat Young", "  Series review", "  Distribution Calculations", "  "});
  const std::string body = RunText(DispCalcResults, ReportMode::File);
  std::string caption;
  EXPECT_EQ(RunText(DispCalcResults, ReportMode::View, &caption), heading + body);
  EXPECT_EQ(caption, "Distribution Calculations");
  EXPECT_TRUE(body.starts_with("  The distributions are for a series of substantially equal\r\n")) << body;
}

TEST_F(DispCalcResultsTest, PrintedSectionsAreNotSplitAcrossPages) {
  gen.OwnerBirthDate = D(1, 1, 1930);
  gen.DCY = 2001;
  gen.DistType = kTrue;
  AddIra("Old IRA", "50000");
  ira::testing::FakePrintDevice device(45);  // footer after line 39
  PrintDocument([](ReportSink& sink) { DispCalcResults(sink); }, device);
  // The 1987 section (25 lines with the account's name) fills page 1; the
  // 2001 section (22 lines) would pass line 39 and opens page 2.
  ASSERT_EQ(device.pages.size(), 2u);
  EXPECT_EQ(device.pages[0][7], "  IRA: Old IRA");
  EXPECT_EQ(device.pages[0][6 + 24], "  " + std::string(54, ' ') + "==============");
  EXPECT_EQ(device.pages[0].size(), 39u);
  EXPECT_EQ(device.pages[0].back(), "Page 1");
  EXPECT_EQ(device.pages[1][6], "  **********************************************");
  EXPECT_EQ(device.pages[1][4], "Distribution Calculations");
}

}  // namespace
}  // namespace ira::reports
