#include "core/tables/tables.h"

#include <bit>
#include <cstring>
#include <optional>
#include <utility>
#include <vector>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "core/base/errors.h"
#include "core/base/messages.h"
#include "core/base/program.h"
#include "core/tables/table_check.h"

namespace ira::tables {
namespace {

LifeTables g_tables;
LifeTables2022 g_tables2022;
// Every table counts usable until a load finds its file missing or damaged
// (filled whole, so that a table added to TableId starts usable too).
std::array<bool, kTableCount> g_usable = [] {
  std::array<bool, kTableCount> all;
  all.fill(true);
  return all;
}();

// Two sentences joined with no blank between them: the wording is deliberate.
constexpr const char* kFileNotFoundTitle = "File not found";
constexpr const char* kDoesNotExist = " does not exist.";
constexpr const char* kVerifyFolder = "Please verify the file is in the correct directory.";

bool TableFileExists(const std::string& path) {
  std::error_code ec;
  if (std::filesystem::is_regular_file(path, ec)) return true;
  ShowMessage(kFileNotFoundTitle, "File: " + path + kDoesNotExist + kVerifyFolder, MsgIcon::Information);
  return false;
}

// Tests the reader's 1986 file, then its 2002 file, for existence (the 2002
// file is not tested when the 1986 one is missing: nothing is loaded), then
// reads each whole when it is as published. A missing or damaged file leaves
// its table at zero and unusable; a missing 1986 file leaves both.
struct Pair {
  std::optional<std::vector<std::uint8_t>> bytes86, bytes02;
};

Pair ReadPair(const char* name86, const char* name02, TableId id86, TableId id02) {
  Pair pair;
  for (const auto& [name, id] : {std::pair{name86, id86}, std::pair{name02, id02}}) {
    if (!TableFileExists(ProgramFile(name))) {
      ReportDamaged(ProgramFile(name));
      g_usable[id86] = g_usable[id02] = false;
      return {};
    }
  }
  pair.bytes86 = ReadPublished(name86);
  pair.bytes02 = ReadPublished(name02);
  g_usable[id86] = pair.bytes86.has_value();
  g_usable[id02] = pair.bytes02.has_value();
  return pair;
}

float Single(const std::vector<std::uint8_t>& bytes, std::size_t record) {
  std::uint32_t bits = 0;
  std::memcpy(&bits, bytes.data() + record * 4, 4);
  return std::bit_cast<float>(bits);
}

// The 2002 double rounded to the nearest single.
float DoubleAsSingle(const std::vector<std::uint8_t>& bytes, std::size_t record) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, bytes.data() + record * 8, 8);
  return static_cast<float>(std::bit_cast<double>(bits));
}

// Reads a table file of doubles into singles when it is as published; a
// missing or damaged file leaves the table at zero and unusable.
template <std::size_t N>
std::optional<std::vector<std::uint8_t>> Read2022(const char* name, TableId id, std::array<float, N>& cells) {
  std::optional<std::vector<std::uint8_t>> bytes;
  if (TableFileExists(ProgramFile(name))) {
    bytes = ReadPublished(name);
  } else {
    ReportDamaged(ProgramFile(name));
  }
  g_usable[id] = bytes.has_value() && bytes->size() >= N * 8;
  if (g_usable[id])
    for (std::size_t k = 0; k < N; ++k) cells[k] = DoubleAsSingle(*bytes, k);
  return bytes;
}

}  // namespace

const LifeTables& Tables() { return g_tables; }
const LifeTables2022& Tables2022() { return g_tables2022; }

void ClearTables2022() {
  g_tables2022 = LifeTables2022{};
  for (TableId id : {kSingle22, kJoint22, kUniform22}) g_usable[id] = true;
}

void ReadTables2022() {
  try {
    Read2022("v22.tbl", kSingle22, g_tables2022.single);
    // The file runs by first age, then second age; in memory the first age
    // varies fastest, as in the older joint tables.
    const auto fileOrder = std::make_unique<std::array<float, k2022Ages * k2022Ages>>();
    Read2022("vi22.tbl", kJoint22, *fileOrder);
    for (std::size_t i = 0; i < k2022Ages; ++i)
      for (std::size_t j = 0; j < k2022Ages; ++j)
        g_tables2022.joint[i + j * k2022Ages] = (*fileOrder)[i * k2022Ages + j];
    Read2022("ul22.tbl", kUniform22, g_tables2022.uniform);
  } catch (const std::exception& e) {
    ReportUnexpected("ReadTables2022", e);
  }
}

bool ReadLittleEndian(std::istream& in, std::size_t size, std::uint64_t& bits) {
  unsigned char b[8];
  if (size > sizeof b || !in.read(reinterpret_cast<char*>(b), static_cast<std::streamsize>(size))) return false;
  bits = 0;
  for (std::size_t i = size; i-- > 0;) bits = (bits << 8) | b[i];
  return true;
}

void ClearTables() {
  g_tables = LifeTables{};
  g_usable.fill(true);
  ForgetDamagedTables();
}

bool Usable(TableId id) { return g_usable[id]; }

void ReadTableVI() {
  try {
    const Pair pair = ReadPair("vi86.tbl", "vi02.tbl", kJoint86, kJoint02);
    // The files run by first age, then second age; in memory the first age
    // varies fastest.
    for (std::size_t i = 0; i < kAges; ++i) {
      for (std::size_t j = 0; j < kAges; ++j) {
        if (pair.bytes86) g_tables.joint86[i + j * kAges] = Single(*pair.bytes86, i * kAges + j);
        if (pair.bytes02) g_tables.joint02[i + j * kAges] = DoubleAsSingle(*pair.bytes02, i * kAges + j);
      }
    }
  } catch (const std::exception& e) {
    ReportUnexpected("ReadTableVI", e);
  }
}

void ReadTableV() {
  try {
    const Pair pair = ReadPair("v86.tbl", "v02.tbl", kSingle86, kSingle02);
    for (std::size_t k = 0; k < kAges; ++k) {
      if (pair.bytes86) g_tables.single86[k] = Single(*pair.bytes86, k);
      if (pair.bytes02) g_tables.single02[k] = DoubleAsSingle(*pair.bytes02, k);
    }
  } catch (const std::exception& e) {
    ReportUnexpected("ReadTableV", e);
  }
}

}  // namespace ira::tables
