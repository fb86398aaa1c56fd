// Dates are day counts since 30 December 1899 held in a double (the fraction,
// a time of day, is always 0 here). Arithmetic is calendar arithmetic: adding
// years or months keeps the day of month or falls back to the month's last day.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ira {

using Date = double;

// "No date": 14 April 1810. A fresh scenario's dates and a living owner's
// date of death hold it.
inline constexpr Date kNoDate = -32767.0;

struct Ymd {
  int year = 0;
  int month = 0;  // 1..12
  int day = 0;    // 1..31
};

Date MakeDate(int year, int month, int day);  // a valid calendar date
// A day count outside 1/1/100..12/31/9999 is no date: OverflowError.
Ymd ToYmd(Date date);
std::int16_t YearOf(Date date);  // throws OverflowError outside 16 bits
int MonthOf(Date date);
int DayOf(Date date);
bool IsLeapYear(int year);
int DaysInMonth(int year, int month);

Date AddYears(Date date, int years);
Date AddMonths(Date date, int months);
Date AddDays(Date date, int days);

// "m/d/yyyy" (4/1/2001) and "mm/dd/yyyy" (04/01/2001).
std::string FormatMdy(Date date);
std::string FormatMmDdYyyy(Date date);

// A date typed the way this program's users write it: m/d/yyyy or m/d/yy
// (also with '-' or '.' between the parts). Two-digit years 00..29 are
// 2000..2029, 30..99 are 1930..1999. Returns nothing for an impossible date.
std::optional<Date> ParseDate(std::string_view text);

// Today's date; tests may pin it.
Date Today();
void SetTodayForTesting(std::optional<Date> today);
std::int16_t CurrentYear();

}  // namespace ira
