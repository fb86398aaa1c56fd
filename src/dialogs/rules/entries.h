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
// How an entry shows a date: empty for "no date".
std::string DateText(Date date);
// How an entry shows an amount: "#,###,##0.00".
std::string AmountText(Money amount);

}  // namespace ira::rules
