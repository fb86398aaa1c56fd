// Money ("currency"): a signed 64-bit count of ten-thousandths. Overflow is an
// error, never a wrap. Every conversion into money names its rounding:
//  - doubles and quotients are rounded half to even at the fourth decimal;
//  - RoundAmt rounds half to even at the cents (or any given digit);
//  - a single that meets money enters by its decimal meaning (see Decimal),
//    so 100,000.00 / 14.6f is 6,849.3151, as a person gets by hand.
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

namespace ira {

// A decimal number: mantissa x 10^-scale (scale may be negative).
struct Decimal {
  std::int64_t mantissa = 0;
  int scale = 0;
};

// The shortest decimal that reads back to the same single: 14.6f -> 14.6.
Decimal DecimalOf(float value);
// A life expectancy is a one-decimal number: 17.3f - 10 (7.2999992) -> 7.3.
Decimal LifeExpDecimal(float value);
double ToDouble(Decimal d);

class Money {
 public:
  static constexpr std::int64_t kScale = 10000;

  constexpr Money() = default;
  static constexpr Money FromRaw(std::int64_t raw) { return Money(raw); }
  // Rounds half to even at the fourth decimal; throws OverflowError out of range.
  static Money FromDouble(double value);
  // Exact decimal text such as "-1234.5" or "1,234.56"; more than four
  // decimals round half to even. Throws ira::Error on a malformed text.
  static Money FromString(std::string_view text);
  static Money FromWhole(std::int64_t units);

  constexpr std::int64_t Raw() const { return m_raw; }
  double ToDouble() const { return static_cast<double>(m_raw) / kScale; }
  // Plain decimal text with four decimals ("-12.3000"), for diagnostics.
  std::string ToString() const;

  friend constexpr auto operator<=>(Money, Money) = default;
  friend Money operator+(Money a, Money b);
  friend Money operator-(Money a, Money b);
  Money operator-() const;
  Money& operator+=(Money b) { return *this = *this + b; }
  Money& operator-=(Money b) { return *this = *this - b; }

 private:
  constexpr explicit Money(std::int64_t raw) : m_raw(raw) {}
  std::int64_t m_raw = 0;
};

// money x d and money / d, computed exactly and rounded half to even at the
// fourth decimal ("converted to currency").
Money MulDecimal(Money m, Decimal d);
Money DivDecimal(Money m, Decimal d);
// A single by its decimal meaning (rates, percents, factors, 1 + p/100).
inline Money MulSingle(Money m, float f) { return MulDecimal(m, DecimalOf(f)); }
inline Money DivSingle(Money m, float f) { return DivDecimal(m, DecimalOf(f)); }
// A life expectancy by its one-decimal meaning.
inline Money DivLifeExp(Money m, float le) { return DivDecimal(m, LifeExpDecimal(le)); }
// A single by its exact binary value (the excess-tax rate 0.15 "held in single
// precision" multiplies as 0.15000000596046448).
Money MulBinarySingle(Money m, float f);

// Rounds half to even at `digits` decimals (0 to 4).
Money RoundAmt(Money m, std::int16_t digits);

}  // namespace ira
