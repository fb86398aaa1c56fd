// Test helpers: the tables as the build generates them, the data files they
// come from, and a program folder of a test's own for missing, short or
// made-up table files.
#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "core/base/program.h"
#include "core/tables/tables.h"
#include "support/installed_tables.h"
#include "support/scenario_files.h"

namespace ira::testing {

// Rows of a data file keyed by their leading fields ({"70"} or {"70", "60"}).
inline std::map<std::vector<std::string>, std::string> ReadCsv(const std::string& name) {
  std::ifstream in(std::string(TALLYRA_DATA_DIR) + "/" + name);
  std::map<std::vector<std::string>, std::string> rows;
  std::string line;
  for (std::getline(in, line); std::getline(in, line);) {
    std::vector<std::string> fields;
    std::stringstream ss(line);
    for (std::string f; std::getline(ss, f, ',');) fields.push_back(f);
    const std::string value = fields.back();
    fields.pop_back();
    rows[fields] = value;
  }
  return rows;
}

// A joint table file of singles (4) or doubles (8) whose values tell which
// record was read: first age x 1000 + second age.
inline std::string MadeUpJointFile(std::size_t recordSize) {
  std::string bytes;
  for (int i = 5; i <= 115; ++i) {
    for (int j = 5; j <= 115; ++j) {
      const double v = i * 1000 + j;
      const std::uint64_t bits = recordSize == 4 ? std::bit_cast<std::uint32_t>(static_cast<float>(v))
                                                 : std::bit_cast<std::uint64_t>(v);
      for (std::size_t b = 0; b < recordSize; ++b) bytes.push_back(static_cast<char>(bits >> (8 * b)));
    }
  }
  return bytes;
}

// A temporary folder made the program folder for its lifetime, with copies
// of the named files from the build.
class TempProgramFolder : public TempFolder {
 public:
  explicit TempProgramFolder(const std::vector<std::string>& copies) {
    for (const auto& name : copies) std::filesystem::copy_file(std::string(TALLYRA_PROGRAM_DIR) + "/" + name, File(name));
    SetProgramFolder(Path());
  }
  ~TempProgramFolder() { SetProgramFolder(TALLYRA_PROGRAM_DIR); }
  void Truncate(const std::string& name, std::uintmax_t size) const { std::filesystem::resize_file(File(name), size); }
};

}  // namespace ira::testing
