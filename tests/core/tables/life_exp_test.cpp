#include "core/tables/life_exp.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/tables/table_check.h"
#include "support/recording_sinks.h"
#include "table_test_support.h"

namespace ira::life_exp {
namespace {

using ira::testing::RecordingScope;

Date Born(int year, int month = 1, int day = 1) { return MakeDate(year, month, day); }

class LifeExp : public ::testing::Test {
 protected:
  void SetUp() override { ira::testing::LoadInstalledTables(); }
};

TEST_F(LifeExp, LookupsGiveThePublishedValuesAndTheSentinelOutsideTheTables) {
  struct Row {
    const char* name;
    float got, expected;
  } rows[] = {
      {"Table V at 70", GetSingleLifeExp(70, 0), 16.0f},
      {"2002 single at 70", GetSingleLifeExp(70, 1), 17.0f},
      {"2002 single at its last age", GetSingleLifeExp(115, 1), 1.0f},
      {"1986 joint 70/60", GetJointLifeExp(70, 60, 0), 26.2f},
      {"1986 joint 70/67", GetJointLifeExp(70, 67, 0), 22.0f},
      {"2002 joint 70/60", GetJointLifeExp(70, 60, 1), 27.4f},
      {"2002 joint, younger life first", GetJointLifeExp(60, 70, 1), 27.4f},
      {"2002 joint at both first ages", GetJointLifeExp(5, 5, 1), 85.0f},
      {"Table V at its first age", GetSingleLifeExp(5, 0), 76.6f},
      {"single below the first age", GetSingleLifeExp(4, 0), kNoTableValue},
      {"single past the last age", GetSingleLifeExp(116, 1), kNoTableValue},
      {"single, unknown selector", GetSingleLifeExp(70, 2), kNoTableValue},
      {"joint, a life too young", GetJointLifeExp(70, 3, 1), kNoTableValue},
      {"joint, a life too old", GetJointLifeExp(116, 70, 1), kNoTableValue},
      {"joint, unknown selector", GetJointLifeExp(70, 60, 2), 0.0f},
  };
  for (const Row& r : rows) EXPECT_EQ(r.got, r.expected) << r.name;
}

// A table file that is not the one published is refused, however
// plausible its values: the joint files here tell by their values which
// record a lookup would read, and are never read.
TEST(JointLookup, MadeUpTableFilesAreRefusedAndTheirTablesNotRead) {
  RecordingScope scope;
  ira::testing::TempProgramFolder folder({});
  ira::testing::WriteFileBytes(folder.File("vi86.tbl"), ira::testing::MadeUpJointFile(4));
  ira::testing::WriteFileBytes(folder.File("vi02.tbl"), ira::testing::MadeUpJointFile(8));
  tables::ClearTables();
  tables::ReadTableVI();
  ASSERT_EQ(scope.messages.messages.size(), 2u);
  EXPECT_EQ(scope.messages.messages[0].text, "The table file " + folder.File("vi86.tbl") + " is damaged: reinstall the program.");
  EXPECT_EQ(scope.messages.messages[1].text, "The table file " + folder.File("vi02.tbl") + " is damaged: reinstall the program.");
  const tables::UnusableReads reads;
  EXPECT_EQ(GetJointLifeExp(70, 60, 0), 0.0f);
  EXPECT_EQ(GetJointLifeExp(70, 80, 1), 0.0f);
  EXPECT_TRUE(reads.Any());
  tables::ClearTables();
}

TEST_F(LifeExp, MdibFigureIsTheJointValueTenYearsYounger) {
  const auto uniform = ira::testing::ReadCsv("uniform_lifetime_2002.csv");
  const auto tableVI = ira::testing::ReadCsv("table_vi_1986.csv");
  for (int age = 70; age <= 115; ++age) {
    const Date owner = Born(2010 - age, 8, 31);
    const std::string a = std::to_string(age);
    EXPECT_EQ(MdibJointLifeExp(owner, 2010, 1), std::stof(uniform.at({a}))) << age;
    EXPECT_EQ(MdibJointLifeExp(owner, 2010, 0), std::stof(tableVI.at({a, std::to_string(age - 10)}))) << age;
  }
}

// Owners born 1/1/1930 and 6/30/1931 have their first DCY in 2000 and 2001
// (1986 tables); those born 7/1/1931 and 1/1/1935 in 2002 and 2005 (2002 tables).
TEST_F(LifeExp, TermCertainIsFixedInTheFirstDcyAndDropsByOneAYear) {
  struct Row {
    const char* name;
    float got, expected;
  } rows[] = {
      {"single, first DCY", TermCertainSingleLifeExp(Born(1930), Born(1935, 3, 1), 2000), 20.0f},
      {"single, past the term", TermCertainSingleLifeExp(Born(1930), Born(1935, 3, 1), 2021), -1.0f},
      {"table of a first DCY of 2001", TermCertainSingleLifeExp(Born(1931, 6, 30), Born(1936), 2005), 16.0f},
      {"table of a first DCY of 2002", TermCertainSingleLifeExp(Born(1931, 7, 1), Born(1936), 2005), 17.2f},
      {"joint, first DCY", TermCertainJointLifeExp(Born(1930), Born(1933), 2000), 22.0f},
      {"joint, past the term", TermCertainJointLifeExp(Born(1930), Born(1933), 2025), -3.0f},
  };
  for (const Row& r : rows) EXPECT_NEAR(r.got, r.expected, 1e-5) << r.name;
}

TEST_F(LifeExp, TermCertainAgeIsTheFirstAgeFrom40WithinTheRemainingTerm) {
  struct Row {
    const char* name;
    Date termLife, owner;
    std::int16_t year, expected;
  } rows[] = {
      {"21.8 - 7 meets 14.8 at 73 as one-decimal figures", Born(1941), Born(1935), 2012, 73},
      {"term below even age 115's value", Born(1941), Born(1935), 2026, 116},
      {"term longer than the value at 40", Born(1990), Born(1935), 2005, 40},
      {"19.0 left in 2001: 1986 table", Born(1935), Born(1930), 2001, 67},
      {"18.0 left in 2002: 2002 table", Born(1935), Born(1930), 2002, 69},
  };
  for (const Row& r : rows) EXPECT_EQ(GetTermCAge(r.termLife, r.owner, r.year), r.expected) << r.name;

  // Owner 1935, recalculated spouse 1938, term-certain beneficiary 1941.
  EXPECT_EQ(RecalcAndTermCLifeExp(Born(1938), Born(1941), Born(1935), 2005, 1), 25.9f);  // 67/64
  EXPECT_EQ(RecalcAndTermCLifeExp(Born(1938), Born(1941), Born(1935), 2012, 1), 18.8f);  // 74/73
  EXPECT_EQ(RecalcAndTermCLifeExp(Born(1938), Born(1941), Born(1935), 2026, 1), 5.2f);   // owner alone at 91
}

TEST(MdibAgeCheck, ThirdLifeMustBeAtLeastTheAdjustedBeneficiaryAge) {
  const Date owner = Born(1940);  // 70 in 2010
  EXPECT_TRUE(MdibAgeCheck(Born(1960), owner, Born(1950), 2010)) << "beneficiary of 50 counts as 60";
  EXPECT_FALSE(MdibAgeCheck(Born(1960), owner, Born(1951), 2010));
  EXPECT_TRUE(MdibAgeCheck(Born(1945), owner, Born(1945, 12, 31), 2010)) << "beneficiary of 65 counts as 65";
  EXPECT_FALSE(MdibAgeCheck(Born(1945), owner, Born(1946), 2010));
}

TEST(RangeChecks, WarnWithTheirFixedTexts) {
  const std::string joint =
      ") is either younger or older than allowed for in this system's joint life expectancy table. "
      "The results produced are likely to be incorrect.";
  const std::string single =
      " allowed for in this system's life expectancy tables. The results for this person will be erroneous.";
  const std::string young =
      "Please Note! | Ann's age (2) is younger than allowed for in this system's joint life expectancy table. \n"
      "If you would like additional information select OK, otherwise select Cancel";
  const std::string help = std::string(kBeneficiaryAgeHelpTitle) + " | " + kBeneficiaryAgeHelp;
  enum Check { kOwner, kSpouse, kBeneficiary };
  struct Row {
    const char* name;
    Check check;
    Date owner, other;  // the spouse or the beneficiary
    bool flag;          // spouse is a beneficiary / the IRA has a designated beneficiary
    MsgAnswer answer;
    std::vector<std::string> expected;
  } rows[] = {
      {"owner too young", kOwner, Born(2008), kNoDate, true, MsgAnswer::Ok,
       {"Data not available | The Owner's age (2) is less than" + single}},
      {"owner too old", kOwner, Born(1890), kNoDate, true, MsgAnswer::Ok,
       {"Data not available | The Owner's age (120) is greater than" + single}},
      {"owner not entered yet", kOwner, kNoDate, kNoDate, true, MsgAnswer::Ok, {}},
      {"both lives, owner first", kSpouse, Born(1890), Born(2008), true, MsgAnswer::Ok,
       {"Data not available! | The Owner's age (120" + joint, "Data not available! | The Spouse's age (2" + joint}},
      {"spouse not a beneficiary", kSpouse, Born(1890), Born(2008), false, MsgAnswer::Ok, {}},
      {"older beneficiary past the table", kBeneficiary, Born(1940), Born(1890), true, MsgAnswer::Ok,
       {"Data not available! | Ann's age (120" + joint}},
      {"owner and younger beneficiary past it", kBeneficiary, Born(1880), Born(1890), true, MsgAnswer::Ok,
       {"Data not available! | The Owner's age (130" + joint, "Data not available! | Ann's age (120" + joint}},
      {"very young beneficiary, help declined", kBeneficiary, Born(1940), Born(2008), true, MsgAnswer::Cancel,
       {young}},
      {"very young beneficiary, help wanted", kBeneficiary, Born(1940), Born(2008), true, MsgAnswer::Ok,
       {young, help}},
      {"no designated beneficiary", kBeneficiary, Born(1880), Born(1890), false, MsgAnswer::Ok, {}},
  };
  for (const Row& r : rows) {
    RecordingScope scope;
    scope.messages.answers = {r.answer};
    GeneralInputs gen;
    gen.DCY = 2010;
    gen.OwnerBirthDate = r.owner;
    gen.SpouseBirthDate = r.other;
    gen.SpouseBen = r.flag ? -1 : 0;
    IraRecord ira;
    ira.OtherBen = r.flag ? -1 : 0;
    ira.BeneficiaryName = FixedText("  Ann", kBeneficiaryNameWidth);
    ira.BeneBirthDate = r.other;
    if (r.check == kOwner) OwnerRangeCheck(gen);
    if (r.check == kSpouse) SpouseJointRangeCheck(gen);
    if (r.check == kBeneficiary) BeneficiaryJointRangeCheck(gen, ira);

    std::vector<std::string> shown;
    for (const Message& m : scope.messages.messages) {
      shown.push_back(m.title + " | " + m.text);
      const bool asks = m.title == "Please Note!";
      EXPECT_EQ(m.icon, asks || m.title == kBeneficiaryAgeHelpTitle ? MsgIcon::Information : MsgIcon::Critical);
      EXPECT_EQ(m.buttons, asks ? MsgButtons::OkCancel : MsgButtons::Ok);
    }
    EXPECT_EQ(shown, r.expected) << r.name;
    if (r.check == kBeneficiary && r.flag) {
      EXPECT_EQ(ira.BeneficiaryName, FixedText("Ann", kBeneficiaryNameWidth));
    }
  }
}

}  // namespace
}  // namespace ira::life_exp
