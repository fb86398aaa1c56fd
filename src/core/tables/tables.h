// The four life expectancy tables, loaded once from the table files in the
// program folder and shared read-only for the whole run. All four are held
// as singles; the 2002 files' doubles are rounded to single on loading.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <istream>

namespace ira::tables {

inline constexpr std::size_t kAges = 111;  // ages 5..115

struct LifeTables {
  std::array<float, kAges> single86{};  // index age - 5
  std::array<float, kAges> single02{};
  std::array<float, kAges * kAges> joint86{};  // index (a1 - 5) + (a2 - 5) * 111
  std::array<float, kAges * kAges> joint02{};
};

const LifeTables& Tables();
// Zeroes all four tables (as before loading), counts them usable and
// forgets the damaged table files found so far.
void ClearTables();

// The four tables; one that a load found missing or damaged is not usable
// until the next ClearTables.
enum TableId : std::size_t { kSingle86, kSingle02, kJoint86, kJoint02, kTableCount };
bool Usable(TableId id);

// Load the joint files ("vi86.tbl", "vi02.tbl") and the single files
// ("v86.tbl", "v02.tbl") from the program folder. A missing file gives the
// "File not found" message and leaves that reader's tables at zero; a
// missing or damaged file (not as published, table_check.h) is also named in
// the damaged message and its table (both, for a missing one) made unusable.
void ReadTableVI();
void ReadTableV();

// Reads one little-endian record of `size` bytes (at most 8) into `bits`;
// false at the end of the data, so a short file is read as far as it goes.
bool ReadLittleEndian(std::istream& in, std::size_t size, std::uint64_t& bits);

}  // namespace ira::tables
