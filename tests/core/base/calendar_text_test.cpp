#include <gtest/gtest.h>

#include "core/base/calendar.h"
#include "core/base/text.h"

namespace ira {
namespace {

TEST(Calendar, SerialsCountFromThe30thOfDecember1899) {
  EXPECT_EQ(MakeDate(1899, 12, 30), 0.0);
  EXPECT_EQ(MakeDate(1900, 1, 1), 2.0);
  EXPECT_EQ(MakeDate(1810, 4, 14), kNoDate);  // the "no date" sentinel
  EXPECT_EQ(FormatMdy(kNoDate), "4/14/1810");
  EXPECT_EQ(FormatMdy(MakeDate(2001, 4, 1)), "4/1/2001");
  EXPECT_EQ(FormatMmDdYyyy(MakeDate(2001, 4, 1)), "04/01/2001");
}

TEST(Calendar, MonthAdditionFallsBackToTheMonthEnd) {
  EXPECT_EQ(AddMonths(MakeDate(2001, 8, 31), 6), MakeDate(2002, 2, 28));
  EXPECT_EQ(AddMonths(MakeDate(2003, 8, 31), 6), MakeDate(2004, 2, 29));
  EXPECT_EQ(AddYears(MakeDate(2000, 2, 29), 1), MakeDate(2001, 2, 28));
  EXPECT_EQ(AddMonths(MakeDate(2000, 3, 31), -3), MakeDate(1999, 12, 31));
  EXPECT_EQ(AddMonths(MakeDate(1800, 1, 15), -1), MakeDate(1799, 12, 15));
}

TEST(Calendar, ParsesTheWaysUsersTypeDates) {
  EXPECT_EQ(ParseDate("4/1/2001"), MakeDate(2001, 4, 1));
  EXPECT_EQ(ParseDate(" 12/31/87 "), MakeDate(1987, 12, 31));
  EXPECT_EQ(ParseDate("1/1/29"), MakeDate(2029, 1, 1));
  EXPECT_EQ(ParseDate("1/1/30"), MakeDate(1930, 1, 1));
  for (const char* bad : {"", "2/30/2001", "13/1/2001", "1/1", "1/1/2001/1", "a/b/c", "2/29/2001", "1/1/201"})
    EXPECT_FALSE(ParseDate(bad).has_value()) << bad;
  EXPECT_TRUE(ParseDate("2/29/2000").has_value());
}

TEST(Text, FixedWidthsCutAndPadByCharacters) {
  EXPECT_EQ(FixedText("ab", 4), "ab  ");
  EXPECT_EQ(FixedText("abcdef", 4), "abcd");
  EXPECT_EQ(FixedText("Jos\xC3\xA9 Mu\xC3\xB1oz", 6), "Jos\xC3\xA9 M");  // é counts as one
  EXPECT_EQ(CharCount(FixedText("\xE2\x82\xAC", 51)), 51u);
}

TEST(Text, Windows1252RoundTripsAndReplacesTheRest) {
  const std::string utf8 = "\xE2\x82\xAC 5 caf\xC3\xA9 \xE2\x80\x9Cq\xE2\x80\x9D";  // € 5 café “q”
  const std::string cp = Utf8ToCp1252(utf8);
  EXPECT_EQ(cp, "\x80 5 caf\xE9 \x93q\x94");
  EXPECT_EQ(Cp1252ToUtf8(cp), utf8);
  EXPECT_EQ(Utf8ToCp1252("\xE4\xB8\xAD"), "?");  // a CJK character
}

TEST(Text, NumbersAsNumbersUseTheShortestForm) {
  EXPECT_EQ(NumberText(10.0f), "10");
  EXPECT_EQ(NumberText(10.5f), "10.5");
  EXPECT_EQ(NumberText(0.0f), "0");
  EXPECT_EQ(NumberText(4.2f), "4.2");
  EXPECT_EQ(PadLeft("1.00", 6), "  1.00");
  EXPECT_EQ(PadLeft("1234567", 3), "1234567");
}

}  // namespace
}  // namespace ira
