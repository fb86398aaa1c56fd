// One IRA, one DCY: the nine life expectancy slots, the slot elected at the
// Required Beginning Date and the one used in the DCY, the age check and the
// amounts of each regime (CalcIraDist and its helpers, DistDeadLine).
#include "core/engine/rep_calc.h"

#include <algorithm>
#include <string_view>

#include "core/base/calendar.h"
#include "core/base/checked.h"
#include "core/base/messages.h"
#include "core/tables/datefun.h"
#include "core/tables/life_exp.h"
#include "core/tables/table_check.h"

namespace ira::rep_calc {

using datefun::AgeInYear;
using datefun::FirstDCY;

namespace {

// Wording kept as users know it from the support line's scripts.
constexpr std::string_view kBadRecalcHead = "Contact QSW tech support, ";
constexpr std::string_view kBadRecalcTail =
    ".  The value for tIra.bRecalc is outside normal limits in CalcAllLifeExp.";
constexpr std::string_view kDeadLineHead =
    "DistDeadLine() found a value it does not expect for the Type of Distribution "
    "option. Please call QSW technical support. ";

// A missing date of death counts as a death far beyond any DCY.
constexpr std::int16_t kNoDeathYear = 2150;

std::int16_t DeathYear(const GeneralInputs& gen) {
  return HasDeathDate(gen) ? YearOf(gen.OwnerDeathDate) : kNoDeathYear;
}

bool InTables(std::int16_t age) { return age >= life_exp::kMinAge && age <= life_exp::kMaxAge; }

std::int16_t NextYear(std::int16_t year) { return CheckedInt16(year + 1, "CalcAllLifeExp()"); }

// The year's required minimum: the quotient rounded to cents, never below zero,
// then the user's percentage over the minimum.
Money RequiredAmount(Money adjustedBenefit, float lifeExp, float percentOver) {
  Money gross = RoundAmt(DivLifeExp(adjustedBenefit, lifeExp), 2);
  if (gross < Money()) gross = Money();
  return RoundAmt(MulSingle(gross, 1.0f + percentOver / 100.0f), 2);
}

void FillEarlySlots(const GeneralInputs& gen, std::int16_t year, const IraRecord& ira,
                    std::array<float, kSlotCount>& slots, std::int16_t& result) {
  if (year < 2002) slots[kSlotOwnerSingle] = life_exp::SingleLifeExpInYear(gen.OwnerBirthDate, year, life_exp::kTables1986);
  if (year >= 2001) {
    // 2001 itself reads the 2002 Distribution Period whatever the IRA's choice.
    const std::int16_t sel =
        (year == 2001 || ira.chkUse2002Table != 0) ? life_exp::kTables2002 : life_exp::kTables1986;
    slots[kSlotDistPeriod] = life_exp::MdibJointLifeExp(gen.OwnerBirthDate, year, sel);
    result = kSlotDistPeriod;
  }
}

void Fill1987Slots(const GeneralInputs& gen, std::int16_t year, const IraRecord& ira,
                   std::array<float, kSlotCount>& slots) {
  const Date owner = gen.OwnerBirthDate;
  const Date spouse = gen.SpouseBirthDate;
  if (ira.SpouseBen == 0) {
    slots[kSlotOwnerSingle] = ira.bRecalc != 0 ? life_exp::TermCertainSingleLifeExp(owner, owner, year)
                                               : life_exp::SingleLifeExpInYear(owner, year, life_exp::kTables1986);
  } else {
    switch (ira.bRecalc) {
      case 0: slots[kSlotJointSpouse] = life_exp::JointLifeExpInYear(owner, spouse, year, life_exp::kTables1986); break;
      case 1: slots[kSlotJointSpouse] = life_exp::TermCertainJointLifeExp(owner, spouse, year); break;
      case 2:
        slots[kSlotJointSpouse] = life_exp::RecalcAndTermCLifeExp(owner, spouse, owner, year, life_exp::kTables1986);
        break;
      case 3:
        slots[kSlotJointSpouse] = life_exp::RecalcAndTermCLifeExp(spouse, owner, owner, year, life_exp::kTables1986);
        break;
      default:
        ShowMessage("Warning", std::string(kBadRecalcHead) + kSupportPhone + std::string(kBadRecalcTail),
                    MsgIcon::Critical);
        break;
    }
  }
  if (ira.OtherBen != 0) {
    // A non-spouse beneficiary's life expectancy is never recalculated.
    slots[kSlotJointBeneficiary] =
        ira.bRecalc != 0
            ? life_exp::TermCertainJointLifeExp(owner, ira.BeneBirthDate, year)
            : life_exp::RecalcAndTermCLifeExp(owner, ira.BeneBirthDate, owner, year, life_exp::kTables1986);
    slots[kSlotMdib] = life_exp::MdibJointLifeExp(owner, year, life_exp::kTables1986);
  }
  if (ira.SpouseBen != 0 || ira.OtherBen != 0) slots[kSlotOwnerSingle] = kNotApplicableRequired;
}

void FillLaterSlots(const GeneralInputs& gen, std::int16_t year, const IraRecord& ira,
                    std::array<float, kSlotCount>& slots, std::int16_t& result) {
  const std::int16_t sel = life_exp::SelectorForYear(year);
  const std::int16_t deathYear = DeathYear(gen);
  // The year of death is still the owner's own year.
  const bool living = !HasDeathDate(gen) || year <= deathYear;
  if (living) {
    slots[kSlotDistPeriod] = life_exp::MdibJointLifeExp(gen.OwnerBirthDate, year, sel);
    result = kSlotDistPeriod;
    if (ira.SpouseBen != 0 && ira.OtherBen == 0) {
      slots[kSlotJointSpouseRecalc] = life_exp::JointLifeExpInYear(gen.OwnerBirthDate, gen.SpouseBirthDate, year, sel);
      if (slots[kSlotJointSpouseRecalc] > slots[kSlotDistPeriod]) result = kSlotJointSpouseRecalc;
    }
    return;
  }
  if (ira.SpouseBen == 0 && ira.OtherBen == 0) {
    const float atDeath = life_exp::SingleLifeExpInYear(gen.OwnerBirthDate, deathYear, sel);
    slots[kSlotDecedent] = atDeath - static_cast<float>(year - deathYear);
    result = kSlotDecedent;
  } else if (ira.OtherBen == 0) {
    // Spouse alone: not before the year after death, nor before the owner
    // would have reached 70 1/2.
    std::int16_t start = NextYear(deathYear);
    const Date seventyHalf = datefun::Date70Half(gen.OwnerBirthDate);
    if (gen.OwnerDeathDate < seventyHalf) start = std::max(start, YearOf(seventyHalf));
    if (year >= start) {
      slots[kSlotSurvivingSpouse] = life_exp::SingleLifeExpInYear(gen.SpouseBirthDate, year, sel);
      result = kSlotSurvivingSpouse;
    }
  } else {
    const std::int16_t afterDeath = NextYear(deathYear);
    float value = life_exp::GetSingleLifeExp(AgeInYear(ira.BeneBirthDate, afterDeath), sel) -
                  static_cast<float>(year - afterDeath);
    if (value < 0.0f) value = 0.0f;
    slots[kSlotNonSpouseAfterDeath] = value;
    result = kSlotNonSpouseAfterDeath;
  }
}

// The slot a law-in-force divisor is shown in, so every reader of the
// results finds it where the described rules put the same kind of figure.
std::int16_t SlotFor(law::Basis basis) {
  switch (basis) {
    case law::Basis::kJointSpouse: return kSlotJointSpouseRecalc;
    case law::Basis::kOwnerRemaining: return kSlotDecedent;
    case law::Basis::kSpouseYearly:
    case law::Basis::kSpouseOwn:
    case law::Basis::kSpouseAsOwner: return kSlotSurvivingSpouse;
    case law::Basis::kNonSpouse:
    case law::Basis::kBeneficiaryLife:
    case law::Basis::kAnnualWaived: return kSlotNonSpouseAfterDeath;
    default: return kSlotDistPeriod;
  }
}

bool HasAmount(law::Basis basis) {
  switch (basis) {
    case law::Basis::kUniform:
    case law::Basis::kJointSpouse:
    case law::Basis::kOwnerRemaining:
    case law::Basis::kSpouseYearly:
    case law::Basis::kSpouseOwn:
    case law::Basis::kNonSpouse:
    case law::Basis::kBeneficiaryLife:
    case law::Basis::kAnnualWaived:
    case law::Basis::kWholeBalance:
    case law::Basis::kSpouseAsOwner: return true;
    default: return false;
  }
}

void StartCurrentLaw(const IraRecord& ira, IraDistResults& out, float notApplicable) {
  out.CurrentLaw = true;
  out.AgesSupported = kTrue;
  out.RbdLifeExp.fill(notApplicable);
  out.DcyLifeExp.fill(notApplicable);
  // An IRA's balance is not reduced by a first-year amount paid by April 1.
  out.UnadjustedBenefit = ira.Benefit;
  out.PriorYearMinDist = Money();
  out.AdjustedBenefit = ira.Benefit;
  out.DistributedThisYear = ira.DistributedThisYear;
}

void FinishCurrentLaw(IraDistResults& out) {
  out.GrossLater = std::max(out.GrossLater, Money());
  out.ToPayLater = out.GrossLater - out.DistributedThisYear;
}

// The owner's side of an account under the law in force, a year from 2002.
void CalcCurrentLaw(const GeneralInputs& gen, const IraRecord& ira, IraDistResults& out, float percentOver) {
  StartCurrentLaw(ira, out, kNotApplicableRequired);
  out.Law = law::OwnerSideRules(gen, ira, gen.DCY);
  out.SlotLater = SlotFor(out.Law.basis);
  if (law::IsNotComputed(out.Law.basis)) {
    out.AgesSupported = kFalse;
    return;
  }
  if (HasAmount(out.Law.basis)) {
    const float divisor = law::Divisor(out.Law);
    if (divisor >= life_exp::kNoTableValue) {
      out.AgesSupported = kFalse;
      return;
    }
    out.DcyLifeExp[out.SlotLater] = divisor;
    if (out.Law.basis == law::Basis::kJointSpouse) out.DcyLifeExp[kSlotDistPeriod] = law::UniformFigure(out.Law);
    out.GrossLater = RequiredAmount(out.AdjustedBenefit, divisor, percentOver);
    // The whole balance, and no more, in the final year.
    if (out.Law.basis == law::Basis::kWholeBalance) out.GrossLater = out.AdjustedBenefit;
    // Shown as due, and waived: nothing to pay.
    if (out.Law.basis == law::Basis::kAnnualWaived) {
      out.WaivedAmount = out.GrossLater;
      out.GrossLater = Money();
    }
  }
  FinishCurrentLaw(out);
}

// A series of substantially equal payments starting from 2023 (Notice 2022-6).
void CalcNoticeSeries(const GeneralInputs& gen, const IraRecord& ira, IraDistResults& out, float percentOver) {
  StartCurrentLaw(ira, out, kNotApplicableEarly);
  out.NoticeSeries = true;
  out.SlotLater = kSlotOwnerSingle;
  const float term = AmortizationTerm(gen, ira);
  if (term >= life_exp::kNoTableValue) {
    out.AgesSupported = kFalse;
    return;
  }
  out.DcyLifeExp[kSlotOwnerSingle] = term;
  if (gen.EarlyMethod == kMethodAmortization) {
    out.GrossLater = AmortizationPayment(gen, ira);
  } else if (gen.EarlyMethod == kMethodAnnuity) {
    if (EarlyAnnuityFactor(gen) <= 0.0f) {
      out.NoAnnuityFactor = true;
      out.AgesSupported = kFalse;
      return;
    }
    out.GrossLater = AnnuityPayment(gen, ira);
  } else {
    out.GrossLater = RequiredAmount(out.AdjustedBenefit, term, percentOver);
  }
  FinishCurrentLaw(out);
}

}  // namespace

std::int16_t CalcAllLifeExp(const GeneralInputs& gen, std::int16_t year, const IraRecord& ira,
                            std::array<float, kSlotCount>& slots) {
  const bool early = IsEarly(gen);
  slots.fill(early ? kNotApplicableEarly : kNotApplicableRequired);
  std::int16_t result = 0;
  if (early) {
    FillEarlySlots(gen, year, ira, slots, result);
  } else {
    if (Has1987Amount(year)) Fill1987Slots(gen, year, ira, slots);
    if (HasLaterAmount(year)) FillLaterSlots(gen, year, ira, slots, result);
  }
  // A life expectancy is never below one year (so the last year takes all).
  for (float& le : slots) le = std::max(le, 1.0f);
  return result;
}

void PickRbdMethod(const GeneralInputs& gen, const IraRecord& ira, IraDistResults& out) {
  if (IsEarly(gen)) {
    out.RbdSlot = kSlotOwnerSingle;
    return;
  }
  CalcAllLifeExp(gen, FirstDCY(gen.OwnerBirthDate), ira, out.RbdLifeExp);
  // The lower life expectancy is elected; a tie keeps the earlier choice.
  std::int16_t chosen = gen.SpouseBen != 0 ? kSlotJointSpouse : kSlotOwnerSingle;
  for (std::int16_t s = 0; s < kSlotCount; ++s) {
    if (out.RbdLifeExp[s] < out.RbdLifeExp[chosen]) chosen = s;
  }
  out.RbdSlot = chosen;
}

void PickDcyMethod(const GeneralInputs& gen, const IraRecord& ira, IraDistResults& out) {
  out.SlotLater = CalcAllLifeExp(gen, gen.DCY, ira, out.DcyLifeExp);
  if (!Has1987Amount(gen.DCY)) return;
  out.Slot1987 = out.RbdSlot;
  if (out.RbdSlot == kSlotJointBeneficiary || out.RbdSlot == kSlotMdib) {
    // The MDIB limit: the lower of the beneficiary's joint figure and the MDIB
    // divisor, MDIB on a tie.
    out.Slot1987 = out.DcyLifeExp[kSlotJointBeneficiary] >= out.DcyLifeExp[kSlotMdib] ? kSlotMdib
                                                                                      : kSlotJointBeneficiary;
  }
}

std::int16_t ChkAgesSupported(const GeneralInputs& gen, const IraRecord& ira, std::int16_t slot1987) {
  const bool early = IsEarly(gen);
  const std::int16_t dcy = gen.DCY;
  if (dcy > 2001) {
    // Here the year of death already counts as dead.
    const bool living = !HasDeathDate(gen) || DeathYear(gen) > dcy;
    if (early) return kTrue;
    if (living && ira.SpouseBen != 0 && ira.OtherBen == 0)
      return ToFlag(AgeInYear(gen.SpouseBirthDate, dcy) >= life_exp::kMinAge);
    if (!living && ira.OtherBen != 0)
      return ToFlag(AgeInYear(ira.BeneBirthDate, CheckedInt16(DeathYear(gen) + 1, "ChkAgesSupported()")) >=
                    life_exp::kMinAge);
    return kTrue;
  }
  if (early) return ToFlag(InTables(AgeInYear(gen.OwnerBirthDate, dcy)));

  const std::int16_t firstDcy = FirstDCY(gen.OwnerBirthDate);
  const std::int16_t agesYear = ira.bRecalc != 0 ? dcy : firstDcy;
  const bool bothKinds = ira.SpouseBen != 0 && ira.OtherBen != 0;
  if (!bothKinds && !InTables(AgeInYear(gen.OwnerBirthDate, agesYear))) return kFalse;
  if (ira.SpouseBen != 0 &&
      !(InTables(AgeInYear(gen.OwnerBirthDate, agesYear)) && InTables(AgeInYear(gen.SpouseBirthDate, agesYear))))
    return kFalse;
  if (ira.OtherBen != 0) {
    if (slot1987 == kSlotJointBeneficiary &&
        !(InTables(AgeInYear(gen.OwnerBirthDate, firstDcy)) && InTables(AgeInYear(ira.BeneBirthDate, firstDcy))))
      return kFalse;
    if (slot1987 == kSlotMdib) {
      const std::int16_t ownerAge = AgeInYear(gen.OwnerBirthDate, dcy);
      if (!(InTables(ownerAge) && AgeInYear(ira.BeneBirthDate, dcy) <= ownerAge)) return kFalse;
    }
  }
  return kTrue;
}

namespace {

void CalcIraDistOnTables(const GeneralInputs& gen, const IraRecord& ira, IraDistResults& out, float percentOver) {
  // The law in force branches here, before any described step, so no
  // figure of the described rules can move.
  if (law::ComputesRequiredYear(gen, gen.DCY)) return CalcCurrentLaw(gen, ira, out, percentOver);
  if (law::ComputesNoticeSeries(gen)) return CalcNoticeSeries(gen, ira, out, percentOver);
  PickRbdMethod(gen, ira, out);
  PickDcyMethod(gen, ira, out);
  out.AgesSupported = ChkAgesSupported(gen, ira, out.Slot1987);
  if (out.AgesSupported == kFalse) return;

  out.UnadjustedBenefit = ira.Benefit;
  out.PriorYearMinDist = ira.FirstYearDist;
  out.AdjustedBenefit = out.UnadjustedBenefit - out.PriorYearMinDist;
  out.DistributedThisYear = ira.DistributedThisYear;
  const std::int16_t dcy = gen.DCY;

  if (!IsEarly(gen) || gen.EarlyMethod == kMethodMinimum) {
    if (HasLaterAmount(dcy))
      out.GrossLater = RequiredAmount(out.AdjustedBenefit, out.DcyLifeExp[out.SlotLater], percentOver);
    if (Has1987Amount(dcy))
      out.Gross1987 = RequiredAmount(out.AdjustedBenefit, out.DcyLifeExp[out.Slot1987], percentOver);
  } else if (gen.EarlyMethod == kMethodAmortization || gen.EarlyMethod == kMethodAnnuity) {
    const Money payment =
        gen.EarlyMethod == kMethodAmortization ? AmortizationPayment(gen, ira) : AnnuityPayment(gen, ira);
    out.Gross1987 = payment;
    out.GrossLater = payment;
  }

  // A negative amount to pay out is kept: more than the minimum was taken.
  if (HasLaterAmount(dcy)) {
    out.GrossLater = std::max(out.GrossLater, Money());
    out.ToPayLater = out.GrossLater - out.DistributedThisYear;
  }
  if (Has1987Amount(dcy)) {
    out.Gross1987 = std::max(out.Gross1987, Money());
    out.ToPay1987 = out.Gross1987 - out.DistributedThisYear;
  }
}

}  // namespace

void CalcIraDist(const GeneralInputs& gen, const IraRecord& ira, IraDistResults& out, float percentOver) {
  const tables::UnusableReads reads;
  try {
    CalcIraDistOnTables(gen, ira, out, percentOver);
  } catch (...) {
    if (!reads.Any()) throw;  // a failure of its own, not of a table
  }
  // A figure that asked a missing or damaged table is withheld whole.
  // Which rules applied is kept, so the report still names them.
  if (reads.Any()) {
    IraDistResults withheld;
    withheld.CurrentLaw = out.CurrentLaw;
    withheld.NoticeSeries = out.NoticeSeries;
    withheld.Law = out.Law;
    withheld.TableDamaged = true;
    out = withheld;
  }
}

std::string DistDeadLine(const GeneralInputs& gen, const IraRecord& ira) {
  if (law::ComputesRequiredYear(gen, gen.DCY)) return law::Deadline(gen, law::OwnerSideRules(gen, ira, gen.DCY));
  const std::int16_t dcy = gen.DCY;
  const std::string yearEnd = "12/31/" + std::to_string(dcy);
  const std::string none = "No distribution required for " + std::to_string(dcy);
  if (gen.DistType == 0) return yearEnd;  // the series' payment for the year
  if (gen.DistType != kTrue) {
    ShowMessage("Warning", std::string(kDeadLineHead) + kSupportPhone, MsgIcon::Critical);
    return std::string();
  }
  const std::int16_t deathYear = DeathYear(gen);
  if (!HasDeathDate(gen) || dcy <= deathYear) {
    const std::int16_t firstDcy = FirstDCY(gen.OwnerBirthDate);
    if (dcy < firstDcy) return none;
    if (dcy == firstDcy) return FormatMdy(datefun::RequiredBeginningDate(gen.OwnerBirthDate));
    return yearEnd;
  }
  // After the owner's death distributions start the year after, or for a
  // spouse alone not before the owner would have reached 70 1/2.
  std::int16_t start = CheckedInt16(deathYear + 1, "DistDeadLine()");
  const Date seventyHalf = datefun::Date70Half(gen.OwnerBirthDate);
  if (ira.SpouseBen != 0 && ira.OtherBen == 0 && gen.OwnerDeathDate < seventyHalf)
    start = std::max(start, YearOf(seventyHalf));
  return dcy < start ? none : yearEnd;
}

}  // namespace ira::rep_calc
