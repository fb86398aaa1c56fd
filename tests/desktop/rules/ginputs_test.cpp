#include "dialogs/rules/ginputs.h"

#include <gtest/gtest.h>

#include "core/base/calendar.h"
#include "core/base/checked.h"
#include "support/recording_sinks.h"

using namespace ira;
using namespace ira::ginputs;

namespace {

class GenInputsRules : public ::testing::Test {
 protected:
  void SetUp() override { SetTodayForTesting(MakeDate(2014, 6, 1)); }
  void TearDown() override { SetTodayForTesting(std::nullopt); }
  ira::testing::RecordingScope rec;
};

constexpr const char* kPre59 =
    "For a maximum distribution the Distribution Calendar Year must be earlier than the year the Owner turns 59 and "
    "1/2. Please correct this.";
constexpr const char* kBeforeCurrent = "The Year you entered is before the current year (2010). The Year will be "
                                       "changed to 2014.";
constexpr const char* kToPre = "The Distribution Calendar Year you entered would make this a Pre 59 and 1/2 "
                               "distribution. Type of Distribution will be changed to Pre 59 and 1/2.";
constexpr const char* kToPost = "The Distribution Calendar Year you entered would make this a Post 70 and 1/2 "
                                "distribution. Type of Distribution will be changed to Post 70 and 1/2.";
constexpr const char* kTooEarly = "The Distribution Calendar Year must be equal to or later than the year the Owner "
                                  "turns 70 and 1/2.The DCY will be adjusted to the first possible DCY.";

std::string TooEarlyUnderTheLaw(const char* age) {
  return std::string("The Distribution Calendar Year must be equal to or later than the year the Owner reaches the "
                     "applicable age (") +
         age + "). The DCY will be adjusted to the first possible DCY.";
}

// Owners born 1/1/1950 reach 59 1/2 in 2009 and 70 1/2 in 2020.
TEST_F(GenInputsRules, DcyAndTypeStayConsistent) {
  struct Row {
    const char* name;
    DcyTypeEntries in;
    std::string dcy;
    std::int16_t type;
    std::vector<std::string> notes;
  };
  const std::vector<Row> rows = {
      {"two-digit year joins this century", {"5", kAfter70Half, "", ""}, "2005", kAfter70Half, {}},
      {"99 is 2099, not 1999", {"99", kAfter70Half, "1/1/1950", ""}, "2099", kAfter70Half, {}},
      {"empty entry is left alone", {"", kBefore59Half, "1/1/1950", ""}, "", kBefore59Half, {}},
      {"pre 59 1/2 in the 59 1/2 year keeps what was typed", {"2009", kBefore59Half, "1/1/1950", ""}, "2009",
       kBefore59Half, {kPre59}},
      {"pre 59 1/2 a year earlier passes", {"2008", kBefore59Half, "1/1/1950", ""}, "2008", kBefore59Half, {}},
      {"no valid birthday: no type check", {"2009", kBefore59Half, "13/45/1950", ""}, "2009", kBefore59Half, {}},
      {"between: past year replaced, then still in range", {"2010", kBetween59And70, "1/1/1950", ""}, "2014",
       kBetween59And70, {kBeforeCurrent}},
      {"between: replaced year is tested against 59 1/2", {"2010", kBetween59And70, "1/1/1960", ""}, "2014",
       kBefore59Half, {kBeforeCurrent, kToPre}},
      {"between: 70 1/2 year turns it post", {"2020", kBetween59And70, "1/1/1950", ""}, "2020", kAfter70Half,
       {kToPost}},
      {"post: before the 70 1/2 year is moved up", {"2015", kAfter70Half, "1/1/1950", ""}, "2020", kAfter70Half,
       {kTooEarly}},
      {"post: owner who died at 65 starts the year after death", {"2014", kAfter70Half, "1/1/1950", "3/1/2015"},
       "2016", kAfter70Half, {kTooEarly}},
      {"post: death after 70 1/2 changes nothing", {"2020", kAfter70Half, "1/1/1950", "3/1/2030"}, "2020",
       kAfter70Half, {}},
      // The law in force: the year of the applicable age, 72 for 1950 (2022), 75 from 1960 (2035), and
      // for 1959 by the scenario's choice: 73 (2032) or 75 (2034).
      {"law in force: the 70 1/2 year is too early", {"2020", kAfter70Half, "1/1/1950", "", false, kRulesCurrent},
       "2022", kAfter70Half, {TooEarlyUnderTheLaw("72")}},
      {"law in force: born 1960", {"2034", kAfter70Half, "1/1/1960", "", false, kRulesCurrent}, "2035",
       kAfter70Half, {TooEarlyUnderTheLaw("75")}},
      {"law in force: 1959 at 73", {"2032", kAfter70Half, "6/1/1959", "", false, kRulesCurrent, 73}, "2032",
       kAfter70Half, {}},
      {"law in force: 1959 at 75", {"2032", kAfter70Half, "6/1/1959", "", false, kRulesCurrent, 75}, "2034",
       kAfter70Half, {TooEarlyUnderTheLaw("75")}},
  };
  for (const Row& row : rows) {
    rec.messages.messages.clear();
    DcyTypeEntries e = row.in;
    const bool changed = CheckDcyAndType(e);
    EXPECT_EQ(e.dcyText, row.dcy) << row.name;
    EXPECT_EQ(e.distType, row.type) << row.name;
    EXPECT_EQ(changed, row.type != row.in.distType) << row.name;
    EXPECT_EQ(e.conflict, row.notes.size() == 1 && row.notes[0] == kPre59) << row.name;
    ASSERT_EQ(rec.messages.messages.size(), row.notes.size()) << row.name;
    for (std::size_t i = 0; i < row.notes.size(); ++i) {
      EXPECT_EQ(rec.messages.messages[i].text, row.notes[i]) << row.name;
      EXPECT_EQ(rec.messages.messages[i].title, "Please Note!") << row.name;
    }
  }
}

TEST_F(GenInputsRules, RateChecksWarnBelowTheirLimits) {
  struct Row {
    const char* name;
    void (*check)(std::string_view);
    const char* text;
    const char* message;  // nullptr: no message
  };
  const char* inflation = "Please check the inflation rate.  It should be larger that -0.01.";
  const char* annuity = "Please check the interest rate. It should be larger that 4.2.";
  const std::vector<Row> rows = {
      {"inflation at the limit passes", Chk_InflationRate, "-0.01", nullptr},
      {"inflation below the limit", Chk_InflationRate, "-0.02", inflation},
      {"annuity rate at 4.2 passes", Chk_AnnuityIntRateRate, "4.2", nullptr},
      {"annuity rate below 4.2", Chk_AnnuityIntRateRate, "4.19", annuity},
      {"empty annuity rate counts as 0", Chk_AnnuityIntRateRate, "", annuity},
  };
  for (const Row& row : rows) {
    rec.messages.messages.clear();
    row.check(row.text);
    if (row.message == nullptr) {
      EXPECT_TRUE(rec.messages.messages.empty()) << row.name;
    } else {
      ASSERT_EQ(rec.messages.messages.size(), 1u) << row.name;
      EXPECT_EQ(rec.messages.Last().text, row.message) << row.name;
      EXPECT_EQ(rec.messages.Last().title, "Please Verify") << row.name;
    }
  }
  rec.messages.messages.clear();
  Chk_IntRateRate("0.5", kMethodMinimum);  // only amortization uses the rate
  EXPECT_TRUE(rec.messages.messages.empty());
  Chk_IntRateRate("0.5", kMethodAmortization);
  ASSERT_EQ(rec.messages.messages.size(), 1u);
  EXPECT_EQ(rec.messages.Last().text, "Please check the interest rate.  It should be larger that 1.");
}

TEST_F(GenInputsRules, EntriesRoundTripAndRefuseWhatIsNoYear) {
  GeneralInputs gen;
  gen.OwnerName = FixedText("Ann Smith", kOwnerNameWidth);
  gen.OwnerBirthDate = MakeDate(1950, 1, 1);
  gen.DCY = 2015;
  gen.DistType = kTrue;
  gen.InflationRate = 3.5f;
  gen.AnnuityOverride = kTrue;
  GenEntries e = EntriesOf(gen);
  EXPECT_EQ(e.distType, kBetween59And70);  // a required type before the 70 1/2 year
  EXPECT_EQ(e.deathDate, "");
  EXPECT_EQ(e.annuityMethod, kAnnuityUserOverride);

  GeneralInputs back;
  ASSERT_TRUE(ApplyGenEntries(e, back));
  EXPECT_EQ(back.OwnerName, gen.OwnerName);
  EXPECT_EQ(back.OwnerDeathDate, kNoDate);
  EXPECT_EQ(back.DCY, 2015);
  EXPECT_EQ(back.DistType, kTrue);
  EXPECT_EQ(back.InflationRate, 3.5f);

  e.dcy = "next year";
  EXPECT_FALSE(ApplyGenEntries(e, back));
  EXPECT_EQ(rec.messages.Last().text,
            "The Distribution Calendar Year entered as next year is not a year. Please enter a year such as 2014.");
  e.dcy = "2015";
  e.inflationRate = "3..5";
  EXPECT_FALSE(ApplyGenEntries(e, back));
  EXPECT_EQ(rec.messages.Last().text, "The value entered for 'Inflation Rate' is invalid.  Please enter again.");
}

// Which checks speak when a date entry of the general inputs is left.
TEST_F(GenInputsRules, EachDateCheckSpeaksOnlyWhenItHasWhatItNeeds) {
  struct Row {
    const char* name;
    void (*entered)(const GenEntries&);
    GenEntries e;
    std::vector<std::string> titles;
  };
  const auto entries = [](std::string owner, std::string dcy, std::int16_t type, bool spouse = false,
                          std::string spouseBD = "", std::string death = "") {
    GenEntries e;
    e.ownerBirthday = std::move(owner);
    e.dcy = std::move(dcy);
    e.distType = type;
    e.spouseBen = spouse;
    e.spouseBirthday = std::move(spouseBD);
    e.deathDate = std::move(death);
    return e;
  };
  const std::vector<Row> rows = {
      {"empty birthday is not checked", OwnerBirthdayEntered, entries("", "2014", kAfter70Half), {}},
      {"impossible date", OwnerBirthdayEntered, entries("2/30/1950", "2014", kAfter70Half), {"WARNING"}},
      {"70 1/2 on 12/30/1987: cut-off", OwnerBirthdayEntered, entries("6/30/1917", "2014", kAfter70Half),
       {"WARNING!"}},
      {"no cut-off for early distributions", OwnerBirthdayEntered, entries("6/30/1917", "1970", kBefore59Half),
       {}},
      {"owner too young for the tables", OwnerBirthdayEntered, entries("1/1/2012", "2014", kAfter70Half),
       {"Data not available"}},
      {"no DCY yet: no range check", OwnerBirthdayEntered, entries("1/1/2012", "", kAfter70Half), {}},
      {"spouse too young for the joint table", SpouseBirthdayEntered,
       entries("1/1/1940", "2014", kAfter70Half, true, "1/1/2012"), {"Data not available!"}},
      {"spouse no beneficiary: no joint check", SpouseBirthdayEntered,
       entries("1/1/1940", "2014", kAfter70Half, false, "1/1/2012"), {}},
      {"spouse born 151 years ago", SpouseBirthdayEntered, entries("", "2014", kAfter70Half, false, "1/1/1863"),
       {"Please Verify"}},
      {"empty date of death: living", DeathDateEntered, entries("1/1/1940", "2014", kAfter70Half), {}},
      {"bad date of death", DeathDateEntered,
       entries("1/1/1940", "2014", kAfter70Half, false, "", "yesterday"), {"WARNING"}},
  };
  for (const Row& row : rows) {
    rec.messages.messages.clear();
    row.entered(row.e);
    std::vector<std::string> titles;
    for (const auto& m : rec.messages.messages) titles.push_back(m.title);
    EXPECT_EQ(titles, row.titles) << row.name;
  }
}

TEST(GenInputsEnables, FollowTypeAndMethod) {
  GenEntries e;
  e.distType = kAfter70Half;
  e.earlyMethod = kMethodAnnuity;
  EXPECT_FALSE(SetGenIPEnables(e).annuityMethod);  // methods belong to early distributions only
  e.distType = kBefore59Half;
  GenEnables en = SetGenIPEnables(e);
  EXPECT_TRUE(en.annuityMethod && en.annuityIntRate);
  EXPECT_FALSE(en.annuityFactor || en.intRate);
  e.annuityMethod = kAnnuityUserOverride;
  en = SetGenIPEnables(e);
  EXPECT_TRUE(en.annuityFactor && !en.annuityIntRate);
}

}  // namespace
