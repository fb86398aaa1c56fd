// The law in force (rule set 1): applicable ages and dates by birth date, and
// the owner's side of an account to the cent. Figures are worked by hand from
// the published tables (data/*_2022.csv, data/*_2002.csv) and the examples of
// the regulation and of IRS guidance.
#include <gtest/gtest.h>

#include "core/law/law.h"
#include "engine_fixture.h"

namespace ira::testing {
namespace {

using law::Basis;

TEST(ApplicableAge, FollowsTheExactBirthDate) {
  struct Row {
    Date birth;
    std::int16_t age1959;
    const char* age;
    bool proposed;
    Date reached;
    std::int16_t firstYear;
    Date rbd;
  } rows[] = {
      // 70 1/2 six months after the 70th birthday, 12/30/2019: first year 2019.
      {MakeDate(1949, 6, 30), 73, "70 1/2", false, MakeDate(2019, 12, 30), 2019, MakeDate(2020, 4, 1)},
      // One day later 70 1/2 falls in 2020: age 72 applies, reached 7/1/2021.
      {MakeDate(1949, 7, 1), 73, "72", false, MakeDate(2021, 7, 1), 2021, MakeDate(2022, 4, 1)},
      {MakeDate(1950, 12, 31), 73, "72", false, MakeDate(2022, 12, 31), 2022, MakeDate(2023, 4, 1)},
      // IRS: reach 73 in 2024, first RMD due 4/1/2025.
      {MakeDate(1951, 3, 15), 73, "73", false, MakeDate(2024, 3, 15), 2024, MakeDate(2025, 4, 1)},
      {MakeDate(1959, 6, 1), 73, "73", true, MakeDate(2032, 6, 1), 2032, MakeDate(2033, 4, 1)},
      {MakeDate(1959, 6, 1), 75, "75", false, MakeDate(2034, 6, 1), 2034, MakeDate(2035, 4, 1)},
      {MakeDate(1960, 1, 1), 73, "75", false, MakeDate(2035, 1, 1), 2035, MakeDate(2036, 4, 1)},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(FormatMdy(r.birth));
    const law::ApplicableAge age = law::ApplicableAgeFor(r.birth, r.age1959);
    EXPECT_EQ(age.Text(), r.age);
    EXPECT_EQ(age.proposed, r.proposed);
    EXPECT_EQ(law::ApplicableAgeDate(r.birth, r.age1959), r.reached);
    EXPECT_EQ(law::FirstDistributionYear(r.birth, r.age1959), r.firstYear);
    EXPECT_EQ(law::RequiredBeginningDate(r.birth, r.age1959), r.rbd);
  }
}

class CurrentLawTest : public EngineTest {
 protected:
  static GeneralInputs Current(Date birth, std::int16_t dcy) {
    GeneralInputs gen = Owner(birth, dcy);
    gen.RuleSet = kRulesCurrent;
    return gen;
  }
  // An owner who died, the spouse's birth date, and one account with its beneficiaries.
  static GeneralInputs DeadOwner(Date birth, std::int16_t dcy, Date death, Date spouse, bool spouseBen) {
    GeneralInputs gen = Current(birth, dcy);
    gen.OwnerDeathDate = death;
    gen.SpouseBirthDate = spouse;
    gen.SpouseBen = ToFlag(spouseBen);
    return gen;
  }
  static IraRecord Inherited(const char* benefit, bool spouseBen, bool otherBen, Date bene, std::int16_t kind,
                             std::int16_t choice) {
    IraRecord ira = Ira(benefit);
    ira.SpouseBen = ToFlag(spouseBen);
    ira.OtherBen = ToFlag(otherBen);
    ira.BeneBirthDate = bene;
    ira.BeneKind = kind;
    ira.SpouseChoice = choice;
    return ira;
  }
};

TEST_F(CurrentLawTest, OwnerSideToTheCent) {
  struct Row {
    const char* name;
    Date birth, death, spouse, bene;
    bool spouseBen, otherBen;
    std::int16_t dcy;
    const char* benefit;
    const char* firstYearPaid;
    Basis basis;
    const char* gross;
    const char* deadline;
    std::int16_t beneKind = kBeneIndividual;
    std::int16_t spouseChoice = kSpouseRemainBeneficiary;
  } rows[] = {
      {"74 in 2025: 25.5; the first-year amount paid by 4/1 does not reduce 500,000; 19,607.8431",
       MakeDate(1951, 3, 15), kNoDate, kNoDate, kNoDate, false, false, 2025, "500000", "18867.92", Basis::kUniform,
       "19607.84", "12/31/2025"},
      {"72 in 2023, before the first year (70 1/2 in 2021 under the described rules)", MakeDate(1951, 3, 15),
       kNoDate, kNoDate, kNoDate, false, false, 2023, "500000", "0", Basis::kBeforeFirstYear, "0",
       "No distribution required for 2023"},
      {"spouse exactly 10 years younger: Uniform 24.6; 400,000 / 24.6 = 16,260.1626", MakeDate(1951, 3, 15),
       kNoDate, MakeDate(1961, 1, 1), kNoDate, true, false, 2026, "400000", "0", Basis::kUniform, "16260.16",
       "12/31/2026"},
      {"2020 is waived (CARES Act): nothing due", MakeDate(1940, 1, 1), kNoDate, kNoDate, kNoDate, false, false,
       2020, "300000", "0", Basis::kWaived, "0", "No distribution required for 2020"},
      {"2009 is waived (WRERA)", MakeDate(1930, 1, 1), kNoDate, kNoDate, kNoDate, false, false, 2009, "300000", "0",
       Basis::kWaived, "0", "No distribution required for 2009"},
      {"2021 under the 2002 tables: 81, Uniform 17.9; 100,000 / 17.9 = 5,586.5922; the year of death",
       MakeDate(1940, 1, 1), MakeDate(2021, 5, 1), kNoDate, kNoDate, false, false, 2021, "100000", "0",
       Basis::kUniform, "5586.59", "12/31/2021"},
      {"the regulation's fresh-start example in 2020: waived", MakeDate(1939, 6, 1), MakeDate(2019, 3, 1), kNoDate, MakeDate(1944, 2, 1), false,
       true, 2020, "100000", "0", Basis::kWaived, "0", "No distribution required for 2020"},
      {"no beneficiary, died 2018 at 78: 2022 table at 78 = 12.6, less 4 = 8.6; 86,000 / 8.6 = 10,000",
       MakeDate(1940, 1, 1), MakeDate(2018, 6, 1), kNoDate, kNoDate, false, false, 2022, "86000", "0",
       Basis::kOwnerRemaining, "10000.00", "12/31/2022"},
      {"the same owner leaving the account to an estate: no designated beneficiary, the owner's 8.6",
       MakeDate(1940, 1, 1), MakeDate(2018, 6, 1), kNoDate, MakeDate(2018, 6, 1), false, true, 2022, "86000", "0",
       Basis::kOwnerRemaining, "10000.00", "12/31/2022", kBeneNotIndividual},
      {"spouse sole, owner died 2015: the spouse's figure each year, 2022 table at 75 = 14.8; 7,432.4324",
       MakeDate(1940, 1, 1), MakeDate(2015, 6, 1), MakeDate(1947, 1, 1), kNoDate, true, false, 2022, "110000", "0",
       Basis::kSpouseYearly, "7432.43", "12/31/2022"},
      {"the same spouse treating it as her own: born 1947, 70 1/2 in 2017; 75 in 2022, Uniform 24.6; 4,471.5447",
       MakeDate(1940, 1, 1), MakeDate(2015, 6, 1), MakeDate(1947, 1, 1), kNoDate, true, false, 2022, "110000", "0",
       Basis::kSpouseOwn, "4471.54", "12/31/2022", kBeneIndividual, kSpouseTreatAsOwn},
      {"a spouse born 1955 treating it as her own: nothing before her age 73, in 2028", MakeDate(1940, 1, 1),
       MakeDate(2015, 6, 1), MakeDate(1955, 1, 1), kNoDate, true, false, 2022, "110000", "0",
       Basis::kSpouseOwnNotYet, "0", "No distribution required for 2022", kBeneIndividual, kSpouseTreatAsOwn},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    const GeneralInputs gen = DeadOwner(r.birth, r.dcy, r.death, r.spouse, r.spouseBen);
    IraRecord ira = Inherited(r.benefit, r.spouseBen, r.otherBen, r.bene, r.beneKind, r.spouseChoice);
    ira.FirstYearDist = M(r.firstYearPaid);
    rep_calc::IraDistResults out;
    rep_calc::CalcIraDist(gen, ira, out, 0.0f);
    EXPECT_TRUE(out.CurrentLaw);
    EXPECT_EQ(out.AgesSupported, kTrue);
    EXPECT_EQ(out.Law.basis, r.basis);
    EXPECT_EQ(out.AdjustedBenefit, M(r.benefit));
    EXPECT_EQ(out.GrossLater, M(r.gross));
    EXPECT_EQ(out.Gross1987, Money());
    EXPECT_EQ(law::Deadline(gen, out.Law), r.deadline);
    EXPECT_EQ(rep_calc::DistDeadLine(gen, ira), r.deadline);
  }
}

// Each category of beneficiary, with the owner's death before or on or after
// the required beginning date, before 2020 and from 2020. $100,000, no
// return; 2022 Single Life figures: 13 = 71.9, 33 = 52.5, 39 = 46.7,
// 43 = 42.9, 58 = 28.9, 68 = 20.4, 73 = 16.4, 76 = 14.1, 77 = 13.3, 90 = 5.7;
// Uniform Lifetime 76 = 23.7.
// Owner A: born 1/1/1945 (RBD 4/1/2016), died 6/1/2022 at 77, after the RBD;
// the owner's remaining figure in 2026 is 13.3 - 4 = 9.3.
// Owner B: born 1/1/1960 (RBD 4/1/2036), died 6/1/2022, before it.
// Owner C: born 1/1/1945, died 6/1/2018 at 73, after the RBD: 16.4 (fresh
// start) - 8 = 8.4 in 2026. Owner D: born 1/1/1955, died 6/1/2018, before
// the RBD (70 1/2 on 7/1/2025).
TEST_F(CurrentLawTest, BeneficiaryCategoriesToTheCent) {
  using law::Category;
  const Date a = MakeDate(1945, 1, 1), b = MakeDate(1960, 1, 1), d = MakeDate(1955, 1, 1);
  const Date died2022 = MakeDate(2022, 6, 1), died2018 = MakeDate(2018, 6, 1);
  constexpr bool kNo = false, kYes = true;
  struct Row {
    const char* name;
    Date birth, death, spouse, bene;
    bool spouseBen, otherBen;
    std::int16_t kind, choice, dcy;
    Basis basis;
    Category category;
    std::int16_t finalYear;
    const char* gross;
  } rows[] = {
      // Deaths from 2020, on or after the RBD.
      {"A, spouse 76 in 2026: 14.1 against 9.3; 100,000 / 14.1 = 7,092.1986", a, died2022, MakeDate(1950, 1, 1),
       kNoDate, kYes, kNo, 0, kSpouseRemainBeneficiary, 2026, Basis::kSpouseYearly, Category::kSpouse, 0, "7092.20"},
      {"A, spouse treated as the owner: Uniform 76 = 23.7; 4,219.4093", a, died2022, MakeDate(1950, 1, 1), kNoDate,
       kYes, kNo, 0, kSpouseTreatedAsOwner, 2026, Basis::kSpouseAsOwner, Category::kSpouse, 0, "4219.41"},
      {"A, 5 years younger: 73 in 2023, 16.4 - 3 = 13.4 against 9.3; 7,462.6866", a, died2022, kNoDate,
       MakeDate(1950, 1, 1), kNo, kYes, 0, 0, 2026, Basis::kBeneficiaryLife, Category::kEligible, 0, "7462.69"},
      {"A, disabled, 33 in 2023: 52.5 - 3 = 49.5; 2,020.2020", a, died2022, kNoDate, MakeDate(1990, 1, 1), kNo, kYes,
       kBeneDisabled, 0, 2026, Basis::kBeneficiaryLife, Category::kEligible, 0, "2020.20"},
      {"A, chronically ill: the same 49.5", a, died2022, kNoDate, MakeDate(1990, 1, 1), kNo, kYes,
       kBeneChronicallyIll, 0, 2026, Basis::kBeneficiaryLife, Category::kEligible, 0, "2020.20"},
      {"A, minor child 13 in 2023: 71.9 - 3 = 68.9; 1,451.3788; 21 in 2031, empty by 2041", a, died2022, kNoDate,
       MakeDate(2010, 1, 1), kNo, kYes, kBeneMinorChild, 0, 2026, Basis::kBeneficiaryLife, Category::kMinorChild,
       2041, "1451.38"},
      {"A, adult child 43 in 2023: 42.9 - 3 = 39.9; 2,506.2657; empty by 2032", a, died2022, kNoDate,
       MakeDate(1980, 1, 1), kNo, kYes, 0, 0, 2026, Basis::kBeneficiaryLife, Category::kDesignated, 2032, "2506.27"},
      {"A, spouse and adult child: the stricter ten-year rule, the spouse's 13.4", a, died2022,
       MakeDate(1950, 1, 1), MakeDate(1980, 1, 1), kYes, kYes, 0, 0, 2026, Basis::kBeneficiaryLife,
       Category::kDesignated, 2032, "7462.69"},
      {"A, no beneficiary named: the owner's 9.3; 10,752.6882", a, died2022, kNoDate, kNoDate, kNo, kNo, 0, 0, 2026,
       Basis::kOwnerRemaining, Category::kNoDesignated, 0, "10752.69"},
      // Deaths from 2020, before the RBD.
      {"B, spouse: nothing before the owner's 75, in 2035", b, died2022, MakeDate(1962, 1, 1), kNoDate, kYes, kNo,
       0, kSpouseRemainBeneficiary, 2026, Basis::kSpouseNotYet, Category::kSpouse, 0, "0"},
      {"B, spouse in 2035, 73: 16.4; 6,097.5610", b, died2022, MakeDate(1962, 1, 1), kNoDate, kYes, kNo, 0,
       kSpouseRemainBeneficiary, 2035, Basis::kSpouseYearly, Category::kSpouse, 0, "6097.56"},
      {"B, spouse's ten-year rule: nothing before 2032", b, died2022, MakeDate(1962, 1, 1), kNoDate, kYes, kNo, 0,
       kSpouseTenYear, 2026, Basis::kNothingUntilFinal, Category::kSpouse, 2032, "0"},
      {"B, 5 years younger: 58 in 2023, 28.9 - 3 = 25.9; 3,861.0039", b, died2022, kNoDate, MakeDate(1965, 1, 1),
       kNo, kYes, 0, 0, 2026, Basis::kBeneficiaryLife, Category::kEligible, 0, "3861.00"},
      {"B, adult child: ten-year rule, nothing before 2032", b, died2022, kNoDate, MakeDate(1980, 1, 1), kNo, kYes,
       0, 0, 2026, Basis::kNothingUntilFinal, Category::kDesignated, 2032, "0"},
      {"B, an estate: five-year rule, nothing in 2026", b, died2022, kNoDate, died2022, kNo, kYes,
       kBeneNotIndividual, 0, 2026, Basis::kNothingUntilFinal, Category::kNoDesignated, 2027, "0"},
      // Deaths before 2020.
      {"C, spouse 76: 14.1 against 8.4; 7,092.1986", a, died2018, MakeDate(1950, 1, 1), kNoDate, kYes, kNo, 0,
       kSpouseRemainBeneficiary, 2026, Basis::kSpouseYearly, Category::kNone, 0, "7092.20"},
      {"C, non-spouse 39 in 2019: 46.7 - 7 = 39.7; 2,518.8917", a, died2018, kNoDate, MakeDate(1980, 1, 1), kNo,
       kYes, 0, 0, 2026, Basis::kNonSpouse, Category::kNone, 0, "2518.89"},
      {"C, non-spouse 90 in 2019: 5.7 - 7 below the owner's 8.4; 11,904.7619", a, died2018, kNoDate,
       MakeDate(1929, 1, 1), kNo, kYes, 0, 0, 2026, Basis::kNonSpouse, Category::kNone, 0, "11904.76"},
      {"C, no beneficiary: the owner's 8.4", a, died2018, kNoDate, kNoDate, kNo, kNo, 0, 0, 2026,
       Basis::kOwnerRemaining, Category::kNone, 0, "11904.76"},
      // The owner would have reached the applicable age 73 in 2028 (70 1/2
      // only in 2025, after 2019).
      {"D, spouse: nothing before 2028", d, died2018, MakeDate(1960, 1, 1), kNoDate, kYes, kNo, 0,
       kSpouseRemainBeneficiary, 2026, Basis::kSpouseNotYet, Category::kNone, 0, "0"},
      {"D, spouse 68 in 2028: 20.4; 4,901.9608", d, died2018, MakeDate(1960, 1, 1), kNoDate, kYes, kNo, 0,
       kSpouseRemainBeneficiary, 2028, Basis::kSpouseYearly, Category::kNone, 0, "4901.96"},
      {"D, non-spouse: 39.7 as after the RBD", d, died2018, kNoDate, MakeDate(1980, 1, 1), kNo, kYes, 0, 0, 2026,
       Basis::kNonSpouse, Category::kNone, 0, "2518.89"},
      {"D, no beneficiary: five years without 2020, nothing in 2023", d, died2018, kNoDate, kNoDate, kNo, kNo, 0, 0,
       2023, Basis::kNothingUntilFinal, Category::kNone, 2024, "0"},
      {"D, no beneficiary in 2024: the whole balance", d, died2018, kNoDate, kNoDate, kNo, kNo, 0, 0, 2024,
       Basis::kWholeBalance, Category::kNone, 2024, "100000"},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    const GeneralInputs gen = DeadOwner(r.birth, r.dcy, r.death, r.spouse, r.spouseBen);
    const IraRecord ira = Inherited("100000", r.spouseBen, r.otherBen, r.bene, r.kind, r.choice);
    rep_calc::IraDistResults out;
    rep_calc::CalcIraDist(gen, ira, out, 0.0f);
    EXPECT_EQ(out.AgesSupported, kTrue);
    EXPECT_EQ(out.Law.basis, r.basis);
    EXPECT_EQ(law::Classify(gen, ira), r.category);
    EXPECT_EQ(out.Law.finalYear, r.finalYear);
    EXPECT_EQ(out.GrossLater, M(r.gross));
  }
}

TEST_F(CurrentLawTest, WhatIsNotComputedYetGivesNoFigure) {
  struct Row {
    const char* name;
    Date death;
    bool spouse;
    std::int16_t choice;
    Basis basis;
  } rows[] = {
      {"died in 2022 after the required beginning date, the spouse chose the ten-year rule",
       MakeDate(2022, 3, 1), true, kSpouseTenYear, Basis::kSpouseChoiceNotComputed},
      {"died in 2015, the spouse chose the ten-year rule", MakeDate(2015, 3, 1), true, kSpouseTenYear,
       Basis::kSpouseChoiceNotComputed},
      {"died in 2015, the spouse chose to be treated as the owner", MakeDate(2015, 3, 1), true,
       kSpouseTreatedAsOwner, Basis::kSpouseChoiceNotComputed},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    GeneralInputs gen = Current(MakeDate(1945, 1, 1), 2025);
    gen.OwnerDeathDate = r.death;
    gen.SpouseBirthDate = MakeDate(1950, 1, 1);
    IraRecord ira = Ira("300000");
    ira.SpouseBen = ToFlag(r.spouse);
    ira.OtherBen = ToFlag(!r.spouse);
    ira.BeneBirthDate = MakeDate(1975, 1, 1);
    ira.SpouseChoice = r.choice;
    rep_calc::IraDistResults out;
    rep_calc::CalcIraDist(gen, ira, out, 0.0f);
    EXPECT_EQ(out.Law.basis, r.basis);
    EXPECT_EQ(out.AgesSupported, kFalse);
    EXPECT_EQ(out.GrossLater, Money());
    EXPECT_EQ(law::Deadline(gen, out.Law), "Not computed yet");
  }
}

TEST_F(CurrentLawTest, NoticeSeriesOnThe2022Tables) {
  // Amortization from 2026 at 50 on $400,000 (the 4% series is a golden run).
  // Single Life 50 = 36.2.
  struct Row {
    const char* name;
    float rate;
    const char* gross;  // to four decimals, as the engine keeps a series payment
    bool midTermWarning;
  } rows[] = {
      {"amortization at 5%: 24,124.893940", 5, "24124.8939", false},
      {"amortization at 5.5%: above 5%, the mid-term limit is named", 5.5f, "", true},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    GeneralInputs gen = Current(MakeDate(1976, 5, 1), 2026);
    gen.DistType = 0;
    gen.EarlyMethod = kMethodAmortization;
    gen.IntRate = r.rate;
    rep_calc::IraDistResults out;
    rep_calc::CalcIraDist(gen, Ira("400000"), out, 0.0f);
    EXPECT_TRUE(out.NoticeSeries);
    EXPECT_EQ(rep_calc::AmortizationTerm(gen, IraRecord{}), 36.2f);
    if (*r.gross) {
      EXPECT_EQ(out.GrossLater, M(r.gross));
    }
    EXPECT_EQ(law::RateNeedsMidTermCheck(gen.IntRate), r.midTermWarning);
  }
}

TEST_F(CurrentLawTest, AFixedSeriesPaysItsFirstYearsAmountEveryYear) {
  // Amortization at 4% from 2026 at 50: 16,000 / (1 - 1.04^-36.2) =
  // 21,101.6325 in each of three years, though the age and the balance change.
  Scenario s;
  s.Gen = Current(MakeDate(1976, 5, 1), 2026);
  s.Gen.DistType = 0;
  s.Gen.EarlyMethod = kMethodAmortization;
  s.Gen.IntRate = 4;
  s.Gen.ProjectionYears = 3;
  IraRecord& ira = s.AddIra();
  ira.Benefit = M("400000");
  ira.RateOfReturn = 4;
  rep_calc::ProjCells cells;
  std::vector<rep_calc::ProjYearTotals> totals;
  rep_calc::CalcProjResults(s, cells, totals);
  for (std::size_t y = 0; y < 3; ++y) EXPECT_EQ(cells[0][y].Distribution, M("21101.6325")) << y;
}

TEST_F(CurrentLawTest, AnnuityWithoutTheUsersFactorGivesNoFigure) {
  GeneralInputs gen = Current(MakeDate(1976, 5, 1), 2026);
  gen.DistType = 0;
  gen.EarlyMethod = kMethodAnnuity;
  rep_calc::IraDistResults out;
  rep_calc::CalcIraDist(gen, Ira("400000"), out, 0.0f);
  EXPECT_TRUE(out.NoAnnuityFactor);
  EXPECT_EQ(out.AgesSupported, kFalse);
  EXPECT_EQ(out.GrossLater, Money());
}

}  // namespace
}  // namespace ira::testing
