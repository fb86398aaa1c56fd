#include "core/reports/gen_info.h"

#include <gtest/gtest.h>

#include "core/base/checked.h"
#include "core/reports/dist_calc.h"
#include "report_test_util.h"

namespace ira::reports {
namespace {

using namespace ira::reports::test;

// A living owner past 70 1/2 with his wife as beneficiary.
void LivingCouple(GeneralInputs& gen) {
  SetNames(gen, "John Q. Sample", "Prepared for the 2005 review");
  gen.OwnerBirthDate = D(3, 15, 1932);
  gen.SpouseBen = kTrue;
  gen.SpouseBirthDate = D(7, 4, 1935);
  gen.DCY = 2005;
  gen.DistType = kTrue;
}

// The text reports' lines themselves are compared whole by the batch runs;
// the window alone gets the heading and the caption.
TEST_F(ReportTest, OnlyTheWindowHasTheHeading) {
  SetNames(gen, "  Pat Young", "Series review");
  gen.OwnerBirthDate = D(6, 30, 1950);
  gen.DCY = 2005;
  gen.EarlyMethod = kMethodAmortization;
  AddIra("Series IRA", "100000");
  struct Row {
    void (*routine)(ReportSink&);
    const char* caption;
    std::vector<std::string> heading;
  } const rows[] = {
      {DisplayInputs, "Input Report", {"  Pat Young", "  Series review", "  Inputs", "", ""}},
      {DisplayGenInfo, "Owner/IRA Information", {"  Pat Young", "  Series review", "  General Information", "", ""}},
      {DispCalcResults, "Distribution Calculations",
       {"  ", "  Pat Young", "  Series review", "  Distribution Calculations", "  "}},
  };
  for (const Row& r : rows) {
    std::string heading, caption;
    for (const std::string& line : r.heading) heading += line + "\r\n";
    EXPECT_EQ(RunText(r.routine, ReportMode::View, &caption), heading + RunText(r.routine, ReportMode::File));
    EXPECT_EQ(caption, r.caption);
  }
}

using GenInfoTest = ReportTest;

TEST_F(GenInfoTest, PrintedBlocksKeepTheirLineCounts) {
  LivingCouple(gen);
  ira::testing::FakePrintDevice device(30);  // footer after line 24
  PrintDocument(DisplayGenInfo, device);
  ASSERT_EQ(device.pages.size(), 2u);
  const std::vector<std::string>& first = device.pages[0];
  // The page heading carries the stored fields; the screen heading is absent.
  EXPECT_EQ(first[2], FixedText("John Q. Sample", 51));
  EXPECT_EQ(first[4], "Owner/IRA Information");
  EXPECT_EQ(first[6], "  IRA Owner's date of birth: 3/15/1932");
  // Counted 7 + 1 + 3 + 2 + 1 + 2 + 1 + 2 + 2 = 21: the 4-line block of the
  // Required Beginning Date would reach line 24, so it opens page 2.
  EXPECT_EQ(first[18], "  TERMINOLOGY:");
  EXPECT_EQ(first.size(), 24u);
  EXPECT_EQ(first.back(), "Page 1");
  // 7 + 4 + 12 = 23 still fits on page 2, which the document's end numbers.
  const std::vector<std::string>& second = device.pages[1];
  EXPECT_EQ(second[6], "  REQUIRED BEGINNING DATE: The Required Beginning Date is April 1st ");
  EXPECT_EQ(second[21], "");  // the last line of the terms
  EXPECT_EQ(second.size(), 6u + 16u + (24u - 23u) + 1u);
  EXPECT_EQ(second.back(), "Page 2");
}

using InputsTest = ReportTest;

TEST_F(InputsTest, TypeOfDistributionFollowsTheKeyYears) {
  gen.OwnerBirthDate = D(1, 1, 1940);  // 59 1/2 in 1999, 70 1/2 in 2010
  gen.DistType = kTrue;
  struct Row {
    std::int16_t dcy;
    const char* words;
  } const rows[] = {
      {1998, "PRE 59 and 1/2"},
      {1999, "59 and 1/2 TO 70 and 1/2"},
      {2009, "59 and 1/2 TO 70 and 1/2"},
      {2010, "POST 70 and 1/2"},
  };
  for (const Row& r : rows) {
    gen.DCY = r.dcy;
    const std::string text = RunText(DisplayInputs, ReportMode::File);
    EXPECT_NE(text.find(std::string("  Type of Distribution: ") + r.words + "\r\n"), std::string::npos) << r.dcy;
  }
}

}  // namespace
}  // namespace ira::reports
