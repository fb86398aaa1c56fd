#include "core/tables/s90cm.h"

#include <gtest/gtest.h>

#include "core/tables/table_check.h"

#include "support/recording_sinks.h"
#include "table_test_support.h"

namespace ira {
namespace {

using testing::RecordingScope;

CTableS90CM Query(std::int16_t age, float rate) {
  CTableS90CM t;
  t.Age(age);
  t.InterestRate(rate);
  return t;
}

// Worked out by hand from Table S: the remainder factor (interpolated between
// the rows around the rate) rounded half to even at the fifth decimal, then
// (1 - it) / (rate / 100) rounded the same way.
TEST(CTableS90CM, FactorsAsWorkedOutByHand) {
  SetProgramFolder(TALLYRA_PROGRAM_DIR);
  struct Row {
    const char* name;
    std::int16_t age;
    float rate;
    double remainder, annuity;
  } rows[] = {
      {"tabulated rate: 0.58291 / 0.06", 65, 6.0f, 0.41709, 9.71517},
      {"first row", 65, 4.2f, 0.52512, 11.30667},
      {"last row", 65, 14.0f, 0.19358, 5.76014},
      {"halfway from 0.41709 to 0.40718 is 0.412135: to the even 0.41214", 65, 6.1f, 0.41214, 9.63705},
      {"three quarters of the way", 65, 6.15f, 0.40966, 9.59902},
      {"below the first row: extrapolated from rows 0 and 1 (warned)", 65, 4.1f, 0.53208, 11.41268},
      {"annuity tie 8.517875 goes up to the even 8.51788", 64, 8.0f, 0.31857, 8.51788},
      {"annuity tie 9.721625 goes down to the even 9.72162", 56, 8.0f, 0.22227, 9.72162},
  };
  for (const Row& r : rows) {
    RecordingScope scope;
    CTableS90CM t = Query(r.age, r.rate);
    EXPECT_EQ(t.AnnuityFactor(), r.annuity) << r.name;
    EXPECT_EQ(t.RemainderFactor(), r.remainder) << r.name;
    EXPECT_EQ(scope.messages.messages.size(), r.rate < 4.2f ? 2u : 0u) << r.name;  // a warning per query
    EXPECT_TRUE(scope.errors.errors.empty()) << r.name;
  }
}

TEST(CTableS90CM, InputsOutsideTheTableWarnAndFailuresAreTrapped) {
  SetProgramFolder(TALLYRA_PROGRAM_DIR);
  struct Row {
    const char* name;
    std::int16_t age;
    float rate;
    double remainder;
    const char* warning;
    const char* errorWhere;  // nullptr: no error
  } rows[] = {
      {"rate past the last row: the row search runs off the grid", 65, 15.0f, 0.0,
       "The interest rate is 15. The program needs interest rates between 4.2% and 14%.", "Interpolate()"},
      {"age 0 is warned about, yet its column is used", 0, 6.0f, 0.03233,
       "The age is 0. The program can use ages between 1 and 109.", nullptr},
      {"age past the last column", 110, 6.0f, 0.0, "The age is 110. The program can use ages between 1 and 109.",
       "RemainderFactor()"},
  };
  for (const Row& r : rows) {
    RecordingScope scope;
    EXPECT_EQ(Query(r.age, r.rate).RemainderFactor(), r.remainder) << r.name;
    ASSERT_EQ(scope.messages.messages.size(), 1u) << r.name;
    EXPECT_EQ(scope.messages.Last().title, "WARNING");
    EXPECT_EQ(scope.messages.Last().text, r.warning);
    EXPECT_EQ(scope.messages.Last().icon, MsgIcon::Critical);
    ASSERT_EQ(scope.errors.errors.size(), r.errorWhere ? 1u : 0u) << r.name;
    if (!r.errorWhere) continue;
    EXPECT_EQ(scope.errors.errors[0].number, 9);
    EXPECT_EQ(scope.errors.errors[0].text, "Subscript out of range");
    EXPECT_EQ(scope.errors.errors[0].where, r.errorWhere);
  }
}

TEST(CTableS90CM, TableFileIsReadAnewOnEveryQuery) {
  RecordingScope scope;
  testing::TempProgramFolder folder({});
  CTableS90CM t = Query(65, 6.0f);
  t.RemainderFactor();
  t.RemainderFactor();
  // The warning each time the file is looked for; the damaged message once.
  ASSERT_EQ(scope.messages.messages.size(), 3u);
  EXPECT_EQ(scope.messages.messages[1].title, "Damaged Table");
  EXPECT_EQ(scope.messages.Last().title, "WARNING");
  EXPECT_EQ(scope.messages.Last().text, folder.File("s-90cm.tbl") +
                                            " could not be located. This is a critical file for this application. "
                                            "Try reinstalling the program before running the program again.");

  std::filesystem::copy_file(std::string(TALLYRA_PROGRAM_DIR) + "/s-90cm.tbl", folder.File("s-90cm.tbl"));
  EXPECT_EQ(t.RemainderFactor(), 0.41709);
  folder.Truncate("s-90cm.tbl", (66 * 50 + 9) * 8 + 4);  // age 65 only up to the 5.8 row
  scope.errors.errors.clear();
  const tables::UnusableReads reads;
  EXPECT_EQ(t.RemainderFactor(), 0.0);
  EXPECT_TRUE(reads.Any());
  EXPECT_EQ(scope.messages.messages.size(), 3u);  // the file was named already
  EXPECT_TRUE(scope.errors.errors.empty());
}

}  // namespace
}  // namespace ira
