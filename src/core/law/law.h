// The law in force (rule set 1): the applicable age and required beginning
// date by birth date, which tables a distribution year uses, the waived
// years, which rule gives the owner's side of an account its divisor in a
// year, the 2022 fresh start, and the citations the reports print. The
// engine asks here and computes the amounts; the reports print what fired.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/base/calendar.h"
#include "core/scenario/scenario.h"
#include "core/tables/life_exp.h"

namespace ira::law {

using life_exp::TableSet;

// Before 2002 the law in force was the 1987 and 2001 proposed regulations,
// which the described computation already applies; rule set 1 computes its
// own way from 2002. An early series follows Notice 2022-6 from 2023.
inline constexpr std::int16_t kFirstOwnYear = 2002;
inline constexpr std::int16_t kFirstNoticeSeriesYear = 2023;

bool UsesCurrentLaw(const GeneralInputs& gen);
// Whether rule set 1 computes the scenario's required distribution for this
// year itself (otherwise the described computation applies unchanged).
bool ComputesRequiredYear(const GeneralInputs& gen, std::int16_t year);
// Whether an early series starting in the DCY follows Notice 2022-6.
bool ComputesNoticeSeries(const GeneralInputs& gen);

// One rule that fired, in plain words, with its authority.
struct RuleLine {
  std::string what;
  std::string citation;
};

struct ApplicableAge {
  std::int16_t years = 0;  // 70 for 70 1/2
  bool half = false;
  bool proposed = false;   // born 1959, age 73: a proposed regulation
  std::string Text() const { return std::to_string(years) + (half ? " 1/2" : ""); }
};
ApplicableAge ApplicableAgeFor(Date birth, std::int16_t age1959);
RuleLine ApplicableAgeRule(Date birth, std::int16_t age1959);
// The date the owner attains the applicable age, the first distribution
// calendar year (that date's year) and April 1 of the next year.
Date ApplicableAgeDate(Date birth, std::int16_t age1959);
std::int16_t FirstDistributionYear(Date birth, std::int16_t age1959);
Date RequiredBeginningDate(Date birth, std::int16_t age1959);
RuleLine RequiredBeginningDateRule();

TableSet TablesForYear(std::int16_t year);
RuleLine TablesRule(std::int16_t year);

// 2009 and 2020: no distribution required.
bool IsWaivedYear(std::int16_t year);
RuleLine WaiverRule(std::int16_t year);

// Which rule gives the owner's side of an account its divisor in a year.
enum class Basis : std::int16_t {
  kBeforeFirstYear,  // the owner has not reached the first distribution year
  kWaived,
  kUniform,          // owner living (or the year of death)
  kJointSpouse,      // spouse sole beneficiary, more than 10 years younger
  kOwnerRemaining,   // died before 2020, no beneficiary: owner's figure, less 1 a year
  kSpouseNotYet,     // died before 2020, spouse sole: payments not yet due
  kSpouseYearly,     // died before 2020, spouse sole: spouse's figure each year
  kNonSpouse,        // died before 2020, non-spouse: beneficiary's figure, less 1 a year
  kNotComputedYet,   // died from 2020: the beneficiary rules are not computed yet
  kSpouseOwnNotYet,  // died before 2020, spouse sole, treats the IRA as own: before the spouse's first year
  kSpouseOwn,        // the same from the spouse's first year: Uniform Lifetime at the spouse's age
  kSpouseChoiceNotComputed,  // the spouse chose the ten-year rule or to be treated as the owner
  // Deaths from 2020:
  kBeneficiaryLife,   // the beneficiary's figure less 1 a year (or the owner's, if greater)
  kAnnualWaived,      // the same figure under the ten-year rule, its amount waived (2021-2024)
  kNothingUntilFinal, // ten-year or five-year rule without annual amounts, before the final year
  kWholeBalance,      // the final year: the whole balance is due
  kSpouseAsOwner,     // the spouse treated as the owner: Uniform Lifetime at the spouse's age
};

// Who inherits, as the law fixes it at the owner's death (deaths from 2020).
enum class Category : std::int16_t {
  kNone,           // the owner is living, or died before 2020
  kSpouse,         // the surviving spouse, sole beneficiary
  kEligible,       // disabled, chronically ill, or not more than 10 years younger
  kMinorChild,     // the owner's child, until 21
  kDesignated,     // any other individual
  kNoDesignated,   // not an individual, or no beneficiary at all
};

// How the account must be paid out (deaths from 2020).
enum class Schedule : std::int16_t {
  kNone,
  kLifeExpectancy,
  kTenYear,         // death before the required beginning date: nothing until the final year
  kTenYearAnnual,   // on or after it: annual amounts in years 1 to 9
  kFiveYear,
  kOwnerLife,       // the owner's remaining life expectancy
  kMinorThenTen,    // life expectancy until 21, then ten more years, annual amounts continuing
  kSpouseYearly,    // the spouse's figure looked up each year
  kSpouseOwn,       // the spouse's own Uniform Lifetime figure
};

Category Classify(const GeneralInputs& gen, const IraRecord& ira);
// Deaths from 2020: on or after the required beginning date, as dates.
bool DiedOnOrAfterRbd(const GeneralInputs& gen);


struct YearRules {
  Basis basis = Basis::kBeforeFirstYear;
  std::int16_t year = 0;
  TableSet tables = TableSet::k2022;
  std::int16_t ownerAge = 0;   // in the year
  std::int16_t spouseAge = 0;  // in the year (joint)
  // A fixed period: the figure at lookupAge, looked up in lookupYear, less
  // one for each year since. freshStart: looked up again in the 2022 table.
  std::int16_t lookupYear = 0;
  std::int16_t lookupAge = 0;
  bool freshStart = false;
  std::int16_t startYear = 0;  // a surviving spouse's first year
  bool noDesignated = false;   // the beneficiary named is not an individual
  // Deaths from 2020.
  Category category = Category::kNone;
  Schedule schedule = Schedule::kNone;
  bool afterRbd = false;
  bool mixed = false;             // spouse and non-spouse on one account
  bool greaterOfOwner = false;    // the owner's remaining figure, if greater
  std::int16_t ownerLookupYear = 0;
  std::int16_t ownerLookupAge = 0;
  std::int16_t finalYear = 0;     // 0: no final year
  std::int16_t majorityYear = 0;  // a minor child's 21st birthday
  bool proposed = false;          // rests on proposed rules
  std::int16_t beneKind = 0;      // BeneKindCode
};
YearRules OwnerSideRules(const GeneralInputs& gen, const IraRecord& ira, std::int16_t year);

// The bases that give no figure at all, and what the reports say for them.
bool IsNotComputed(Basis basis);
std::string NotComputedText(const YearRules& rules);

// The divisor the rules give (kNoTableValue when a table lacks the age);
// never below one year, so the last year takes the balance.
float Divisor(const YearRules& rules);
// A fixed period's figure in its lookup year, before any year is taken off.
float FixedPeriodStart(const YearRules& rules);
// The beneficiary's and the owner's fixed periods in the rules' year.
float BeneficiaryFigure(const YearRules& rules);
float OwnerRemainingFigure(const YearRules& rules);
float OwnerRemainingStart(const YearRules& rules);
// The Uniform Lifetime figure beside a joint one, for the report.
float UniformFigure(const YearRules& rules);

// The rules that fired, in the order a reader follows them.
std::vector<RuleLine> Explain(const GeneralInputs& gen, const YearRules& rules);

// "No distribution required for <year>" (with the waiver named), the
// required beginning date in the first distribution year, else 12/31.
std::string Deadline(const GeneralInputs& gen, const YearRules& rules);
// The same as a sentence: "Distribution must be made by <date>", or the
// deadline's own words when nothing is due.
std::string DeadlineSentence(const GeneralInputs& gen, const YearRules& rules);

// What the Projection report says under an account it cannot compute.
extern const char* const kNotComputedYetText;
// The note that replaces the excess distribution rows after 1996.
extern const char* const kExcessRepealedText;
bool ExcessRepealed(std::int16_t year);  // distributions after 1996
// Under the law in force the first-year amount paid by April 1 does not
// reduce an IRA's next balance.
RuleLine SecondYearBalanceRule();

// Notice 2022-6 series.
RuleLine NoticeSeriesRule(std::int16_t method);
// An interest rate above 5% must not exceed 120% of the federal mid-term
// rate; the warning names that limit.
bool RateNeedsMidTermCheck(float ratePercent);
extern const char* const kMidTermWarning;
extern const char* const kNoAnnuityFactorText;

}  // namespace ira::law
