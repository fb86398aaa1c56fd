#include "core/tables/tables.h"

#include <bit>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "core/base/errors.h"
#include "core/base/messages.h"
#include "core/base/program.h"

namespace ira::tables {
namespace {

LifeTables g_tables;
LifeTables2022 g_tables2022;

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

// Reads one record of each file into the 1986 and 2002 cells (the two files
// are read in lock-step); the 2002 double is rounded to the nearest single.
void ReadStep(std::ifstream& in86, std::ifstream& in02, float& cell86, float& cell02) {
  std::uint64_t bits = 0;
  if (ReadLittleEndian(in86, 4, bits)) cell86 = std::bit_cast<float>(static_cast<std::uint32_t>(bits));
  if (ReadLittleEndian(in02, 8, bits)) cell02 = static_cast<float>(std::bit_cast<double>(bits));
}

// Tests and opens a reader's 1986 and 2002 files. The 2002 file is not
// tested when the 1986 one is missing.
bool OpenPair(const char* name86, const char* name02, std::ifstream& in86, std::ifstream& in02) {
  const std::string path86 = ProgramFile(name86);
  const std::string path02 = ProgramFile(name02);
  if (!TableFileExists(path86) || !TableFileExists(path02)) return false;
  in86.open(path86, std::ios::binary);
  in02.open(path02, std::ios::binary);
  // A file that exists but cannot be opened is left unread, without a message.
  return in86.is_open() && in02.is_open();
}

// Reads a file of doubles into singles, as far as it goes.
template <std::size_t N>
void ReadDoubles(const char* name, std::array<float, N>& cells) {
  const std::string path = ProgramFile(name);
  if (!TableFileExists(path)) return;
  std::ifstream in(path, std::ios::binary);
  std::uint64_t bits = 0;
  for (std::size_t k = 0; k < N && ReadLittleEndian(in, 8, bits); ++k)
    cells[k] = static_cast<float>(std::bit_cast<double>(bits));
}

}  // namespace

const LifeTables& Tables() { return g_tables; }
const LifeTables2022& Tables2022() { return g_tables2022; }

void ClearTables2022() { g_tables2022 = LifeTables2022{}; }

void ReadTables2022() {
  try {
    ReadDoubles("v22.tbl", g_tables2022.single);
    // The file runs by first age, then second age; in memory the first age
    // varies fastest, as in the older joint tables.
    const auto fileOrder = std::make_unique<std::array<float, k2022Ages * k2022Ages>>();
    ReadDoubles("vi22.tbl", *fileOrder);
    for (std::size_t i = 0; i < k2022Ages; ++i)
      for (std::size_t j = 0; j < k2022Ages; ++j)
        g_tables2022.joint[i + j * k2022Ages] = (*fileOrder)[i * k2022Ages + j];
    ReadDoubles("ul22.tbl", g_tables2022.uniform);
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

void ClearTables() { g_tables = LifeTables{}; }

void ReadTableVI() {
  try {
    std::ifstream in86, in02;
    if (!OpenPair("vi86.tbl", "vi02.tbl", in86, in02)) return;
    // The files run by first age, then second age; in memory the first age
    // varies fastest.
    for (std::size_t i = 0; i < kAges; ++i) {
      for (std::size_t j = 0; j < kAges; ++j) {
        ReadStep(in86, in02, g_tables.joint86[i + j * kAges], g_tables.joint02[i + j * kAges]);
      }
    }
  } catch (const std::exception& e) {
    ReportUnexpected("ReadTableVI", e);
  }
}

void ReadTableV() {
  try {
    std::ifstream in86, in02;
    if (!OpenPair("v86.tbl", "v02.tbl", in86, in02)) return;
    for (std::size_t k = 0; k < kAges; ++k) {
      ReadStep(in86, in02, g_tables.single86[k], g_tables.single02[k]);
    }
  } catch (const std::exception& e) {
    ReportUnexpected("ReadTableV", e);
  }
}

}  // namespace ira::tables
