#include "dialogs/rules/entries.h"

#include <cstdlib>

#include "core/base/errors.h"
#include "core/base/messages.h"
#include "core/base/text.h"
#include "core/reports/formats.h"
#include "dialogs/rules/numeric_text.h"

namespace ira::rules {

// The two blanks after "invalid." are the program's own wording.
void WarnInvalid(std::string_view field) {
  ShowMessage("WARNING", "The value entered for '" + std::string(field) + "' is invalid.  Please enter again.",
              MsgIcon::Exclamation);
}

std::optional<Money> ReadAmount(std::string_view text, std::string_view field) {
  std::string t = Trim(text);
  if (!t.empty() && t.front() == '$') t = Trim(t.substr(1));
  if (t.empty()) return Money{};
  try {
    return Money::FromString(t);
  } catch (const Error&) {
    WarnInvalid(field);
    return std::nullopt;
  }
}

std::optional<float> ReadSingle(std::string_view text, std::string_view field) {
  if (Trim(text).empty()) return 0.0f;
  const auto value = NumericValue(text);
  if (!value) {
    WarnInvalid(field);
    return std::nullopt;
  }
  return static_cast<float>(*value);
}

Date ReadDate(std::string_view text) {
  if (Trim(text).empty()) return kNoDate;
  return ParseDate(Trim(text)).value_or(kNoDate);
}

bool KeepInvalidDate(std::string_view text, std::string_view label) {
  const std::string t = Trim(text);
  if (t.empty() || ParseDate(t)) return true;
  return ShowMessage("Please Verify", "The " + std::string(label) + " is not a valid date. Keep it anyway?",
                     MsgIcon::Question, MsgButtons::YesNo) == MsgAnswer::Yes;
}

namespace {

std::string RangeValue(double value, bool amount) {
  if (amount) return reports::FormatAmount(Money::FromString(std::to_string(value)));
  return NumberText(value);
}

std::string RangeText(const Range& range) {
  return RangeValue(range.min, range.amount) + " to " + RangeValue(range.max, range.amount);
}

}  // namespace

std::string RangeHint(const Range& range) { return "Valid range: " + RangeText(range) + "."; }

std::string DateRangeHint() {
  return "A date as m/d/yyyy, from 1/1/" + std::to_string(kFirstDateYear) + " to 12/31/" +
         std::to_string(kLastDateYear) + ".";
}

bool WithinRange(std::string_view text, const Range& range) {
  std::string t = Trim(text);
  if (!t.empty() && t.front() == '$') t = Trim(t.substr(1));
  if (range.amount) std::erase(t, ',');
  const auto value = NumericValue(t);
  if (!value || (*value >= range.min && *value <= range.max)) return true;
  ShowMessage("WARNING",
              "The value entered for '" + std::string(range.field) + "' is outside its range. Please enter a value from " +
                  RangeText(range) + ".",
              MsgIcon::Exclamation);
  return false;
}

bool DateWithinRange(std::string_view text, std::string_view field) {
  const auto date = ParseDate(Trim(text));
  if (!date) return true;
  const int year = YearOf(*date);
  if (year >= kFirstDateYear && year <= kLastDateYear) return true;
  ShowMessage("WARNING",
              "The " + std::string(field) + " is outside the dates the program can compute with. Please enter a date from 1/1/" +
                  std::to_string(kFirstDateYear) + " to 12/31/" + std::to_string(kLastDateYear) + ".",
              MsgIcon::Exclamation);
  return false;
}

std::string DateText(Date date) { return date == kNoDate ? std::string() : FormatMdy(date); }

std::string AmountText(Money amount) { return reports::FormatAmount(amount); }

}  // namespace ira::rules
