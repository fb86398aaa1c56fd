#include "dialogs/rules/projopts.h"

#include <cmath>

#include "core/base/checked.h"
#include "core/base/messages.h"
#include "core/base/text.h"
#include "dialogs/rules/entries.h"
#include "dialogs/rules/numeric_text.h"

namespace ira::projopts {
namespace {

constexpr const char* kCheckTitle = "Check Data";
constexpr const char* kCheckAmount = "Please check the amount you entered. It may be incorrect.";

// A number of years must fit the 16-bit field; anything larger is as unusable
// as a non-number.
bool YearsFit(double value) { return std::fabs(value) <= 32767.0; }

}  // namespace

ProjEntries PrepareProjOptions(GeneralInputs& gen) {
  if (gen.DCY > 2050) gen.Kept180 = {};
  if (gen.ProjectionYears == 0) gen.ProjectionYears = kDefaultProjectionYears;
  ProjEntries e;
  e.years = std::to_string(gen.ProjectionYears);
  e.overMinEnabled = gen.DistType != 0;
  if (e.overMinEnabled) e.overMin = NumberText(gen.PercentOver);
  e.income = gen.IncomeCalc != 0 ? kIncomeYes : kIncomeNo;
  return e;
}

bool PercentageCheck(std::string_view text, std::int16_t distType) {
  if (distType == 0) return true;
  const auto value = rules::NumericValue(text);
  if (!value) {
    rules::WarnInvalid("Percentage over Required Minimum Distribution");
    return false;
  }
  if (*value > 100) ShowMessage(kCheckTitle, kCheckAmount, MsgIcon::Information);
  return true;
}

bool YearsCheck(std::string& text) {
  const auto value = rules::NumericValue(text);
  if (!value || !YearsFit(*value)) {
    rules::WarnInvalid("Number of Years to Project");
    return false;
  }
  if (*value > 100) ShowMessage(kCheckTitle, kCheckAmount, MsgIcon::Information);
  if (*value < 0) text = "0";
  return true;
}

void ReductionCheck(std::string& text) {
  const auto value = rules::NumericValue(text);
  if (!value) {
    rules::WarnInvalid("Percent Balance Reduction 1997-1999");
    return;
  }
  if (*value < 0 || *value > 100) {
    ShowMessage(kCheckTitle,
                "Please check the amount you entered for 'Percent Balance Reduction 1997-1999'. It may be incorrect.",
                MsgIcon::Information);
    if (*value < 0) text = "0";
  }
}

bool ApplyProjOptions(ProjEntries& e, GeneralInputs& gen) {
  if (!PercentageCheck(e.overMin, gen.DistType)) return false;
  if (!YearsCheck(e.years)) return false;
  gen.PercentOver = static_cast<float>(rules::Val(e.overMin));
  // Halves go to the even neighbour, as an integer field rounds.
  std::int16_t years = CheckedInt16(std::llrint(rules::Val(e.years)), "btnOK_Click()");
  if (years == 0) years = kDefaultProjectionYears;
  gen.ProjectionYears = years;
  gen.IncomeCalc = ToFlag(e.income == kIncomeYes);
  return true;
}

}  // namespace ira::projopts
