#include "core/reports/formats.h"

#include <gtest/gtest.h>

namespace ira::reports {
namespace {

struct MoneyRow {
  const char* name;
  const char* amount;
  const char* expected;
};

TEST(FormatAmount, ThousandsTwoDecimalsHalfAwayFromZero) {
  const MoneyRow rows[] = {
      {"two separators", "1234567.5", "1,234,567.50"},
      {"zero", "0", "0.00"},
      {"negative", "-12.3", "-12.30"},
      {"no separator under a thousand", "999.99", "999.99"},
      {"tie rounds up", "0.005", "0.01"},
      {"even-cent tie still rounds up", "2.345", "2.35"},
      {"negative tie rounds away from zero", "-0.005", "-0.01"},
      {"just under a tie", "0.0049", "0.00"},
      {"rounding carries into a new group", "999999.995", "1,000,000.00"},
      {"tiny negative prints unsigned", "-0.0049", "0.00"},
  };
  for (const MoneyRow& r : rows) EXPECT_EQ(FormatAmount(Money::FromString(r.amount)), r.expected) << r.name;
}

TEST(FormatCurrency, DollarSignAndParenthesesForNegatives) {
  const MoneyRow rows[] = {
      {"thousands", "1234.5", "$1,234.50"},
      {"negative", "-12.3", "($12.30)"},
      {"zero", "0", "$0.00"},
      {"tie rounds up", "6849.315", "$6,849.32"},
      {"four-decimal payment", "5329.1234", "$5,329.12"},
      {"negative tie", "-1000.125", "($1,000.13)"},
  };
  for (const MoneyRow& r : rows) EXPECT_EQ(FormatCurrency(Money::FromString(r.amount)), r.expected) << r.name;
}

struct SingleRow {
  const char* name;
  float value;
  const char* expected;
};

TEST(FormatFixed, TwoDecimalsOfTheDecimalMeaning) {
  const SingleRow rows[] = {
      {"table value", 27.4f, "27.40"},
      {"whole", 1.0f, "1.00"},
      {"below one", 0.5f, "0.50"},
      {"no separators", 5000.0f, "5000.00"},
      // 2.675f is 2.67499995... in binary: its decimal meaning rounds up.
      {"decimal meaning, not binary", 2.675f, "2.68"},
      {"reduced life expectancy", 17.3f - 10.0f, "7.30"},
      {"negative", -5000.0f, "-5000.00"},
  };
  for (const SingleRow& r : rows) EXPECT_EQ(FormatFixed(r.value), r.expected) << r.name;
}

TEST(FormatRate, NoLeadingZeroAndTrailingPointOnWholes) {
  const SingleRow rows[] = {
      {"half", 0.5f, ".5"},
      {"whole", 6.0f, "6."},
      {"two decimals", 10.25f, "10.25"},
      {"tie rounds up", 7.125f, "7.13"},
      {"rounds to whole", 5.999f, "6."},
      {"zero", 0.0f, "."},
      {"negative", -0.5f, "-.5"},
      {"typed rate", 8.2f, "8.2"},
  };
  for (const SingleRow& r : rows) EXPECT_EQ(FormatRate(r.value), r.expected) << r.name;
}

}  // namespace
}  // namespace ira::reports
