// Ages, the 59 1/2 and 70 1/2 dates, the Required Beginning Date and the
// numbering of Distribution Calendar Years (the LIFE_EXP head and DATEFUN).
// Every other module asks these functions and never recomputes the rules.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/base/calendar.h"

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

}  // namespace ira::datefun
