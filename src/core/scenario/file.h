// The scenario file: "NOTVB3", a 21-character version tag, the general inputs
// and the IRA records, byte for byte. Older layouts are converted on load.
#pragma once

#include <string>

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

// Save As refuses program folder + "/DEBUG.IRA" (case-insensitively) with the
// "Reserved File Name" message; returns true when `path` may be used.
bool CheckReservedName(const std::string& path);

// The reserved file written when the main window closes.
std::string DebugFilePath();

}  // namespace ira::file
