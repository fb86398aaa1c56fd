#include "core/scenario/convert.h"

#include <string>

#include "core/base/checked.h"
#include "core/scenario/records.h"

namespace ira::file {
namespace {

// The fields each older general record lacks (the current order is kept).
constexpr GeneralLayout kLayout1999_2{.deathDate = false, .incomeCalc = false, .inflationRate = false,
                                      .annuityIntRate = false, .overrideSwitch = false};
constexpr GeneralLayout kLayout2000_1{.deathDate = false, .incomeCalc = false, .inflationRate = false,
                                      .annuityIntRate = false, .overrideSwitch = true};
constexpr GeneralLayout kLayout2001{.deathDate = true, .incomeCalc = false, .inflationRate = false,
                                    .annuityIntRate = true, .overrideSwitch = true};

// The text between the two fixed pieces names the file.
std::string IncorrectFileText(const std::string& name) {
  return "The file you specified does not match the IRA Distribution Planner format (" + name +
         ") or the older IRA Distribution Calendar format.";
}

}  // namespace

void Conv992xTo0010(ByteReader& in, Scenario& out) {
  ReadScenario(in, kLayout1999_2, out);
  // These files kept no switch: a factor worth the name means the user's factor
  // is used. Comparing the singles agrees with comparing the typed decimals
  // here: 0.1 is not above 0.1, 0.11 is.
  out.Gen.AnnuityOverride = ToFlag(out.Gen.AnnuityFactor > 0.1f);
}

void Conv0010_2_0101(ByteReader& in, Scenario& out) { ReadScenario(in, kLayout2000_1, out); }

void Conv0120_2_0210(ByteReader& in, Scenario& out) { ReadScenario(in, kLayout2001, out); }

void Conv9910to9920(ByteReader& in, Scenario& out) { Conv992xTo0010(in, out); }

void ConvLegacyFamily(ByteReader& in, Scenario& out) {
  std::string_view tag = in.Peek(kTagWidth);
  while (!tag.empty() && (tag.back() == ' ' || tag.back() == '\0')) tag.remove_suffix(1);
  if (tag == "VESK1995.10") throw RefusedFile(kOldDataFileTitle, kOldDataFileText);
  if (tag != "VESK1997.19" && tag != "VESK1999.19" && tag != "VESK1997.2")
    throw RefusedFile(kIncorrectFileTitle, IncorrectFileText(in.Name()));
  in.Expect(kTagWidth, "version tag");
  in.Skip(kTagWidth);
  Conv9910to9920(in, out);
}

}  // namespace ira::file
