// Scenario files of every version, written field by field from the file
// layout tables and apart from the program's own writer, so that a fault in
// the writer cannot hide the same fault in the reader. Also the seed corpus
// for fuzzing the loader.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "core/scenario/scenario.h"

namespace ira::testing {

// Legacy: no signature, a 21-character tag, then the 1999.2 records.
enum class FileVersion { Current, V1999_2, V2000_1, V2001, Legacy };

// The file of `version` holding `s` (every IRA of the list, whatever
// s.Gen.IraCount says), under `tag` or the version's usual tag
// ("VESK2014.10", "VESK1999.2", "VESK2000.1", "VESK2001.2", "VESK1999.19").
std::string FileBytes(const Scenario& s, FileVersion version, std::string_view tag = {});

// What a converter must make of FullScenario saved in `version`: the fields
// the version lacks take their defaults.
Scenario AsConverted(Scenario s, FileVersion version);

// Every field set to a value of its own: Windows-1252 letters in the texts,
// a name of full width, kept bytes non-zero, negative and large amounts.
Scenario FullScenario(int iraCount);

inline std::span<const std::uint8_t> AsBytes(std::string_view bytes) {
  return {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()};
}

void WriteFileBytes(const std::string& path, std::string_view bytes);
std::string ReadFileBytes(const std::string& path);

// A new folder under the system's temporary folder, removed with its content.
class TempFolder {
 public:
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::string& Path() const { return m_path; }
  std::string File(std::string_view name) const { return m_path + "/" + std::string(name); }

 private:
  std::string m_path;
};

}  // namespace ira::testing
