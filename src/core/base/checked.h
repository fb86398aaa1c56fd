// 16-bit years, ages, DCY numbers and flags. A result outside -32768..32767
// is an overflow error, never a wrap.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/base/errors.h"

namespace ira {

inline std::int16_t CheckedInt16(long long value, std::string_view where) {
  if (value < -32768 || value > 32767) throw OverflowError(where);
  return static_cast<std::int16_t>(value);
}

// 16-bit booleans as stored: true = -1, false = 0.
inline constexpr std::int16_t kTrue = -1;
inline constexpr std::int16_t kFalse = 0;
inline constexpr std::int16_t ToFlag(bool b) { return b ? kTrue : kFalse; }

}  // namespace ira
