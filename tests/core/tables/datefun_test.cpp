#include <gtest/gtest.h>

#include "core/tables/datefun.h"
#include "support/recording_sinks.h"

namespace ira::datefun {
namespace {

using testing::RecordingScope;

Date D(int y, int m, int d) { return MakeDate(y, m, d); }

TEST(KeyDates, FollowTheBirthdayWithMonthEndFallback) {
  struct Row {
    const char* name;
    Date birth, half59, half70;
    std::int16_t firstDcy;
    Date rbd;
  } rows[] = {
      {"new year", D(1930, 1, 1), D(1989, 7, 1), D(2000, 7, 1), 2000, D(2001, 4, 1)},
      {"30 June stays in the year", D(1930, 6, 30), D(1989, 12, 30), D(2000, 12, 30), 2000, D(2001, 4, 1)},
      {"1 July moves to the next", D(1930, 7, 1), D(1990, 1, 1), D(2001, 1, 1), 2001, D(2002, 4, 1)},
      {"31 August falls back", D(1931, 8, 31), D(1991, 2, 28), D(2002, 2, 28), 2002, D(2003, 4, 1)},
      {"leap day, years added first", D(1932, 2, 29), D(1991, 8, 28), D(2002, 8, 28), 2002, D(2003, 4, 1)},
      {"31 December", D(1950, 12, 31), D(2010, 6, 30), D(2021, 6, 30), 2021, D(2022, 4, 1)},
  };
  for (const Row& r : rows) {
    EXPECT_EQ(Date59Half(r.birth), r.half59) << r.name;
    EXPECT_EQ(Date70Half(r.birth), r.half70) << r.name;
    EXPECT_EQ(FirstDCY(r.birth), r.firstDcy) << r.name;
    EXPECT_EQ(RequiredBeginningDate(r.birth), r.rbd) << r.name;
  }
  EXPECT_EQ(AgeInYear(D(1950, 12, 31), 2000), 50);  // the day of birth plays no part
  EXPECT_EQ(AgeInYear(D(1950, 1, 1), 2000), 50);
}

TEST(CalcDCY, CountsFromTheFirstAndCorrectsBadNumbers) {
  RecordingScope rec;
  std::int16_t n = 3;
  EXPECT_EQ(CalcDCY(D(1930, 1, 1), n), 2002);
  EXPECT_TRUE(rec.messages.messages.empty());
  for (std::int16_t bad : {0, -5}) {
    n = bad;
    EXPECT_EQ(CalcDCY(D(1930, 1, 1), n), 2000);
    EXPECT_EQ(n, 1);
  }
  ASSERT_EQ(rec.messages.messages.size(), 2u);
  EXPECT_EQ(rec.messages.Last().title, "PLEASE NOTE!");
  EXPECT_EQ(rec.messages.Last().text,
            "Bad DCY number given to CalcDCY().\nThe 1st DCY will be calculated.\nPlease report this error.");
  EXPECT_EQ(rec.messages.Last().icon, MsgIcon::Exclamation);
  n = 32767;
  EXPECT_THROW(CalcDCY(D(1930, 1, 1), n), OverflowError);
}

TEST(DateSetters, ClampAndFallBackToTheMonthEnd) {
  EXPECT_EQ(SetDayOfMonth(31, D(2001, 4, 10)), D(2001, 4, 30));
  EXPECT_EQ(SetDayOfMonth(31, D(2000, 2, 3)), D(2000, 2, 29));  // two days back
  EXPECT_EQ(SetDayOfMonth(40, D(2001, 12, 5)), D(2001, 12, 31));
  EXPECT_EQ(SetDayOfMonth(0, D(2001, 3, 31)), D(2001, 3, 1));
  EXPECT_EQ(SetMonthOfYear(13, D(2001, 3, 31)), D(2001, 12, 31));
  EXPECT_EQ(SetMonthOfYear(0, D(2001, 3, 31)), D(2001, 1, 31));
  EXPECT_EQ(SetMonthOfYear(2, D(2001, 3, 31)), D(2001, 2, 28));
}

TEST(DateValid, AcceptsDatesAndWarnsOfAnythingElse) {
  RecordingScope rec;
  Date result = 0;
  EXPECT_TRUE(DateValid("4/1/2001", "Date of Death", result));
  EXPECT_EQ(result, D(2001, 4, 1));
  EXPECT_TRUE(rec.messages.messages.empty());
  for (const char* bad : {"2/30/2001", "", "soon"}) {
    result = 0;
    EXPECT_FALSE(DateValid(bad, "Spouse's Birthday", result)) << bad;
    EXPECT_EQ(result, kNoDate) << bad;
  }
  ASSERT_EQ(rec.messages.messages.size(), 3u);
  EXPECT_EQ(rec.messages.messages[0].title, "WARNING");
  EXPECT_EQ(rec.messages.messages[0].icon, MsgIcon::Critical);
  EXPECT_EQ(rec.messages.messages[0].text,
            "The Spouse's Birthday date entered as 2/30/2001 is not valid.  Unless it is changed, somewhere at an "
            "inconvenient moment this program is likely to abort.");
}

// Titles of the messages the checks show, with today pinned to 1 June 2025.
template <typename Check>
std::vector<std::string> TitlesShown(Check check, RecordingScope& rec) {
  SetTodayForTesting(D(2025, 6, 1));
  check();
  SetTodayForTesting(std::nullopt);
  std::vector<std::string> titles;
  for (const Message& m : rec.messages.messages) titles.push_back(m.title);
  return titles;
}

TEST(CheckOwnerBirthday, WarnsOfTheCutOffAndImplausibleYears) {
  const std::string cutOff =
      "The IRA minimum distribution rules that this program uses are good only for people who turn 70 and 1/2 "
      "after 12/31/87. The results produced for this person are very likely to be incorrect.";
  struct Row {
    const char* name;
    Date birth;
    std::int16_t distType;
    std::vector<std::string> expected;
  } rows[] = {
      {"70 1/2 on 12/30/87", D(1917, 6, 30), -1, {"WARNING!"}},
      {"70 1/2 on 1/1/88", D(1917, 7, 1), -1, {}},
      {"early type has no cut-off", D(1917, 6, 30), 0, {}},
      {"70 1/2 year 150 years back", D(1805, 1, 1), 0, {}},
      {"70 1/2 year 151 years back", D(1804, 1, 1), 0, {"Please Verify"}},
      {"both", D(1804, 1, 1), -1, {"WARNING!", "Please Verify"}},
      {"no birthday yet", kNoDate, -1, {}},
  };
  for (const Row& row : rows) {
    RecordingScope rec;
    GeneralInputs gen;
    gen.OwnerBirthDate = row.birth;
    gen.DistType = row.distType;
    EXPECT_EQ(TitlesShown([&] { CheckOwnerBirthday(gen); }, rec), row.expected) << row.name;
    if (!row.expected.empty() && row.expected[0] == "WARNING!") {
      EXPECT_EQ(rec.messages.messages[0].text, cutOff);
      EXPECT_EQ(rec.messages.messages[0].icon, MsgIcon::Exclamation);
    }
  }
}

TEST(CheckSpouseBirthday, MoreThan150YearsBackNamesTheOwner) {
  RecordingScope rec;
  EXPECT_TRUE(TitlesShown([] { CheckSpouseBirthday(D(1875, 12, 31)); CheckSpouseBirthday(kNoDate); }, rec).empty());
  EXPECT_EQ(TitlesShown([] { CheckSpouseBirthday(D(1874, 1, 1)); }, rec), std::vector<std::string>{"Please Verify"});
  EXPECT_EQ(rec.messages.Last().text, "Please check the Owner's Birthday.\nThe date given may be incorrect.");
  EXPECT_EQ(rec.messages.Last().icon, MsgIcon::Information);
}

}  // namespace
}  // namespace ira::datefun
