#include "dialogs/rules/projopts.h"

#include <gtest/gtest.h>

#include "core/base/checked.h"
#include "support/recording_sinks.h"

using namespace ira;
using namespace ira::projopts;

namespace {

constexpr const char* kCheck = "Please check the amount you entered. It may be incorrect.";
constexpr const char* kBadYears = "The value entered for 'Number of Years to Project' is invalid.  Please enter again.";
constexpr const char* kBadPercent =
    "The value entered for 'Percentage over Required Minimum Distribution' is invalid.  Please enter again.";

TEST(ProjOptions, OpeningPreparesTheFields) {
  GeneralInputs gen;
  gen.DCY = 2051;
  gen.Kept180 = {1, 2, 3, 4};
  gen.PercentOver = 12.5f;
  ProjEntries e = PrepareProjOptions(gen);
  EXPECT_EQ(gen.Kept180, (std::array<std::uint8_t, 4>{}));
  EXPECT_EQ(e.years, "5");
  EXPECT_FALSE(e.overMinEnabled);  // early type: no percentage over a minimum
  EXPECT_EQ(e.overMin, "");
  EXPECT_EQ(e.income, kIncomeNo);

  gen.DCY = 2050;
  gen.Kept180 = {1, 2, 3, 4};
  gen.DistType = kTrue;
  gen.IncomeCalc = kTrue;
  gen.ProjectionYears = 12;
  e = PrepareProjOptions(gen);
  EXPECT_EQ(gen.Kept180[0], 1);
  EXPECT_EQ(e.years, "12");
  EXPECT_EQ(e.overMin, "12.5");
  EXPECT_EQ(e.income, kIncomeYes);
}

TEST(ProjOptions, OkChecksThenStores) {
  struct Row {
    const char* name;
    std::int16_t distType;
    const char* years;
    const char* overMin;
    bool accepted;
    std::int16_t storedYears;
    float storedPercent;
    std::vector<std::string> messages;
    const char* yearsAfter;
  };
  const std::vector<Row> rows = {
      {"zero years store 5", kTrue, "0", "10", true, 5, 10.0f, {}, "0"},
      {"150 years: notice, then stored", kTrue, "150", "0", true, 150, 0.0f, {kCheck}, "150"},
      {"negative years become 0, then 5", kTrue, "-3", "0", true, 5, 0.0f, {}, "0"},
      {"half years go to the even neighbour", kTrue, "6.5", "0", true, 6, 0.0f, {}, "6.5"},
      {"non-numeric years keep the dialog open", kTrue, "ten", "0", false, 0, 0.0f, {kBadYears}, "ten"},
      {"years beyond 16 bits are refused", kTrue, "40000", "0", false, 0, 0.0f, {kBadYears}, "40000"},
      {"percentage over 100: notice, then stored", kTrue, "5", "150", true, 5, 150.0f, {kCheck}, "5"},
      {"non-numeric percentage keeps the dialog open", kTrue, "5", "lots", false, 0, 0.0f, {kBadPercent}, "5"},
      {"early type: percentage not checked, stored by value", 0, "5", "12abc", true, 5, 12.0f, {}, "5"},
      {"early type: empty percentage stores 0", 0, "5", "", true, 5, 0.0f, {}, "5"},
  };
  for (const Row& row : rows) {
    ira::testing::RecordingScope rec;
    GeneralInputs gen;
    gen.DistType = row.distType;
    ProjEntries e;
    e.years = row.years;
    e.overMin = row.overMin;
    e.income = kIncomeYes;
    EXPECT_EQ(ApplyProjOptions(e, gen), row.accepted) << row.name;
    EXPECT_EQ(gen.ProjectionYears, row.storedYears) << row.name;
    EXPECT_EQ(gen.PercentOver, row.storedPercent) << row.name;
    EXPECT_EQ(gen.IncomeCalc, row.accepted ? kTrue : kFalse) << row.name;
    EXPECT_EQ(e.years, row.yearsAfter) << row.name;
    ASSERT_EQ(rec.messages.messages.size(), row.messages.size()) << row.name;
    for (std::size_t i = 0; i < row.messages.size(); ++i) {
      EXPECT_EQ(rec.messages.messages[i].text, row.messages[i]) << row.name;
    }
  }
}

TEST(ProjOptions, ReductionIsCheckedButNeverStored) {
  ira::testing::RecordingScope rec;
  std::string text = "-5";
  ReductionCheck(text);
  EXPECT_EQ(text, "0");
  EXPECT_EQ(rec.messages.Last().title, "Check Data");
  EXPECT_EQ(rec.messages.Last().text,
            "Please check the amount you entered for 'Percent Balance Reduction 1997-1999'. It may be incorrect.");
  text = "101";
  ReductionCheck(text);
  EXPECT_EQ(text, "101");
  text = "x";
  ReductionCheck(text);
  EXPECT_EQ(rec.messages.Last().text,
            "The value entered for 'Percent Balance Reduction 1997-1999' is invalid.  Please enter again.");
  EXPECT_EQ(rec.messages.messages.size(), 3u);
}

}  // namespace
