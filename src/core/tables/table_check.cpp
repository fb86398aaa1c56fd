#include "core/tables/table_check.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>

#include "core/base/messages.h"
#include "core/base/program.h"
#include "core/tables/digest.h"

namespace ira::tables {
namespace {

constexpr PublishedTable kPublished[] = {
#include "table_manifest.inc"
};

std::set<std::string>& Damaged() {
  static std::set<std::string> paths;
  return paths;
}

long g_unusableReads = 0;

}  // namespace

std::span<const PublishedTable> PublishedTables() { return kPublished; }

bool IsPublished(const std::string& name, std::span<const std::uint8_t> bytes) {
  for (const PublishedTable& t : kPublished)
    if (name == t.name) return bytes.size() == t.size && Sha256Hex(bytes) == t.sha256;
  return false;
}

std::optional<std::vector<std::uint8_t>> ReadPublished(const std::string& name) {
  const std::string path = ProgramFile(name);
  const auto known = std::find_if(std::begin(kPublished), std::end(kPublished),
                                  [&](const PublishedTable& t) { return name == t.name; });
  std::vector<std::uint8_t> bytes;
  if (known != std::end(kPublished)) {
    std::ifstream in(path, std::ios::binary);
    // One byte more than published is enough to know a file too long.
    bytes.resize(known->size + 1);
    in.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(std::max<std::streamsize>(in.gcount(), 0)));
    if (IsPublished(name, bytes)) return bytes;
  }
  ReportDamaged(path);
  return std::nullopt;
}

void ReportDamaged(const std::string& path) {
  if (!Damaged().insert(path).second) return;
  ShowMessage(kDamagedTableTitle, "The table file " + path + kDamagedTableEnd + ".", MsgIcon::Critical);
}

bool AnyTableDamaged() { return !Damaged().empty(); }
void ForgetDamagedTables() { Damaged().clear(); }

void NoteUnusableRead() { ++g_unusableReads; }
UnusableReads::UnusableReads() : m_start(g_unusableReads) {}
UnusableReads::~UnusableReads() = default;
bool UnusableReads::Any() const { return g_unusableReads != m_start; }

}  // namespace ira::tables
