// CalcIraDist for one IRA and one DCY. Every expected amount is the balance
// divided by a figure read from the published tables, taken to four decimals
// and then rounded to the cent (half to even); the comments show the sums.
// Table VI (1986 joint) is partly reconstructed: where a case reads a cell
// other than the published MDIB column or 70/67, the value is read from the
// CSV and the comment says so.
#include <string>
#include <vector>

#include "engine_fixture.h"

namespace ira::testing {
namespace {

using namespace rep_calc;

class CalcIraDistTest : public EngineTest {};

// Born 3/15/1920: 70 1/2 on 9/15/1990, first DCY 1990, RBD 4/1/1991.
Date Owner1990() { return MakeDate(1920, 3, 15); }

TEST_F(CalcIraDistTest, OwnerAloneUnder1987Rules) {
  struct Row {
    const char* name;
    std::int16_t dcy, bRecalc;
    const char* firstYearDist;
    float lifeExp;
    const char* gross;
    const char* toPay;
  } rows[] = {
      // V(72) = 14.6: 100,000 / 14.6 = 6,849.315068 -> 6,849.3151 -> 6,849.32; less 1,000.
      {"recalculated", 1992, 0, "0", 14.6f, "6849.32", "5849.32"},
      // Fixed at V(70) = 16.0 in 1990, less 2: 100,000 / 14.0 = 7,142.857142 -> 7,142.86.
      {"term certain", 1992, 1, "0", 14.0f, "7142.86", "6142.86"},
      // Second DCY: 100,000 - 5,000 = 95,000; V(71) = 15.3: 6,209.150326 -> 6,209.15.
      {"second DCY less first-year distributions", 1991, 0, "5000", 15.3f, "6209.15", "5209.15"},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    const GeneralInputs gen = Owner(Owner1990(), r.dcy);
    IraRecord ira = Ira("100000");
    ira.bRecalc = r.bRecalc;
    ira.FirstYearDist = M(r.firstYearDist);
    ira.DistributedThisYear = M("1000");
    IraDistResults out;
    CalcIraDist(gen, ira, out, 0.0f);
    EXPECT_EQ(out.AgesSupported, kTrue);
    EXPECT_EQ(out.RbdSlot, kSlotOwnerSingle);
    EXPECT_FLOAT_EQ(out.RbdLifeExp[kSlotOwnerSingle], 16.0f);
    EXPECT_EQ(out.Slot1987, kSlotOwnerSingle);
    EXPECT_NEAR(out.DcyLifeExp[kSlotOwnerSingle], r.lifeExp, 1e-5);
    EXPECT_EQ(out.AdjustedBenefit, M("100000") - M(r.firstYearDist));
    EXPECT_EQ(out.Gross1987, M(r.gross));
    EXPECT_EQ(out.ToPay1987, M(r.toPay));
    EXPECT_EQ(out.GrossLater, Money());  // no later regime before 2001
  }
}

TEST_F(CalcIraDistTest, SpouseJointLifeFollowsTheRecalculationElection) {
  // Owner born 2/10/1925 (first DCY 1995, age 70), spouse born 5/5/1928 (67).
  // At the RBD every election reads VI(70, 67) = 22.0 (published).
  struct Row {
    const char* name;
    std::int16_t dcy, bRecalc;
    float lifeExp;
    const char* gross;
  } rows[] = {
      // Both recalculated, 1998: VI(73, 70) = 19.4 (CSV): 200,000 / 19.4 = 10,309.278350 -> 10,309.28.
      {"both recalculated", 1998, 0, 19.4f, "10309.28"},
      // Both term certain, 1999: 22.0 - 4 = 18.0: 11,111.1111 -> 11,111.11.
      {"both term certain", 1999, 1, 18.0f, "11111.11"},
      // Spouse term certain, 1999: V(67) = 18.4 - 4 = 14.4; first age from 40 with V <= 14.4
      // is 73 (V(72) = 14.6, V(73) = 13.9); VI(74, 73) = 17.7 (CSV): 11,299.435028 -> 11,299.4350 -> 11,299.44.
      {"owner recalculated, spouse term certain", 1999, 2, 17.7f, "11299.44"},
      // Owner term certain, 1998: V(70) = 16.0 - 3 = 13.0; first age with V <= 13.0 is 75
      // (V(75) = 12.5); spouse 70: VI(70, 75) = 18.8 (CSV): 10,638.297872 -> 10,638.30.
      {"spouse recalculated, owner term certain", 1998, 3, 18.8f, "10638.30"},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    GeneralInputs gen = Owner(MakeDate(1925, 2, 10), r.dcy);
    gen.SpouseBen = kTrue;
    gen.SpouseBirthDate = MakeDate(1928, 5, 5);
    IraRecord ira = Ira("200000");
    ira.SpouseBen = kTrue;
    ira.bRecalc = r.bRecalc;
    IraDistResults out;
    CalcIraDist(gen, ira, out, 0.0f);
    EXPECT_EQ(out.AgesSupported, kTrue);
    EXPECT_EQ(out.RbdSlot, kSlotJointSpouse);
    EXPECT_FLOAT_EQ(out.RbdLifeExp[kSlotJointSpouse], 22.0f);
    EXPECT_FLOAT_EQ(out.RbdLifeExp[kSlotOwnerSingle], kNotApplicableRequired);
    EXPECT_EQ(out.Slot1987, kSlotJointSpouse);
    EXPECT_NEAR(out.DcyLifeExp[kSlotJointSpouse], r.lifeExp, 1e-5);
    EXPECT_EQ(out.Gross1987, M(r.gross));
  }
}

TEST_F(CalcIraDistTest, NonSpouseBeneficiaryIsLimitedByMdib) {
  // Owner of 1990 (70 in 1990, 73 in 1993), term certain for both lives.
  struct Row {
    const char* name;
    Date beneficiary;
    std::int16_t rbdSlot, slot1987;
    const char* gross;
  } rows[] = {
      // Grandchild, 20 in 1990: VI(70, 20) = 62.0 (CSV) against MDIB VI(70, 60) = 26.2, so MDIB is
      // elected; in 1993 62.0 - 3 = 59.0 against VI(73, 63) = 23.5 (published):
      // 100,000 / 23.5 = 4,255.319148 -> 4,255.32.
      {"young beneficiary: MDIB", MakeDate(1970, 6, 1), kSlotMdib, kSlotMdib, "4255.32"},
      // 65 in 1990: VI(70, 65) = 23.1 (CSV) is below 26.2; in 1993 23.1 - 3 = 20.1 is below 23.5:
      // 100,000 / 20.1 = 4,975.124378 -> 4,975.12.
      {"older beneficiary: joint", MakeDate(1925, 6, 1), kSlotJointBeneficiary, kSlotJointBeneficiary, "4975.12"},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    const GeneralInputs gen = Owner(Owner1990(), 1993);
    IraRecord ira = Ira("100000");
    ira.OtherBen = kTrue;
    ira.BeneBirthDate = r.beneficiary;
    ira.bRecalc = 1;
    IraDistResults out;
    CalcIraDist(gen, ira, out, 0.0f);
    EXPECT_EQ(out.AgesSupported, kTrue);
    EXPECT_EQ(out.RbdSlot, r.rbdSlot);
    EXPECT_EQ(out.Slot1987, r.slot1987);
    EXPECT_FLOAT_EQ(out.DcyLifeExp[kSlotMdib], 23.5f);
    EXPECT_FLOAT_EQ(out.DcyLifeExp[kSlotOwnerSingle], kNotApplicableRequired);
    EXPECT_EQ(out.Gross1987, M(r.gross));
  }
}

TEST_F(CalcIraDistTest, RegimeFollowsTheDcy) {
  // Born 3/1/1929: first DCY 1999. No beneficiary, recalculated, 5,000 already taken.
  struct Row {
    std::int16_t dcy;
    const char *gross1987, *toPay1987, *grossLater, *toPayLater;
  } rows[] = {
      // 1987 only: V(71) = 15.3: 100,000 / 15.3 = 6,535.947712 -> 6,535.95.
      {2000, "6535.95", "1535.95", "0", "0"},
      // Both: V(72) = 14.6 -> 6,849.32; the 2001 Distribution Period is VI(72, 62) = 24.4
      // (published): 4,098.360655 -> 4,098.36, and 4,098.36 - 5,000 stays negative.
      {2001, "6849.32", "1849.32", "4098.36", "-901.64"},
      // Later only, 2002 tables: uniform(73) = 24.7: 4,048.582995 -> 4,048.58.
      {2002, "0", "0", "4048.58", "-951.42"},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.dcy);
    IraRecord ira = Ira("100000");
    ira.DistributedThisYear = M("5000");
    IraDistResults out;
    CalcIraDist(Owner(MakeDate(1929, 3, 1), r.dcy), ira, out, 0.0f);
    EXPECT_EQ(out.Gross1987, M(r.gross1987));
    EXPECT_EQ(out.ToPay1987, M(r.toPay1987));
    EXPECT_EQ(out.GrossLater, M(r.grossLater));
    EXPECT_EQ(out.ToPayLater, M(r.toPayLater));
  }
}

TEST_F(CalcIraDistTest, LivingOwnerFrom2002TakesTheLargerOfDistributionPeriodAndSpouseJoint) {
  // Born 6/1/1933: 72 in 2005; Distribution Period uniform(72) = 25.6.
  struct Row {
    const char* name;
    int spouseBirthYear;  // 0: no spouse beneficiary
    std::int16_t otherBen;
    float percentOver;
    std::int16_t slot;
    const char* gross;
  } rows[] = {
      // 100,000 / 25.6 = 3,906.25.
      {"no beneficiary", 0, 0, 0.0f, kSlotDistPeriod, "3906.25"},
      // Spouse 65: J(72, 65) = 23.7 is lower, the Distribution Period stays.
      {"spouse seven years younger", 1940, 0, 0.0f, kSlotDistPeriod, "3906.25"},
      // Spouse 62: J(72, 62) = 25.6 ties, the Distribution Period stays.
      {"spouse ten years younger", 1943, 0, 0.0f, kSlotDistPeriod, "3906.25"},
      // Spouse 55: J(72, 55) = 30.8: 3,246.753246 -> 3,246.75.
      {"spouse more than ten years younger", 1950, 0, 0.0f, kSlotJointSpouseRecalc, "3246.75"},
      // A non-spouse beneficiary as well: the Distribution Period.
      {"spouse and non-spouse", 1950, kTrue, 0.0f, kSlotDistPeriod, "3906.25"},
      // 10% over: 3,906.25 x 1.1 = 4,296.875, a tie at the cent, -> 4,296.88.
      {"ten percent over the minimum", 0, 0, 10.0f, kSlotDistPeriod, "4296.88"},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    GeneralInputs gen = Owner(MakeDate(1933, 6, 1), 2005);
    IraRecord ira = Ira("100000");
    if (r.spouseBirthYear != 0) {
      gen.SpouseBen = kTrue;
      gen.SpouseBirthDate = MakeDate(r.spouseBirthYear, 1, 1);
      ira.SpouseBen = kTrue;
    }
    ira.OtherBen = r.otherBen;
    ira.BeneBirthDate = MakeDate(1980, 1, 1);
    IraDistResults out;
    CalcIraDist(gen, ira, out, r.percentOver);
    EXPECT_EQ(out.AgesSupported, kTrue);
    EXPECT_EQ(out.SlotLater, r.slot);
    EXPECT_EQ(out.GrossLater, M(r.gross));
    EXPECT_EQ(out.Gross1987, Money());
  }
}

TEST_F(CalcIraDistTest, DeadOwnerFrom2002) {
  struct Row {
    const char* name;
    Date birth, death;
    int spouseBirthYear;  // 0: no spouse beneficiary
    Date beneficiary;     // kNoDate: no non-spouse beneficiary
    std::int16_t dcy, slot;
    float lifeExp;
    const char* gross;
  } rows[] = {
      // Died at 73 in 2003: single(73) = 14.8, less 3 by 2006 = 11.8: 8,474.576271 -> 8,474.58.
      {"no beneficiary", MakeDate(1930, 5, 1), MakeDate(2003, 6, 15), 0, kNoDate, 2006, kSlotDecedent, 11.8f,
       "8474.58"},
      // Died 2005 before 70 1/2 (7/1/2010): the spouse waits until 2010, and the slot that stays
      // chosen is the unused one: 100,000 / 5,000 = 20.00.
      {"spouse alone, before the owner's 70 1/2", MakeDate(1940, 1, 1), MakeDate(2005, 3, 1), 1942, kNoDate, 2008,
       kSlotOwnerSingle, 5000.0f, "20.00"},
      // From 2011: the spouse's single(69) = 17.8: 5,617.977528 -> 5,617.98.
      {"spouse alone, after the owner's 70 1/2", MakeDate(1940, 1, 1), MakeDate(2005, 3, 1), 1942, kNoDate, 2011,
       kSlotSurvivingSpouse, 17.8f, "5617.98"},
      // Died 2004 after 70 1/2: the spouse starts in 2005 at single(73) = 14.8: 6,756.756757 -> 6,756.76.
      {"spouse alone, the year after death", MakeDate(1930, 1, 1), MakeDate(2004, 8, 1), 1932, kNoDate, 2005,
       kSlotSurvivingSpouse, 14.8f, "6756.76"},
      // Beneficiary 25 in 2005: single(25) = 58.2, less 2 by 2007 = 56.2: 1,779.359431 -> 1,779.36.
      {"non-spouse", MakeDate(1935, 1, 1), MakeDate(2004, 5, 1), 0, MakeDate(1980, 1, 1), 2007,
       kSlotNonSpouseAfterDeath, 56.2f, "1779.36"},
      // Beneficiary 85 in 2005: 7.6 less 8 by 2013 is below zero: one year, the whole balance.
      {"non-spouse, run out", MakeDate(1935, 1, 1), MakeDate(2004, 5, 1), 1937, MakeDate(1920, 1, 1), 2013,
       kSlotNonSpouseAfterDeath, 1.0f, "100000.00"},
      // Died in the DCY: still the owner's own year, uniform(71) = 26.5: 3,773.584906 -> 3,773.58.
      {"death in the DCY", MakeDate(1935, 1, 1), MakeDate(2006, 7, 1), 0, MakeDate(1975, 1, 1), 2006,
       kSlotDistPeriod, 26.5f, "3773.58"},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    GeneralInputs gen = Owner(r.birth, r.dcy);
    gen.OwnerDeathDate = r.death;
    IraRecord ira = Ira("100000");
    if (r.spouseBirthYear != 0) {
      gen.SpouseBen = kTrue;
      gen.SpouseBirthDate = MakeDate(r.spouseBirthYear, 1, 1);
      ira.SpouseBen = kTrue;
    }
    if (r.beneficiary != kNoDate) {
      ira.OtherBen = kTrue;
      ira.BeneBirthDate = r.beneficiary;
    }
    IraDistResults out;
    CalcIraDist(gen, ira, out, 0.0f);
    EXPECT_EQ(out.AgesSupported, kTrue);
    EXPECT_EQ(out.SlotLater, r.slot);
    EXPECT_NEAR(out.DcyLifeExp[r.slot], r.lifeExp, 1e-4);
    EXPECT_EQ(out.GrossLater, M(r.gross));
  }
}

TEST_F(CalcIraDistTest, AgesOutsideTheTablesGiveNoAmounts) {
  struct Row {
    const char* name;
    GeneralInputs gen;
    IraRecord ira;
    std::int16_t supported;
  };
  std::vector<Row> rows;
  {
    // The owner who dies in the DCY is living for the life expectancy but dead
    // for this check: a beneficiary aged 2 the year after death fails it.
    GeneralInputs gen = Owner(MakeDate(1935, 1, 1), 2006);
    gen.OwnerDeathDate = MakeDate(2006, 7, 1);
    IraRecord ira = Ira("100000");
    ira.OtherBen = kTrue;
    ira.BeneBirthDate = MakeDate(2005, 1, 1);
    rows.push_back({"death in the DCY, infant beneficiary", gen, ira, kFalse});
    gen.OwnerDeathDate = kNoDate;
    rows.push_back({"same beneficiary, living owner", gen, ira, kTrue});
  }
  {
    GeneralInputs gen = Owner(MakeDate(1933, 6, 1), 2005);
    gen.SpouseBirthDate = MakeDate(2001, 1, 1);  // 4 in 2005
    IraRecord ira = Ira("100000");
    ira.SpouseBen = kTrue;
    rows.push_back({"spouse below 5, 2002 rules", gen, ira, kFalse});
    gen.DCY = 2006;  // 5 in 2006
    rows.push_back({"spouse reaching 5", gen, ira, kTrue});
  }
  {
    // A beneficiary beyond 115 leaves only MDIB, which needs a beneficiary no older than the owner.
    IraRecord ira = Ira("100000");
    ira.OtherBen = kTrue;
    ira.BeneBirthDate = MakeDate(1870, 1, 1);
    rows.push_back({"beneficiary older than the owner under MDIB", Owner(Owner1990(), 1993), ira, kFalse});
  }
  {
    GeneralInputs gen = Owner(MakeDate(1998, 1, 1), 2001);
    gen.DistType = 0;
    rows.push_back({"early owner below 5", gen, Ira("100000"), kFalse});
  }
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    IraDistResults out;
    CalcIraDist(r.gen, r.ira, out, 0.0f);
    EXPECT_EQ(out.AgesSupported, r.supported);
    if (r.supported == kFalse) {
      EXPECT_EQ(out.GrossLater, Money());
      EXPECT_EQ(out.Gross1987, Money());
      EXPECT_EQ(out.AdjustedBenefit, Money());
    }
  }
}

TEST_F(CalcIraDistTest, NegativeAdjustedBenefitGivesNoDistribution) {
  // First-year distributions above the balance: 1,000 - 2,000 = -1,000, gross 0,
  // and what was taken this year shows as a negative amount to pay.
  IraRecord ira = Ira("1000");
  ira.FirstYearDist = M("2000");
  ira.DistributedThisYear = M("50");
  IraDistResults out;
  CalcIraDist(Owner(MakeDate(1929, 3, 1), 2001), ira, out, 0.0f);
  EXPECT_EQ(out.AdjustedBenefit, M("-1000"));
  EXPECT_EQ(out.Gross1987, Money());
  EXPECT_EQ(out.GrossLater, Money());
  EXPECT_EQ(out.ToPayLater, M("-50"));
  EXPECT_EQ(out.ToPay1987, M("-50"));
}

TEST_F(CalcIraDistTest, UnknownRecalculationElectionWarnsAndLeavesTheSlotUnused) {
  GeneralInputs gen = Owner(Owner1990(), 1992);
  gen.SpouseBen = kTrue;
  gen.SpouseBirthDate = MakeDate(1925, 1, 1);
  IraRecord ira = Ira("100000");
  ira.SpouseBen = kTrue;
  ira.bRecalc = 7;
  IraDistResults out;
  CalcIraDist(gen, ira, out, 0.0f);
  // Once for the RBD year, once for the DCY.
  ASSERT_EQ(rec.messages.messages.size(), 2u);
  EXPECT_EQ(rec.messages.Last().title, "Warning");
  EXPECT_EQ(rec.messages.Last().text, std::string("Contact QSW tech support, ") + kSupportPhone +
                                          ".  The value for tIra.bRecalc is outside normal limits in CalcAllLifeExp.");
  EXPECT_EQ(rec.messages.Last().icon, MsgIcon::Critical);
  EXPECT_FLOAT_EQ(out.DcyLifeExp[kSlotJointSpouse], kNotApplicableRequired);
}

TEST_F(CalcIraDistTest, DistDeadLine) {
  struct Row {
    const char* name;
    Date birth, death;
    std::int16_t dcy, spouseBen, otherBen;
    const char* text;
  } rows[] = {
      {"before the first DCY", Owner1990(), kNoDate, 1989, 0, 0, "No distribution required for 1989"},
      {"first DCY", Owner1990(), kNoDate, 1990, 0, 0, "4/1/1991"},
      {"later DCY", Owner1990(), kNoDate, 1991, 0, 0, "12/31/1991"},
      {"spouse waits for the owner's 70 1/2", MakeDate(1940, 1, 1), MakeDate(2005, 3, 1), 2008, kTrue, 0,
       "No distribution required for 2008"},
      {"spouse from the owner's 70 1/2", MakeDate(1940, 1, 1), MakeDate(2005, 3, 1), 2010, kTrue, 0, "12/31/2010"},
      {"non-spouse the year after death", MakeDate(1940, 1, 1), MakeDate(2005, 3, 1), 2006, 0, kTrue,
       "12/31/2006"},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    GeneralInputs gen = Owner(r.birth, r.dcy);
    gen.OwnerDeathDate = r.death;
    IraRecord ira;
    ira.SpouseBen = r.spouseBen;
    ira.OtherBen = r.otherBen;
    EXPECT_EQ(DistDeadLine(gen, ira), r.text);
  }
  EXPECT_TRUE(rec.messages.messages.empty());

  GeneralInputs odd = Owner(Owner1990(), 1992);
  odd.DistType = 1;
  EXPECT_EQ(DistDeadLine(odd, IraRecord{}), "");
  ASSERT_EQ(rec.messages.messages.size(), 1u);
  EXPECT_EQ(rec.messages.Last().title, "Warning");
  EXPECT_TRUE(rec.messages.Last().text.ends_with(std::string("option. Please call QSW technical support. ") +
                                                 kSupportPhone));
}

}  // namespace
}  // namespace ira::testing
