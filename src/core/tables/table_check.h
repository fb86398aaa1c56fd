// The table files as built: each file's exact size and SHA-256 are fixed at
// build time by the table generator (tools/tables writes the manifest for
// every file it writes), and a file is used only when it matches. A missing or
// damaged file is named in one message, the tables it holds are marked
// unusable, and every figure that would read them is not computable: the
// lookups note such a read, and the engine and the reports ask.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace ira::tables {

struct PublishedTable {
  const char* name;    // file name in the program folder: "v86.tbl"
  std::size_t size;    // bytes
  const char* sha256;  // lower-case hex
};

// Every table file the generator wrote, from the manifest built in.
std::span<const PublishedTable> PublishedTables();

// True when `bytes` are the published content of the table file `name`.
bool IsPublished(const std::string& name, std::span<const std::uint8_t> bytes);

// The content of the table file `name` in the program folder when it is as
// published. Otherwise (unreadable, another size or content) the damaged
// message names the file (once a run) and there is no content. The caller
// tests for a missing file first, with its own message.
std::optional<std::vector<std::uint8_t>> ReadPublished(const std::string& name);

// Names the file in the damaged message, once a run for each path.
void ReportDamaged(const std::string& path);
// Whether any table file was found missing or damaged in this run.
bool AnyTableDamaged();
// Forgets what was found (a new load, tests).
void ForgetDamagedTables();

// Notes that a figure asked a table that is not usable. A scope counts the
// notes made during its life, so that the figure it guards can be withheld.
void NoteUnusableRead();
class UnusableReads {
 public:
  UnusableReads();
  ~UnusableReads();
  UnusableReads(const UnusableReads&) = delete;
  UnusableReads& operator=(const UnusableReads&) = delete;
  bool Any() const;

 private:
  long m_start;
};

inline constexpr const char* kDamagedTableTitle = "Damaged Table";
inline constexpr const char* kDamagedTableEnd = " is damaged: reinstall the program";
// What a figure that would read an unusable table prints instead of a number.
inline constexpr const char* kNotComputable = "not computable";

}  // namespace ira::tables
