// Numbers typed into entries, read the way the dialogs always have: Val takes
// the leading number of a text (0 when there is none), IsNumeric accepts a
// text only when the whole of it, blanks aside, is one number.
#pragma once

#include <optional>
#include <string_view>

namespace ira::rules {

double Val(std::string_view text);
bool IsNumeric(std::string_view text);
// The number when the text is numeric.
std::optional<double> NumericValue(std::string_view text);

}  // namespace ira::rules
