#include "core/reports/gen_info.h"

#include <gtest/gtest.h>

#include "core/base/checked.h"
#include "core/reports/prnmastr.h"
#include "report_test_util.h"
#include "support/fake_print_device.h"
#include "support/recording_sinks.h"

namespace ira::reports {
namespace {

using namespace ira::reports::test;

const std::vector<std::string> kTerms = {
    "  DISTRIBUTION CALENDAR YEAR: A Distribution Calendar Year is a ",
    "  calendar year for which an IRA distribution is required. For further ",
    "  information refer to Treas. Reg. Section 1.401(a)(9)-5 A-1(b).",
    "",
    "  BENEFIT: The Benefit is the IRA account balance on December 31st of ",
    "  the year prior to the Distribution Calendar Year. If this is the second ",
    "  Distribution Calendar Year, the account balance may be reduced by a ",
    "  minimum distribution made IN the second Distribution Calendar Year ",
    "  FOR the first Distribution Calendar Year. If you have provided that ",
    "  information to this program, the calculation will be done for you. ",
    "  Please refer to Treas. Reg. Section 1.401(a)(9)-5(A-3).",
    "",
};
const std::vector<std::string> kRbdTerm = {
    "  REQUIRED BEGINNING DATE: The Required Beginning Date is April 1st ",
    "  of the year after the IRA owner turns 70 and 1/2. For  further ",
    "  information refer to Treas. Reg. Section 1.401(a)(9)-2(A-2).",
    "",
};

std::vector<std::string> operator+(std::vector<std::string> a, const std::vector<std::string>& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

class ReportTest : public ::testing::Test {
 protected:
  void SetUp() override { TheScenario().Reset(); }
  void TearDown() override { TheScenario().Reset(); }
  GeneralInputs& gen = TheScenario().Gen;
  ira::testing::RecordingScope rec;
};

// A living owner past 70 1/2 with his wife as beneficiary.
void LivingCouple(GeneralInputs& gen) {
  SetNames(gen, "John Q. Sample", "Prepared for the 2005 review");
  gen.OwnerBirthDate = D(3, 15, 1932);
  gen.SpouseBen = kTrue;
  gen.SpouseBirthDate = D(7, 4, 1935);
  gen.DCY = 2005;
  gen.DistType = kTrue;
}

using GenInfoTest = ReportTest;

TEST_F(GenInfoTest, LivingOwnerAfterTheFirstYear) {
  LivingCouple(gen);
  const std::vector<std::string> expected = std::vector<std::string>{
      "  IRA Owner's date of birth: 3/15/1932",
      "  Date IRA Owner turns 70 and 1/2: 09/15/2002",
      "  IRA Owner's Required Beginning Date: 04/01/2003",
      "  First distribution calendar year: 2002",
      "  Current distribution calendar year: 2005",
      "  Owner's age in current Distribution calendar year: 73",
      "  Spouse's age in current distribution calendar year: 70",
      "",
      "",
      "  Distribution must be made by 12/31/2005",
      "",
      "",
      "  TERMINOLOGY:",
      "",
  } + kRbdTerm + kTerms;
  EXPECT_EQ(RunText(DisplayGenInfo, ReportMode::File), CrLfText(expected));
  EXPECT_TRUE(rec.messages.messages.empty());
}

TEST_F(GenInfoTest, FirstYearDeadlineIsTheRequiredBeginningDate) {
  SetNames(gen, "Ann Early", "");
  gen.OwnerBirthDate = D(1, 1, 1931);  // 70 1/2 on 7/1/2001
  gen.DCY = 2001;
  gen.DistType = kTrue;
  const std::vector<std::string> expected = std::vector<std::string>{
      "  IRA Owner's date of birth: 1/1/1931",
      "  Date IRA Owner turns 70 and 1/2: 07/01/2001",
      "  IRA Owner's Required Beginning Date: 04/01/2002",
      "  First distribution calendar year: 2001",
      "  Current distribution calendar year: 2001",
      "  Owner's age in current Distribution calendar year: 70",
      "",
      "",
      "  Distribution must be made by 4/1/2002",
      "",
      "",
      "  TERMINOLOGY:",
      "",
  } + kRbdTerm + kTerms;
  EXPECT_EQ(RunText(DisplayGenInfo, ReportMode::File), CrLfText(expected));
}

TEST_F(GenInfoTest, EarlyOwnerOnScreenHasHeadingButNoKeyDates) {
  SetNames(gen, "  Pat Young", "Series review");
  gen.OwnerBirthDate = D(6, 30, 1950);
  gen.DCY = 2005;
  gen.DistType = 0;
  const std::vector<std::string> expected = std::vector<std::string>{
      "  Pat Young",
      "  Series review",
      "  General Information",
      "",
      "",
      "  IRA Owner's date of birth: 6/30/1950",
      "  Current distribution calendar year: 2005",
      "  Owner's age in current Distribution calendar year: 55",
      "",
      "",
      "  Distribution must be made by 12/31/2005",
      "",
      "",
      "  TERMINOLOGY:",
      "",
  } + kTerms;
  std::string caption;
  EXPECT_EQ(RunText(DisplayGenInfo, ReportMode::View, &caption), CrLfText(expected));
  EXPECT_EQ(caption, "Owner/IRA Information");
}

TEST_F(GenInfoTest, DeceasedOwnerWithAndWithoutSpouseBeneficiary) {
  SetNames(gen, "Estate of Carl Late", "");
  gen.OwnerBirthDate = D(1, 1, 1930);
  gen.OwnerDeathDate = D(5, 10, 2003);
  gen.DCY = 2005;
  gen.DistType = kTrue;
  const std::vector<std::string> head = {
      "  IRA Owner's date of birth: 1/1/1930",
      "  Date IRA Owner turns 70 and 1/2: 07/01/2000",
      "  IRA Owner's Required Beginning Date: 04/01/2001",
      "  First distribution calendar year: 2000",
      "  Date of Death: 5/10/2003",
      "  Current distribution calendar year: 2005",
      "  Owner's age in current Distribution calendar year: 75",
  };
  const std::vector<std::string> mustBeMade = {"", "", "  A DISTRIBUTION MUST BE MADE BY:", ""};
  const std::vector<std::string> nonSpouse = {
      "  For 2005, if there is a nonspouse beneficiary, distributions ",
      "  must be made by: 12/31/2005",
      "",
      "",
      "  TERMINOLOGY:",
      "",
  };
  EXPECT_EQ(RunText(DisplayGenInfo, ReportMode::File), CrLfText(head + mustBeMade + nonSpouse + kRbdTerm + kTerms));

  gen.SpouseBen = kTrue;
  gen.SpouseBirthDate = D(2, 29, 1932);
  const std::vector<std::string> spouse = {
      "  A surviving spouse, sole beneficiary, may roll over an IRA into",
      "  the surviving spouse's account. In that case, use the spouse's",
      "  Required Beginning Date.",
      "",
      "  Otherwise, if the spouse is the sole beneficiary,",
      "  distributions begin the later of the year when the IRA",
      "  owner would have been 70.5 or the year after the",
      "  IRA owner died.",
      "",
  };
  EXPECT_EQ(RunText(DisplayGenInfo, ReportMode::File),
            CrLfText(head + std::vector<std::string>{"  Spouse's age in current distribution calendar year: 73"} +
                     mustBeMade + spouse + nonSpouse + kRbdTerm + kTerms));
}

TEST_F(GenInfoTest, PrintedBlocksKeepTheirLineCounts) {
  LivingCouple(gen);
  ira::testing::FakePrintDevice device(30);  // footer after line 24
  PrnManager2(device, kPrnReset, "", "", "");
  PrintSink sink(device);
  DisplayGenInfo(sink);
  PrnManager2(device, kPrnEndDocument, "", "", "");
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
  EXPECT_EQ(std::vector<std::string>(second.begin() + 6, second.begin() + 22), kRbdTerm + kTerms);
  EXPECT_EQ(second.back(), "Page 2");
}

using InputsTest = ReportTest;

TEST_F(InputsTest, RequiredScenarioWithTwoAccountsAndProjection) {
  LivingCouple(gen);
  gen.ProjectionYears = 10;
  IraRecord& a = TheScenario().AddIra();
  a.IraName = FixedText("Rollover IRA", kIraNameWidth);
  a.SpouseBen = kTrue;
  a.Benefit = Money::FromString("250000");
  a.DistributedThisYear = Money::FromString("1500");
  a.RateOfReturn = 6.0f;
  IraRecord& b = TheScenario().AddIra();
  b.IraName = FixedText("Brokerage IRA", kIraNameWidth);
  b.OtherBen = kTrue;
  b.BeneficiaryName = FixedText("Mary Sample", kBeneficiaryNameWidth);
  b.BeneBirthDate = D(2, 28, 1960);
  b.Benefit = Money::FromString("1234567.5");
  b.FirstYearDist = Money::FromString("8000.125");
  b.RateOfReturn = 5.25f;
  const std::vector<std::string> expected = {
      "  IRA Owner: John Q. Sample",
      "  Other Info.: Prepared for the 2005 review",
      "  IRA Owner's Birthday: 3/15/1932",
      "  IRA Owner's Date of Death: N.A.",
      "  Spouse is a beneficiary on some/all accounts.",
      "  Spouse's Birthday: 7/4/1935",
      "  Distribution Calendar Year: 2005",
      "  Type of Distribution: POST 70 and 1/2",
      "",
      "  IRA: Rollover IRA",
      "  Spouse is a beneficiary on this IRA.",
      "  There is not a Non-Spouse Beneficiary for this IRA.",
      "  Benefit (before adjustments): $250,000.00",
      "  Amount already distributed this year: $1,500.00",
      "  1st Year Distributions (1/1-4/1/2003): $0.00",
      "  Rate Of Return: 6.%",
      "",
      "  IRA: Brokerage IRA",
      "  Spouse is not a beneficiary on this IRA.",
      "  There is a Non-Spouse beneficiary on this IRA.",
      "  Non-Spouse Beneficiary: Mary Sample",
      "  Non-Spouse Beneficiary's Birthday: 2/28/1960",
      "  Benefit (before adjustments): $1,234,567.50",
      "  Amount already distributed this year: $0.00",
      "  1st Year Distributions (1/1-4/1/2003): $8,000.13",
      "  Rate Of Return: 5.25%",
  };
  EXPECT_EQ(RunText(DisplayInputs, ReportMode::File), CrLfText(expected));
}

TEST_F(InputsTest, EarlyScenarioShowsMethodAndTablesButNoProjectionRate) {
  SetNames(gen, "Pat Young", "");
  gen.OwnerBirthDate = D(6, 30, 1950);
  gen.OwnerDeathDate = kNoDate;
  gen.DCY = 2005;
  gen.DistType = 0;
  gen.EarlyMethod = kMethodAmortization;
  gen.IntRate = 5.5f;
  IraRecord& a = TheScenario().AddIra();
  a.IraName = FixedText("Series IRA", kIraNameWidth);
  a.chkUse2002Table = kTrue;
  a.Benefit = Money::FromString("100000");
  a.RateOfReturn = 7.0f;
  const std::vector<std::string> expected = {
      "  Pat Young",
      "  ",
      "  Inputs",
      "",
      "",
      "  IRA Owner: Pat Young",
      "  Other Info.: ",
      "  IRA Owner's Birthday: 6/30/1950",
      "  IRA Owner's Date of Death: N.A.",
      "  Spouse is not a beneficiary on any account.",
      "  Distribution Calendar Year: 2005",
      "  Type of Distribution: PRE 59 and 1/2",
      "  Method to determine distributions: Amortization",
      "  Interest Rate: 5.5%",
      "",
      "  IRA: Series IRA",
      "  Spouse is not a beneficiary on this IRA.",
      "  There is not a Non-Spouse Beneficiary for this IRA.",
      "  Use 2002 Life Expectancy Tables",
      "  Benefit (before adjustments): $100,000.00",
      "  Amount already distributed this year: $0.00",
      "  1st Year Distributions (1/1-4/1/2021): N/A",
      "  Rate Of Return: N/A",
  };
  std::string caption;
  EXPECT_EQ(RunText(DisplayInputs, ReportMode::View, &caption), CrLfText(expected));
  EXPECT_EQ(caption, "Input Report");
}

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
