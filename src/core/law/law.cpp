#include "core/law/law.h"

#include <algorithm>

#include "core/base/checked.h"
#include "core/base/money.h"
#include "core/tables/datefun.h"

namespace ira::law {
namespace {

using datefun::AgeInYear;

constexpr std::int16_t kFirstSecureYear = 2020;  // deaths from here: SECURE Act rules
constexpr std::int16_t kFirst2022TablesYear = 2022;
constexpr std::int16_t kLastExcessYear = 1996;
constexpr double kSafeHarbourRatePercent = 5.0;

std::string Year(std::int16_t year) { return std::to_string(year); }

bool OwnersYear(const GeneralInputs& gen, std::int16_t year) {
  return !HasDeathDate(gen) || year <= YearOf(gen.OwnerDeathDate);
}

bool SpouseSole(const IraRecord& ira) { return ira.SpouseBen != 0 && ira.OtherBen == 0; }

std::int16_t Plus(std::int16_t year, int n) { return CheckedInt16(static_cast<long long>(year) + n, "law"); }

constexpr std::int16_t kMajorityAge = 21;
constexpr int kEligibleYounger = 10;     // years younger, birth date to birth date
constexpr int kTenYears = 10;
constexpr int kFiveYears = 5;
constexpr std::int16_t kFirstSpouseAsOwnerYear = 2024;  // calendar years after 2023
constexpr std::int16_t kLastWaivedDeathYear = 2023;
constexpr std::int16_t kFirstWaivedAnnualYear = 2021;
constexpr std::int16_t kLastWaivedAnnualYear = 2024;

// The figure looked up in lookupYear at lookupAge, less one for each year since.
float FixedPeriod(TableSet tables, std::int16_t lookupAge, std::int16_t lookupYear, std::int16_t year) {
  const float fixed = life_exp::SingleLife(tables, lookupAge);
  if (fixed >= life_exp::kNoTableValue) return fixed;
  return fixed - static_cast<float>(year - lookupYear);
}

// The greater of two figures, or no figure when either table lacks the age.
float Greater(float a, float b) {
  if (a >= life_exp::kNoTableValue || b >= life_exp::kNoTableValue) return life_exp::kNoTableValue;
  return std::max(a, b);
}

// The non-spouse beneficiary's own category, as fixed at the owner's death.
Category NonSpouseCategory(const GeneralInputs& gen, const IraRecord& ira) {
  switch (ira.BeneKind) {
    case kBeneNotIndividual: return Category::kNoDesignated;
    case kBeneDisabled:
    case kBeneChronicallyIll: return Category::kEligible;
    case kBeneMinorChild:
      if (gen.OwnerDeathDate < AddYears(ira.BeneBirthDate, kMajorityAge)) return Category::kMinorChild;
      break;
    default: break;
  }
  if (ira.BeneBirthDate <= AddYears(gen.OwnerBirthDate, kEligibleYounger)) return Category::kEligible;
  return Category::kDesignated;
}

std::int16_t WaiverNoticeYear(std::int16_t year) { return year <= 2022 ? 2022 : year; }

std::string WaiverNotice(std::int16_t year) {
  const std::int16_t notice = WaiverNoticeYear(year);
  return "Notice " + Year(notice) + (notice == 2022 ? "-53" : notice == 2023 ? "-54" : "-35");
}

// The life expectancy payments of the beneficiary whose figure is used: the
// older one when a spouse and a non-spouse share an account.
void BeneficiaryLife(const GeneralInputs& gen, const IraRecord& ira, std::int16_t deathYear, YearRules& r) {
  const Date birth = r.mixed ? std::min(gen.SpouseBirthDate, ira.BeneBirthDate) : ira.BeneBirthDate;
  r.basis = Basis::kBeneficiaryLife;
  r.lookupYear = Plus(deathYear, 1);
  r.lookupAge = AgeInYear(birth, r.lookupYear);
  r.greaterOfOwner = r.afterRbd;
}

void FinalYearRule(std::int16_t year, YearRules& r) {
  if (year >= r.finalYear) r.basis = Basis::kWholeBalance;
}

void SpouseRules(const GeneralInputs& gen, const IraRecord& ira, std::int16_t year, std::int16_t deathYear,
                 YearRules& r) {
  r.spouseAge = AgeInYear(gen.SpouseBirthDate, year);
  const std::int16_t choiceYear = ira.SpouseChoiceYear != 0 ? ira.SpouseChoiceYear : Plus(deathYear, 1);
  const std::int16_t choice = year >= choiceYear ? ira.SpouseChoice : std::int16_t{kSpouseRemainBeneficiary};
  // Not before the year after death, nor, for a death before the required
  // beginning date, before the owner would have reached the applicable age.
  r.startYear = Plus(deathYear, 1);
  if (!r.afterRbd)
    r.startYear = std::max(r.startYear, FirstDistributionYear(gen.OwnerBirthDate, gen.Age1959));
  if (choice == kSpouseTreatAsOwn) {
    r.schedule = Schedule::kSpouseOwn;
    r.startYear = FirstDistributionYear(gen.SpouseBirthDate, gen.Age1959);
    r.basis = year < r.startYear ? Basis::kSpouseOwnNotYet : Basis::kSpouseOwn;
  } else if (choice == kSpouseTenYear) {
    // Open only to a spouse of an owner who died before the required beginning date.
    if (r.afterRbd) {
      r.basis = Basis::kSpouseChoiceNotComputed;
      return;
    }
    r.schedule = Schedule::kTenYear;
    r.finalYear = Plus(deathYear, kTenYears);
    r.basis = Basis::kNothingUntilFinal;
    FinalYearRule(year, r);
  } else if (choice == kSpouseTreatedAsOwner && year >= kFirstSpouseAsOwnerYear) {
    r.schedule = Schedule::kSpouseOwn;
    r.proposed = true;
    r.basis = year < r.startYear ? Basis::kSpouseNotYet : Basis::kSpouseAsOwner;
  } else {
    r.schedule = Schedule::kSpouseYearly;
    r.greaterOfOwner = r.afterRbd;
    r.basis = year < r.startYear ? Basis::kSpouseNotYet : Basis::kSpouseYearly;
  }
}

// An owner who died in 2020 or later: the SECURE Act and the 2024 final rules.
void SecureRules(const GeneralInputs& gen, const IraRecord& ira, std::int16_t year, YearRules& r) {
  const std::int16_t deathYear = YearOf(gen.OwnerDeathDate);
  r.category = Classify(gen, ira);
  r.afterRbd = DiedOnOrAfterRbd(gen);
  r.mixed = ira.SpouseBen != 0 && ira.OtherBen != 0;
  r.beneKind = ira.BeneKind;
  r.ownerLookupYear = deathYear;
  r.ownerLookupAge = AgeInYear(gen.OwnerBirthDate, deathYear);
  switch (r.category) {
    case Category::kNone: r.basis = Basis::kNotComputedYet; break;
    case Category::kSpouse: SpouseRules(gen, ira, year, deathYear, r); break;
    case Category::kNoDesignated:
      if (r.afterRbd) {
        r.schedule = Schedule::kOwnerLife;
        r.basis = Basis::kOwnerRemaining;
        r.lookupYear = r.ownerLookupYear;
        r.lookupAge = r.ownerLookupAge;
      } else {
        r.schedule = Schedule::kFiveYear;
        r.finalYear = Plus(deathYear, kFiveYears);
        r.basis = Basis::kNothingUntilFinal;
        FinalYearRule(year, r);
      }
      break;
    case Category::kEligible:
      r.schedule = Schedule::kLifeExpectancy;
      BeneficiaryLife(gen, ira, deathYear, r);
      break;
    case Category::kMinorChild:
      r.schedule = Schedule::kMinorThenTen;
      r.majorityYear = YearOf(AddYears(ira.BeneBirthDate, kMajorityAge));
      r.finalYear = Plus(r.majorityYear, kTenYears);
      BeneficiaryLife(gen, ira, deathYear, r);
      FinalYearRule(year, r);
      break;
    case Category::kDesignated:
      r.finalYear = Plus(deathYear, kTenYears);
      if (r.afterRbd) {
        r.schedule = Schedule::kTenYearAnnual;
        BeneficiaryLife(gen, ira, deathYear, r);
        if (deathYear <= kLastWaivedDeathYear && year >= kFirstWaivedAnnualYear && year <= kLastWaivedAnnualYear)
          r.basis = Basis::kAnnualWaived;
      } else {
        r.schedule = Schedule::kTenYear;
        r.basis = Basis::kNothingUntilFinal;
      }
      FinalYearRule(year, r);
      break;
  }
  r.freshStart = year >= kFirst2022TablesYear &&
                 ((r.lookupYear != 0 && r.lookupYear < kFirst2022TablesYear) ||
                  (r.greaterOfOwner && r.ownerLookupYear < kFirst2022TablesYear));
}

}  // namespace

Category Classify(const GeneralInputs& gen, const IraRecord& ira) {
  if (!HasDeathDate(gen) || YearOf(gen.OwnerDeathDate) < kFirstSecureYear) return Category::kNone;
  if (ira.OtherBen != 0) return NonSpouseCategory(gen, ira);  // the stricter, beside a spouse
  if (ira.SpouseBen != 0) return Category::kSpouse;
  return Category::kNoDesignated;
}

bool DiedOnOrAfterRbd(const GeneralInputs& gen) {
  return HasDeathDate(gen) && gen.OwnerDeathDate >= RequiredBeginningDate(gen.OwnerBirthDate, gen.Age1959);
}

const char* const kNotComputedYetText =
    "Not computed yet: see the Distribution Calculations report for the reason.";
namespace {
constexpr const char* kDiedAfter2019Text = "Not computed yet: the beneficiary rules for an owner who died after 2019.";
constexpr const char* kSpouseChoiceText =
    "Not computed yet: the spouse's choice of the ten-year rule or to be treated as the owner.";
}  // namespace
const char* const kExcessRepealedText =
    "Excess distribution limit and tax: Not applicable: repealed for distributions after 1996 (TRA 1997 sec. 1073)";
const char* const kMidTermWarning =
    "An interest rate above 5% must not exceed 120% of the federal mid-term rate for either of the two months "
    "before the first payment (Notice 2022-6 sec. 3.02(c)). Please verify the rate.";
const char* const kNoAnnuityFactorText =
    "The annuity method needs your own annuity factor: the mortality rates of Treas. Reg. 1.401(a)(9)-9(e) that "
    "Notice 2022-6 prescribes are not available to this program. No figure is given.";

bool UsesCurrentLaw(const GeneralInputs& gen) { return gen.RuleSet == kRulesCurrent; }

bool ComputesRequiredYear(const GeneralInputs& gen, std::int16_t year) {
  return UsesCurrentLaw(gen) && !IsEarly(gen) && year >= kFirstOwnYear;
}

bool ComputesNoticeSeries(const GeneralInputs& gen) {
  return UsesCurrentLaw(gen) && IsEarly(gen) && gen.DCY >= kFirstNoticeSeriesYear;
}

ApplicableAge ApplicableAgeFor(Date birth, std::int16_t age1959) {
  if (birth < MakeDate(1949, 7, 1)) return {70, true, false};
  const std::int16_t year = YearOf(birth);
  if (year <= 1950) return {72, false, false};
  if (year <= 1958) return {73, false, false};
  if (year == 1959) {
    // Any value but 75 reads as 73, the proposed regulation's age.
    if (age1959 == kAge1959Alternative) return {75, false, false};
    return {73, false, true};
  }
  return {75, false, false};
}

RuleLine ApplicableAgeRule(Date birth, std::int16_t age1959) {
  const ApplicableAge age = ApplicableAgeFor(birth, age1959);
  const std::string what = "Applicable age " + age.Text() + " (born " + FormatMdy(birth) + ")";
  if (age.half) return {what, "Treas. Reg. 1.401(a)(9)-2(b)(2)(ii): applicable age 70 1/2"};
  if (age.years == 72) return {what, "SECURE Act sec. 114: applicable age 72"};
  if (YearOf(birth) == 1959) {
    if (age.proposed)
      return {what + ", proposed regulation",
              "Prop. Treas. Reg. 1.401(a)(9)-2(b)(2)(v): applicable age 73"};
    return {what + ", as chosen for 1959", "IRC 401(a)(9)(C)(v)(II): applicable age 75"};
  }
  return {what, "SECURE 2.0 Act sec. 107: applicable age " + age.Text()};
}

Date ApplicableAgeDate(Date birth, std::int16_t age1959) {
  const ApplicableAge age = ApplicableAgeFor(birth, age1959);
  return age.half ? datefun::Date70Half(birth) : AddYears(birth, age.years);
}

std::int16_t FirstDistributionYear(Date birth, std::int16_t age1959) {
  return YearOf(ApplicableAgeDate(birth, age1959));
}

Date RequiredBeginningDate(Date birth, std::int16_t age1959) {
  return MakeDate(FirstDistributionYear(birth, age1959) + 1, 4, 1);
}

RuleLine RequiredBeginningDateRule() {
  return {"Required beginning date: April 1 of the year after the applicable age is reached",
          "IRC 401(a)(9)(C); Treas. Reg. 1.408-8(b)(1)"};
}

TableSet TablesForYear(std::int16_t year) {
  if (year >= kFirst2022TablesYear) return TableSet::k2022;
  return year >= kFirstOwnYear ? TableSet::k2002 : TableSet::k1986;
}

RuleLine TablesRule(std::int16_t year) {
  if (TablesForYear(year) == TableSet::k2022)
    return {"Life expectancy tables of 2022", "Treas. Reg. 1.401(a)(9)-9, tables in force from 2022"};
  return {"Life expectancy tables of 2002", "Treas. Reg. 1.401(a)(9)-9(f)(1): the 2002 tables through 2021"};
}

bool IsWaivedYear(std::int16_t year) { return year == 2009 || year == 2020; }

RuleLine WaiverRule(std::int16_t year) {
  const std::string what = "No distribution is required for " + Year(year);
  if (year == 2009) return {what, "Worker, Retiree, and Employer Recovery Act of 2008 sec. 201"};
  return {what, "CARES Act sec. 2203, IRC 401(a)(9)(I)"};
}

YearRules OwnerSideRules(const GeneralInputs& gen, const IraRecord& ira, std::int16_t year) {
  YearRules r;
  r.year = year;
  r.tables = TablesForYear(year);
  r.ownerAge = AgeInYear(gen.OwnerBirthDate, year);
  if (OwnersYear(gen, year)) {
    if (year < FirstDistributionYear(gen.OwnerBirthDate, gen.Age1959)) {
      r.basis = Basis::kBeforeFirstYear;
    } else if (IsWaivedYear(year)) {
      r.basis = Basis::kWaived;
    } else {
      r.basis = Basis::kUniform;
      if (SpouseSole(ira)) {
        r.spouseAge = AgeInYear(gen.SpouseBirthDate, year);
        if (r.ownerAge - r.spouseAge > 10) r.basis = Basis::kJointSpouse;
      }
    }
    return r;
  }
  const std::int16_t deathYear = YearOf(gen.OwnerDeathDate);
  if (deathYear >= kFirstSecureYear) {
    SecureRules(gen, ira, year, r);
    return r;
  }
  if (IsWaivedYear(year)) {
    r.basis = Basis::kWaived;
    return r;
  }
  // A beneficiary that is not an individual (an estate, a charity, a trust
  // that is not see-through) leaves the account without a designated
  // beneficiary, whoever else is named.
  r.noDesignated = ira.OtherBen != 0 && ira.BeneKind == kBeneNotIndividual;
  r.afterRbd = DiedOnOrAfterRbd(gen);
  r.ownerLookupYear = deathYear;
  r.ownerLookupAge = AgeInYear(gen.OwnerBirthDate, deathYear);
  r.mixed = ira.SpouseBen != 0 && ira.OtherBen != 0;
  if (((ira.SpouseBen == 0 && ira.OtherBen == 0) || r.noDesignated) && !r.afterRbd) {
    // Before the required beginning date without a designated beneficiary:
    // the five-year rule, counted without a waived year.
    r.schedule = Schedule::kFiveYear;
    r.finalYear = Plus(deathYear, kFiveYears);
    for (std::int16_t y = Plus(deathYear, 1); y <= r.finalYear; ++y)
      if (IsWaivedYear(y)) r.finalYear = Plus(r.finalYear, 1);
    r.basis = Basis::kNothingUntilFinal;
    FinalYearRule(year, r);
    return r;
  }
  if ((ira.SpouseBen == 0 && ira.OtherBen == 0) || r.noDesignated) {
    r.basis = Basis::kOwnerRemaining;
    r.lookupYear = deathYear;
    r.lookupAge = AgeInYear(gen.OwnerBirthDate, deathYear);
  } else if (ira.OtherBen == 0) {
    r.spouseAge = AgeInYear(gen.SpouseBirthDate, year);
    // The spouse's choice applies from its year, or from the year after death.
    const std::int16_t choiceYear = ira.SpouseChoiceYear != 0 ? ira.SpouseChoiceYear : Plus(deathYear, 1);
    if (ira.SpouseChoice != kSpouseRemainBeneficiary && year >= choiceYear) {
      if (ira.SpouseChoice == kSpouseTreatAsOwn) {
        r.startYear = FirstDistributionYear(gen.SpouseBirthDate, gen.Age1959);
        r.basis = year < r.startYear ? Basis::kSpouseOwnNotYet : Basis::kSpouseOwn;
      } else {
        r.basis = Basis::kSpouseChoiceNotComputed;
      }
      return r;
    }
    // Not before the year after death, nor before the owner would have
    // reached the applicable age.
    r.startYear = Plus(deathYear, 1);
    const Date reached = ApplicableAgeDate(gen.OwnerBirthDate, gen.Age1959);
    if (gen.OwnerDeathDate < reached) r.startYear = std::max(r.startYear, YearOf(reached));
    r.basis = year < r.startYear ? Basis::kSpouseNotYet : Basis::kSpouseYearly;
    // On or after the required beginning date the owner's remaining figure,
    // if longer.
    r.greaterOfOwner = r.afterRbd;
    return r;
  } else {
    // The older beneficiary's (the shorter) life expectancy when a spouse
    // shares the account.
    const Date birth = r.mixed ? std::min(gen.SpouseBirthDate, ira.BeneBirthDate) : ira.BeneBirthDate;
    r.basis = Basis::kNonSpouse;
    r.lookupYear = Plus(deathYear, 1);
    r.lookupAge = AgeInYear(birth, r.lookupYear);
    r.greaterOfOwner = r.afterRbd;
  }
  r.freshStart = year >= kFirst2022TablesYear &&
                 (r.lookupYear < kFirst2022TablesYear || (r.greaterOfOwner && r.ownerLookupYear < kFirst2022TablesYear));
  return r;
}

float Divisor(const YearRules& r) {
  float value = life_exp::kNoTableValue;
  switch (r.basis) {
    case Basis::kUniform: value = life_exp::UniformLifetime(r.tables, r.ownerAge); break;
    case Basis::kJointSpouse: value = life_exp::JointLife(r.tables, r.ownerAge, r.spouseAge); break;
    case Basis::kSpouseYearly:
      value = life_exp::SingleLife(r.tables, r.spouseAge);
      if (r.greaterOfOwner) value = Greater(value, OwnerRemainingFigure(r));
      break;
    case Basis::kSpouseOwn:
    case Basis::kSpouseAsOwner: value = life_exp::UniformLifetime(r.tables, r.spouseAge); break;
    case Basis::kWholeBalance: return 1.0f;
    case Basis::kNonSpouse:
    case Basis::kBeneficiaryLife:
    case Basis::kAnnualWaived:
      value = BeneficiaryFigure(r);
      if (r.greaterOfOwner) value = Greater(value, OwnerRemainingFigure(r));
      break;
    case Basis::kOwnerRemaining: value = BeneficiaryFigure(r); break;
    default: return value;
  }
  if (value >= life_exp::kNoTableValue) return value;
  return std::max(value, 1.0f);
}

float FixedPeriodStart(const YearRules& r) { return life_exp::SingleLife(r.tables, r.lookupAge); }

float BeneficiaryFigure(const YearRules& r) { return FixedPeriod(r.tables, r.lookupAge, r.lookupYear, r.year); }

float OwnerRemainingFigure(const YearRules& r) {
  return FixedPeriod(r.tables, r.ownerLookupAge, r.ownerLookupYear, r.year);
}

float OwnerRemainingStart(const YearRules& r) { return life_exp::SingleLife(r.tables, r.ownerLookupAge); }

float UniformFigure(const YearRules& r) { return life_exp::UniformLifetime(r.tables, r.ownerAge); }

namespace {

std::string CategoryText(const YearRules& r) {
  switch (r.category) {
    case Category::kSpouse: return "the surviving spouse, sole beneficiary (eligible designated beneficiary)";
    case Category::kEligible: return "an eligible designated beneficiary";
    case Category::kMinorChild: return "the owner's child under 21 (eligible designated beneficiary)";
    case Category::kDesignated: return "a designated beneficiary who is not an eligible one";
    case Category::kNoDesignated: return "no designated beneficiary";
    case Category::kNone: break;
  }
  return "";
}

std::string CategoryCitation(const YearRules& r) {
  switch (r.category) {
    case Category::kSpouse: return "IRC 401(a)(9)(E)(ii)(I)";
    case Category::kMinorChild: return "IRC 401(a)(9)(E)(ii)(II); Treas. Reg. 1.401(a)(9)-4(e)(3)";
    case Category::kEligible:
      if (r.beneKind == kBeneDisabled) return "IRC 401(a)(9)(E)(ii)(III)";
      if (r.beneKind == kBeneChronicallyIll) return "IRC 401(a)(9)(E)(ii)(IV)";
      return "IRC 401(a)(9)(E)(ii)(V): not more than 10 years younger than the owner";
    case Category::kDesignated: return "IRC 401(a)(9)(H)(i)";
    default: return "Treas. Reg. 1.401(a)(9)-4(a)";
  }
}

RuleLine ScheduleRule(const YearRules& r) {
  const std::string by = "the whole balance by 12/31/" + Year(r.finalYear);
  switch (r.schedule) {
    case Schedule::kTenYear: return {"Ten-year rule without annual amounts: " + by, "Treas. Reg. 1.401(a)(9)-3(c)(3)"};
    case Schedule::kTenYearAnnual:
      return {"Ten-year rule with annual amounts in years 1 to 9: " + by, "Treas. Reg. 1.401(a)(9)-5(d)(1), (e)(2)"};
    case Schedule::kFiveYear: return {"Five-year rule: " + by, "Treas. Reg. 1.401(a)(9)-3(c)(2)"};
    case Schedule::kOwnerLife:
      return {"The owner's remaining life expectancy: figure at " + std::to_string(r.ownerLookupAge) + " in " +
                  Year(r.ownerLookupYear) + ", less 1 a year",
              "Treas. Reg. 1.401(a)(9)-5(d)(1)(iii)"};
    case Schedule::kMinorThenTen:
      return {"Life expectancy until the 21st birthday in " + Year(r.majorityYear) +
                  ", then ten more years with annual amounts continuing: " + by,
              "Treas. Reg. 1.401(a)(9)-5(e)(4)"};
    case Schedule::kLifeExpectancy:
      return {"Life expectancy payments from " + Year(r.lookupYear), "Treas. Reg. 1.401(a)(9)-3(c)(4); 1.401(a)(9)-5(d)(2)"};
    case Schedule::kSpouseYearly:
      return {"The spouse remains the beneficiary: the spouse's figure, looked up each year, from " +
                  Year(r.startYear),
              "IRC 401(a)(9)(B)(iv); Treas. Reg. 1.401(a)(9)-3(d); 1.401(a)(9)-5(d)(3)(iv)"};
    case Schedule::kSpouseOwn:
      if (r.proposed)
        return {"The spouse elects to be treated as the owner: Uniform Lifetime Table at the spouse's age, from " +
                    Year(r.startYear) + " (proposed rules)",
                "SECURE 2.0 Act sec. 327, IRC 401(a)(9)(B)(iv); Prop. Treas. Reg. 1.401(a)(9)-5(g)(3) (2024)"};
      return {"The spouse treats the IRA as the spouse's own: the spouse's own applicable age and Uniform Lifetime "
              "Table, from " + Year(r.startYear),
              "Treas. Reg. 1.408-8(c)(1)"};
    case Schedule::kNone: break;
  }
  return {"", ""};
}

void ExplainSecure(const GeneralInputs& gen, const YearRules& r, std::vector<RuleLine>& lines) {
  const Date rbd = RequiredBeginningDate(gen.OwnerBirthDate, gen.Age1959);
  lines.push_back({std::string(r.afterRbd ? "On or after" : "Before") + " the owner's required beginning date, " +
                       FormatMdy(rbd),
                   RequiredBeginningDateRule().citation});
  lines.push_back({"Beneficiary: " + CategoryText(r), CategoryCitation(r)});
  if (r.mixed)
    lines.push_back({"A spouse and a non-spouse beneficiary: the stricter category governs, with the older "
                     "beneficiary's life expectancy",
                     "Treas. Reg. 1.401(a)(9)-5, A-7 (2002); 1.401(a)(9)-8(a)"});
  if (r.basis == Basis::kSpouseChoiceNotComputed) return;
  lines.push_back(ScheduleRule(r));
  const std::string year = Year(r.year);
  switch (r.basis) {
    case Basis::kBeneficiaryLife:
    case Basis::kAnnualWaived:
      lines.push_back({"The beneficiary's figure at " + std::to_string(r.lookupAge) + " in " + Year(r.lookupYear) +
                           ", less 1 a year",
                       "Treas. Reg. 1.401(a)(9)-5(d)(2)"});
      break;
    case Basis::kSpouseYearly:
      lines.push_back({"The spouse's figure at " + std::to_string(r.spouseAge) + " in " + year,
                       "Treas. Reg. 1.401(a)(9)-5(d)(3)(iv)"});
      break;
    default: break;
  }
  if (r.greaterOfOwner && (r.basis == Basis::kBeneficiaryLife || r.basis == Basis::kAnnualWaived ||
                           r.basis == Basis::kSpouseYearly))
    lines.push_back({"Death on or after the required beginning date: the greater of that and the owner's figure at " +
                         std::to_string(r.ownerLookupAge) + " in " + Year(r.ownerLookupYear) + ", less 1 a year",
                     "Treas. Reg. 1.401(a)(9)-5(d)(1)(ii)"});
  switch (r.basis) {
    case Basis::kAnnualWaived:
      lines.push_back({"The annual amount for " + year + " is due and waived; the final year does not move",
                       WaiverNotice(r.year)});
      break;
    case Basis::kNothingUntilFinal:
      lines.push_back({"No annual amount: nothing is due before " + Year(r.finalYear), ScheduleRule(r).citation});
      return;
    case Basis::kWholeBalance:
      lines.push_back({"Final year: the whole balance is due by 12/31/" + Year(r.finalYear),
                       ScheduleRule(r).citation});
      return;
    case Basis::kSpouseNotYet:
    case Basis::kSpouseOwnNotYet:
      lines.push_back({"Nothing is due before " + Year(r.startYear), ScheduleRule(r).citation});
      return;
    default: break;
  }
  if (r.schedule == Schedule::kTenYearAnnual && r.year == kLastWaivedAnnualYear + 1 &&
      r.ownerLookupYear <= kLastWaivedDeathYear)
    lines.push_back({"2025 is the first year the annual amounts are enforced; the divisor runs as if paid since " +
                         Year(r.lookupYear),
                     "T.D. 10001; Notice 2024-35"});
  if (r.freshStart)
    lines.push_back({"Fixed before 2022: reset on the 2022 table at the same age", "Treas. Reg. 1.401(a)(9)-9(f)(2)"});
  lines.push_back(TablesRule(r.year));
}

}  // namespace

std::vector<RuleLine> Explain(const GeneralInputs& gen, const YearRules& r) {
  std::vector<RuleLine> lines;
  const std::string year = Year(r.year);
  if (OwnersYear(gen, r.year)) {
    lines.push_back(ApplicableAgeRule(gen.OwnerBirthDate, gen.Age1959));
    const std::int16_t first = FirstDistributionYear(gen.OwnerBirthDate, gen.Age1959);
    lines.push_back({"First distribution year " + Year(first) + ", required beginning date " +
                         FormatMdy(RequiredBeginningDate(gen.OwnerBirthDate, gen.Age1959)),
                     RequiredBeginningDateRule().citation});
    // The year of the required beginning date may carry two amounts.
    // (Not for 2019: CARES waived that amount when it was unpaid by 2020.)
    if (r.year == first + 1 && !IsWaivedYear(first) && first != 2019)
      lines.push_back({"The " + Year(first) + " amount, if not yet taken, is also due by " +
                           FormatMdy(RequiredBeginningDate(gen.OwnerBirthDate, gen.Age1959)),
                       "Treas. Reg. 1.401(a)(9)-5(a)(2)"});
    // A 2019 first-year amount was due by 4/1/2020; CARES waived it unless
    // paid before 2020.
    if (first == 2019 && r.year == 2019)
      lines.push_back({"Not required if not paid before 1/1/2020", "CARES Act sec. 2203, IRC 401(a)(9)(I)"});
    if (HasDeathDate(gen) && r.year == YearOf(gen.OwnerDeathDate))
      lines.push_back({"Year of death: the owner's own amount, as if alive all year; what the owner did not take "
                       "is due from the beneficiary",
                       "Treas. Reg. 1.401(a)(9)-5(c)(1); 1.408-8(e)(4)"});
  } else if (YearOf(gen.OwnerDeathDate) >= kFirstSecureYear) {
    lines.push_back({"Owner died " + FormatMdy(gen.OwnerDeathDate) + ", after 2019: SECURE Act beneficiary rules",
                     "SECURE Act sec. 401(a), IRC 401(a)(9)(E) and (H); T.D. 10001"});
    if (r.basis == Basis::kNotComputedYet) return lines;
    ExplainSecure(gen, r, lines);
    return lines;
  } else {
    lines.push_back({"Owner died " + FormatMdy(gen.OwnerDeathDate) +
                         ", before 2020: beneficiary rules before the SECURE Act",
                     "SECURE Act sec. 401(b)(1)"});
  }
  const std::string age = std::to_string(r.ownerAge);
  switch (r.basis) {
    case Basis::kBeforeFirstYear:
      lines.push_back({"No distribution is required before the first distribution calendar year",
                       "IRC 401(a)(9)(C)"});
      return lines;
    case Basis::kWaived:
      lines.push_back(WaiverRule(r.year));
      return lines;
    case Basis::kUniform:
      lines.push_back({"Owner " + age + " in " + year + ": Uniform Lifetime Table", "Treas. Reg. 1.401(a)(9)-5(c)(1)"});
      break;
    case Basis::kJointSpouse:
      lines.push_back({"Spouse sole beneficiary, more than 10 years younger (" + age + "/" +
                           std::to_string(r.spouseAge) + "): joint table",
                       "Treas. Reg. 1.401(a)(9)-5(c)(2)"});
      break;
    case Basis::kOwnerRemaining:
      if (r.noDesignated)
        lines.push_back({"The beneficiary is not an individual: no designated beneficiary",
                         "Treas. Reg. 1.401(a)(9)-4, A-3 (2002)"});
      lines.push_back({"No beneficiary: the owner's figure at " + std::to_string(r.lookupAge) + " in " +
                           Year(r.lookupYear) + ", less 1 a year",
                       "Treas. Reg. 1.401(a)(9)-5, A-5(a)(2) and (c)(3) (2002)"});
      break;
    case Basis::kSpouseNotYet:
      lines.push_back({"Spouse sole beneficiary: distributions begin in " + Year(r.startYear),
                       "IRC 401(a)(9)(B)(iv)"});
      return lines;
    case Basis::kSpouseYearly:
      lines.push_back({"Spouse sole beneficiary: the spouse's figure at " + std::to_string(r.spouseAge) +
                           ", looked up each year",
                       "Treas. Reg. 1.401(a)(9)-5, A-5(c)(2) (2002)"});
      break;
    case Basis::kNonSpouse:
      lines.push_back({"Non-spouse beneficiary: figure at " + std::to_string(r.lookupAge) + " in " +
                           Year(r.lookupYear) + ", less 1 a year",
                       "Treas. Reg. 1.401(a)(9)-5, A-5(c)(1) (2002)"});
      if (r.mixed)
        lines.push_back({"A spouse and a non-spouse beneficiary: the older beneficiary's figure",
                         "Treas. Reg. 1.401(a)(9)-5, A-7 (2002)"});
      break;
    case Basis::kSpouseOwnNotYet:
      lines.push_back({"The spouse treats the IRA as the spouse's own: nothing is due before the spouse's "
                       "first distribution year, " + Year(r.startYear),
                       "Treas. Reg. 1.408-8(c)(1)"});
      return lines;
    case Basis::kSpouseOwn:
      lines.push_back({"The spouse treats the IRA as the spouse's own: spouse " + std::to_string(r.spouseAge) +
                           ", Uniform Lifetime Table",
                       "Treas. Reg. 1.408-8(c)(1); 1.401(a)(9)-5(c)(1)"});
      break;
    case Basis::kNothingUntilFinal:
    case Basis::kWholeBalance:
      lines.push_back({"No designated beneficiary, death before the required beginning date: five-year rule, the "
                       "whole balance by 12/31/" + Year(r.finalYear) + (r.finalYear - r.ownerLookupYear > kFiveYears
                                                                             ? " (a waived year not counted)"
                                                                             : ""),
                       "Treas. Reg. 1.401(a)(9)-3, A-2 and A-4(a)(2) (2002); IRC 401(a)(9)(H), (I)"});
      return lines;
    case Basis::kSpouseChoiceNotComputed:
    case Basis::kNotComputedYet:
    case Basis::kBeneficiaryLife:
    case Basis::kAnnualWaived:
    case Basis::kSpouseAsOwner: return lines;
  }
  if (r.greaterOfOwner)
    lines.push_back({"Death on or after the required beginning date: the owner's figure at " +
                         std::to_string(r.ownerLookupAge) + " in " + Year(r.ownerLookupYear) +
                         ", less 1 a year, if greater",
                     "Treas. Reg. 1.401(a)(9)-5, A-5(a)(1) (2002)"});
  if (r.freshStart)
    lines.push_back({"Fixed before 2022: reset on the 2022 table at the same age",
                     "Treas. Reg. 1.401(a)(9)-9(f)(2)"});
  lines.push_back(TablesRule(r.year));
  return lines;
}

std::string Deadline(const GeneralInputs& gen, const YearRules& r) {
  switch (r.basis) {
    case Basis::kBeforeFirstYear:
    case Basis::kWaived:
    case Basis::kSpouseNotYet:
    case Basis::kSpouseOwnNotYet:
    case Basis::kNothingUntilFinal: return "No distribution required for " + Year(r.year);
    case Basis::kAnnualWaived: return "No distribution required for " + Year(r.year) + " (waived)";
    case Basis::kNotComputedYet:
    case Basis::kSpouseChoiceNotComputed: return "Not computed yet";
    default: break;
  }
  if (r.basis == Basis::kSpouseOwn && r.year == r.startYear)
    return FormatMdy(RequiredBeginningDate(gen.SpouseBirthDate, gen.Age1959));
  if (OwnersYear(gen, r.year) && r.year == FirstDistributionYear(gen.OwnerBirthDate, gen.Age1959))
    return FormatMdy(RequiredBeginningDate(gen.OwnerBirthDate, gen.Age1959));
  return "12/31/" + Year(r.year);
}

bool IsNotComputed(Basis basis) {
  return basis == Basis::kNotComputedYet || basis == Basis::kSpouseChoiceNotComputed;
}

std::string NotComputedText(const YearRules& r) {
  if (r.basis == Basis::kSpouseChoiceNotComputed && r.category == Category::kSpouse)
    return "Not computed: the ten-year rule is open to a spouse only when the owner died before the required "
           "beginning date. Please choose another option for the spouse.";
  return r.basis == Basis::kSpouseChoiceNotComputed ? kSpouseChoiceText : kDiedAfter2019Text;
}

std::string DeadlineSentence(const GeneralInputs& gen, const YearRules& r) {
  const std::string deadline = Deadline(gen, r);
  if (deadline.empty() || deadline.front() == 'N') return deadline;
  return "Distribution must be made by " + deadline;
}

bool ExcessRepealed(std::int16_t year) { return year > kLastExcessYear; }

RuleLine SecondYearBalanceRule() {
  return {"The balance is not reduced by a first-year amount paid by April 1", "Treas. Reg. 1.408-8; 1.401(a)(9)-5(a)"};
}

RuleLine NoticeSeriesRule(std::int16_t method) {
  if (method == kMethodAnnuity)
    return {"Series starting from 2023: annuity method, the user's annuity factor", "Notice 2022-6 sec. 3.01(c)"};
  return {"Series starting from 2023: 2022 Single Life Table", "Notice 2022-6 sec. 3.01, 3.02(a)"};
}

bool RateNeedsMidTermCheck(float ratePercent) {
  return ToDouble(DecimalOf(ratePercent)) > kSafeHarbourRatePercent;
}

}  // namespace ira::law
