// Early (before 59 1/2) distributions as a series of substantially equal
// periodic payments: the amortization and annuity payments. The minimum
// distribution method is CalcIraDist itself with the early slots.
#include <cmath>

#include "core/base/errors.h"
#include "core/engine/rep_calc.h"
#include "core/tables/datefun.h"
#include "core/tables/life_exp.h"
#include "core/tables/s90cm.h"

namespace ira::rep_calc {
namespace {

// The series is fixed in its first year; the DCY stands for that year.
std::int16_t SeriesAge(const GeneralInputs& gen) { return datefun::AgeInYear(gen.OwnerBirthDate, gen.DCY); }

// d >= mantissa x 10^-scale, compared exactly (a typed 0.01 is not below 0.01).
bool AtLeast(Decimal d, std::int64_t mantissa, int scale) {
  __extension__ typedef __int128 Int128;
  Int128 lhs = d.mantissa;
  Int128 rhs = mantissa;
  // Bring both to the larger scale. A side that outgrows 128 bits (a factor
  // like 1e38 or 1e-45 from a damaged file) is beyond the other: its sign decides.
  for (int s = d.scale; s < scale; ++s) {
    if (__builtin_mul_overflow(lhs, 10, &lhs)) return d.mantissa > 0;
  }
  for (int s = scale; s < d.scale; ++s) {
    if (__builtin_mul_overflow(rhs, 10, &rhs)) return mantissa < 0;
  }
  return lhs >= rhs;
}

}  // namespace

float AmortizationTerm(const GeneralInputs& gen, const IraRecord& ira) {
  // Notice 2022-6: the 2022 Single Life Table at the age in the first year.
  if (law::ComputesNoticeSeries(gen)) return life_exp::SingleLife(life_exp::TableSet::k2022, SeriesAge(gen));
  const std::int16_t sel =
      (gen.DCY >= 2002 && ira.chkUse2002Table != 0) ? life_exp::kTables2002 : life_exp::kTables1986;
  return life_exp::GetSingleLifeExp(SeriesAge(gen), sel);
}

Money AmortizationPayment(const GeneralInputs& gen, const IraRecord& ira) {
  const double rate = ToDouble(DecimalOf(gen.IntRate)) / 100.0;
  const double term = ToDouble(LifeExpDecimal(AmortizationTerm(gen, ira)));
  const double balance = ira.Benefit.ToDouble();
  // Level end-of-period payment with no residual value; the term keeps its fraction.
  // A term of 0 (no table loaded) leaves nothing to divide by.
  const double divisor = rate == 0.0 ? term : 1.0 - std::pow(1.0 + rate, -term);
  if (divisor == 0.0) throw DivisionError("AmortizationPayment()");
  const double payment = (rate == 0.0 ? balance : balance * rate) / divisor;
  return Money::FromDouble(std::fabs(payment));
}

float EarlyAnnuityFactor(const GeneralInputs& gen) {
  if (gen.AnnuityOverride != 0 && AtLeast(DecimalOf(gen.AnnuityFactor), 1, 2)) return gen.AnnuityFactor;
  // The mortality rates Notice 2022-6 prescribes are not at hand: without the
  // user's factor there is none (0).
  if (law::ComputesNoticeSeries(gen)) return 0.0f;
  CTableS90CM table;
  table.Age(SeriesAge(gen));
  table.InterestRate(gen.AnnuityIntRate);
  return static_cast<float>(table.AnnuityFactor());
}

Money AnnuityPayment(const GeneralInputs& gen, const IraRecord& ira) {
  return DivSingle(ira.Benefit, EarlyAnnuityFactor(gen));
}

}  // namespace ira::rep_calc
