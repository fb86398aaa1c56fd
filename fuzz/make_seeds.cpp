// Writes the seed corpora of the fuzz targets:
//   make_seeds <scenario corpus folder> <table corpus folder>
// Scenario seeds are files of every version, written by the tests' own
// writer: the scenario with every field set, and plainer ones whose amounts
// and dates let the engine compute (required and early, each method).
// Table seeds are each built table file behind its selector byte.
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "core/base/calendar.h"
#include "support/scenario_files.h"

namespace {

namespace fs = std::filesystem;
using namespace ira;
using ira::testing::FileBytes;
using ira::testing::FileVersion;

void Write(const fs::path& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!out) throw std::runtime_error("cannot write " + path.string());
}

// The full scenario with amounts and dates a person would enter.
Scenario Plain(int iraCount, std::int16_t distType, std::int16_t method) {
  Scenario s = ira::testing::FullScenario(iraCount);
  s.Gen.DistType = distType;
  s.Gen.EarlyMethod = method;
  s.Gen.ProjectionYears = 5;
  if (distType == 0) {
    s.Gen.OwnerBirthDate = MakeDate(1950, 3, 1);
    s.Gen.OwnerDeathDate = kNoDate;
  }
  for (IraRecord& r : s.Ira) {
    r.Benefit = Money::FromWhole(180'000);
    r.DistributedThisYear = Money::FromWhole(2'500);
    r.FirstYearDist = Money();
  }
  return s;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: make_seeds <scenario corpus folder> <table corpus folder>\n";
    return 2;
  }
  try {
    const fs::path scenarios = argv[1], tables = argv[2];
    fs::create_directories(scenarios);
    fs::create_directories(tables);

    constexpr std::array kVersions = {FileVersion::Current, FileVersion::V1999_2, FileVersion::V2000_1,
                                      FileVersion::V2001, FileVersion::Legacy};
    constexpr std::array kNames = {"current", "1999.2", "2000.1", "2001", "legacy"};
    for (std::size_t v = 0; v < kVersions.size(); ++v) {
      const std::string stem = std::string("seed-") + kNames[v];
      for (int n : {0, 1, 3}) {
        Write(scenarios / (stem + "-full-" + std::to_string(n)), FileBytes(ira::testing::FullScenario(n), kVersions[v]));
      }
      Write(scenarios / (stem + "-required"), FileBytes(Plain(2, -1, 0), kVersions[v]));
      for (std::int16_t method = 0; method <= 2; ++method) {
        Write(scenarios / (stem + "-early-" + std::to_string(method)), FileBytes(Plain(1, 0, method), kVersions[v]));
      }
    }
    // Tags that select a layout by substring, or that a family refuses.
    const Scenario one = Plain(1, -1, 0);
    Write(scenarios / "seed-tag-2002.1", FileBytes(one, FileVersion::Current, "VESK2002.1"));
    Write(scenarios / "seed-tag-2001.2", FileBytes(one, FileVersion::V2001, "VESK2001.2"));
    Write(scenarios / "seed-tag-1997.19", FileBytes(one, FileVersion::Legacy, "VESK1997.19"));
    Write(scenarios / "seed-tag-1997.2", FileBytes(one, FileVersion::Legacy, "VESK1997.2"));
    Write(scenarios / "seed-tag-1995.10", FileBytes(one, FileVersion::Legacy, "VESK1995.10"));

    constexpr std::array kTables = {"v86.tbl", "v02.tbl", "vi86.tbl", "vi02.tbl", "s-90cm.tbl"};
    for (std::size_t i = 0; i < kTables.size(); ++i) {
      std::ifstream in(fs::path(TALLYRA_PROGRAM_DIR) / kTables[i], std::ios::binary);
      const std::string content{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
      if (content.empty()) throw std::runtime_error(std::string("no built ") + kTables[i]);
      Write(tables / (std::string("seed-") + kTables[i]), std::string(1, static_cast<char>(i)) + content);
    }
  } catch (const std::exception& e) {
    std::cerr << "make_seeds: " << e.what() << "\n";
    return 1;
  }
  return 0;
}
