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

// The tables in force from 2022 (T.D. 9930): Single Life and Joint and Last
// Survivor for ages 0..120, Uniform Lifetime for ages 10..120. They have
// files of their own, so a folder holding only the four older files still
// loads those exactly as before.
inline constexpr std::size_t k2022Ages = 121;         // ages 0..120
inline constexpr std::size_t kUniform2022Ages = 111;  // ages 10..120
inline constexpr int kUniform2022FirstAge = 10;

struct LifeTables2022 {
  std::array<float, k2022Ages> single{};             // index age
  std::array<float, k2022Ages * k2022Ages> joint{};  // index a1 + a2 * 121
  std::array<float, kUniform2022Ages> uniform{};     // index age - 10
};

const LifeTables& Tables();
const LifeTables2022& Tables2022();
// Zeroes the four older tables (as before loading), counts them usable and
// forgets the damaged table files found so far.
void ClearTables();

// The tables; one that a load found missing or damaged is not usable until
// the next ClearTables (ClearTables2022 for the 2022 ones).
enum TableId : std::size_t {
  kSingle86, kSingle02, kJoint86, kJoint02, kSingle22, kJoint22, kUniform22, kTableCount
};
bool Usable(TableId id);

// Load the joint files ("vi86.tbl", "vi02.tbl") and the single files
// ("v86.tbl", "v02.tbl") from the program folder. A missing file gives the
// "File not found" message and leaves that reader's tables at zero; a
// missing or damaged file (not as published, table_check.h) is also named in
// the damaged message and its table (both, for a missing one) made unusable.
void ReadTableVI();
void ReadTableV();
// Load "v22.tbl", "vi22.tbl" and "ul22.tbl"; a missing file gives the same
// "File not found" message, and a missing or damaged one the damaged
// message; its table stays at zero and unusable.
void ReadTables2022();
void ClearTables2022();

// Reads one little-endian record of `size` bytes (at most 8) into `bits`;
// false at the end of the data, so a short file is read as far as it goes.
bool ReadLittleEndian(std::istream& in, std::size_t size, std::uint64_t& bits);

}  // namespace ira::tables
