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
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <functional>
#include <thread>
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

std::string Damaged(const std::string& path) {
  return "Damaged Table: The table file " + path + " is damaged: reinstall the program.\n";
}

// A missing or damaged table file keeps its described message, is named once
// as damaged, every figure that needs it is withheld, and the run ends with
// a status of its own. The other reports and figures are still written.
TEST(BatchFailures, MissingOrDamagedTablesAreNamedAndTheirFiguresWithheld) {
  TempFolder folder;
  const std::string annuity = AnnuityScenarioFile(folder.Path());
  const std::string lifeWithheld = "needs is missing or damaged. Please reinstall the program.";
  const std::string factorWithheld = "Life Table 90CM Annuity Factor: not computable";
  const std::vector<std::string> noLifeTables = {"v86.tbl", "v02.tbl", "vi86.tbl", "vi02.tbl"};
  const std::vector<std::string> lifeTablesMissing = {NotFound("$/vi86.tbl"), Damaged("$/vi86.tbl"),
                                                      NotFound("$/v86.tbl"), Damaged("$/v86.tbl")};
  const std::string deceased = kCases + "/deceased-owner.ira";
  const std::string reinstall = "Here a table file the figures need is missing or damaged: reinstall the program.";
  struct Row {
    const char* name;
    std::vector<std::string> absent;
    std::vector<std::pair<std::string, std::uintmax_t>> cut;  // file and the size it is cut to
    std::string input;
    std::vector<std::string> errLines;  // the program folder's path stands for "$"
    std::string shown, hidden;          // a text the report holds, and one it must not
  } rows[] = {
      {"no life table", noLifeTables, {}, deceased, lifeTablesMissing, lifeWithheld, "Divide by life expectancy"},
      // Before, an amortization term of 0 was a division by zero.
      {"no life table, early amortization", noLifeTables, {}, kCases + "/early-amortization.ira", lifeTablesMissing,
       "Term or Life Expectancy (Years) using 2002 table: not computable", "Calculated distribution:"},
      // Asked by the Inputs, Distribution Calculations and Calendar Year Summary reports.
      {"no 90CM file: the described warning each time the factor is asked", {"s-90cm.tbl"}, {}, annuity,
       {kNo90CM, Damaged("$/s-90cm.tbl"), kNo90CM, kNo90CM}, factorWithheld, "Calculated distribution:"},
      {"90CM file cut to 100 bytes", {}, {{"s-90cm.tbl", 100}}, annuity, {Damaged("$/s-90cm.tbl")}, factorWithheld,
       "Calculated distribution:"},
      {"short life tables", {}, {{"v02.tbl", 100}, {"vi02.tbl", 1001}, {"vi86.tbl", 0}}, deceased,
       {Damaged("$/vi86.tbl"), Damaged("$/vi02.tbl"), Damaged("$/v02.tbl")}, lifeWithheld,
       "Divide by life expectancy"},
      // Before, life expectancies of 1.00 and the whole balance to pay out.
      {"empty 2002 joint table, described rules", {}, {{"vi02.tbl", 0}}, kCases + "/demo-2005.ira",
       {Damaged("$/vi02.tbl")}, reinstall, "Divide by life expectancy"},
      // The demonstration's two accounts on the joint table are withheld;
      // the one on the Uniform Lifetime Table is still computed.
      {"empty 2022 joint table, law in force", {}, {{"vi22.tbl", 0}}, kBuiltFolder + "/demo.ira",
       {Damaged("$/vi22.tbl")}, reinstall, "Joint and Last Survivor Table, ages 75/63"},
      // The tables of 2022 are read after the others, each on its own; a
      // scenario under the described rules does not need them.
      {"the 2022 tables missing", {"v22.tbl", "ul22.tbl"}, {}, deceased,
       {NotFound("$/v22.tbl"), Damaged("$/v22.tbl"), NotFound("$/ul22.tbl"), Damaged("$/ul22.tbl")},
       "Divide by life expectancy", lifeWithheld},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    TempFolder programFolder;
    const std::string program = programFolder.File("tallyra");
    fs::copy_file(kBuiltFolder + "/tallyra", program);
    for (const char* table :
         {"v86.tbl", "v02.tbl", "vi86.tbl", "vi02.tbl", "s-90cm.tbl", "v22.tbl", "vi22.tbl", "ul22.tbl"}) {
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
    EXPECT_EQ(run.status, 5);
    EXPECT_EQ(run.err, expected);
    const std::string report = ReadFileBytes(output);
    EXPECT_GT(report.size(), 1000u);  // every report written
    EXPECT_NE(report.find(r.shown), std::string::npos);
    EXPECT_EQ(report.find(r.hidden), std::string::npos);
    if (r.input.ends_with("demo.ira")) {  // projected: its footnote gives the cause too
      EXPECT_NE(report.find("   Or a table file the figures need is missing or damaged"), std::string::npos);
    }
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
  const std::string damaged = folder.File("damaged.ira");
  WriteFileBytes(plainFile, "a file, not a folder");
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
      // The reason once, not wrapped in a second "cannot be written".
      {"full disk while writing over a report", good, previous, 2000, 3,
       cannotWrite + previous + " cannot be written (File too large)\n", ""},
      {"damaged input, a report there before", damaged, previous, 0, 1,
       "Incorrect File: The file " + damaged + " is incomplete: it ends inside its general inputs.\n", ""},
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
    EXPECT_EQ(FolderContent(folder.Path()), before);  // nothing left behind
  }
}

std::string ModeOf(const std::string& path) {
  struct stat st {};
  if (::stat(path.c_str(), &st) != 0) return "none";
  char text[8];
  std::snprintf(text, sizeof text, "%o", st.st_mode & 07777);
  return text;
}

// The output file where it is something other than a new plain file: what
// was there keeps its nature, and nothing else is touched.
TEST(BatchOutput, ReplacedFilesKeepWhatTheyWereAndLinksAreFollowed) {
  TempFolder folder;
  const std::string program = kBuiltFolder + "/tallyra";
  const std::string input = kCases + "/deceased-owner.ira";
  const std::string expected = ReadFileBytes(std::string(TALLYRA_BATCH_CASES) + "/deceased-owner.expected.txt");
  const auto run = [&](const std::string& output, const ChildSetup& setup = {}) {
    return RunProgram(program, {"/silent", "/input", input, "/output", output}, folder.File("err.txt"), 0, setup);
  };

  // A private report stays private.
  const std::string secret = folder.File("secret.txt");
  WriteFileBytes(secret, "old");
  fs::permissions(secret, fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(run(secret).status, 0);
  EXPECT_EQ(ModeOf(secret), "600");
  EXPECT_EQ(ReadFileBytes(secret), expected);

  // A link stays a link; its target gets the report, even a target not there yet.
  const std::string target = folder.File("target.txt");
  fs::create_symlink("target.txt", folder.File("link.txt"));
  EXPECT_EQ(run(folder.File("link.txt")).status, 0);
  EXPECT_TRUE(fs::is_symlink(folder.File("link.txt")));
  EXPECT_EQ(ReadFileBytes(target), expected);

  // Hard links go on sharing the file.
  const std::string first = folder.File("first.txt");
  WriteFileBytes(first, "old");
  fs::create_hard_link(first, folder.File("second.txt"));
  EXPECT_EQ(run(first).status, 0);
  EXPECT_EQ(ReadFileBytes(folder.File("second.txt")), expected);
  EXPECT_EQ(fs::hard_link_count(first), 2u);

  // A FIFO is written to, not replaced.
  const std::string fifo = folder.File("fifo");
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
  // Held open both ways here, so the run never waits for a reader and the
  // report (smaller than the pipe's buffer) waits in it.
  const int pipe = ::open(fifo.c_str(), O_RDWR | O_NONBLOCK);
  ASSERT_GE(pipe, 0);
  EXPECT_EQ(run(fifo).status, 0);
  std::string fromFifo(65536, '\0');
  fromFifo.resize(static_cast<std::size_t>(std::max<ssize_t>(0, ::read(pipe, fromFifo.data(), fromFifo.size()))));
  ::close(pipe);
  EXPECT_EQ(fromFifo, expected);
  EXPECT_TRUE(fs::is_fifo(fifo));

  // "-" is standard output; /dev/null takes no extension.
  EXPECT_EQ(run("-", {folder.File("stdout.txt"), {}}).status, 0);
  EXPECT_EQ(ReadFileBytes(folder.File("stdout.txt")), expected);
  EXPECT_EQ(run("/dev/null").status, 0);

  // A planted link at any temporary name is never written through.
  const std::string victim = folder.File("victim");
  WriteFileBytes(victim, "precious");
  const ChildSetup plant{{}, [&] {
                           const std::string name = folder.File(".out.txt.tmp" + std::to_string(::getpid()));
                           if (::symlink(victim.c_str(), name.c_str()) != 0) ::_exit(125);
                         }};
  EXPECT_EQ(run(folder.File("out.txt"), plant).status, 0);
  EXPECT_EQ(ReadFileBytes(victim), "precious");
  EXPECT_EQ(ReadFileBytes(folder.File("out.txt")), expected);
}

// Names that are no plain file, and two names for one file.
TEST(BatchOutput, SpecialNamesAreRefusedOrWrittenAsTheyAre) {
  TempFolder folder;
  const std::string program = kBuiltFolder + "/tallyra";
  const std::string input = folder.File("in.ira");
  fs::copy_file(kCases + "/deceased-owner.ira", input);
  fs::create_directory(folder.File("dir"));
  const std::string cannotWrite = "tallyra: the output file ";
  struct Row {
    std::vector<std::string> args;
    int status;
    std::string err;
  } rows[] = {
      {{"/output", "/dev/full"}, 3, cannotWrite + "/dev/full cannot be written (No space left on device)\n"},
      {{"/output", folder.File("dir/")}, 3, cannotWrite + folder.File("dir/") + " cannot be written (it is a folder)\n"},
      {{"/output", folder.File(".")}, 3, cannotWrite + folder.File(".") + " cannot be written (it is a folder)\n"},
      {{"/output", folder.File("dir/../in.ira")}, 2,
       cannotWrite + folder.File("dir/../in.ira") + " is the input scenario; name another output file\n"},
      {{"/output", folder.File("out.txt"), "/input", input}, 2,
       "tallyra: /input is given more than once\nTry 'tallyra --help'.\n"},
  };
  const std::string inputBytes = ReadFileBytes(input);
  for (const Row& r : rows) {
    SCOPED_TRACE(r.args[1]);
    std::vector<std::string> args{"/silent", "/input", input};
    args.insert(args.end(), r.args.begin(), r.args.end());
    const RunResult run = RunProgram(program, args, kCases + "/special-err.txt");
    EXPECT_EQ(run.status, r.status);
    EXPECT_EQ(run.err, r.err);
    EXPECT_EQ(ReadFileBytes(input), inputBytes);
    EXPECT_EQ(FolderContent(folder.Path()), (std::vector<std::string>{"dir", "in.ira"}));
    EXPECT_TRUE(fs::is_empty(folder.File("dir")));
  }
  EXPECT_FALSE(fs::exists("/dev/full.txt"));
}

// A scenario file of `iras` equal accounts projected over `years`.
std::string ProjectionFile(const TempFolder& folder, const char* name, int iras, int years) {
  Scenario s;
  s.Gen.OwnerBirthDate = MakeDate(1930, 3, 1);
  s.Gen.DCY = 2005;
  s.Gen.DistType = -1;
  s.Gen.ProjectionYears = static_cast<std::int16_t>(years);
  for (int i = 0; i < iras; ++i) {
    IraRecord& r = s.AddIra();
    r.Benefit = Money::FromWhole(100'000);
    r.RateOfReturn = 5;
  }
  const std::string path = folder.File(name);
  WriteFileBytes(path, FileBytes(s, FileVersion::Current));
  return path;
}

// A run stopped by SIGTERM or SIGINT while it writes leaves no temporary file.
TEST(BatchOutput, StoppedRunLeavesNoTemporaryFile) {
  TempFolder folder;
  const std::string input = ProjectionFile(folder, "big.ira", 2000, 100);
  for (int sig : {SIGTERM, SIGINT}) {
    SCOPED_TRACE(sig);
    const std::string errFile = kCases + "/stopped-err.txt";
    const pid_t pid =
        StartProgram(kBuiltFolder + "/tallyra", {"/silent", "/input", input, "/output", folder.File("out.txt")}, errFile);
    // Stopped as soon as the report is being written.
    bool writing = false;
    for (int wait = 0; wait < 2000 && !writing; ++wait) {
      for (const std::string& name : FolderContent(folder.Path())) writing = writing || name.starts_with(".out.txt");
      if (!writing) std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    ASSERT_TRUE(writing);
    ::kill(pid, sig);
    int raw = 0;
    ::waitpid(pid, &raw, 0);
    fs::remove(errFile);
    EXPECT_TRUE(WIFSIGNALED(raw) && WTERMSIG(raw) == sig);
    EXPECT_EQ(FolderContent(folder.Path()), std::vector<std::string>{"big.ira"});
  }
}

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kAddressSanitizer = true;  // its shadow memory needs the address space
#else
constexpr bool kAddressSanitizer = false;
#endif

// The largest projection a file can ask for (32,767 IRAs over 32,767 years)
// is refused with a message before anything is allocated; the other reports
// are written, within an address space of 1 GB.
TEST(BatchOutput, ProjectionTooLargeIsRefusedBeforeAllocating) {
  TempFolder folder;
  const std::string input = ProjectionFile(folder, "huge.ira", 32767, 32767);
  const ChildSetup capped{{}, [] {
                            const rlimit limit{1u << 30, 1u << 30};
                            if (!kAddressSanitizer && ::setrlimit(RLIMIT_AS, &limit) != 0) ::_exit(125);
                          }};
  const RunResult run = RunProgram(kBuiltFolder + "/tallyra", {"/silent", "/input", input, "/output", folder.File("out.txt")},
                                   folder.File("err.txt"), 0, capped);
  // 32,767 x 32,767 = 1,073,676,289 account-years.
  const std::string text = "The projection of 32767 IRAs over 32767 years (1073676289 account-years) is too large to "
                           "compute: at most 100000 account-years can be projected. Project fewer years or fewer IRAs.";
  EXPECT_EQ(run.status, 4);
  EXPECT_EQ(run.err, "Projection too large: " + text + "\n");
  const std::string report = ReadFileBytes(folder.File("out.txt"));
  EXPECT_NE(report.find("  " + text + "\r\n"), std::string::npos);
  EXPECT_NE(report.find("IRA Owner's date of birth: 3/1/1930"), std::string::npos);
}

}  // namespace
}  // namespace ira::testing
