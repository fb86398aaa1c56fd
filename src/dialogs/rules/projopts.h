// The projection options: how many years to project, the percentage over the
// required minimum, and whether income is calculated for the current DCY.
// Only a non-numeric percentage or number of years keeps the dialog open;
// the other checks are notices.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/scenario/scenario.h"

namespace ira::projopts {

inline constexpr std::int16_t kDefaultProjectionYears = 5;
inline constexpr std::int16_t kIncomeYes = 0;  // option index of "Yes"
inline constexpr std::int16_t kIncomeNo = 1;

// What the dialog's controls show.
struct ProjEntries {
  std::string years;           // txtProjYrs
  std::string overMin;         // txtOverMin
  bool overMinEnabled = false; // only a required-minimum scenario has a percentage over it
  std::int16_t income = kIncomeNo;  // CSOptIncomeCalc
  std::string reduction = "0.00";   // CStxtReduction, never stored
};

// Opening: clears the field kept past the percentage for a DCY after 2050,
// makes 0 projection years 5, and fills the entries from `gen`.
ProjEntries PrepareProjOptions(GeneralInputs& gen);

// Return true when the value may be accepted.
bool PercentageCheck(std::string_view text, std::int16_t distType);
bool YearsCheck(std::string& text);  // a negative number of years becomes "0"
// Runs on each change of the reduction entry; a negative value becomes "0".
void ReductionCheck(std::string& text);

// OK: both checks, then the values go into `gen`. Returns false, storing
// nothing, while either check refuses its text.
bool ApplyProjOptions(ProjEntries& entries, GeneralInputs& gen);

}  // namespace ira::projopts
