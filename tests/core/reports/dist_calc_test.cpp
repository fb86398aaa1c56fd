#include "core/reports/dist_calc.h"

#include <gtest/gtest.h>

#include "core/base/checked.h"
#include "report_test_util.h"

namespace ira::reports {
namespace {

using namespace ira::reports::test;

using DispCalcResultsTest = ReportTest;

TEST_F(DispCalcResultsTest, PrintedSectionsAreNotSplitAcrossPages) {
  gen.OwnerBirthDate = D(1, 1, 1930);
  gen.DCY = 2001;
  gen.DistType = kTrue;
  AddIra("Old IRA", "50000");
  ira::testing::FakePrintDevice device(45);  // footer after line 39
  PrintDocument(DispCalcResults, device);
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
