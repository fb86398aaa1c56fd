// Single life annuity factors from the Life Table 90CM remainder factors
// (Table S, rates 4.2% to 14.0% by 0.2%, ages 0 to 109) in "s-90cm.tbl".
// The caller sets the age and the rate, then reads the factor; between two
// tabulated rates the remainder factor is interpolated linearly.
//
// Factors and rates stand for the decimal numbers of the printed table and
// the rate as typed, so the interpolation and both divisions are done on
// those decimals exactly and rounded half to even at the fifth decimal, as by
// hand: halfway between 0.41709 and 0.40718 is 0.412135, which gives 0.41214.
#pragma once

#include <array>
#include <cstdint>

namespace ira {

class CTableS90CM {
 public:
  static constexpr int kRows = 50;
  static constexpr int kColumns = 111;
  using Grid = std::array<std::array<double, kColumns>, kRows>;

  void Age(std::int16_t age) { m_age = age; }
  void InterestRate(float rate) { m_interestRate = rate; }

  // (1 - remainder factor) / (rate / 100), rounded to 5 decimals.
  double AnnuityFactor();
  double OneMinusRemainder();
  // The remainder factor for the age and rate, rounded to 5 decimals.
  double RemainderFactor();

  double FactorAdjustment() const { return m_factorAdjustment; }
  float RateOffset() const { return m_rateOffset; }
  float RateSpan() const { return m_rateSpan; }
  double FactorDifference() const { return m_factorDifference; }
  double UpperFactor() const { return m_upperFactor; }
  double LowerFactor() const { return m_lowerFactor; }
  float UpperRate() const { return m_upperRate; }
  float LowerRate() const { return m_lowerRate; }

 private:
  // A factor as an exact quotient num / den in units of 0.00001.
  struct ExactFactor {
    std::int64_t num = 0;
    std::int64_t den = 1;
  };

  void ValidateInputs();
  // False when the table file is missing or damaged (and said so).
  bool LoadTable(Grid& grid);
  static int AgeColumn(std::int16_t age) { return age + 1; }
  ExactFactor Interpolate(const Grid& grid, int column);

  std::int16_t m_age = 0;
  float m_interestRate = 0;
  float m_lowerRate = 0;
  float m_upperRate = 0;
  double m_lowerFactor = 0;
  double m_upperFactor = 0;
  double m_factorDifference = 0;
  float m_rateSpan = 0;
  float m_rateOffset = 0;
  double m_factorAdjustment = 0;
  double m_remainderFactor = 0;
  double m_oneMinusRemainder = 0;
  double m_annuityFactor = 0;
};

}  // namespace ira
