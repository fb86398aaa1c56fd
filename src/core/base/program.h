// The running program: its version and the folder it lives in, where the
// table files, demo.ira and the manual are installed.
#pragma once

#include <string>

namespace ira {

inline constexpr int kVersionMajor = 2014;
inline constexpr int kVersionMinor = 10;
inline constexpr int kVersionRevision = 0;

// "VESK2014.10.0": shown at start-up and by --version.
std::string VersionText();
// "VESK2014.10": the version tag written into scenario files.
std::string FileVersionTag();

// The program folder; set once at start-up (tests point it at the build's
// output folder).
const std::string& ProgramFolder();
void SetProgramFolder(std::string folder);
// Folder + "/" + name.
std::string ProgramFile(const std::string& name);

}  // namespace ira
