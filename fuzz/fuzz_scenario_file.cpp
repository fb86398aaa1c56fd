// Fuzzes opening a scenario file from arbitrary bytes: the current layout,
// the older "NOTVB3" layouts and the family without a signature. A file is
// either refused with a notice or loaded whole; a loaded scenario keeps its
// IRA count and list in step, saves and reloads to the same bytes, and a
// current-layout file saves back byte for byte. Then every report is
// written from it, as a batch run would.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string_view>
#include <vector>

#include "core/base/errors.h"
#include "core/base/program.h"
#include "core/reports/display_master.h"
#include "core/reports/report_sink.h"
#include "core/scenario/file.h"
#include "core/scenario/records.h"
#include "core/scenario/scenario.h"
#include "core/tables/tables.h"

namespace {

using namespace ira;

constexpr std::size_t kProjectionYearsOffset = 148;  // in the general record

void Check(bool ok, const char* what) {
  if (ok) return;
  std::fprintf(stderr, "check failed: %s\n", what);
  std::abort();
}

std::vector<std::uint8_t> Saved(const Scenario& s) {
  file::ByteWriter out;
  out.Field(std::string_view("NOTVB3"), file::kSignatureSize);
  out.Field(FileVersionTag(), file::kTagWidth);
  file::WriteRecords(out, s);
  return std::move(out.Data());
}

bool IsCurrentLayout(std::string_view bytes) {
  if (bytes.substr(0, file::kSignatureSize) != "NOTVB3") return false;
  const std::string_view tag = bytes.substr(file::kSignatureSize, file::kTagWidth);
  for (std::string_view old : {"VESK1999.2", "VESK2000.1", "VESK2001"}) {
    if (tag.find(old) != std::string_view::npos) return false;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  SetProgramFolder(TALLYRA_PROGRAM_DIR);
  tables::ReadTableVI();
  tables::ReadTableV();
  tables::ReadTables2022();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span<const std::uint8_t> input(data, size);
  Scenario s;
  if (!file::OpenData("fuzz.ira", input, s)) {
    Check(s == Scenario{}, "a refused file leaves the scenario alone");
    return 0;
  }
  Check(s.Ira.size() == static_cast<std::size_t>(s.Gen.IraCount), "the IRA count and list agree");
  Check(s.Gen.ProjectionYears >= 0, "no negative projection years");

  const std::vector<std::uint8_t> saved = Saved(s);
  Scenario reloaded;
  Check(file::OpenData("saved.ira", saved, reloaded), "a saved scenario opens");
  Check(Saved(reloaded) == saved, "a reopened scenario saves the same bytes");

  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  if (IsCurrentLayout(bytes)) {
    const std::size_t header = file::kHeaderSize;
    // A negative number of projection years is turned off on loading.
    std::vector<std::uint8_t> expected(data, data + saved.size());
    const std::size_t years = header + kProjectionYearsOffset;
    if (expected[years + 1] & 0x80) expected[years] = expected[years + 1] = 0;
    const auto diff = std::mismatch(saved.begin() + header, saved.end(), expected.begin() + header);
    if (diff.first != saved.end()) {
      std::fprintf(stderr, "offset %zu: read %02x, saved %02x\n", static_cast<std::size_t>(diff.first - saved.begin()),
                   *diff.second, *diff.first);
    }
    Check(diff.first == saved.end(), "a current file saves back byte for byte");
  }

  // Every report, as the batch run writes them. The engine throws ira::Error
  // (an overflow, a division by zero) up to the report, which reports it:
  // that is an outcome, not a fault; any other exception escapes and is one.
  TheScenario() = s;
  // Projections run up to the file's limits: the engine refuses one larger
  // than it holds before allocating, so the memory cap of the fuzz run
  // (scripts/fuzz.sh) catches any allocation that grows with the input.
  for (const reports::ReportEntry& entry : reports::Reports()) {
    if (!entry.routine || (entry.flag == reports::kRptProjection && !reports::ProjectionModeOn())) continue;
    reports::TextSink sink(reports::ReportMode::File);
    try {
      entry.routine(sink);
    } catch (const Error&) {
    }
  }
  return 0;
}
