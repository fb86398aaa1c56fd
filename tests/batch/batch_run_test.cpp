// The batch run end to end: the real executable on scenario files, its
// output compared byte for byte with the expected files beside this test.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include "support/scenario_files.h"

namespace {

using ira::testing::ReadFileBytes;

const std::string kProgram = std::string(TALLYRA_PROGRAM_DIR) + "/tallyra";
const std::string kCases = TALLYRA_BATCH_CASES;  // the expected files
const std::string kWork = TALLYRA_BATCH_WORK;    // generated scenarios and outputs

std::string Quoted(const std::string& s) {
  std::string q = "'";
  for (char c : s) q += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return q + "'";
}

struct RunResult {
  int status;
  std::string err;
};

RunResult Tallyra(const std::string& args) {
  // CTest runs the cases in parallel processes: one error file each.
  const std::string errFile = kWork + "/stderr-" + std::to_string(::getpid()) + ".txt";
  const int raw = std::system((Quoted(kProgram) + " " + args + " 2>" + Quoted(errFile)).c_str());
  return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, ReadFileBytes(errFile)};
}

// Every case, the worked examples of the law in force among them (their
// scenarios carry the rule set in the file's extension block), to the cent;
// the arithmetic is in each scenario's description. demo-2005 is the
// demonstration scenario as it was before the law in force; "demo" is the
// one installed beside the program.
TEST(BatchRun, ReportsMatchTheExpectedFiles) {
  const char* const cases[] = {
      "demo-2005", "early-amortization", "deceased-owner", "widow-spouse", "first-year-1987-mdib",
      "year-2001-both-rules", "summary-2001-unsupported", "projection-excess-2050", "projection-unsupported-spouse",
      "early-series-59-half", "described-2026-contrast", "demo", "current-law-2026-uniform",
      "current-law-first-year-2024", "current-law-born-6-30-1949", "current-law-born-7-1-1949",
      "current-law-joint-spouse", "current-law-fresh-start", "current-law-72t-minimum", "current-law-72t-amortization",
      "current-law-72t-annuity", "current-law-son-ten-year", "current-law-pub590b-eligible", "current-law-child-2032",
      "current-law-child-waived", "current-law-year-of-death", "current-law-minor-child", "current-law-no-beneficiary",
      "current-law-five-year", "current-law-spouse-choices"};
  for (const std::string name : cases) {
    const std::string input =
        name == "demo" ? std::string(TALLYRA_PROGRAM_DIR) + "/demo.ira" : kWork + "/" + name + ".ira";
    const std::string output = kWork + "/" + name + ".out.txt";
    std::filesystem::remove(output);
    const RunResult run = Tallyra("/SILENT /input " + Quoted(input) + " /output=" + Quoted(output));
    EXPECT_EQ(run.status, 0) << name << ": " << run.err;
    EXPECT_EQ(run.err, "") << name;
    EXPECT_EQ(ReadFileBytes(output), ReadFileBytes(kCases + "/" + name + ".expected.txt")) << name;
  }
}

TEST(BatchRun, FailuresGiveAMessageAndANonZeroStatus) {
  const std::string output = kWork + "/failed.txt";
  std::filesystem::remove(output);

  RunResult run = Tallyra("/silent /input " + Quoted(kWork + "/missing") + " /output " + Quoted(output));
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err.rfind("File not found: ", 0), 0u) << run.err;
  EXPECT_NE(run.err.find("missing.ira"), std::string::npos) << run.err;
  EXPECT_FALSE(std::filesystem::exists(output));

  run = Tallyra("/silent /input " + Quoted(kWork + "/deceased-owner.ira") + " /output " +
                Quoted(kWork + "/no-such-folder/out.txt"));
  EXPECT_EQ(run.status, 3);
  EXPECT_NE(run.err.find("no-such-folder/out.txt cannot be written"), std::string::npos) << run.err;

  run = Tallyra("/silent /colour red");
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.err, "tallyra: Unknown argument: /colour\nTry 'tallyra --help'.\n");

  run = Tallyra("/silent /input " + Quoted(kWork + "/deceased-owner.ira"));
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.err, "tallyra: the batch run needs /input SCENARIO and /output REPORT\n");
}

// The rules switch overrides the file's rule set: a scenario saved under the
// law in force, run under the described rules, gives the described report.
TEST(BatchRun, RulesSwitchOverridesTheFileAndRefusesOtherValues) {
  std::string current = ReadFileBytes(kWork + "/deceased-owner.ira");
  const std::int16_t one = 1, age = 73, version = 1;
  const std::int32_t chunks = 12, four = 4;
  const auto raw = [](const auto& v) { return std::string(reinterpret_cast<const char*>(&v), sizeof v); };
  current += "TLYEXT" + raw(version) + raw(chunks) + "RULE" + raw(four) + raw(one) + raw(age);
  const std::string input = kWork + "/deceased-owner-current.ira";
  ira::testing::WriteFileBytes(input, current);
  const std::string output = kWork + "/deceased-owner-described.out.txt";
  std::filesystem::remove(output);

  RunResult run = Tallyra("--silent --input " + Quoted(input) + " --output " + Quoted(output) + " /RULES Described");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(ReadFileBytes(output), ReadFileBytes(kCases + "/deceased-owner.expected.txt"));

  std::filesystem::remove(output);
  run = Tallyra("--silent --input " + Quoted(input) + " --output " + Quoted(output) + " --rules=2002");
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.err, "tallyra: --rules takes \"described\" or \"current\", not \"2002\"\nTry 'tallyra --help'.\n");
  EXPECT_FALSE(std::filesystem::exists(output));

  const std::string help = kWork + "/help-" + std::to_string(::getpid()) + ".txt";
  run = Tallyra("--help >" + Quoted(help));
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(ReadFileBytes(help).find("/rules WHICH, --rules WHICH"), std::string::npos);
  std::filesystem::remove(help);
}

}  // namespace
