#include "app/shell/settings.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <vector>

#include "core/base/errors.h"
#include "core/base/text.h"

namespace ira::settings {
namespace {

std::vector<std::string> ReadLines(const std::string& file) {
  std::vector<std::string> lines;
  std::ifstream in(file, std::ios::binary);
  std::string line;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

bool SameName(std::string_view a, std::string_view b) { return ToLower(Trim(a)) == ToLower(Trim(b)); }

// The section name of a "[Section]" line, or nothing.
bool SectionOf(const std::string& line, std::string& name) {
  const std::string t = Trim(line);
  if (t.size() < 2 || t.front() != '[') return false;
  const auto close = t.find(']');
  if (close == std::string::npos) return false;
  name = t.substr(1, close - 1);
  return true;
}

// Splits "key=value"; comment lines and lines without '=' are not entries.
bool EntryOf(const std::string& line, std::string& key, std::string& value) {
  const std::string t = LTrim(line);
  if (t.empty() || t.front() == ';' || t.front() == '#') return false;
  const auto eq = t.find('=');
  if (eq == std::string::npos) return false;
  key = t.substr(0, eq);
  value = t.substr(eq + 1);
  return true;
}

struct Found {
  bool section = false;
  bool key = false;
  std::size_t sectionLine = 0;
  std::size_t lastEntryLine = 0;  // last line of the section holding an entry
  std::size_t keyLine = 0;
  std::string value;
};

Found Find(const std::vector<std::string>& lines, std::string_view section, std::string_view key) {
  Found f;
  bool inside = false;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    std::string name;
    if (SectionOf(lines[i], name)) {
      inside = !f.section && SameName(name, section);
      if (inside) {
        f.section = true;
        f.sectionLine = f.lastEntryLine = i;
      }
      continue;
    }
    std::string k, v;
    if (!inside || !EntryOf(lines[i], k, v)) continue;
    f.lastEntryLine = i;
    if (!f.key && SameName(k, key)) {
      f.key = true;
      f.keyLine = i;
      f.value = v;
    }
  }
  return f;
}

std::string Unquoted(std::string v) {
  v = Trim(v);
  if (v.size() >= 2 && (v.front() == '"' || v.front() == '\'') && v.back() == v.front()) {
    v = v.substr(1, v.size() - 2);
  }
  return v;
}

}  // namespace

std::string GetProfileString(const std::string& file, std::string_view section, std::string_view key,
                             std::string_view defaultValue) {
  const Found f = Find(ReadLines(file), section, key);
  std::string value = f.key ? Unquoted(f.value) : std::string(defaultValue);
  if (value.size() > kProfileValueMax) value.resize(kProfileValueMax);
  return value;
}

int GetProfileInt(const std::string& file, std::string_view section, std::string_view key, int defaultValue) {
  const Found f = Find(ReadLines(file), section, key);
  if (!f.key) return defaultValue;
  const std::string v = Unquoted(f.value);
  return static_cast<int>(std::strtol(v.c_str(), nullptr, 10));
}

void WriteProfileString(const std::string& file, std::string_view section, std::string_view key,
                        std::string_view value) {
  std::vector<std::string> lines = ReadLines(file);
  const Found f = Find(lines, section, key);
  const std::string entry = std::string(key) + "=" + std::string(value);
  if (f.key) {
    lines[f.keyLine] = entry;
  } else if (f.section) {
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(f.lastEntryLine + 1), entry);
  } else {
    if (!lines.empty() && !Trim(lines.back()).empty()) lines.emplace_back();
    lines.push_back("[" + std::string(section) + "]");
    lines.push_back(entry);
  }

  const std::string temp = file + ".new";
  {
    std::ofstream out(temp, std::ios::binary | std::ios::trunc);
    for (const auto& line : lines) out << line << '\n';
    out.flush();
    if (!out) {
      const std::string why = std::strerror(errno);
      std::remove(temp.c_str());
      throw FileError(kErrPathAccess, "The settings file " + file + " could not be written: " + why);
    }
  }
  if (std::rename(temp.c_str(), file.c_str()) != 0) {
    const std::string why = std::strerror(errno);
    std::remove(temp.c_str());
    throw FileError(kErrPathAccess, "The settings file " + file + " could not be written: " + why);
  }
}

std::string UserDataFolder() {
  const char* xdg = std::getenv("XDG_DATA_HOME");
  std::string base;
  if (xdg != nullptr && xdg[0] == '/') {
    base = xdg;
  } else {
    const char* home = std::getenv("HOME");
    base = std::string(home != nullptr ? home : ".") + "/.local/share";
  }
  while (base.size() > 1 && base.back() == '/') base.pop_back();
  return base + "/Quillon/IRA";
}

bool FolderWritable(const std::string& folder) { return ::access(folder.c_str(), W_OK | X_OK) == 0; }

std::string SettingsFilePath(const std::string& programFolder, const std::string& programName,
                             const std::string& userFolder) {
  const std::string name = programName + ".ini";
  return (FolderWritable(programFolder) ? programFolder : userFolder) + "/" + name;
}

Settings LoadSettings(const std::string& file, const std::string& defaultDataFolder) {
  Settings s;
  s.file = file;
  s.hideError380 = GetProfileInt(file, kSectionHideError, kKeyHide380, 0);
  s.dataFolder = GetProfileString(file, kSectionDataFiles, kKeyDataFilePath, defaultDataFolder);
  if (s.dataFolder.empty()) s.dataFolder = defaultDataFolder;
  std::string name = GetProfileString(file, kSectionPreferences, kKeyFontName, reports::kDefaultFontName);
  if (const auto nul = name.find('\0'); nul != std::string::npos) name.resize(nul);
  name = RTrim(name);
  if (!name.empty()) s.font.name = name;
  const std::string size = GetProfileString(file, kSectionPreferences, kKeyFontSize, "10");
  const float points = std::strtof(size.c_str(), nullptr);
  if (points >= reports::kSmallestFontSize) s.font.size = points;
  return s;
}

bool InstallDemo(const std::string& programFolder, const std::string& dataFolder) {
  namespace fs = std::filesystem;
  const fs::path source = fs::path(programFolder) / "demo.ira";
  const fs::path target = fs::path(dataFolder) / "demo.ira";
  std::error_code ec;
  if (!fs::exists(source, ec) || fs::exists(target, ec)) return true;
  const fs::path temp = target.string() + ".new";
  if (!fs::copy_file(source, temp, fs::copy_options::overwrite_existing, ec)) return false;
  fs::rename(temp, target, ec);
  if (ec) fs::remove(temp, ec);
  return !ec;
}

void SaveReportFont(const std::string& file, const reports::ReportFontInfo& font) {
  WriteProfileString(file, kSectionPreferences, kKeyFontName, font.name);
  WriteProfileString(file, kSectionPreferences, kKeyFontSize, NumberText(font.size));
}

void SaveDataFolder(const std::string& file, const std::string& folder) {
  WriteProfileString(file, kSectionDataFiles, kKeyDataFilePath, folder);
}

}  // namespace ira::settings

namespace ira::settings {
namespace {
constexpr const char* kSectionRecent = "Recent Files";
constexpr const char* kSectionWindow = "Window";
constexpr const char* kKeyGeometry = "Geometry";
}  // namespace

std::vector<std::string> LoadRecentFiles(const std::string& file) {
  std::vector<std::string> files;
  for (std::size_t i = 1; i <= kRecentFilesMax; ++i) {
    const std::string path = GetProfileString(file, kSectionRecent, "File" + std::to_string(i), "");
    if (!path.empty()) files.push_back(path);
  }
  return files;
}

void SaveRecentFiles(const std::string& file, const std::vector<std::string>& files) {
  for (std::size_t i = 1; i <= kRecentFilesMax; ++i)
    WriteProfileString(file, kSectionRecent, "File" + std::to_string(i), i <= files.size() ? files[i - 1] : "");
}

std::vector<std::string> WithRecentFile(std::vector<std::string> files, const std::string& path) {
  if (path.size() > kProfileValueMax) return files;  // it would be read back cut
  std::erase(files, path);
  files.insert(files.begin(), path);
  if (files.size() > kRecentFilesMax) files.resize(kRecentFilesMax);
  return files;
}

std::string LoadWindowGeometry(const std::string& file) { return GetProfileString(file, kSectionWindow, kKeyGeometry, ""); }

void SaveWindowGeometry(const std::string& file, const std::string& geometry) {
  WriteProfileString(file, kSectionWindow, kKeyGeometry, geometry);
}

}  // namespace ira::settings
