// Ages, the 59 1/2 and 70 1/2 dates, the Required Beginning Date and the
// numbering of Distribution Calendar Years (the LIFE_EXP head and DATEFUN).
// Every other module asks these functions and never recomputes the rules.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/base/calendar.h"
#include "core/scenario/scenario.h"

namespace ira::datefun {

// Calendar year minus year of birth: the age attained on the birthday that
// falls in the year. Throws OverflowError outside 16 bits.
std::int16_t AgeInYear(Date birth, std::int16_t year);

// Birth + 59 years, then + 6 months (two calendar additions, years first).
Date Date59Half(Date birth);
Date Date70Half(Date birth);
// April 1 of the year after the owner attains 70 1/2.
Date RequiredBeginningDate(Date birth);

// DCY n is the year of 70 1/2 plus n - 1. An n below 1 is reported
// ("PLEASE NOTE!") and corrected to 1 in the caller's variable.
std::int16_t CalcDCY(Date ownerBirth, std::int16_t& n);
// The owner's first DCY: CalcDCY(birth, 1).
std::int16_t FirstDCY(Date ownerBirth);

// Month m (clamped to 1..12) of the same year, the day kept or fallen back.
Date SetMonthOfYear(std::int16_t m, Date date);
// Day d (clamped to 1..31) of the same month, or the month's last day.
Date SetDayOfMonth(std::int16_t d, Date date);

// A date typed by the user. On failure shows the "WARNING" message naming
// `label` and the text, clears `result` to kNoDate and returns false; the
// caller keeps the text as typed.
bool DateValid(std::string_view text, std::string_view label, Date& result);

// Run when a valid owner's birthday has been entered: the warning that the
// rules do not hold for owners who reached 70 1/2 by 12/31/87 (not for the
// early type of distribution), then the plausibility check.
void CheckOwnerBirthday(const GeneralInputs& gen);
// Run when a valid spouse's birthday has been entered.
void CheckSpouseBirthday(Date spouseBirth);

inline constexpr const char* kDateWarningTitle = "WARNING";
inline constexpr const char* kCutOffTitle = "WARNING!";
inline constexpr const char* kCutOffText =
    "The IRA minimum distribution rules that this program uses are good only for people who turn 70 and 1/2 "
    "after 12/31/87. The results produced for this person are very likely to be incorrect.";
inline constexpr const char* kVerifyTitle = "Please Verify";
// Names the owner for the spouse's birthday too; users know it this way.
inline constexpr const char* kVerifyText = "Please check the Owner's Birthday.\nThe date given may be incorrect.";

}  // namespace ira::datefun
