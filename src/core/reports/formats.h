// The number formats of the reports. Every report prints money, rates and
// life expectancies through these, so a column never differs from its total
// by a rounding choice. All of them round half away from zero at the second
// decimal; a single enters by its decimal meaning (14.6f prints as 14.60,
// never 14.600000381...). Dates use FormatMdy / FormatMmDdYyyy (calendar.h).
#pragma once

#include <string>

#include "core/base/money.h"

namespace ira::reports {

// "#,###,##0.00": 1,234,567.50 · 0.00 · -12.30
std::string FormatAmount(Money amount);
// "0.00", for files other software reads: 1234567.50 · 0.00 · -12.30
std::string FormatPlainAmount(Money amount);
// "Currency": $1,234.50 · $0.00 · ($12.30)
std::string FormatCurrency(Money amount);
// "Fixed": at least one integer digit, two decimals, no separators: 27.40 · 1.00
std::string FormatFixed(float value);
// "#.##": up to two decimals, no leading zero, a trailing point on whole
// numbers: .5 · 6. · 10.25 · -.5 (zero prints as ".").
std::string FormatRate(float value);

}  // namespace ira::reports
