#include "core/base/money.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <limits>

#include "core/base/errors.h"

namespace ira {
namespace {

__extension__ typedef __int128 Int128;

constexpr Int128 kInt64Max = std::numeric_limits<std::int64_t>::max();
constexpr Int128 kInt64Min = std::numeric_limits<std::int64_t>::min();

std::int64_t Narrow(Int128 v, std::string_view where) {
  if (v > kInt64Max || v < kInt64Min) throw OverflowError(where);
  return static_cast<std::int64_t>(v);
}

// 10^n for n in 0..38, or -1 when it does not fit.
Int128 Pow10(int n) {
  if (n < 0 || n > 38) return -1;
  Int128 p = 1;
  for (int i = 0; i < n; ++i) p *= 10;
  return p;
}

Int128 Abs(Int128 v) { return v < 0 ? -v : v; }

// num / den rounded half to even; den > 0.
Int128 DivHalfEven(Int128 num, Int128 den) {
  Int128 q = num / den;
  Int128 r = num % den;
  Int128 twice = Abs(r) * 2;
  if (twice > den || (twice == den && (q % 2 != 0))) q += (num < 0) ? -1 : 1;
  return q;
}

bool MulOverflows(Int128 a, Int128 b, Int128& out) { return __builtin_mul_overflow(a, b, &out); }

}  // namespace

Decimal DecimalOf(float value) {
  if (!std::isfinite(value)) throw Error(kErrOverflow, "Number is not finite");
  char buf[64];
  auto res = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::scientific);
  // Shortest round-trip form: d.ddddde[+-]xx
  std::string_view s(buf, static_cast<std::size_t>(res.ptr - buf));
  bool negative = false;
  if (!s.empty() && s.front() == '-') {
    negative = true;
    s.remove_prefix(1);
  }
  const auto e = s.find('e');
  std::string_view digitsPart = s.substr(0, e);
  int exponent = std::atoi(std::string(s.substr(e + 1)).c_str());
  std::int64_t mantissa = 0;
  int fractionDigits = 0;
  bool afterPoint = false;
  for (char c : digitsPart) {
    if (c == '.') {
      afterPoint = true;
      continue;
    }
    mantissa = mantissa * 10 + (c - '0');
    if (afterPoint) ++fractionDigits;
  }
  int scale = fractionDigits - exponent;
  // Drop trailing zeros so that 10 is {1, -1} and 0 is {0, 0}.
  while (mantissa != 0 && mantissa % 10 == 0) {
    mantissa /= 10;
    --scale;
  }
  if (mantissa == 0) scale = 0;
  return Decimal{negative ? -mantissa : mantissa, scale};
}

Decimal LifeExpDecimal(float value) {
  if (!std::isfinite(value)) throw Error(kErrOverflow, "Life expectancy is not finite");
  return Decimal{static_cast<std::int64_t>(std::llround(static_cast<double>(value) * 10.0)), 1};
}

double ToDouble(Decimal d) {
  return static_cast<double>(d.mantissa) * std::pow(10.0, -d.scale);
}

Money Money::FromDouble(double value) {
  if (!std::isfinite(value)) throw OverflowError("currency conversion");
  const double scaled = std::nearbyint(value * static_cast<double>(kScale));  // ties to even
  if (scaled >= 9.2233720368547758e18 || scaled < -9.2233720368547758e18)
    throw OverflowError("currency conversion");
  return Money(static_cast<std::int64_t>(scaled));
}

Money Money::FromWhole(std::int64_t units) {
  Int128 v = static_cast<Int128>(units) * kScale;
  return Money(Narrow(v, "currency conversion"));
}

Money Money::FromString(std::string_view text) {
  std::string_view s = text;
  while (!s.empty() && (s.front() == ' ' || s.front() == '$')) s.remove_prefix(1);
  while (!s.empty() && s.back() == ' ') s.remove_suffix(1);
  bool negative = false;
  if (!s.empty() && (s.front() == '-' || s.front() == '+')) {
    negative = s.front() == '-';
    s.remove_prefix(1);
  }
  Int128 digits = 0;
  int fraction = 0;
  bool point = false;
  bool any = false;
  for (char c : s) {
    if (c == ',' && !point) continue;
    if (c == '.' && !point) {
      point = true;
      continue;
    }
    if (c < '0' || c > '9') throw Error(kErrTypeMismatch, "Not an amount: " + std::string(text));
    any = true;
    digits = digits * 10 + (c - '0');
    if (point) ++fraction;
    if (digits > (static_cast<Int128>(1) << 100)) throw OverflowError("currency conversion");
  }
  if (!any) throw Error(kErrTypeMismatch, "Not an amount: " + std::string(text));
  Int128 raw = fraction <= 4 ? digits * Pow10(4 - fraction) : DivHalfEven(digits, Pow10(fraction - 4));
  if (negative) raw = -raw;
  return Money(Narrow(raw, "currency conversion"));
}

std::string Money::ToString() const {
  // Written into a buffer: g++ 12 sees a false overlap (-Wrestrict) in
  // "literal" + std::string temporaries at -O2 and above.
  const bool negative = m_raw < 0;
  // In unsigned arithmetic the most negative value has a magnitude too.
  const std::uint64_t v = negative ? 0 - static_cast<std::uint64_t>(m_raw) : static_cast<std::uint64_t>(m_raw);
  char buf[32];
  char* p = buf;
  if (negative) *p++ = '-';
  p = std::to_chars(p, std::end(buf), v / kScale).ptr;
  *p++ = '.';
  std::uint64_t frac = v % kScale;
  for (std::uint64_t unit = kScale / 10; unit > 0; unit /= 10) {
    *p++ = static_cast<char>('0' + frac / unit);
    frac %= unit;
  }
  return std::string(buf, p);
}

Money operator+(Money a, Money b) {
  std::int64_t r;
  if (__builtin_add_overflow(a.m_raw, b.m_raw, &r)) throw OverflowError("currency addition");
  return Money(r);
}

Money operator-(Money a, Money b) {
  std::int64_t r;
  if (__builtin_sub_overflow(a.m_raw, b.m_raw, &r)) throw OverflowError("currency subtraction");
  return Money(r);
}

Money Money::operator-() const {
  if (m_raw == std::numeric_limits<std::int64_t>::min()) throw OverflowError("currency negation");
  return Money(-m_raw);
}

Money MulDecimal(Money m, Decimal d) {
  Int128 product;
  if (MulOverflows(m.Raw(), d.mantissa, product)) throw OverflowError("currency multiplication");
  if (d.scale <= 0) {
    Int128 p = Pow10(-d.scale);
    Int128 r;
    if (p < 0 || MulOverflows(product, p, r)) {
      if (product == 0) return Money();
      throw OverflowError("currency multiplication");
    }
    return Money::FromRaw(Narrow(r, "currency multiplication"));
  }
  Int128 den = Pow10(d.scale);
  if (den < 0) return Money();  // far below a ten-thousandth
  return Money::FromRaw(Narrow(DivHalfEven(product, den), "currency multiplication"));
}

Money DivDecimal(Money m, Decimal d) {
  if (d.mantissa == 0) throw DivisionError("currency division");
  Int128 num = m.Raw();
  Int128 den = d.mantissa;
  if (d.scale >= 0) {
    Int128 p = Pow10(d.scale);
    if (p < 0 || MulOverflows(num, p, num)) {
      if (m.Raw() == 0) return Money();
      throw OverflowError("currency division");
    }
  } else {
    Int128 p = Pow10(-d.scale);
    if (p < 0 || MulOverflows(den, p, den)) return Money();  // divisor beyond any amount
  }
  if (den < 0) {
    den = -den;
    num = -num;
  }
  return Money::FromRaw(Narrow(DivHalfEven(num, den), "currency division"));
}

Money MulBinarySingle(Money m, float f) {
  if (!std::isfinite(f)) throw OverflowError("currency multiplication");
  int exp = 0;
  const float frac = std::frexp(f, &exp);  // f = frac * 2^exp, |frac| in [0.5, 1)
  const auto significand = static_cast<std::int64_t>(std::ldexp(frac, 24));  // exact: 24 bits
  exp -= 24;                                                               // f = significand * 2^exp
  Int128 product = static_cast<Int128>(m.Raw()) * significand;
  if (exp >= 0) {
    if (exp > 60 || MulOverflows(product, static_cast<Int128>(1) << exp, product))
      throw OverflowError("currency multiplication");
    return Money::FromRaw(Narrow(product, "currency multiplication"));
  }
  if (-exp > 120) return Money();
  return Money::FromRaw(Narrow(DivHalfEven(product, static_cast<Int128>(1) << -exp), "currency multiplication"));
}

Money RoundAmt(Money m, std::int16_t digits) {
  if (digits >= 4) return m;
  if (digits < 0) digits = 0;
  const Int128 unit = Pow10(4 - digits);
  return Money::FromRaw(Narrow(DivHalfEven(m.Raw(), unit) * unit, "RoundAmt()"));
}

}  // namespace ira
