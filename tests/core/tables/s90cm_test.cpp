#include "core/tables/s90cm.h"

#include <gtest/gtest.h>

#include "support/recording_sinks.h"
#include "table_test_support.h"

namespace ira {
namespace {

using testing::RecordingScope;

CTableS90CM Query(std::int16_t age, float rate) {
  SetProgramFolder(TALLYRA_PROGRAM_DIR);
  CTableS90CM t;
  t.Age(age);
  t.InterestRate(rate);
  return t;
}

// Expected factors worked out by hand from Table S: the remainder factor
// (interpolated where the rate is not tabulated) rounded half to even at the
// fifth decimal, then (1 - it) / (rate / 100), rounded the same way.
TEST(CTableS90CM, FactorsAsWorkedOutByHand) {
  struct Row {
    const char* name;
    std::int16_t age;
    float rate;
    double remainder;
    double annuity;
  } rows[] = {
      {"tabulated rate: 0.58291 / 0.06", 65, 6.0f, 0.41709, 9.71517},
      {"first row", 65, 4.2f, 0.52512, 11.30667},
      {"last row", 65, 14.0f, 0.19358, 5.76014},
      {"halfway from 0.41709 to 0.40718 is 0.412135: to the even 0.41214", 65, 6.1f, 0.41214, 9.63705},
      {"three quarters of the way", 65, 6.15f, 0.40966, 9.59902},
      {"below the first row: extrapolated from rows 0 and 1", 65, 4.1f, 0.53208, 11.41268},
      {"annuity tie 8.517875 goes up to the even 8.51788", 64, 8.0f, 0.31857, 8.51788},
      {"annuity tie 9.721625 goes down to the even 9.72162", 56, 8.0f, 0.22227, 9.72162},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    RecordingScope scope;
    CTableS90CM t = Query(r.age, r.rate);
    EXPECT_EQ(t.AnnuityFactor(), r.annuity);
    EXPECT_EQ(t.RemainderFactor(), r.remainder);
    EXPECT_EQ(t.OneMinusRemainder(), 1 - r.remainder);
    EXPECT_EQ(scope.messages.messages.size(), r.rate < 4.2f ? 3u : 0u);  // a warning per query
    EXPECT_TRUE(scope.errors.errors.empty());
  }
}

TEST(CTableS90CM, InterpolationKeepsItsIntermediates) {
  CTableS90CM t = Query(65, 6.1f);
  t.RemainderFactor();
  EXPECT_EQ(t.LowerRate(), 6.0f);
  EXPECT_EQ(t.UpperRate(), 6.2f);
  EXPECT_EQ(t.LowerFactor(), 0.41709);
  EXPECT_EQ(t.UpperFactor(), 0.40718);
  EXPECT_DOUBLE_EQ(t.FactorDifference(), -0.00991);
  EXPECT_EQ(t.RateSpan(), 0.2f);
  EXPECT_EQ(t.RateOffset(), 0.1f);
  EXPECT_DOUBLE_EQ(t.FactorAdjustment(), -0.004955);
}

TEST(CTableS90CM, InputsOutsideTheTableWarnButGoOn) {
  const std::string rateWarning =
      "The interest rate is 15. The program needs interest rates between 4.2% and 14%.";
  {
    SCOPED_TRACE("rate above the last row: warned, then the row search runs off the grid");
    RecordingScope scope;
    CTableS90CM t = Query(65, 15.0f);
    EXPECT_EQ(t.RemainderFactor(), 0.0);
    ASSERT_EQ(scope.messages.messages.size(), 1u);
    EXPECT_EQ(scope.messages.Last().title, "WARNING");
    EXPECT_EQ(scope.messages.Last().text, rateWarning);
    EXPECT_EQ(scope.messages.Last().icon, MsgIcon::Critical);
    ASSERT_EQ(scope.errors.errors.size(), 1u);
    EXPECT_EQ(scope.errors.errors[0].number, 9);
    EXPECT_EQ(scope.errors.errors[0].text, "Subscript out of range");
    EXPECT_EQ(scope.errors.errors[0].where, "Interpolate()");
  }
  {
    SCOPED_TRACE("age 0: warned about, yet its column is used");
    RecordingScope scope;
    CTableS90CM t = Query(0, 6.0f);
    EXPECT_EQ(t.RemainderFactor(), 0.03233);
    ASSERT_EQ(scope.messages.messages.size(), 1u);
    EXPECT_EQ(scope.messages.Last().text, "The age is 0. The program can use ages between 1 and 109.");
  }
  {
    SCOPED_TRACE("age past the last column");
    RecordingScope scope;
    CTableS90CM t = Query(110, 6.0f);
    EXPECT_EQ(t.RemainderFactor(), 0.0);
    EXPECT_EQ(scope.messages.messages.size(), 1u);
    ASSERT_EQ(scope.errors.errors.size(), 1u);
    EXPECT_EQ(scope.errors.errors[0].number, 9);
    EXPECT_EQ(scope.errors.errors[0].where, "RemainderFactor()");
  }
}

TEST(CTableS90CM, TableFileIsReadAnewOnEveryQuery) {
  RecordingScope scope;
  testing::TempProgramFolder folder({});
  CTableS90CM t;
  t.Age(65);
  t.InterestRate(6.0f);
  t.RemainderFactor();
  t.RemainderFactor();
  const std::string missing = folder.Path("s-90cm.tbl") +
                              " could not be located. This is a critical file for this application. Try "
                              "reinstalling the program before running the program again.";
  ASSERT_EQ(scope.messages.messages.size(), 2u);
  for (const Message& m : scope.messages.messages) {
    EXPECT_EQ(m.title, "WARNING");
    EXPECT_EQ(m.text, missing);
    EXPECT_EQ(m.icon, MsgIcon::Critical);
  }

  // Once the file is there, the next query finds it; a short file gives what it holds.
  std::filesystem::copy_file(std::string(TALLYRA_PROGRAM_DIR) + "/s-90cm.tbl", folder.Path("s-90cm.tbl"));
  EXPECT_EQ(t.RemainderFactor(), 0.41709);
  folder.Truncate("s-90cm.tbl", (66 * 50 + 9) * 8 + 4);  // age 65 only up to the 5.8 row
  scope.messages.messages.clear();
  scope.errors.errors.clear();
  EXPECT_EQ(t.RemainderFactor(), 0.0);
  EXPECT_TRUE(scope.messages.messages.empty());
  EXPECT_TRUE(scope.errors.errors.empty());
}

}  // namespace
}  // namespace ira
