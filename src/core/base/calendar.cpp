#include "core/base/calendar.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>

#include "core/base/checked.h"

namespace ira {
namespace {

// Days from 1970-01-01 to y-m-d in the proleptic Gregorian calendar.
constexpr long long DaysFromCivil(long long y, int m, int d) {
  y -= m <= 2;
  const long long era = (y >= 0 ? y : y - 399) / 400;
  const long long yoe = y - era * 400;
  const long long doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const long long doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468;
}

Ymd CivilFromDays(long long z) {
  z += 719468;
  const long long era = (z >= 0 ? z : z - 146096) / 146097;
  const long long doe = z - era * 146097;
  const long long yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const long long y = yoe + era * 400;
  const long long doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const long long mp = (5 * doy + 2) / 153;
  const int d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  const int m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  return Ymd{static_cast<int>(y + (m <= 2)), m, d};
}

// Fixed at compile time so that dates made while other globals are being
// initialised are right.
constexpr long long kEpoch = DaysFromCivil(1899, 12, 30);

// A date field holds 1/1/100 to 12/31/9999; a day count outside them (read
// from a damaged file) is no date, and the date functions overflow on it.
constexpr Date kFirstDate = -657434.0;
constexpr Date kDayAfterLastDate = 2958466.0;

std::optional<Date> g_today;

}  // namespace

bool IsLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int DaysInMonth(int year, int month) {
  static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && IsLeapYear(year) ? 29 : kDays[month - 1];
}

Date MakeDate(int year, int month, int day) {
  return static_cast<Date>(DaysFromCivil(year, month, day) - kEpoch);
}

Ymd ToYmd(Date date) {
  if (!(date >= kFirstDate && date < kDayAfterLastDate)) throw OverflowError("date conversion");
  return CivilFromDays(static_cast<long long>(std::floor(date)) + kEpoch);
}

std::int16_t YearOf(Date date) { return CheckedInt16(ToYmd(date).year, "Year()"); }
int MonthOf(Date date) { return ToYmd(date).month; }
int DayOf(Date date) { return ToYmd(date).day; }

Date AddMonths(Date date, int months) {
  const Ymd d = ToYmd(date);
  const long long total = static_cast<long long>(d.year) * 12 + (d.month - 1) + months;
  const int year = static_cast<int>(total >= 0 ? total / 12 : (total - 11) / 12);
  const int month = static_cast<int>(total - static_cast<long long>(year) * 12) + 1;
  const int day = std::min(d.day, DaysInMonth(year, month));
  return MakeDate(year, month, day) + (date - std::floor(date));
}

Date AddYears(Date date, int years) { return AddMonths(date, years * 12); }

Date AddDays(Date date, int days) { return date + days; }

std::string FormatMdy(Date date) {
  const Ymd d = ToYmd(date);
  char buf[32];
  std::snprintf(buf, sizeof buf, "%d/%d/%04d", d.month, d.day, d.year);
  return buf;
}

std::string FormatMmDdYyyy(Date date) {
  const Ymd d = ToYmd(date);
  char buf[32];
  std::snprintf(buf, sizeof buf, "%02d/%02d/%04d", d.month, d.day, d.year);
  return buf;
}

std::optional<Date> ParseDate(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  int parts[3] = {0, 0, 0};
  int digits[3] = {0, 0, 0};
  int index = 0;
  char separator = 0;
  for (char c : text) {
    if (c >= '0' && c <= '9') {
      if (digits[index] >= 4) return std::nullopt;
      parts[index] = parts[index] * 10 + (c - '0');
      ++digits[index];
    } else if (c == '/' || c == '-' || c == '.') {
      if (separator == 0) separator = c;
      if (c != separator || digits[index] == 0 || index == 2) return std::nullopt;
      ++index;
    } else {
      return std::nullopt;
    }
  }
  if (index != 2 || digits[2] == 0 || digits[0] > 2 || digits[1] > 2) return std::nullopt;
  int year = parts[2];
  if (digits[2] <= 2) {
    year += year < 30 ? 2000 : 1900;
  } else if (digits[2] == 3) {
    return std::nullopt;
  }
  const int month = parts[0];
  const int day = parts[1];
  if (year < 100 || month < 1 || month > 12 || day < 1 || day > DaysInMonth(year, month)) return std::nullopt;
  return MakeDate(year, month, day);
}

Date Today() {
  if (g_today) return *g_today;
  // The user's local calendar day.
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return MakeDate(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
}

void SetTodayForTesting(std::optional<Date> today) { g_today = today; }

std::int16_t CurrentYear() { return YearOf(Today()); }

}  // namespace ira
