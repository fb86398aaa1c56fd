// The general inputs and IRA records as stored in scenario files. The current
// layout and the older "NOTVB3" layouts share one field order; an older
// general record only leaves out the fields its version did not have.
#pragma once

#include <cstddef>

#include "core/scenario/byte_stream.h"
#include "core/scenario/scenario.h"

namespace ira::file {

inline constexpr std::size_t kSignatureSize = 6;  // "NOTVB3"
inline constexpr std::size_t kTagWidth = 21;
inline constexpr std::size_t kHeaderSize = kSignatureSize + kTagWidth;
inline constexpr std::size_t kGeneralRecordSize = 184;
inline constexpr std::size_t kIraRecordSize = 138;

// Which optional fields a general record stores; all of them in the current one.
struct GeneralLayout {
  bool deathDate = true;
  bool incomeCalc = true;
  bool inflationRate = true;
  bool annuityIntRate = true;
  bool overrideSwitch = true;

  std::size_t Size() const;
};

// Reads a general record of `layout` and the IRA records after it into `out`,
// which is left alone when the file is refused (a negative IRA count, fewer
// records than the count says, a cut-off record). Fields the layout lacks keep
// a new scenario's values, except the 90CM rate: the general inputs' default.
void ReadScenario(ByteReader& in, const GeneralLayout& layout, Scenario& out);

// The general record in the current layout, then every IRA of the list (the
// stored count is the list's length).
void WriteRecords(ByteWriter& out, const Scenario& scenario);

}  // namespace ira::file
