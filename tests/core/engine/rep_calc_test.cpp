// CalcIraDist for one IRA and one DCY. Every expected amount is 100,000.00
// divided by a figure read from the published tables, taken to four decimals
// and then to the cent (half to even). Table VI (1986 joint) is partly
// reconstructed: cells other than the published MDIB column and 70/67 are
// read from the CSV, marked "(CSV)".
#include <string>

#include "engine_fixture.h"

namespace ira::testing {
namespace {

using namespace rep_calc;

class CalcIraDistTest : public EngineTest {};

// 70 1/2 on 9/15/1990: first DCY 1990, RBD 4/1/1991.
Date Owner1990() { return MakeDate(1920, 3, 15); }

TEST_F(CalcIraDistTest, RequiredAmountByRegimeAndBeneficiaries) {
  const Date none = kNoDate;
  const Date o1925 = MakeDate(1925, 2, 10), s1928 = MakeDate(1928, 5, 5);  // 70 and 67 in 1995
  const Date o1933 = MakeDate(1933, 6, 1);                                  // 72 in 2005
  const Date o1935 = MakeDate(1935, 1, 1), o1940 = MakeDate(1940, 1, 1);    // 70 1/2 in 2005, 2010
  struct Row {
    const char* name;
    Date birth, death, spouse, bene;
    std::int16_t dcy, bRecalc;
    const char *gross1987, *grossLater;  // nullptr: ages not supported
  } rows[] = {
      // V(72) = 14.6: 6,849.315068 -> 6,849.32.
      {"alone, recalculated", Owner1990(), none, none, none, 1992, 0, "6849.32", "0"},
      // Fixed at V(70) = 16.0 in 1990, less 2 = 14.0: 7,142.857143 -> 7,142.86.
      {"alone, term certain", Owner1990(), none, none, none, 1992, 1, "7142.86", "0"},
      // VI(73, 70) = 19.4 (CSV): 5,154.639175 -> 5,154.64.
      {"spouse, both recalculated", o1925, none, s1928, none, 1998, 0, "5154.64", "0"},
      // VI(70, 67) = 22.0 in 1995, less 4 = 18.0: 5,555.56.
      {"spouse, both term certain", o1925, none, s1928, none, 1999, 1, "5555.56", "0"},
      // Spouse's term V(67) 18.4 - 4 = 14.4 is first reached at 73; VI(74, 73) = 17.7 (CSV): 5,649.717514.
      {"spouse term certain", o1925, none, s1928, none, 1999, 2, "5649.72", "0"},
      // Owner's term 16.0 - 3 = 13.0 is first reached at 75; VI(70, 75) = 18.8 (CSV): 5,319.148936.
      {"owner term certain", o1925, none, s1928, none, 1998, 3, "5319.15", "0"},
      // VI(70, 20) = 62.0 (CSV) loses to MDIB VI(70, 60) = 26.2; 1993: VI(73, 63) = 23.5: 4,255.319149.
      {"grandchild, MDIB", Owner1990(), none, none, MakeDate(1970, 6, 1), 1993, 1, "4255.32", "0"},
      // VI(70, 65) = 23.1 (CSV) beats 26.2; 1993: 23.1 - 3 = 20.1 is below 23.5: 4,975.124378.
      {"older beneficiary, joint", Owner1990(), none, none, MakeDate(1925, 6, 1), 1993, 1, "4975.12", "0"},
      // Both regimes: V(72) = 14.6; 2001 Distribution Period VI(72, 62) = 24.4: 4,098.360656.
      {"2001", MakeDate(1929, 3, 1), none, none, none, 2001, 0, "6849.32", "4098.36"},
      // Uniform(72) = 25.6: 3,906.25.
      {"2005 alone", o1933, none, none, none, 2005, 0, "0", "3906.25"},
      // J(72, 65) = 23.7 is below 25.6: the Distribution Period stays.
      {"2005 spouse 7 years younger", o1933, none, MakeDate(1940, 1, 1), none, 2005, 0, "0", "3906.25"},
      // J(72, 55) = 30.8: 3,246.753247.
      {"2005 spouse 17 years younger", o1933, none, MakeDate(1950, 1, 1), none, 2005, 0, "0", "3246.75"},
      {"2005 spouse and non-spouse", o1933, none, MakeDate(1950, 1, 1), MakeDate(1980, 1, 1), 2005, 0, "0",
       "3906.25"},
      // Died at 73 in 2003: single(73) = 14.8, less 3 = 11.8: 8,474.576271.
      {"dead, no beneficiary", MakeDate(1930, 5, 1), MakeDate(2003, 6, 15), none, none, 2006, 0, "0", "8474.58"},
      // The spouse waits for 2010; the slot left chosen is the unused 5,000: 20.00.
      {"dead, spouse waiting", o1940, MakeDate(2005, 3, 1), MakeDate(1942, 1, 1), none, 2008, 0, "0", "20.00"},
      // Spouse's single(69) = 17.8: 5,617.977528.
      {"dead, spouse from 70 1/2", o1940, MakeDate(2005, 3, 1), MakeDate(1942, 1, 1), none, 2011, 0, "0", "5617.98"},
      // Died after 70 1/2: from 2005, spouse's single(73) = 14.8: 6,756.756757.
      {"dead, spouse the year after", MakeDate(1930, 1, 1), MakeDate(2004, 8, 1), MakeDate(1932, 1, 1), none, 2005,
       0, "0", "6756.76"},
      // Beneficiary 25 in 2005: single(25) = 58.2, less 2 = 56.2: 1,779.359431.
      {"dead, non-spouse", o1935, MakeDate(2004, 5, 1), none, MakeDate(1980, 1, 1), 2007, 0, "0", "1779.36"},
      // Beneficiary 85 in 2005: 7.6 - 8 is below zero, so one year: the whole balance.
      {"dead, non-spouse run out", o1935, MakeDate(2004, 5, 1), MakeDate(1937, 1, 1), MakeDate(1920, 1, 1), 2013, 0,
       "0", "100000.00"},
      // Still the owner's own year: uniform(71) = 26.5: 3,773.584906.
      {"death in the DCY", o1935, MakeDate(2006, 7, 1), none, MakeDate(1975, 1, 1), 2006, 0, "0", "3773.58"},
      // ... but for the age check the owner is dead, and a beneficiary of 2 the year after fails it.
      {"death in the DCY, infant", o1935, MakeDate(2006, 7, 1), none, MakeDate(2005, 1, 1), 2006, 0, nullptr, nullptr},
      {"2005 spouse aged 4", o1933, none, MakeDate(2001, 1, 1), none, 2005, 0, nullptr, nullptr},
      // Beyond 115 only MDIB is left, which needs a beneficiary no older than the owner.
      {"beneficiary aged 123", Owner1990(), none, none, MakeDate(1870, 1, 1), 1993, 0, nullptr, nullptr},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    GeneralInputs gen = Owner(r.birth, r.dcy);
    gen.OwnerDeathDate = r.death;
    IraRecord ira = Ira("100000");
    ira.bRecalc = r.bRecalc;
    if (r.spouse != none) {
      gen.SpouseBen = ira.SpouseBen = kTrue;
      gen.SpouseBirthDate = r.spouse;
    }
    if (r.bene != none) {
      ira.OtherBen = kTrue;
      ira.BeneBirthDate = r.bene;
    }
    IraDistResults out;
    CalcIraDist(gen, ira, out, 0.0f);
    EXPECT_EQ(out.AgesSupported, ToFlag(r.gross1987 != nullptr));
    EXPECT_EQ(out.Gross1987, r.gross1987 ? M(r.gross1987) : Money());
    EXPECT_EQ(out.GrossLater, r.grossLater ? M(r.grossLater) : Money());
  }
}

TEST_F(CalcIraDistTest, AdjustmentsAndAmountsStillToPay) {
  // Second DCY: 100,000 - 5,000 = 95,000 / V(71) 15.3 = 6,209.150327 -> 6,209.15.
  IraRecord ira = Ira("100000");
  ira.FirstYearDist = M("5000");
  ira.DistributedThisYear = M("1000");
  IraDistResults out;
  CalcIraDist(Owner(Owner1990(), 1991), ira, out, 0.0f);
  EXPECT_EQ(out.AdjustedBenefit, M("95000"));
  EXPECT_EQ(out.ToPay1987, M("5209.15"));

  // First-year distributions above the balance give no distribution; what was
  // taken shows as a negative amount to pay in both regimes of 2001.
  ira = Ira("1000");
  ira.FirstYearDist = M("2000");
  ira.DistributedThisYear = M("50");
  out = IraDistResults{};
  CalcIraDist(Owner(MakeDate(1929, 3, 1), 2001), ira, out, 0.0f);
  EXPECT_EQ(out.Gross1987, Money());
  EXPECT_EQ(out.ToPay1987, M("-50"));
  EXPECT_EQ(out.ToPayLater, M("-50"));

  // 10% over 3,906.25 is 4,296.875, a tie at the cent: 4,296.88.
  out = IraDistResults{};
  CalcIraDist(Owner(MakeDate(1933, 6, 1), 2005), Ira("100000"), out, 10.0f);
  EXPECT_EQ(out.GrossLater, M("4296.88"));
}

TEST_F(CalcIraDistTest, UnknownRecalculationElectionWarnsTwice) {
  GeneralInputs gen = Owner(Owner1990(), 1992);
  gen.SpouseBen = kTrue;
  gen.SpouseBirthDate = MakeDate(1925, 1, 1);
  IraRecord ira = Ira("100000");
  ira.SpouseBen = kTrue;
  ira.bRecalc = 7;
  IraDistResults out;
  CalcIraDist(gen, ira, out, 0.0f);
  ASSERT_EQ(rec.messages.messages.size(), 2u);  // the RBD year and the DCY
  EXPECT_EQ(rec.messages.Last().title, "Warning");
  EXPECT_EQ(rec.messages.Last().text, std::string("Contact QSW tech support, ") + kSupportPhone +
                                          ".  The value for tIra.bRecalc is outside normal limits in CalcAllLifeExp.");
  EXPECT_FLOAT_EQ(out.DcyLifeExp[kSlotJointSpouse], kNotApplicableRequired);
}

TEST_F(CalcIraDistTest, DistDeadLine) {
  const Date o1940 = MakeDate(1940, 1, 1), died = MakeDate(2005, 3, 1);
  struct Row {
    Date birth, death;
    std::int16_t dcy, spouseBen, otherBen;
    const char* text;
  } rows[] = {
      {Owner1990(), kNoDate, 1989, 0, 0, "No distribution required for 1989"},
      {Owner1990(), kNoDate, 1990, 0, 0, "4/1/1991"},
      {Owner1990(), kNoDate, 1991, 0, 0, "12/31/1991"},
      {o1940, died, 2008, kTrue, 0, "No distribution required for 2008"},  // spouse waits for 2010
      {o1940, died, 2010, kTrue, 0, "12/31/2010"},
      {o1940, died, 2006, 0, kTrue, "12/31/2006"},
  };
  for (const Row& r : rows) {
    GeneralInputs gen = Owner(r.birth, r.dcy);
    gen.OwnerDeathDate = r.death;
    IraRecord ira;
    ira.SpouseBen = r.spouseBen;
    ira.OtherBen = r.otherBen;
    EXPECT_EQ(DistDeadLine(gen, ira), r.text);
  }
  GeneralInputs odd = Owner(Owner1990(), 1992);
  odd.DistType = 1;
  EXPECT_EQ(DistDeadLine(odd, IraRecord{}), "");
  ASSERT_EQ(rec.messages.messages.size(), 1u);
  EXPECT_TRUE(rec.messages.Last().text.ends_with(std::string("option. Please call QSW technical support. ") +
                                                 kSupportPhone));
}

}  // namespace
}  // namespace ira::testing
