#include "core/tables/datefun.h"

#include <algorithm>
#include <string>

#include "core/base/checked.h"
#include "core/base/messages.h"

namespace ira::datefun {

std::int16_t AgeInYear(Date birth, std::int16_t year) {
  return CheckedInt16(static_cast<long long>(year) - YearOf(birth), "AgeInYear()");
}

Date Date59Half(Date birth) { return AddMonths(AddYears(birth, 59), 6); }

Date Date70Half(Date birth) { return AddMonths(AddYears(birth, 70), 6); }

Date RequiredBeginningDate(Date birth) {
  return SetDayOfMonth(1, SetMonthOfYear(4, AddYears(Date70Half(birth), 1)));
}

std::int16_t CalcDCY(Date ownerBirth, std::int16_t& n) {
  if (n < 1) {
    ShowMessage("PLEASE NOTE!",
                "Bad DCY number given to CalcDCY().\nThe 1st DCY will be calculated.\nPlease report this error.",
                MsgIcon::Exclamation);
    n = 1;
  }
  return CheckedInt16(static_cast<long long>(YearOf(Date70Half(ownerBirth))) + n - 1, "CalcDCY()");
}

std::int16_t FirstDCY(Date ownerBirth) {
  std::int16_t n = 1;
  return CalcDCY(ownerBirth, n);
}

Date SetMonthOfYear(std::int16_t m, Date date) {
  const int month = std::clamp<int>(m, 1, 12);
  return AddMonths(AddMonths(date, -MonthOf(date)), month);
}

Date SetDayOfMonth(std::int16_t d, Date date) {
  const int day = std::clamp<int>(d, 1, 31);
  const int month = MonthOf(date);
  Date result = AddDays(AddDays(date, -DayOf(date)), day);
  // Step back into the month when it is shorter than d (December wraps to January).
  while (MonthOf(result) != month) result = AddDays(result, -1);
  return result;
}

bool DateValid(std::string_view text, std::string_view label, Date& result) {
  if (const auto date = ParseDate(text)) {
    result = *date;
    return true;
  }
  result = kNoDate;
  // Two blanks after "valid." belong to the text.
  ShowMessage(kDateWarningTitle,
              "The " + std::string(label) + " date entered as " + std::string(text) +
                  " is not valid.  Unless it is changed, somewhere at an inconvenient moment this program is "
                  "likely to abort.",
              MsgIcon::Critical);
  return false;
}

namespace {

// More than 150 years back is taken for a typing mistake.
constexpr int kPlausibleYears = 150;

void CheckPlausibleYear(std::int16_t year) {
  if (CurrentYear() - year > kPlausibleYears) ShowMessage(kVerifyTitle, kVerifyText, MsgIcon::Information);
}

}  // namespace

void CheckOwnerBirthday(const GeneralInputs& gen) {
  if (gen.OwnerBirthDate == kNoDate) return;
  const Date halfYear70 = Date70Half(gen.OwnerBirthDate);
  if (!IsEarly(gen) && halfYear70 <= MakeDate(1987, 12, 31)) {
    ShowMessage(kCutOffTitle, kCutOffText, MsgIcon::Exclamation);
  }
  // Measured on the 70 1/2 year, not the birth year: long-standing behaviour.
  CheckPlausibleYear(YearOf(halfYear70));
}

void CheckSpouseBirthday(Date spouseBirth) {
  if (spouseBirth != kNoDate) CheckPlausibleYear(YearOf(spouseBirth));
}

}  // namespace ira::datefun
