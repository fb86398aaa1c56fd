// Reading the texts of the input dialogs' entries into scenario fields. A
// text that cannot be read is reported by the name of its field and refused,
// so nothing half-read reaches the scenario.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/base/calendar.h"
#include "core/base/money.h"

namespace ira::rules {

// "The value entered for '<field>' is invalid.  Please enter again." under
// "WARNING": the wording the dialogs share.
void WarnInvalid(std::string_view field);

// An amount such as "12,345.67" or "$100"; empty text is 0.
std::optional<Money> ReadAmount(std::string_view text, std::string_view field);
// A rate or factor in percent; empty text is 0.
std::optional<float> ReadSingle(std::string_view text, std::string_view field);
// A date entry: empty or unreadable text is "no date" (the date check has
// already told the user about a bad one).
Date ReadDate(std::string_view text);
// At OK: a date entry whose text is no valid date asks once whether to keep
// it ("The Owner's Birthday is not a valid date. Keep it anyway?"). True when
// the entry is empty or valid, or the user keeps it; false sends the user back.
bool KeepInvalidDate(std::string_view text, std::string_view label);
// The values a numeric or date entry accepts. A value outside is refused at
// OK with a message naming the field and the range; the entry's tooltip
// states the range beforehand.
struct Range {
  const char* field;
  double min;
  double max;
  bool amount = false;  // shown as "#,###,##0.00"
};
inline constexpr Range kDcyRange{"Distribution Calendar Year", 1987, 2100};
inline constexpr Range kInflationRange{"Inflation Rate", -10, 50};
inline constexpr Range kIntRateRange{"Interest Rate", 0, 50};
inline constexpr Range kAnnuityIntRateRange{"Interest Rate for Life Table 90CM", 0, 50};
inline constexpr Range kAnnuityFactorRange{"User Override Annuity Factor", 0, 100};
inline constexpr Range kBenefitRange{"Benefit", 0, 9999999999.99, true};
inline constexpr Range kDistributedRange{"Amount already distributed this year", 0, 9999999999.99, true};
inline constexpr Range kFirstYearRange{"1st Year Distributions", 0, 9999999999.99, true};
inline constexpr Range kRateOfReturnRange{"Rate Of Return", -100, 100};
inline constexpr Range kProjYearsRange{"Number of Years to Project", 0, 200};
inline constexpr Range kOverMinRange{"Percentage over Required Minimum Distribution", 0, 1000};
// Every date entry: 1/1/1880 to 12/31/2150 (the last year the engine counts).
inline constexpr int kFirstDateYear = 1880;
inline constexpr int kLastDateYear = 2150;

// "Valid range: -100 to 100."
std::string RangeHint(const Range& range);
std::string DateRangeHint();
// True when the text is empty, no number (its own reading reports that) or
// within the range; otherwise the message, and false.
bool WithinRange(std::string_view text, const Range& range);
// The same for a date entry; an invalid date is the date check's business.
bool DateWithinRange(std::string_view text, std::string_view field);

// How an entry shows a date: empty for "no date".
std::string DateText(Date date);
// How an entry shows an amount: "#,###,##0.00".
std::string AmountText(Money amount);

}  // namespace ira::rules
