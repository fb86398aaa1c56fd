#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <optional>
#include <random>

#include <gtest/gtest.h>

#include "core/base/program.h"
#include "core/scenario/file.h"
#include "support/recording_sinks.h"
#include "support/scenario_files.h"

namespace ira::file {
namespace {

using namespace ira::testing;

std::string Raw(const std::string& bytes, std::size_t offset, std::size_t size) { return bytes.substr(offset, size); }
std::string Le(std::int16_t v) { return std::string(reinterpret_cast<const char*>(&v), 2); }

TEST(SaveFile, WritesTheLayoutByteForByte) {
  TempFolder folder;
  const Scenario s = FullScenario(2);
  SaveFile(folder.File("a.ira"), s);
  const std::string bytes = ReadFileBytes(folder.File("a.ira"));

  ASSERT_EQ(bytes.size(), 211u + 2 * 138);
  EXPECT_EQ(bytes, FileBytes(s, FileVersion::Current));
  // A few fields read straight from the layout table.
  EXPECT_EQ(Raw(bytes, 0, 27), "NOTVB3VESK2014.10          ");
  EXPECT_EQ(Raw(bytes, 27, 6), "Zo\xEB M\xFC");                // Windows-1252 on disk
  EXPECT_EQ(Raw(bytes, 27 + 102, 2), "\xFF\xFF");               // spouse beneficiary, true
  EXPECT_EQ(Raw(bytes, 27 + 136, 2), Le(2004));                 // DCY
  EXPECT_EQ(Raw(bytes, 27 + 150, 2), Le(2));                    // IraCount
  EXPECT_EQ(Raw(bytes, 27 + 180, 4), "\xDE\xAD\xBE\xEF");       // kept bytes
  EXPECT_EQ(Raw(bytes, 211, 15), "Roll-over IRA #");
  EXPECT_EQ(Raw(bytes, 211 + 138 + 98, 8), std::string("\xC6\xCF\xFF\xFF\xFF\xFF\xFF\xFF", 8));  // -12346

  Scenario empty;
  SaveFile(folder.File("empty.ira"), empty);
  EXPECT_EQ(ReadFileBytes(folder.File("empty.ira")).size(), 211u);
}

// Each tag reaches its reader; converted files take the defaults of the
// fields their version lacked.
TEST(OpenData, DispatchesOnSignatureAndTagToEveryReader) {
  struct Row {
    const char* tag;
    FileVersion layout;
  } rows[] = {
      {"VESK1999.2", FileVersion::V1999_2},  {"VESK1999.21", FileVersion::V1999_2},
      {"VESK2000.1", FileVersion::V2000_1},  {"VESK2000.12", FileVersion::V2000_1},
      {"VESK2001", FileVersion::V2001},      {"VESK2001.2", FileVersion::V2001},
      {"VESK2002.1", FileVersion::Current},  {"VESK2014.10", FileVersion::Current},
      {"VESK2020.3", FileVersion::Current},  {"VESK1997.19", FileVersion::Legacy},
      {"VESK1999.19", FileVersion::Legacy},  {"VESK1997.2", FileVersion::Legacy},
  };
  RecordingScope rec;
  for (const Row& row : rows) {
    const Scenario s = FullScenario(2);
    Scenario loaded;
    ASSERT_TRUE(OpenData("f.ira", AsBytes(FileBytes(s, row.layout, row.tag)), loaded)) << row.tag;
    EXPECT_EQ(loaded, AsConverted(s, row.layout)) << row.tag;
  }
  EXPECT_TRUE(rec.messages.messages.empty());
}

TEST(LoadFile, TurnsProjectionOffForNegativeYears) {
  RecordingScope rec;
  for (FileVersion v : {FileVersion::Current, FileVersion::V2001, FileVersion::Legacy}) {
    Scenario s = FullScenario(1);
    s.Gen.ProjectionYears = -4;
    Scenario loaded;
    ASSERT_TRUE(OpenData("f.ira", AsBytes(FileBytes(s, v)), loaded));
    EXPECT_EQ(loaded.Gen.ProjectionYears, 0);
  }
  ASSERT_EQ(rec.messages.messages.size(), 3u);
  EXPECT_EQ(rec.messages.Last().title, "WARNING!");
  EXPECT_EQ(rec.messages.Last().text,
            "Error in number of Projection years read from file.\nProjection Mode will be turned off.");
  EXPECT_EQ(rec.messages.Last().icon, MsgIcon::Exclamation);
}

// Every bad file is refused with one notice naming it, and the scenario in
// memory stays as it was.
TEST(OpenFile, RefusesBadInputAndKeepsTheScenario) {
  TempFolder folder;
  const std::string good = FileBytes(FullScenario(2), FileVersion::Current);
  auto withCount = [&](std::int16_t n) { return good.substr(0, 177) + Le(n) + good.substr(179); };
  std::mt19937 rng(7);
  std::string noise(500, '\0');
  for (char& c : noise) c = static_cast<char>(rng());
  std::filesystem::create_symlink("loop.ira", folder.File("loop.ira"));
  std::filesystem::create_directory(folder.File("dir.ira"));

  struct Row {
    const char* name;
    std::optional<std::string> bytes;  // the file's content; none: not written here
    const char* title;
    const char* ending;
  } rows[] = {
      {"empty.ira", "", "Incorrect File", " is empty."},
      {"sig.ira", "NOTVB3VESK20", "Incorrect File", " is incomplete: it ends inside its version tag."},
      {"head.ira", good.substr(0, 150), "Incorrect File", " is incomplete: it ends inside its general inputs."},
      {"neg.ira", withCount(-1), "Incorrect File", " is damaged: it gives a negative number of IRAs (-1)."},
      {"many.ira", withCount(3), "Incorrect File", " is incomplete: it should hold 3 IRA records but holds only 2."},
      {"cut.ira", good.substr(0, good.size() - 1), "Incorrect File",
       " is incomplete: it should hold 2 IRA records but holds only 1."},
      {"legacy.ira", FileBytes(FullScenario(1), FileVersion::Legacy).substr(0, 100), "Incorrect File",
       " is incomplete: it ends inside its general inputs."},
      {"noise.ira", noise, "Incorrect File", ") or the older IRA Distribution Calendar format."},
      {"dir.ira", {}, "File Error", " could not be read: it is a folder."},
      {"loop.ira", {}, "File Error", " could not be read: Too many levels of symbolic links."},
      {"none.ira", {}, "File not found", " does not exist.Please verify the file is in the correct directory."},
  };
  for (const Row& row : rows) {
    const std::string path = folder.File(row.name);
    if (row.bytes) WriteFileBytes(path, *row.bytes);
    RecordingScope rec;
    Scenario s = FullScenario(1);
    EXPECT_FALSE(OpenFile(path, s)) << row.name;
    EXPECT_EQ(s, FullScenario(1)) << row.name;
    ASSERT_EQ(rec.messages.messages.size(), 1u) << row.name;
    EXPECT_EQ(rec.messages.Last().title, row.title) << row.name;
    EXPECT_EQ(rec.messages.Last().icon, MsgIcon::Information) << row.name;
    EXPECT_NE(rec.messages.Last().text.find(path), std::string::npos) << row.name;
    EXPECT_TRUE(rec.messages.Last().text.ends_with(row.ending)) << row.name << ": " << rec.messages.Last().text;
  }
}

// A failed save names the file and its cause and leaves the old file whole.
TEST(SaveFile, FailsWithoutTouchingThePreviousFile) {
  TempFolder folder;
  const std::string target = folder.File("plan.ira");
  WriteFileBytes(target, "previous");
  const auto expectFailure = [&](const std::string& path, int number, const char* cause) {
    try {
      SaveFile(path, FullScenario(2));
      ADD_FAILURE() << path << " was saved";
    } catch (const FileError& e) {
      EXPECT_EQ(e.Number(), number) << path;
      EXPECT_EQ(std::string(e.what()), "The file " + path + " could not be saved: " + cause + ".");
    }
  };
  expectFailure(folder.File("no/such/folder.ira"), 76, "No such file or directory");
  std::filesystem::create_directory(folder.File("dir.ira"));
  expectFailure(folder.File("dir.ira"), 75, "Is a directory");
  // Fails for root too, where a read-only folder would not.
  WriteFileBytes(folder.File("plain"), "a file");
  expectFailure(folder.File("plain/plan.ira"), 76, "Not a directory");

  // A disk that fills up halfway through the file.
  rlimit old{};
  getrlimit(RLIMIT_FSIZE, &old);
  rlimit small = old;
  small.rlim_cur = 100;
  const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
  setrlimit(RLIMIT_FSIZE, &small);
  expectFailure(target, 61, "File too large");
  setrlimit(RLIMIT_FSIZE, &old);
  std::signal(SIGXFSZ, oldHandler);

  EXPECT_EQ(ReadFileBytes(target), "previous");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 3);  // no temporary left
}

TEST(CheckReservedName, RefusesTheDebugFileInAnySpelling) {
  TempFolder folder;
  const std::string oldFolder = ProgramFolder();
  SetProgramFolder(folder.Path());
  RecordingScope rec;
  for (const std::string& path : {folder.File("DEBUG.IRA"), folder.File("debug.ira"), folder.Path() + "/./Debug.Ira"})
    EXPECT_FALSE(CheckReservedName(path)) << path;
  ASSERT_EQ(rec.messages.messages.size(), 3u);
  EXPECT_EQ(rec.messages.Last().title, "Reserved File Name");
  EXPECT_EQ(rec.messages.Last().text, folder.Path() + "/./Debug.Ira is reserved for system use. Please use another name.");
  EXPECT_TRUE(CheckReservedName(folder.File("DEBUG.IRA.bak")));
  EXPECT_TRUE(CheckReservedName(folder.File("sub/DEBUG.IRA")));
  EXPECT_EQ(DebugFilePath(), folder.File("DEBUG.IRA"));
  SetProgramFolder(oldFolder);
}

}  // namespace
}  // namespace ira::file
