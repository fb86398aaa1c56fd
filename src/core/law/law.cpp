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

}  // namespace

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
    r.basis = Basis::kNotComputedYet;
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
    return r;
  } else {
    r.basis = Basis::kNonSpouse;
    r.lookupYear = Plus(deathYear, 1);
    r.lookupAge = AgeInYear(ira.BeneBirthDate, r.lookupYear);
  }
  r.freshStart = r.lookupYear < kFirst2022TablesYear && year >= kFirst2022TablesYear;
  return r;
}

float Divisor(const YearRules& r) {
  float value = life_exp::kNoTableValue;
  switch (r.basis) {
    case Basis::kUniform: value = life_exp::UniformLifetime(r.tables, r.ownerAge); break;
    case Basis::kJointSpouse: value = life_exp::JointLife(r.tables, r.ownerAge, r.spouseAge); break;
    case Basis::kSpouseYearly: value = life_exp::SingleLife(r.tables, r.spouseAge); break;
    case Basis::kSpouseOwn: value = life_exp::UniformLifetime(r.tables, r.spouseAge); break;
    case Basis::kOwnerRemaining:
    case Basis::kNonSpouse: {
      const float fixed = life_exp::SingleLife(r.tables, r.lookupAge);
      if (fixed >= life_exp::kNoTableValue) return fixed;
      value = fixed - static_cast<float>(r.year - r.lookupYear);
      break;
    }
    default: return value;
  }
  if (value >= life_exp::kNoTableValue) return value;
  return std::max(value, 1.0f);
}

float FixedPeriodStart(const YearRules& r) { return life_exp::SingleLife(r.tables, r.lookupAge); }

float UniformFigure(const YearRules& r) { return life_exp::UniformLifetime(r.tables, r.ownerAge); }

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
      lines.push_back({"Year of death: the owner's own amount, as if alive all year",
                       "Treas. Reg. 1.401(a)(9)-5(c)(1); 1.408-8(e)(4)"});
  } else if (r.basis == Basis::kNotComputedYet) {
    lines.push_back({"Owner died " + FormatMdy(gen.OwnerDeathDate) + ", after 2019: SECURE Act beneficiary rules",
                     "SECURE Act sec. 401(a), IRC 401(a)(9)(E) and (H)"});
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
    case Basis::kSpouseChoiceNotComputed:
    case Basis::kNotComputedYet: return lines;
  }
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
    case Basis::kSpouseOwnNotYet: return "No distribution required for " + Year(r.year);
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
