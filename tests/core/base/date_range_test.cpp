#include <gtest/gtest.h>

#include <limits>

#include "core/base/calendar.h"
#include "core/base/errors.h"

namespace ira {
namespace {

// A date read from a damaged file can be any double; only 1/1/100 to
// 12/31/9999 are dates, anything else overflows instead of misbehaving.
TEST(Calendar, DayCountsOutsideTheDateRangeOverflow) {
  EXPECT_EQ(FormatMdy(-657434.0), "1/1/0100");
  EXPECT_EQ(FormatMdy(2958465.5), "12/31/9999");
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  for (double bad : {-657434.5, 2958466.0, nan, inf, -inf, 1e300}) {
    SCOPED_TRACE(bad);
    EXPECT_THROW(YearOf(bad), OverflowError);
    EXPECT_THROW(FormatMdy(bad), OverflowError);
    EXPECT_THROW(AddYears(bad, 1), OverflowError);
  }
}

}  // namespace
}  // namespace ira
