#include "core/base/money.h"

#include <gtest/gtest.h>

#include <limits>

#include "core/base/errors.h"

namespace ira {
namespace {

Money M(const char* s) { return Money::FromString(s); }

TEST(RoundAmt, TiesGoToTheEvenCentOnBothSigns) {
  struct Row { const char* in; const char* out; } rows[] = {
      {"1.515", "1.52"}, {"1.525", "1.52"}, {"1.535", "1.54"}, {"1.545", "1.54"},
      {"-1.515", "-1.52"}, {"-1.525", "-1.52"}, {"1.5251", "1.53"}, {"-0.005", "0"}, {"0.015", "0.02"}};
  for (const auto& r : rows) EXPECT_EQ(RoundAmt(M(r.in), 2), M(r.out)) << r.in;
  EXPECT_EQ(RoundAmt(M("2.5"), 0), M("2"));
  EXPECT_EQ(RoundAmt(M("3.5"), 0), M("4"));
}

TEST(MoneyConversion, DoubleRoundsHalfEvenAtTheFourthDecimal) {
  EXPECT_EQ(Money::FromDouble(0.00005).Raw(), 0);  // a tie after scaling goes to the even neighbour
  EXPECT_EQ(Money::FromDouble(1.5).Raw(), 15000);
  EXPECT_EQ(Money::FromDouble(-2.25).Raw(), -22500);
  EXPECT_THROW(Money::FromDouble(1e300), OverflowError);
  EXPECT_EQ(M("1,234,567.5").Raw(), 12345675000);
  EXPECT_EQ(M("0.00015").Raw(), 2);  // half-even at the fourth decimal
  EXPECT_EQ(M("0.00025").Raw(), 2);
  EXPECT_THROW(M("12a"), Error);
}

TEST(MoneyConversion, TextHasFourDecimalsAndKeepsTheSign) {
  struct Row { std::int64_t raw; const char* text; } rows[] = {
      {0, "0.0000"}, {5, "0.0005"}, {-123000, "-12.3000"}, {12345678, "1234.5678"},
      // the most negative count: 9,223,372,036,854,775,808 ten-thousandths
      {std::numeric_limits<std::int64_t>::min(), "-922337203685477.5808"}};
  for (const auto& r : rows) EXPECT_EQ(Money::FromRaw(r.raw).ToString(), r.text) << r.raw;
}

TEST(MoneyArithmetic, SinglesEnterByTheirDecimalMeaning) {
  // 100,000 / 14.6 is 6,849.315068..: a person gets 6,849.32; widening 14.6f
  // to double first would give 6,849.3149 and a cent short.
  const Money q = DivSingle(M("100000"), 14.6f);
  EXPECT_EQ(q, M("6849.3151"));
  EXPECT_EQ(RoundAmt(q, 2), M("6849.32"));
  // A reduced life expectancy reads as its one-decimal value.
  EXPECT_EQ(DivLifeExp(M("73000"), 17.3f - 10.0f), M("10000"));
  EXPECT_EQ(MulSingle(M("200000"), 1.0f + 10.0f / 100.0f), M("220000"));
  EXPECT_EQ(MulSingle(M("1000"), -0.1f), M("-100"));
}

TEST(MoneyArithmetic, BinarySingleMultipliesByItsExactValue) {
  // 0.15f is 0.15000000596046448: the tax on a large excess shows it.
  EXPECT_EQ(MulBinarySingle(M("1000000"), 0.15f), M("150000.006"));
  EXPECT_EQ(MulBinarySingle(M("100"), 0.5f), M("50"));
}

TEST(MoneyArithmetic, OverflowAndDivisionFaultsAreErrors) {
  const Money big = Money::FromRaw(std::numeric_limits<std::int64_t>::max());
  EXPECT_THROW(big + Money::FromRaw(1), OverflowError);
  EXPECT_THROW(-big - Money::FromRaw(2), OverflowError);
  EXPECT_THROW(MulSingle(big, 2.0f), OverflowError);
  EXPECT_THROW(DivSingle(M("1"), 0.0f), DivisionError);
  EXPECT_THROW(DivSingle(big, 0.001f), OverflowError);
}

}  // namespace
}  // namespace ira
