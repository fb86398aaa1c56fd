// The settings file: a plain profile file ("[Section]" lines and "key=value"
// lines) beside the program, named after it with ".ini", that a person can
// read and edit. Lookups ignore the case of sections and keys, as the
// profile functions always have. Writing rewrites the whole file through a
// temporary file in the same folder, so a failed write leaves the old one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/reports/prnmastr.h"

namespace ira::settings {

// Profile values are read into a 255-character buffer: longer ones are cut.
inline constexpr std::size_t kProfileValueMax = 254;

std::string GetProfileString(const std::string& file, std::string_view section, std::string_view key,
                             std::string_view defaultValue);
// The leading integer of the value (0 when it has none); `defaultValue` when
// the key is missing.
int GetProfileInt(const std::string& file, std::string_view section, std::string_view key, int defaultValue);
// Adds or replaces the key, creating the section and the file as needed.
// Throws ira::FileError naming the file when it cannot be written.
void WriteProfileString(const std::string& file, std::string_view section, std::string_view key,
                        std::string_view value);

inline constexpr const char* kSectionDataFiles = "Data Files";
inline constexpr const char* kKeyDataFilePath = "Data File Path";
inline constexpr const char* kSectionPreferences = "User Preferences";
inline constexpr const char* kKeyFontName = "Font Name";
inline constexpr const char* kKeyFontSize = "Font Size";
inline constexpr const char* kSectionHideError = "Hide Error Msg";
inline constexpr const char* kKeyHide380 = "380";

// $XDG_DATA_HOME (or ~/.local/share) + "/Quillon/IRA".
std::string UserDataFolder();
bool FolderWritable(const std::string& folder);

// program folder + "/" + program name + ".ini"; the same name in
// `userFolder` when the program folder cannot be written.
std::string SettingsFilePath(const std::string& programFolder, const std::string& programName,
                             const std::string& userFolder);

struct Settings {
  std::string file;  // the settings file in use
  int hideError380 = 0;
  std::string dataFolder;
  reports::ReportFontInfo font;  // an empty name or a size under 5 points reads as the default
};

// Reads every setting, each falling back to its default; `defaultDataFolder`
// stands when "Data File Path" is missing.
Settings LoadSettings(const std::string& file, const std::string& defaultDataFolder);

// Copies "demo.ira" from the program folder into the data folder when it is
// not there yet (a user's own changes to it are kept). Returns false when
// the copy failed; a missing demonstration file is no failure.
bool InstallDemo(const std::string& programFolder, const std::string& dataFolder);

// The scenario files last opened or saved, the latest first: section "Recent
// Files", keys "File1" to "File8".
inline constexpr std::size_t kRecentFilesMax = 8;
std::vector<std::string> LoadRecentFiles(const std::string& file);
void SaveRecentFiles(const std::string& file, const std::vector<std::string>& files);
// `path` put first, an earlier mention of it dropped, the list cut to eight.
std::vector<std::string> WithRecentFile(std::vector<std::string> files, const std::string& path);

// The main window's place and size as the window system encodes them
// (section "Window", key "Geometry"); empty when never saved.
std::string LoadWindowGeometry(const std::string& file);
void SaveWindowGeometry(const std::string& file, const std::string& geometry);

void SaveReportFont(const std::string& file, const reports::ReportFontInfo& font);
void SaveDataFolder(const std::string& file, const std::string& folder);

}  // namespace ira::settings
