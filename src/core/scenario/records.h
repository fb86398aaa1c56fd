// The general inputs and IRA records as stored in scenario files. The current
// layout and the older "NOTVB3" layouts share one field order; an older
// general record only leaves out the fields its version did not have.
#pragma once

#include <cstddef>

#include "core/scenario/byte_stream.h"
#include "core/scenario/scenario.h"

namespace ira::file {

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

// Reads the fields `layout` stores; the others keep the values of a new
// scenario.
GeneralInputs ReadGeneral(ByteReader& in, const GeneralLayout& layout);
void WriteGeneral(ByteWriter& out, const GeneralInputs& gen);

IraRecord ReadIra(ByteReader& in);
void WriteIra(ByteWriter& out, const IraRecord& ira);

// Reads a general record of `layout` and the IRA records after it into `out`,
// which is left alone when the file is refused. A layout without the 90CM
// rate gets the general inputs' default rate.
void ReadScenario(ByteReader& in, const GeneralLayout& layout, Scenario& out);

// Reads the `gen.IraCount` IRA records that follow the general record.
// Refuses a negative count or a file that holds fewer records than it says.
std::vector<IraRecord> ReadIraList(ByteReader& in, const GeneralInputs& gen);

}  // namespace ira::file
