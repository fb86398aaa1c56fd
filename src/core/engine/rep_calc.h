// The distribution engine (REP_CALC): one IRA's required distribution for one
// Distribution Calendar Year under the rules in force that year, the early
// (before 59 1/2) methods, the projection over future years and the excess
// distribution limit. It never prints: it reads the scenario and fills results.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/base/money.h"
#include "core/law/law.h"
#include "core/scenario/scenario.h"

namespace ira::rep_calc {

// A life-expectancy slot that does not apply.
inline constexpr float kNotApplicableRequired = 5000.0f;
inline constexpr float kNotApplicableEarly = -5000.0f;

// The nine life-expectancy slots.
enum Slot : std::int16_t {
  kSlotOwnerSingle = 0,       // 1987
  kSlotJointSpouse = 1,       // 1987, by bRecalc
  kSlotJointBeneficiary = 2,  // 1987
  kSlotDistPeriod = 3,        // 2001/2002
  kSlotJointSpouseRecalc = 4, // 2001/2002
  kSlotNonSpouseAfterDeath = 5,
  kSlotSurvivingSpouse = 6,
  kSlotDecedent = 7,
  kSlotMdib = 8,              // 1987
};
inline constexpr int kSlotCount = 9;

// Which regime's amount a DCY has: the 1987 amount before 2002, the later
// (2001/2002) amount from 2001; 2001 has both. Kept here, in one place.
inline bool Has1987Amount(std::int16_t dcy) { return dcy < 2002; }
inline bool HasLaterAmount(std::int16_t dcy) { return dcy >= 2001; }

struct IraDistResults {
  std::int16_t AgesSupported = 0;  // -1 true, 0 false: nothing below is valid when false
  std::int16_t RbdSlot = 0;
  std::array<float, kSlotCount> RbdLifeExp{};
  std::int16_t Slot1987 = 0;
  std::int16_t SlotLater = 0;
  std::array<float, kSlotCount> DcyLifeExp{};
  Money UnadjustedBenefit;    // 7
  Money PriorYearMinDist;     // 8: minimum distributions made this year for the prior year
  Money AdjustedBenefit;      // 9 = 7 - 8
  Money Gross1987;            // 10
  Money GrossLater;           // 11
  Money DistributedThisYear;  // 12
  Money ToPay1987;            // 13 = 10 - 12
  Money ToPayLater;           // 14 = 11 - 12
  Money WaivedAmount;         // the law in force: an annual amount a notice waived (GrossLater is 0)
  // The law in force (rule set 1) from 2002, or a Notice 2022-6 series: the
  // amounts above are the later ones; Law says which rule gave them.
  bool CurrentLaw = false;
  bool NoticeSeries = false;
  bool NoAnnuityFactor = false;  // a Notice series by the annuity method without the user's factor
  law::YearRules Law;
  // A table the computation needs is missing or damaged: AgesSupported is
  // false and no figure is valid.
  bool TableDamaged = false;
};

// Fills `out` for the scenario's DCY. percentOver is added on top of the
// required amount (the projection's "% over"); the reports pass 0.
void CalcIraDist(const GeneralInputs& gen, const IraRecord& ira, IraDistResults& out, float percentOver);
std::int16_t CalcAllLifeExp(const GeneralInputs& gen, std::int16_t year, const IraRecord& ira,
                            std::array<float, kSlotCount>& slots);
void PickRbdMethod(const GeneralInputs& gen, const IraRecord& ira, IraDistResults& out);
void PickDcyMethod(const GeneralInputs& gen, const IraRecord& ira, IraDistResults& out);
std::int16_t ChkAgesSupported(const GeneralInputs& gen, const IraRecord& ira, std::int16_t slot1987);

// The date by which the DCY's distribution must be made, as the reports print
// it: "No distribution required for <year>", the Required Beginning Date in the
// owner's first DCY, else "12/31/<year>". Of the IRA only the beneficiary
// flags matter (a dead owner's deadline depends on who inherits). Under the
// law in force it is the law module's deadline ("Not computed yet" included).
std::string DistDeadLine(const GeneralInputs& gen, const IraRecord& ira);

// Early methods 1 and 2: the level payment of the series on the IRA's
// balance, for the owner's age in the DCY (the first year of the series).
Money AmortizationPayment(const GeneralInputs& gen, const IraRecord& ira);
Money AnnuityPayment(const GeneralInputs& gen, const IraRecord& ira);
// The term of the amortization method: the owner's single life expectancy.
float AmortizationTerm(const GeneralInputs& gen, const IraRecord& ira);
// The annuity factor the annuity method uses (user's or Life Table 90CM).
float EarlyAnnuityFactor(const GeneralInputs& gen);

// Projection.
inline constexpr std::int64_t kProjNoDataRaw = -100 * Money::kScale;   // ages not supported
inline constexpr std::int64_t kProjStoppedRaw = -200 * Money::kScale;  // balance ran out earlier

struct ProjCell {
  Money BegBalance;
  Money Distribution;  // or the -100 / -200 sentinels
  Money Distributed;   // amount already distributed in the year
  Money Income;
  Money EndBalance;
  // Under the law in force: no figure because the account's rules are not
  // computed yet (Distribution holds the no-data sentinel, so a reader that
  // does not know this flag still shows no figure).
  bool NotComputed = false;
};

struct ProjYearTotals {
  Money TotalDist;
  Money CombinedEnd;
  Money Limit;
  Money Excess;
  Money Tax;
};

using ProjCells = std::vector<std::vector<ProjCell>>;  // [IRA][year index]

// Rolls every IRA of the scenario forward; writes the first-year
// distributions back into the scenario as the rules require. Unexpected
// errors (an overflow) are reported here; the arrays keep what was filled.
// A projection larger than ProjectionFits allows is not computed: the
// arrays stay empty and no year holds data.
void CalcProjResults(Scenario& scenario, ProjCells& cells, std::vector<ProjYearTotals>& totals);

// The most account-years (IRAs x projection years) a projection holds: its
// cells and the report's text of them stay within a few tens of megabytes.
// A file may ask for 32,767 of each, a billion account-years.
inline constexpr long long kMaxProjectedAccountYears = 100'000;
inline long long ProjectedAccountYears(const GeneralInputs& gen) {
  return static_cast<long long>(gen.IraCount) * gen.ProjectionYears;
}
inline bool ProjectionFits(const GeneralInputs& gen) {
  return ProjectedAccountYears(gen) <= kMaxProjectedAccountYears;
}
// Whether a projected year takes the later (2001/2002) amount rather than the
// 1987 one: required distributions from 2001, early ones from 2002.
inline bool ProjectionUsesLaterRules(std::int16_t distType, std::int16_t year) {
  return year >= (distType != 0 ? 2001 : 2002);
}
// Index of the last projected year holding data (program-wide).
std::int16_t LastProjYear();
// The calendar year whose amounts grew beyond what Money holds, so that the
// projection stopped before it; 0 when the projection ran its course.
std::int16_t ProjOverflowYear();

// The section 4980A(c) limitation for a year; 999,999,999.00 means no limit.
Money GetExcessDistLimit(float inflationRate, std::int16_t year);
inline constexpr std::int64_t kNoLimitRaw = 999999999LL * Money::kScale;
// The excess-distribution tax rate, held in single precision.
inline constexpr float kExcessTaxRate = 0.15f;

}  // namespace ira::rep_calc
