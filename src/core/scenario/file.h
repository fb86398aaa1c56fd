// The scenario file: "NOTVB3", a 21-character version tag, the general inputs
// and the IRA records, byte for byte. Older layouts are converted on load.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "core/scenario/byte_stream.h"
#include "core/scenario/scenario.h"

namespace ira::file {

// Writes the whole scenario to `path` through a temporary file in the same
// folder renamed over the target, so a failed save never destroys the
// previous file. Throws ira::FileError (its text names the file and what
// went wrong) when the file cannot be written.
void SaveFile(const std::string& path, const Scenario& scenario);

// Checks that the file exists, reads its signature and dispatches to the
// current reader or a converter. On success replaces `scenario` and returns
// true; a missing, refused or unreadable file shows its message and returns
// false with `scenario` unchanged.
bool OpenFile(const std::string& path, Scenario& scenario);

// OpenFile on bytes already read; `name` is the file's name for the notices.
bool OpenData(const std::string& name, std::span<const std::uint8_t> data, Scenario& scenario);

// Reads a "NOTVB3" file from its start, dispatching on the version tag.
// Throws RefusedFile for a damaged file; `out` is only written on success.
// A damaged extension block is no refusal: the file loads with the block's
// defaults where it is damaged, and one notice names the file.
void LoadFile(ByteReader& in, Scenario& out);

// Save As refuses program folder + "/DEBUG.IRA" (case-insensitively) with the
// "Reserved File Name" message; returns true when `path` may be used.
bool CheckReservedName(const std::string& path);

// The reserved file written when the main window closes.
std::string DebugFilePath();

inline constexpr const char* kNotFoundTitle = "File not found";
inline constexpr const char* kFileErrorTitle = "File Error";
inline constexpr const char* kReservedNameTitle = "Reserved File Name";
// Completes "The file NAME" when the block after the IRA records is damaged.
inline constexpr const char* kDamagedExtensionText =
    " is partly damaged: the rule set and beneficiary details stored after its IRA records could not all be "
    "read, and their defaults stand in for what is damaged. Check the general inputs and the IRAs before "
    "saving.";
inline constexpr const char* kProjYearsTitle = "WARNING!";
inline constexpr const char* kProjYearsText =
    "Error in number of Projection years read from file.\nProjection Mode will be turned off.";

}  // namespace ira::file
