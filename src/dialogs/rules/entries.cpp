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

std::string DateText(Date date) { return date == kNoDate ? std::string() : FormatMdy(date); }

std::string AmountText(Money amount) { return reports::FormatAmount(amount); }

}  // namespace ira::rules
