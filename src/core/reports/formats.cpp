#include "core/reports/formats.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <string_view>
#include <iterator>

#include "core/base/errors.h"

namespace ira::reports {
namespace {

__extension__ typedef __int128 Int128;

// A value rounded to whole cents: its sign and magnitude.
struct Cents {
  bool negative = false;
  Int128 magnitude = 0;
};

Int128 Pow10(int n) {
  Int128 p = 1;
  while (n-- > 0) p *= 10;
  return p;
}

// Half away from zero: the magnitude is rounded, then the sign put back.
Cents RoundToCents(Int128 mantissa, int scale) {
  Cents c;
  c.negative = mantissa < 0;
  const Int128 m = c.negative ? -mantissa : mantissa;
  if (scale <= 2) {
    c.magnitude = m * Pow10(2 - scale);
  } else {
    const Int128 div = Pow10(scale - 2);
    c.magnitude = m / div + (m % div * 2 >= div ? 1 : 0);
  }
  if (c.magnitude == 0) c.negative = false;  // a value that rounds to zero prints unsigned
  return c;
}

Cents CentsOf(Money amount) { return RoundToCents(amount.Raw(), 4); }

Cents CentsOf(float value) {
  const Decimal d = DecimalOf(value);
  // A single holds at most 9 significant digits: beyond 20 decimals it is
  // far below a cent, and 25 leading digits keep the 128-bit product safe.
  if (d.scale > 20) return {};
  if (d.scale < -25) {
    // Far beyond any amount this program prints; fall back to the double,
    // as long as its cents still fit the count (a single reaches 3.4e38).
    const double cents = static_cast<double>(value) * 100.0;
    if (std::fabs(cents) >= 1e38) throw OverflowError("number format");
    char buf[80];
    std::snprintf(buf, sizeof buf, "%.0f", cents);
    Cents c;
    c.negative = buf[0] == '-';
    for (const char* p = buf + (c.negative ? 1 : 0); *p != '\0'; ++p) c.magnitude = c.magnitude * 10 + (*p - '0');
    return c;
  }
  return RoundToCents(d.mantissa, d.scale);
}

// Pieces appended to one string. g++ 12 at -O3 sees false overlaps
// (-Wrestrict) in "literal" + std::string temporaries.
std::string Join(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (std::string_view part : parts) text += part;
  return text;
}

// The decimal digits of n >= 0, written from the right.
std::string Digits(Int128 n) {
  char buf[48];
  char* p = std::end(buf);
  // 64-bit division is many times quicker than 128-bit; every amount fits.
  while (n > static_cast<Int128>(UINT64_MAX)) {
    *--p = static_cast<char>('0' + static_cast<int>(n % 10));
    n /= 10;
  }
  std::uint64_t v = static_cast<std::uint64_t>(n);
  do {
    *--p = static_cast<char>('0' + v % 10);
    v /= 10;
  } while (v > 0);
  return std::string(p, std::end(buf));
}

std::string Grouped(const std::string& digits) {
  std::string out;
  const std::size_t n = digits.size();
  for (std::size_t i = 0; i < n; ++i) {
    if (i > 0 && (n - i) % 3 == 0) out += ',';
    out += digits[i];
  }
  return out;
}

std::string TwoDecimals(const Cents& c) {
  const std::string frac = Digits(c.magnitude % 100);
  return Join({frac.size() < 2 ? "0" : "", frac});
}

// At least one integer digit, two decimals, no separators.
std::string PlainText(const Cents& c) {
  return Join({c.negative ? "-" : "", Digits(c.magnitude / 100), ".", TwoDecimals(c)});
}

}  // namespace

std::string FormatAmount(Money amount) {
  const Cents c = CentsOf(amount);
  return Join({c.negative ? "-" : "", Grouped(Digits(c.magnitude / 100)), ".", TwoDecimals(c)});
}

std::string FormatPlainAmount(Money amount) { return PlainText(CentsOf(amount)); }

std::string FormatCurrency(Money amount) {
  const Cents c = CentsOf(amount);
  const std::string body = Join({"$", Grouped(Digits(c.magnitude / 100)), ".", TwoDecimals(c)});
  return c.negative ? Join({"(", body, ")"}) : body;
}

std::string FormatFixed(float value) { return PlainText(CentsOf(value)); }

std::string FormatRate(float value) {
  const Cents c = CentsOf(value);
  const Int128 whole = c.magnitude / 100;
  std::string frac = TwoDecimals(c);
  while (!frac.empty() && frac.back() == '0') frac.pop_back();
  return Join({c.negative ? "-" : "", whole == 0 ? std::string() : Digits(whole), ".", frac});
}

}  // namespace ira::reports
