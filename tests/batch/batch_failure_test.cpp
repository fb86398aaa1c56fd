// The batch run when things go wrong around it: missing or short table
// files, an output that cannot be written, an input that cannot be read.
// Each gives its messages on standard error and its exit status, and a file
// that was there before is left as it was. The real executable runs in a
// child process, from a program folder of the test's own where the tables
// matter, and with a file size limit where the disk is to be full.
#include <gtest/gtest.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "core/base/calendar.h"
#include "run_program.h"
#include "support/scenario_files.h"

namespace ira::testing {
namespace {

namespace fs = std::filesystem;

const std::string kBuiltFolder = TALLYRA_PROGRAM_DIR;
const std::string kCases = TALLYRA_BATCH_WORK;  // the generated batch scenarios


std::string NotFound(const std::string& path) {
  return "File not found: File: " + path + " does not exist.Please verify the file is in the correct directory.\n";
}

const std::string kNo90CM =
    "WARNING: $/s-90cm.tbl could not be located. This is a critical file for this application. Try reinstalling "
    "the program before running the program again.\n";
const std::string kNo90CMGrid = "Error 9 in Interpolate(): Subscript out of range\n";

// An early distribution by the annuity method, which asks the 90CM table.
std::string AnnuityScenarioFile(const std::string& folder) {
  Scenario s;
  s.Gen.OwnerBirthDate = MakeDate(1950, 1, 1);
  s.Gen.DCY = 2005;
  s.Gen.EarlyMethod = kMethodAnnuity;
  s.Gen.AnnuityIntRate = 6.0f;
  s.AddIra().Benefit = Money::FromWhole(100'000);
  const std::string path = folder + "/annuity.ira";
  WriteFileBytes(path, FileBytes(s, FileVersion::Current));
  return path;
}

TEST(BatchFailures, MissingOrShortTablesAreReportedAndTheRunGoesOn) {
  TempFolder folder;
  const std::string annuity = AnnuityScenarioFile(folder.Path());
  struct Row {
    const char* name;
    std::vector<std::string> absent;
    std::vector<std::pair<std::string, std::uintmax_t>> cut;  // file and the size it is cut to
    std::string input;
    int status;
    std::vector<std::string> errLines;  // the program folder's path stands for "$"
  } rows[] = {
      {"no life table: the lookups give 0 and the run goes on",
       {"v86.tbl", "v02.tbl", "vi86.tbl", "vi02.tbl"},
       {},
       kCases + "/deceased-owner.ira",
       0,
       {NotFound("$/vi86.tbl"), NotFound("$/v86.tbl")}},
      {"no life table: an amortization term of 0 is a reported error",
       {"v86.tbl", "v02.tbl", "vi86.tbl", "vi02.tbl"},
       {},
       kCases + "/early-amortization.ira",
       4,
       {NotFound("$/vi86.tbl"), NotFound("$/v86.tbl"),
        "Error 11 in DispCalcResults(): Division by zero in AmortizationPayment()\n",
        "Error 11 in DisplayCalSumm(): Division by zero in AmortizationPayment()\n"}},
      // Asked by the Inputs, Distribution Calculations and Calendar Year Summary reports.
      {"no 90CM file: a warning and the grid's error, each time the factor is asked",
       {"s-90cm.tbl"},
       {},
       annuity,
       4,
       {kNo90CM, kNo90CMGrid, kNo90CM, kNo90CMGrid, kNo90CM, kNo90CMGrid}},
      {"short 90CM file: its missing factors are 0", {}, {{"s-90cm.tbl", 4000}}, annuity, 0, {}},
      {"only the 2002 single table missing", {"v02.tbl"}, {}, kCases + "/deceased-owner.ira", 0, {NotFound("$/v02.tbl")}},
      {"short life tables are read as far as they go",
       {},
       {{"v02.tbl", 100}, {"vi02.tbl", 1001}, {"vi86.tbl", 0}},
       kCases + "/deceased-owner.ira",
       0,
       {}},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    TempFolder programFolder;
    const std::string program = programFolder.File("tallyra");
    fs::copy_file(kBuiltFolder + "/tallyra", program);
    for (const char* table : {"v86.tbl", "v02.tbl", "vi86.tbl", "vi02.tbl", "s-90cm.tbl"}) {
      if (std::find(r.absent.begin(), r.absent.end(), table) == r.absent.end())
        fs::copy_file(kBuiltFolder + "/" + table, programFolder.File(table));
    }
    for (const auto& [table, size] : r.cut) fs::resize_file(programFolder.File(table), size);

    const std::string output = folder.File("out.txt");
    fs::remove(output);
    const RunResult run = RunProgram(program, {"/silent", "/input", r.input, "/output", output}, folder.File("err.txt"));
    std::string expected;
    for (std::string line : r.errLines) {
      if (const auto at = line.find('$'); at != std::string::npos) line.replace(at, 1, programFolder.Path());
      expected += line;
    }
    EXPECT_EQ(run.status, r.status);
    EXPECT_EQ(run.err, expected);
    EXPECT_GT(fs::file_size(output), 1000u);  // every report written
  }
}

std::vector<std::string> FolderContent(const std::string& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

TEST(BatchFailures, UnwritableOutputOrUnreadableInputLeavesTheFilesAsTheyWere) {
  TempFolder folder;
  const std::string program = kBuiltFolder + "/tallyra";
  const std::string good = kCases + "/deceased-owner.ira";
  const std::string previous = folder.File("previous.txt");
  const std::string plainFile = folder.File("plain");
  const std::string aFolder = folder.File("folder.txt");
  const std::string damaged = folder.File("damaged.ira");
  WriteFileBytes(plainFile, "a file, not a folder");
  fs::create_directory(aFolder);
  WriteFileBytes(damaged, FileBytes(FullScenario(1), FileVersion::Current).substr(0, 100));
  const std::string cannotWrite = "tallyra: the output file ";
  struct Row {
    const char* name;
    std::string input, output;
    rlim_t fileSizeLimit;
    int status;
    std::string errStart, errEnd;
  } rows[] = {
      {"output inside a regular file", good, plainFile + "/out.txt", 0, 3,
       cannotWrite + plainFile + "/out.txt cannot be written (", "Not a directory)\n"},
      {"full disk while writing over a report", good, previous, 2000, 3, cannotWrite + previous + " cannot be written (",
       "File too large)\n"},
      {"output is a folder", good, aFolder, 0, 3, cannotWrite + aFolder + " cannot be written (", ")\n"},
      {"damaged input, a report there before", damaged, previous, 0, 1,
       "Incorrect File: The file " + damaged + " is incomplete: it ends inside its general inputs.\n", ""},
      {"input is a folder", aFolder, previous, 0, 1,
       "File Error: The file " + aFolder + " could not be read: it is a folder.\n", ""},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    WriteFileBytes(previous, "the previous report");
    const std::vector<std::string> before = FolderContent(folder.Path());
    const RunResult run = RunProgram(program, {"/silent", "/input", r.input, "/output", r.output},
                                     kCases + "/failure-err.txt", r.fileSizeLimit);
    EXPECT_EQ(run.status, r.status);
    EXPECT_EQ(run.err.substr(0, r.errStart.size()), r.errStart);
    EXPECT_TRUE(run.err.ends_with(r.errEnd)) << run.err;
    EXPECT_EQ(ReadFileBytes(previous), "the previous report");
    EXPECT_EQ(ReadFileBytes(plainFile), "a file, not a folder");
    EXPECT_TRUE(fs::is_directory(aFolder));
    EXPECT_EQ(FolderContent(folder.Path()), before);  // nothing left behind
  }
}

}  // namespace
}  // namespace ira::testing
