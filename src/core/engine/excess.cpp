// The section 4980A(c) limitation on excess distributions, indexed from 1997.
#include <string>
#include <string_view>

#include "core/base/messages.h"
#include "core/engine/rep_calc.h"

namespace ira::rep_calc {
namespace {

constexpr std::int16_t kFirstIndexedYear = 1997;
// The limitation was repealed; years through 2050 show "no limit".
constexpr std::int16_t kLastUnlimitedYear = 2050;
constexpr std::int64_t kLimit1997 = 160000;
// The indexing runs from this base, not from the 1997 limit.
constexpr std::int64_t kIndexBase = 161169;
constexpr std::int64_t kLimitStep = 5000;

constexpr std::string_view kBeforeHead = "Cannot calculate 4980A(c) limitation because a year in ";
constexpr std::string_view kBeforeMiddle = "the calculation, ";
constexpr std::string_view kBeforeTail = ", is before ";

}  // namespace

Money GetExcessDistLimit(float inflationRate, std::int16_t year) {
  if (year < kFirstIndexedYear) {
    ShowMessage(kProgramTitle,
                std::string(kBeforeHead) + std::string(kBeforeMiddle) + std::to_string(year) +
                    std::string(kBeforeTail) + std::to_string(kFirstIndexedYear) + ".",
                MsgIcon::None);
    return Money::FromWhole(kLimit1997);
  }
  if (year <= kLastUnlimitedYear) return Money::FromRaw(kNoLimitRaw);

  Money running = Money::FromWhole(kIndexBase);
  Money limit = Money::FromWhole(kLimit1997);
  const float factor = 1.0f + inflationRate / 100.0f;
  for (int y = kFirstIndexedYear + 1; y <= year; ++y) {
    running = MulSingle(running, factor);  // kept to four decimals, not cents
    limit = Money::FromWhole(running.Raw() / (kLimitStep * Money::kScale) * kLimitStep);
  }
  return limit;
}

}  // namespace ira::rep_calc
