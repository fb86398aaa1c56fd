#include <gtest/gtest.h>

#include "core/base/errors.h"
#include "core/reports/formats.h"

namespace ira::reports {
namespace {

// A rate read from a damaged file can be any single: up to the cents' count
// it prints in full, beyond it the report gets an overflow to report.
TEST(Formats, SinglesFarBeyondAnyAmount) {
  EXPECT_EQ(FormatFixed(1e30f), "1000000015047466219876688855040.00");
  EXPECT_EQ(FormatRate(-1e30f), "-1000000015047466219876688855040.");
  EXPECT_THROW(FormatFixed(3.4e38f), OverflowError);
  EXPECT_THROW(FormatRate(-1e37f), OverflowError);
}

}  // namespace
}  // namespace ira::reports
