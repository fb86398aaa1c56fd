#include "core/tables/life_exp.h"

#include <gtest/gtest.h>

#include <string>

#include "support/recording_sinks.h"
#include "table_test_support.h"

namespace ira::life_exp {
namespace {

using ira::testing::LoadBuiltTables;
using ira::testing::ReadCsv;
using ira::testing::RecordingScope;

Date Born(int year, int month = 1, int day = 1) { return MakeDate(year, month, day); }

class LifeExp : public ::testing::Test {
 protected:
  void SetUp() override { LoadBuiltTables(); }
};

TEST_F(LifeExp, LookupsGiveThePublishedValues) {
  struct Row {
    const char* name;
    std::int16_t age1;
    std::int16_t age2;  // 0: a single life lookup
    std::int16_t sel;
    float expected;
  } rows[] = {
      {"Table V at 70", 70, 0, 0, 16.0f},
      {"Table V at 66", 66, 0, 0, 19.2f},
      {"Table V at its first age", 5, 0, 0, 76.6f},
      {"Table V at its last age", 115, 0, 0, 0.5f},
      {"2002 single at 70", 70, 0, 1, 17.0f},
      {"2002 single at its first age", 5, 0, 1, 77.7f},
      {"2002 single at its last age", 115, 0, 1, 1.0f},
      {"1986 joint 70/60", 70, 60, 0, 26.2f},
      {"1986 joint 80/70", 80, 70, 0, 17.6f},
      {"1986 joint 70/67", 70, 67, 0, 22.0f},
      {"1986 joint at both corners", 5, 5, 0, 83.8f},
      {"2002 joint 70/60", 70, 60, 1, 27.4f},
      {"2002 joint 75/65", 75, 65, 1, 22.9f},
      {"2002 joint 90/80", 90, 80, 1, 11.4f},
      {"2002 joint, younger life first", 60, 70, 1, 27.4f},
      {"2002 joint at both corners", 5, 5, 1, 85.0f},
  };
  for (const Row& r : rows) {
    const float got = r.age2 == 0 ? GetSingleLifeExp(r.age1, r.sel) : GetJointLifeExp(r.age1, r.age2, r.sel);
    EXPECT_EQ(got, r.expected) << r.name;
  }
}

TEST_F(LifeExp, AgesOrSelectorsWithoutATableGiveTheSentinel) {
  struct Row {
    const char* name;
    float got;
    float expected;
  } rows[] = {
      {"single below the first age", GetSingleLifeExp(4, 0), kNoTableValue},
      {"single past the last age", GetSingleLifeExp(116, 1), kNoTableValue},
      {"single, unknown selector", GetSingleLifeExp(70, 2), kNoTableValue},
      {"joint, second life too young, 1986", GetJointLifeExp(70, 3, 0), kNoTableValue},
      {"joint, second life too young, 2002", GetJointLifeExp(70, 3, 1), kNoTableValue},
      {"joint, first life too old", GetJointLifeExp(116, 70, 1), kNoTableValue},
      {"joint, unknown selector", GetJointLifeExp(70, 60, 2), 0.0f},
      {"joint, unknown selector and age out of range", GetJointLifeExp(70, 3, 2), kNoTableValue},
  };
  for (const Row& r : rows) EXPECT_EQ(r.got, r.expected) << r.name;
}

// With made-up joint files each value tells which record was read: the 1986
// table is read in the order given, the 2002 table only with the older first.
TEST(JointLookup, 1986ReadsTheFullSquareAnd2002OnlyItsLowerHalf) {
  ira::testing::TempProgramFolder folder({});
  folder.Write("vi86.tbl", ira::testing::MadeUpJointFile(4));
  folder.Write("vi02.tbl", ira::testing::MadeUpJointFile(8));
  tables::ClearTables();
  tables::ReadTableVI();
  EXPECT_EQ(GetJointLifeExp(70, 60, 0), 70060.0f);
  EXPECT_EQ(GetJointLifeExp(60, 70, 0), 60070.0f);
  EXPECT_EQ(GetJointLifeExp(70, 80, 1), 80070.0f);
  EXPECT_EQ(GetJointLifeExp(80, 70, 1), 80070.0f);
  EXPECT_EQ(GetJointLifeExp(115, 5, 1), 115005.0f);
  EXPECT_EQ(GetJointLifeExp(5, 115, 0), 5115.0f);
  tables::ClearTables();
}

TEST_F(LifeExp, MdibFigureIsTheJointValueTenYearsYounger) {
  const auto uniform = ReadCsv("uniform_lifetime_2002.csv");
  const auto tableVI = ReadCsv("table_vi_1986.csv");
  for (int age = 70; age <= 115; ++age) {
    const Date owner = Born(2010 - age, 8, 31);
    const std::string a = std::to_string(age);
    EXPECT_EQ(MdibJointLifeExp(owner, 2010, 1), std::stof(uniform.at({a}))) << "2002 at " << age;
    EXPECT_EQ(MdibJointLifeExp(owner, 2010, 0), std::stof(tableVI.at({a, std::to_string(age - 10)})))
        << "1986 at " << age;
  }
  EXPECT_EQ(MdibJointLifeExp(Born(1940), 2010, 0), 26.2f);
}

TEST_F(LifeExp, TermCertainIsFixedInTheFirstDcyAndDropsByOneAYear) {
  // Owner born 1/1/1930: first DCY 2000 (1986 tables). Born 1/1/1935: 2005
  // (2002 tables). Born 6/30/1931: 70 1/2 on 12/30/2001, so 1986; born
  // 7/1/1931: 1/1/2002, so 2002.
  struct Row {
    const char* name;
    float got;
    float expected;
  } rows[] = {
      {"single, in the first DCY", TermCertainSingleLifeExp(Born(1930), Born(1935, 3, 1), 2000), 20.0f},
      {"single, ten years on", TermCertainSingleLifeExp(Born(1930), Born(1935, 3, 1), 2010), 10.0f},
      {"single, past the term", TermCertainSingleLifeExp(Born(1930), Born(1935, 3, 1), 2021), -1.0f},
      {"single, 2002 table", TermCertainSingleLifeExp(Born(1935), Born(1941), 2015), 11.8f},
      {"table of a first DCY of 2001", TermCertainSingleLifeExp(Born(1931, 6, 30), Born(1936), 2005), 16.0f},
      {"table of a first DCY of 2002", TermCertainSingleLifeExp(Born(1931, 7, 1), Born(1936), 2005), 17.2f},
      {"joint, in the first DCY", TermCertainJointLifeExp(Born(1930), Born(1933), 2000), 22.0f},
      {"joint, ten years on", TermCertainJointLifeExp(Born(1930), Born(1933), 2010), 12.0f},
      {"joint, past the term", TermCertainJointLifeExp(Born(1930), Born(1933), 2025), -3.0f},
  };
  for (const Row& r : rows) EXPECT_NEAR(r.got, r.expected, 1e-5) << r.name;
}

TEST_F(LifeExp, TermCertainAgeIsTheFirstAgeFrom40WithinTheRemainingTerm) {
  const Date owner = Born(1935);  // first DCY 2005
  struct Row {
    const char* name;
    Date termLife;
    Date ownerBirth;
    std::int16_t year;
    std::int16_t expected;
  } rows[] = {
      {"first DCY: the life's own age", Born(1941), owner, 2005, 64},
      {"21.8 - 7 meets 14.8 at 73 (as one-decimal figures)", Born(1941), owner, 2012, 73},
      {"term below even age 115's value", Born(1941), owner, 2026, 116},
      {"term longer than the value at 40", Born(1990), owner, 2005, 40},
      {"19.0 left, 1986 table of 2001", Born(1935), Born(1930), 2001, 67},
      {"18.0 left, 2002 table of 2002", Born(1935), Born(1930), 2002, 69},
  };
  for (const Row& r : rows) EXPECT_EQ(GetTermCAge(r.termLife, r.ownerBirth, r.year), r.expected) << r.name;
}

TEST_F(LifeExp, RecalculatedWithTermCertainLife) {
  // Owner born 1935 (first DCY 2005), recalculated spouse born 1938, term
  // certain beneficiary born 1941.
  const Date owner = Born(1935), spouse = Born(1938), beneficiary = Born(1941);
  EXPECT_EQ(RecalcAndTermCLifeExp(spouse, beneficiary, owner, 2005, 1), 25.9f);  // joint 67/64
  EXPECT_EQ(RecalcAndTermCLifeExp(spouse, beneficiary, owner, 2012, 1), 18.8f);  // joint 74/73
  // The term is spent (116): the owner's own single figure at 91.
  EXPECT_EQ(RecalcAndTermCLifeExp(spouse, beneficiary, owner, 2026, 1), 5.2f);
}

TEST(MdibAgeCheck, ThirdLifeMustBeAtLeastTheAdjustedBeneficiaryAge) {
  const Date owner = Born(1940);  // 70 in 2010
  struct Row {
    const char* name;
    Date beneficiary;
    Date third;
    bool expected;
  } rows[] = {
      {"young beneficiary counts as 60: third is 60", Born(1960), Born(1950), true},
      {"young beneficiary counts as 60: third is 59", Born(1960), Born(1951), false},
      {"beneficiary of 65 counts as 65: third is 65", Born(1945), Born(1945, 12, 31), true},
      {"beneficiary of 65 counts as 65: third is 64", Born(1945), Born(1946), false},
  };
  for (const Row& r : rows) EXPECT_EQ(MdibAgeCheck(r.beneficiary, owner, r.third, 2010), r.expected) << r.name;
}

const char* kJointTail =
    ") is either younger or older than allowed for in this system's joint life expectancy table. "
    "The results produced are likely to be incorrect.";

TEST(RangeChecks, OwnerAgeOutsideTheSingleTables) {
  struct Row {
    const char* name;
    Date birth;
    const char* text;  // nullptr: no message
  } rows[] = {
      {"too young", Born(2008),
       "The Owner's age (2) is less than allowed for in this system's life expectancy tables. The results for "
       "this person will be erroneous."},
      {"too old", Born(1890),
       "The Owner's age (120) is greater than allowed for in this system's life expectancy tables. The results "
       "for this person will be erroneous."},
      {"first age", Born(2005), nullptr},
      {"last age", Born(1895), nullptr},
      {"no birth date yet", kNoDate, nullptr},
  };
  for (const Row& r : rows) {
    RecordingScope scope;
    GeneralInputs gen;
    gen.OwnerBirthDate = r.birth;
    gen.DCY = 2010;
    OwnerRangeCheck(gen);
    if (r.text == nullptr) {
      EXPECT_TRUE(scope.messages.messages.empty()) << r.name;
      continue;
    }
    ASSERT_EQ(scope.messages.messages.size(), 1u) << r.name;
    EXPECT_EQ(scope.messages.Last().title, "Data not available") << r.name;
    EXPECT_EQ(scope.messages.Last().text, r.text) << r.name;
    EXPECT_EQ(scope.messages.Last().icon, MsgIcon::Critical) << r.name;
    EXPECT_EQ(scope.messages.Last().buttons, MsgButtons::Ok) << r.name;
  }
}

TEST(RangeChecks, SpouseJointCheckWarnsForEachLifeOwnerFirst) {
  RecordingScope scope;
  GeneralInputs gen;
  gen.DCY = 2010;
  gen.OwnerBirthDate = Born(1890);
  gen.SpouseBirthDate = Born(2008);
  SpouseJointRangeCheck(gen);
  EXPECT_TRUE(scope.messages.messages.empty()) << "spouse is no beneficiary";

  gen.SpouseBen = -1;
  SpouseJointRangeCheck(gen);
  ASSERT_EQ(scope.messages.messages.size(), 2u);
  EXPECT_EQ(scope.messages.messages[0].text, std::string("The Owner's age (120") + kJointTail);
  EXPECT_EQ(scope.messages.messages[1].text, std::string("The Spouse's age (2") + kJointTail);
  for (const Message& m : scope.messages.messages) {
    EXPECT_EQ(m.title, "Data not available!");
    EXPECT_EQ(m.icon, MsgIcon::Critical);
  }
}

TEST(RangeChecks, BeneficiaryJointCheck) {
  const std::string youngText =
      "Ann's age (2) is younger than allowed for in this system's joint life expectancy table. \n"
      "If you would like additional information select OK, otherwise select Cancel";
  struct Row {
    const char* name;
    Date owner;
    Date beneficiary;
    std::vector<MsgAnswer> answers;
    std::vector<std::string> titles;
    std::string firstText;
  } rows[] = {
      {"both in range", Born(1940), Born(1960), {}, {}, ""},
      {"older beneficiary past the table", Born(1940), Born(1890), {}, {"Data not available!"},
       std::string("Ann's age (120") + kJointTail},
      {"younger beneficiary past the table: both lives named", Born(1880), Born(1890), {},
       {"Data not available!", "Data not available!"}, std::string("The Owner's age (130") + kJointTail},
      {"very young beneficiary, help declined", Born(1940), Born(2008), {MsgAnswer::Cancel}, {"Please Note!"},
       youngText},
      {"very young beneficiary, help wanted", Born(1940), Born(2008), {MsgAnswer::Ok},
       {"Please Note!", "Help on Beneficiary's Age"}, youngText},
      {"beneficiary older than a too young owner", Born(2008), Born(2007), {},
       {"Data not available!", "Data not available!"}, std::string("The Owner's age (2") + kJointTail},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    RecordingScope scope;
    scope.messages.answers.assign(r.answers.begin(), r.answers.end());
    GeneralInputs gen;
    gen.DCY = 2010;
    gen.OwnerBirthDate = r.owner;
    IraRecord ira;
    ira.OtherBen = -1;
    ira.BeneficiaryName = FixedText("  Ann", kBeneficiaryNameWidth);
    ira.BeneBirthDate = r.beneficiary;
    BeneficiaryJointRangeCheck(gen, ira);
    EXPECT_EQ(ira.BeneficiaryName, FixedText("Ann", kBeneficiaryNameWidth));
    ASSERT_EQ(scope.messages.messages.size(), r.titles.size());
    for (std::size_t i = 0; i < r.titles.size(); ++i) EXPECT_EQ(scope.messages.messages[i].title, r.titles[i]);
    if (r.titles.empty()) continue;
    EXPECT_EQ(scope.messages.messages[0].text, r.firstText);
    if (r.titles[0] == "Please Note!") {
      EXPECT_EQ(scope.messages.messages[0].buttons, MsgButtons::OkCancel);
      EXPECT_EQ(scope.messages.messages[0].icon, MsgIcon::Information);
    }
    if (r.titles.back() == kBeneficiaryAgeHelpTitle) {
      EXPECT_EQ(scope.messages.Last().text, kBeneficiaryAgeHelp);
      EXPECT_EQ(scope.messages.Last().icon, MsgIcon::Information);
    }
  }
}

TEST(RangeChecks, BeneficiaryCheckNeedsADesignatedBeneficiary) {
  RecordingScope scope;
  GeneralInputs gen;
  gen.DCY = 2010;
  gen.OwnerBirthDate = Born(1880);
  IraRecord ira;
  ira.BeneficiaryName = FixedText("  Ann", kBeneficiaryNameWidth);
  BeneficiaryJointRangeCheck(gen, ira);
  EXPECT_TRUE(scope.messages.messages.empty());
  EXPECT_EQ(ira.BeneficiaryName, FixedText("  Ann", kBeneficiaryNameWidth));
}

}  // namespace
}  // namespace ira::life_exp
