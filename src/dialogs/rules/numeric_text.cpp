#include "dialogs/rules/numeric_text.h"

#include <cctype>
#include <cstdlib>
#include <string>

namespace ira::rules {
namespace {

bool IsDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }
bool IsBlank(char c) { return c == ' ' || c == '\t'; }

// Length of the number at the start of `s` (sign, digits, point, exponent);
// 0 when `s` does not start with one.
std::size_t NumberLength(std::string_view s) {
  std::size_t i = 0;
  if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
  std::size_t digits = 0;
  while (i < s.size() && IsDigit(s[i])) ++i, ++digits;
  if (i < s.size() && s[i] == '.') {
    ++i;
    while (i < s.size() && IsDigit(s[i])) ++i, ++digits;
  }
  if (digits == 0) return 0;
  if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
    std::size_t j = i + 1;
    if (j < s.size() && (s[j] == '+' || s[j] == '-')) ++j;
    if (j < s.size() && IsDigit(s[j])) {
      while (j < s.size() && IsDigit(s[j])) ++j;
      i = j;
    }
  }
  return i;
}

std::string_view SkipBlanks(std::string_view s) {
  while (!s.empty() && IsBlank(s.front())) s.remove_prefix(1);
  return s;
}

}  // namespace

double Val(std::string_view text) {
  const std::string_view s = SkipBlanks(text);
  const std::size_t n = NumberLength(s);
  return n == 0 ? 0.0 : std::strtod(std::string(s.substr(0, n)).c_str(), nullptr);
}

std::optional<double> NumericValue(std::string_view text) {
  const std::string_view s = SkipBlanks(text);
  const std::size_t n = NumberLength(s);
  if (n == 0 || !SkipBlanks(s.substr(n)).empty()) return std::nullopt;
  return std::strtod(std::string(s.substr(0, n)).c_str(), nullptr);
}

bool IsNumeric(std::string_view text) { return NumericValue(text).has_value(); }

}  // namespace ira::rules
