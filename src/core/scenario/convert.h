// Converters for scenario files written by earlier versions. They read the
// old layout and fill a scenario in the current form; nothing is written
// back. Each refuses a damaged or foreign file by throwing RefusedFile.
#pragma once

#include "core/scenario/byte_stream.h"
#include "core/scenario/scenario.h"

namespace ira::file {

// "NOTVB3" files; `in` stands just after the version tag.
void Conv992xTo0010(ByteReader& in, Scenario& out);   // tags containing "VESK1999.2"
void Conv0010_2_0101(ByteReader& in, Scenario& out);  // "VESK2000.1"
void Conv0120_2_0210(ByteReader& in, Scenario& out);  // "VESK2001"

// Files without the "NOTVB3" signature, from the start: a 21-character tag,
// then the 1999.2 general record and the IRA records.
void ConvLegacyFamily(ByteReader& in, Scenario& out);
// The 1999.10 family after its tag; it already stores the 1999.20 records.
void Conv9910to9920(ByteReader& in, Scenario& out);

inline constexpr const char* kOldDataFileTitle = "Old Data File";
inline constexpr const char* kOldDataFileText =
    "The file you selected does not match the Tallyra format, or is a DOS version that is no longer supported.";

}  // namespace ira::file
