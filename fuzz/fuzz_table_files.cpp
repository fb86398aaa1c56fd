// Fuzzes the table files: the first byte picks one of the five files, the
// rest is its whole content. The file replaces the built one in a program
// folder of its own, the tables are loaded as at start-up, and every reader
// of them runs: the lookups, the 90CM factors and the engine on a few fixed
// scenarios. A table file other than the one built is refused as damaged and
// the figures that need it are withheld: never a crash, an unreported
// overflow or undefined behaviour.
#include <stdlib.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "core/base/calendar.h"
#include "core/base/checked.h"
#include "core/base/errors.h"
#include "core/base/money.h"
#include "core/base/program.h"
#include "core/engine/rep_calc.h"
#include "core/scenario/scenario.h"
#include "core/tables/life_exp.h"
#include "core/tables/s90cm.h"
#include "core/tables/tables.h"

namespace {

namespace fs = std::filesystem;
using namespace ira;

constexpr std::array<const char*, 5> kFiles = {"v86.tbl", "v02.tbl", "vi86.tbl", "vi02.tbl", "s-90cm.tbl"};
constexpr std::size_t kFactorFile = 4;

std::string ReadAll(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void WriteAll(const fs::path& path, const char* data, std::size_t size) {
  std::ofstream(path, std::ios::binary | std::ios::trunc).write(data, static_cast<std::streamsize>(size));
}

struct Folder {
  fs::path path;
  std::array<std::string, kFiles.size()> built;
};

Folder& TheFolder() {
  static Folder folder = [] {
    Folder f;
    std::string pattern = (fs::temp_directory_path() / "tallyra-fuzz-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) abort();
    f.path = pattern;
    for (std::size_t i = 0; i < kFiles.size(); ++i) {
      f.built[i] = ReadAll(fs::path(TALLYRA_PROGRAM_DIR) / kFiles[i]);
      if (f.built[i].empty()) abort();  // the table files must be built first
      WriteAll(f.path / kFiles[i], f.built[i].data(), f.built[i].size());
    }
    SetProgramFolder(f.path.string());
    return f;
  }();
  return folder;
}

GeneralInputs Owner(Date birth, std::int16_t dcy, std::int16_t distType) {
  GeneralInputs gen;
  gen.OwnerBirthDate = birth;
  gen.SpouseBirthDate = MakeDate(1936, 7, 1);
  gen.SpouseBen = kTrue;
  gen.DCY = dcy;
  gen.DistType = distType;
  gen.IraCount = 1;
  gen.IntRate = 7.5f;
  gen.AnnuityIntRate = 6.1f;
  gen.InflationRate = 3.0f;
  return gen;
}

IraRecord Account(std::int16_t recalc) {
  IraRecord ira;
  ira.SpouseBen = kTrue;
  ira.OtherBen = kTrue;
  ira.BeneBirthDate = MakeDate(1970, 3, 15);
  ira.Benefit = Money::FromWhole(250'000);
  ira.DistributedThisYear = Money::FromWhole(1'000);
  ira.RateOfReturn = 6.0f;
  ira.bRecalc = recalc;
  ira.chkUse2002Table = kTrue;
  return ira;
}

// The engine throws ira::Error (an overflow, a division by zero) up to the
// report that asked, which reports it: that is an outcome, not a fault.
void Compute(const GeneralInputs& gen, const IraRecord& ira, float percentOver) {
  rep_calc::IraDistResults results;
  try {
    rep_calc::CalcIraDist(gen, ira, results, percentOver);
  } catch (const Error&) {
  }
}

void LifeLookups() {
  for (std::int16_t sel : {life_exp::kTables1986, life_exp::kTables2002}) {
    for (std::int16_t age = 3; age <= 117; ++age) {
      life_exp::GetSingleLifeExp(age, sel);
      life_exp::GetJointLifeExp(age, static_cast<std::int16_t>(120 - age), sel);
      life_exp::GetJointLifeExp(age, age, sel);
    }
  }
}

void FactorQueries() {
  CTableS90CM table;
  for (std::int16_t age : {0, 1, 55, 109, 110}) {
    for (float rate : {4.2f, 6.1f, 9.0f, 13.9f, 14.0f, 3.0f, 15.5f}) {
      table.Age(age);
      table.InterestRate(rate);
      table.AnnuityFactor();
    }
  }
}

void Engine(bool early) {
  if (early) {
    GeneralInputs gen = Owner(MakeDate(1950, 5, 20), 2004, kFalse);
    const IraRecord ira = Account(0);
    for (std::int16_t method : {kMethodMinimum, kMethodAmortization, kMethodAnnuity}) {
      gen.EarlyMethod = method;
      Compute(gen, ira, 0);
    }
    return;
  }
  for (std::int16_t dcy : {1995, 2001, 2004}) {
    for (std::int16_t recalc = 0; recalc <= 3; ++recalc) {
      GeneralInputs gen = Owner(MakeDate(1924, 11, 2), dcy, kTrue);
      Compute(gen, Account(recalc), 0);
      gen.OwnerDeathDate = MakeDate(dcy - 2, 6, 30);
      Compute(gen, Account(recalc), 10.0f);
    }
  }
  Scenario projected;
  projected.Gen = Owner(MakeDate(1930, 1, 9), 2000, kTrue);
  projected.Gen.IraCount = 0;
  projected.Gen.ProjectionYears = 6;
  projected.AddIra() = Account(1);
  rep_calc::ProjCells cells;
  std::vector<rep_calc::ProjYearTotals> totals;
  rep_calc::CalcProjResults(projected, cells, totals);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  Folder& folder = TheFolder();
  const std::size_t which = data[0] % kFiles.size();
  const fs::path file = folder.path / kFiles[which];
  WriteAll(file, reinterpret_cast<const char*>(data + 1), size - 1);

  // The life tables stay in memory after a run on a damaged one: load them
  // anew whenever the last run left them damaged, so each input stands alone.
  static bool tablesDamaged = true;
  if (which != kFactorFile || tablesDamaged) {
    tables::ClearTables();
    tables::ReadTableVI();
    tables::ReadTableV();
    tablesDamaged = which != kFactorFile;
  }
  if (which == kFactorFile) {
    FactorQueries();
  } else {
    LifeLookups();
    Engine(false);
  }
  Engine(true);

  const std::string& built = folder.built[which];
  WriteAll(file, built.data(), built.size());
  return 0;
}
