#include "core/tables/s90cm.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "core/base/errors.h"
#include "core/base/messages.h"
#include "core/base/money.h"
#include "core/base/program.h"
#include "core/base/text.h"
#include "core/tables/table_check.h"
#include "core/tables/tables.h"

namespace ira {
namespace {

constexpr const char* kTableFile = "s-90cm.tbl";
constexpr float kLowestRate = 4.2f;
constexpr float kHighestRate = 14.0f;
constexpr std::int16_t kLowestAge = 1;  // age 0 has a column but is still warned about
constexpr std::int16_t kHighestAge = 109;
constexpr double kSameRate = 0.001;
constexpr std::int64_t kUnits = 100000;  // factors have five decimals

// Fixed texts; the wording is deliberate.
constexpr const char* kWarningTitle = "WARNING";
constexpr const char* kNotLocated =
    " could not be located. This is a critical file for this application. Try reinstalling the program "
    "before running the program again.";

// The grid is read like the fixed array it stands for: a row or column
// outside it is the run-time error "Subscript out of range".
double Cell(const CTableS90CM::Grid& grid, int row, int column) {
  if (row < 0 || row >= CTableS90CM::kRows || column < 0 || column >= CTableS90CM::kColumns)
    throw Error(kErrSubscript, "Subscript out of range");
  return grid[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
}

std::int64_t Pow10(int n) {
  std::int64_t p = 1;
  for (int i = 0; i < n; ++i) {
    if (__builtin_mul_overflow(p, 10, &p)) throw OverflowError("CTableS90CM");
  }
  return p;
}

std::int64_t Mul(std::int64_t a, std::int64_t b) {
  std::int64_t r = 0;
  if (__builtin_mul_overflow(a, b, &r)) throw OverflowError("CTableS90CM");
  return r;
}

std::int64_t Add(std::int64_t a, std::int64_t b) {
  std::int64_t r = 0;
  if (__builtin_add_overflow(a, b, &r)) throw OverflowError("CTableS90CM");
  return r;
}

// num / den rounded half to even.
std::int64_t DivHalfEven(std::int64_t num, std::int64_t den) {
  if (den == 0) throw DivisionError("CTableS90CM");
  if (den < 0) {
    num = -num;
    den = -den;
  }
  std::int64_t q = num / den;
  const std::int64_t twice = Mul(std::abs(num % den), 2);
  if (twice > den || (twice == den && q % 2 != 0)) q += num < 0 ? -1 : 1;
  return q;
}

// Decimal places of a rate as typed (0 for whole numbers).
int RateScale(float rate) { return std::max(DecimalOf(rate).scale, 0); }

// A rate's decimal meaning in units of 10^-scale, scale at least RateScale(rate).
std::int64_t RateUnits(float rate, int scale) {
  const Decimal d = DecimalOf(rate);
  return Mul(d.mantissa, Pow10(scale - d.scale));
}

// The nearest double to a rate's decimal meaning (6.1f -> 6.1).
double RateValue(float rate) {
  const Decimal d = DecimalOf(rate);
  const double m = static_cast<double>(d.mantissa);
  return d.scale >= 0 ? m / std::pow(10.0, d.scale) : m * std::pow(10.0, -d.scale);
}

// A factor in units of 0.00001 (Table S factors have five decimals); a value
// no factor could have, from a damaged file, is an overflow.
std::int64_t FactorUnits(double factor) {
  const double units = factor * static_cast<double>(kUnits);
  if (!std::isfinite(units) || std::fabs(units) > 1e15) throw OverflowError("CTableS90CM");
  return std::llround(units);
}

double FromUnits(std::int64_t units) { return static_cast<double>(units) / static_cast<double>(kUnits); }

}  // namespace

double CTableS90CM::AnnuityFactor() {
  try {
    const std::int64_t oneMinus = FactorUnits(OneMinusRemainder());
    // oneMinus / (rate / 100), with the rate m / 10^s: oneMinus * 100 * 10^s / m.
    const Decimal rate = DecimalOf(m_interestRate);
    std::int64_t num = Mul(oneMinus, 100);
    std::int64_t den = rate.mantissa;
    if (rate.scale >= 0) {
      num = Mul(num, Pow10(rate.scale));
    } else {
      den = Mul(den, Pow10(-rate.scale));
    }
    m_annuityFactor = FromUnits(DivHalfEven(num, den));
    return m_annuityFactor;
  } catch (const std::exception& e) {
    ReportUnexpected("AnnuityFactor()", e);
    return 0;
  }
}

double CTableS90CM::OneMinusRemainder() {
  m_oneMinusRemainder = 1.0 - RemainderFactor();
  return m_oneMinusRemainder;
}

double CTableS90CM::RemainderFactor() {
  try {
    ValidateInputs();
    const int column = AgeColumn(m_age);
    Grid grid{};
    // Anew on every query. Without the published table there is no factor:
    // the read is noted, so that the figure asking it is withheld.
    if (!LoadTable(grid)) {
      tables::NoteUnusableRead();
      m_remainderFactor = 0;
      return m_remainderFactor;
    }
    const double rate = RateValue(m_interestRate);
    ExactFactor factor;
    bool tabulated = false;
    for (int row = 0; row < kRows && !tabulated; ++row) {
      if (std::fabs(Cell(grid, row, 0) - rate) < kSameRate) {
        factor = {FactorUnits(Cell(grid, row, column)), 1};
        tabulated = true;
      }
    }
    if (!tabulated) factor = Interpolate(grid, column);
    m_remainderFactor = FromUnits(DivHalfEven(factor.num, factor.den));
    return m_remainderFactor;
  } catch (const std::exception& e) {
    ReportUnexpected("RemainderFactor()", e);
    return 0;
  }
}

// Warnings only: the query goes on with whatever the grid gives.
void CTableS90CM::ValidateInputs() {
  if (m_interestRate < kLowestRate || m_interestRate > kHighestRate) {
    ShowMessage(kWarningTitle,
                "The interest rate is " + NumberText(m_interestRate) + ". The program needs interest rates between " +
                    NumberText(kLowestRate) + "% and " + NumberText(kHighestRate) + "%.",
                MsgIcon::Critical);
  }
  if (m_age < kLowestAge || m_age > kHighestAge) {
    ShowMessage(kWarningTitle,
                "The age is " + std::to_string(m_age) + ". The program can use ages between " +
                    std::to_string(kLowestAge) + " and " + std::to_string(kHighestAge) + ".",
                MsgIcon::Critical);
  }
}

// The file holds the grid column by column: the 50 rates, then the 50
// factors of age 0, and so on. Only the file as published is read.
bool CTableS90CM::LoadTable(Grid& grid) {
  const std::string path = ProgramFile(kTableFile);
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) {
    ShowMessage(kWarningTitle, path + kNotLocated, MsgIcon::Critical);
    tables::ReportDamaged(path);
    return false;
  }
  const auto bytes = tables::ReadPublished(kTableFile);
  if (!bytes) return false;
  std::size_t at = 0;
  for (std::size_t column = 0; column < kColumns; ++column) {
    for (std::size_t row = 0; row < kRows; ++row, at += 8) {
      std::uint64_t bits = 0;
      std::memcpy(&bits, bytes->data() + at, 8);
      grid[row][column] = std::bit_cast<double>(bits);
    }
  }
  return true;
}

// Between the first row from row 1 on whose rate is above the query rate
// and the row before it (so a rate below 4.2 extrapolates from rows 0 and 1;
// one above 14.0 runs past the last row).
CTableS90CM::ExactFactor CTableS90CM::Interpolate(const Grid& grid, int column) {
  try {
    const double rate = RateValue(m_interestRate);
    int upper = 1;
    while (Cell(grid, upper, 0) <= rate) ++upper;
    const int lower = upper - 1;
    m_lowerRate = static_cast<float>(Cell(grid, lower, 0));
    m_upperRate = static_cast<float>(Cell(grid, upper, 0));
    m_lowerFactor = Cell(grid, lower, column);
    m_upperFactor = Cell(grid, upper, column);

    // Rates as decimals in units of 10^-scale, factors in units of 0.00001.
    const int scale = std::max({RateScale(m_interestRate), RateScale(m_lowerRate), RateScale(m_upperRate)});
    const std::int64_t lowerRate = RateUnits(m_lowerRate, scale);
    const std::int64_t span = RateUnits(m_upperRate, scale) - lowerRate;
    const std::int64_t offset = RateUnits(m_interestRate, scale) - lowerRate;
    const std::int64_t lowerFactor = FactorUnits(m_lowerFactor);
    const std::int64_t difference = FactorUnits(m_upperFactor) - lowerFactor;
    if (span == 0) throw DivisionError("Interpolate()");

    const double unit = static_cast<double>(Pow10(scale));
    m_factorDifference = FromUnits(difference);
    m_rateSpan = static_cast<float>(static_cast<double>(span) / unit);
    m_rateOffset = static_cast<float>(static_cast<double>(offset) / unit);
    m_factorAdjustment = static_cast<double>(Mul(offset, difference)) / static_cast<double>(span) /
                         static_cast<double>(kUnits);
    // lower + offset x difference / span, kept exact over the common denominator.
    return {Add(Mul(lowerFactor, span), Mul(offset, difference)), span};
  } catch (const std::exception& e) {
    ReportUnexpected("Interpolate()", e);
    return {};
  }
}

}  // namespace ira
