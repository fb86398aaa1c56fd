#include "app/shell/settings.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "support/scenario_files.h"

namespace fs = std::filesystem;
using namespace ira::settings;

namespace {

class SettingsFile : public ::testing::Test {
 protected:
  void Write(const std::string& text) { ira::testing::WriteFileBytes(file, text); }
  ira::testing::TempFolder folder;
  std::string file = folder.File("tallyra.ini");
};

// First without a file, then with font values that cannot be used.
TEST_F(SettingsFile, MissingFileOrUnusableValuesGiveTheDefaults) {
  for (const char* text : {"", "[User Preferences]\nFont Name=\nFont Size=4\n"}) {
    if (*text != '\0') Write(text);
    const Settings s = LoadSettings(file, "/data");
    EXPECT_EQ(s.hideError380, 0);
    EXPECT_EQ(s.dataFolder, "/data");
    EXPECT_EQ(s.font.name, "Courier New");
    EXPECT_EQ(s.font.size, 10.0f);
  }
}

TEST_F(SettingsFile, ReadsHandEditedFileLoosely) {
  Write("; written by hand\r\n[user preferences]\r\n Font Name = Liberation Mono   \r\nfont size=\"12.5\"\r\n"
        "[Hide Error Msg]\r\n380=1\r\n[Data Files]\r\nData File Path=/home/a/plans\r\n");
  const Settings s = LoadSettings(file, "/data");
  EXPECT_EQ(s.font.name, "Liberation Mono");
  EXPECT_EQ(s.font.size, 12.5f);
  EXPECT_EQ(s.hideError380, 1);
  EXPECT_EQ(s.dataFolder, "/home/a/plans");
  EXPECT_EQ(GetProfileInt(file, "Hide Error Msg", "missing", 7), 7);

  // A value longer than the profile buffer is cut to it.
  Write("[Data Files]\nData File Path=" + std::string(300, 'x') + "\n");
  EXPECT_EQ(GetProfileString(file, "Data Files", "Data File Path", "").size(), kProfileValueMax);
}

TEST_F(SettingsFile, WritingKeepsEverythingElse) {
  Write("[Other]\nkeep=me\n\n[User Preferences]\nFont Name=Courier\n; note\n\n[Data Files]\nData File Path=/a\n");
  SaveReportFont(file, {"Courier New", 11.5f});
  SaveDataFolder(file, "/b");
  WriteProfileString(file, "Hide Error Msg", "380", "1");
  EXPECT_EQ(ira::testing::ReadFileBytes(file),
            "[Other]\nkeep=me\n\n[User Preferences]\nFont Name=Courier New\nFont Size=11.5\n; note\n\n"
            "[Data Files]\nData File Path=/b\n\n[Hide Error Msg]\n380=1\n");
  EXPECT_FALSE(fs::exists(file + ".new"));
}

TEST_F(SettingsFile, FailedWriteIsReportedByName) {
  const std::string lost = folder.File("gone/tallyra.ini");
  try {
    WriteProfileString(lost, "Data Files", "Data File Path", "/x");
    ADD_FAILURE() << "no error";
  } catch (const std::exception& e) {
    EXPECT_NE(std::string(e.what()).find(lost), std::string::npos) << e.what();
  }
}

TEST_F(SettingsFile, DemoIsCopiedOnceAndTheUsersCopyKept) {
  const ira::testing::TempFolder user;
  EXPECT_TRUE(InstallDemo(folder.Path(), user.Path()));  // no demo beside the program: nothing to do
  EXPECT_FALSE(fs::exists(user.File("demo.ira")));
  ira::testing::WriteFileBytes(folder.File("demo.ira"), "shipped");
  EXPECT_TRUE(InstallDemo(folder.Path(), user.Path()));
  EXPECT_EQ(ira::testing::ReadFileBytes(user.File("demo.ira")), "shipped");
  ira::testing::WriteFileBytes(user.File("demo.ira"), "changed by the user");
  EXPECT_TRUE(InstallDemo(folder.Path(), user.Path()));
  EXPECT_EQ(ira::testing::ReadFileBytes(user.File("demo.ira")), "changed by the user");
}

TEST(SettingsPaths, ProgramFolderFirstThenPerUserFolder) {
  EXPECT_EQ(SettingsFilePath(fs::temp_directory_path().string(), "tallyra", "/user"),
            fs::temp_directory_path().string() + "/tallyra.ini");
  EXPECT_EQ(SettingsFilePath("/nonexistent-folder", "tallyra", "/user"), "/user/tallyra.ini");

  const char* saved = std::getenv("XDG_DATA_HOME");
  const std::string keep = saved != nullptr ? saved : "";
  ::setenv("XDG_DATA_HOME", "/xdg/", 1);
  EXPECT_EQ(UserDataFolder(), "/xdg/Quillon/IRA");
  ::setenv("XDG_DATA_HOME", "relative", 1);  // not absolute: ignored, as the XDG rules say
  if (std::getenv("HOME") != nullptr) {
    EXPECT_EQ(UserDataFolder(), std::string(std::getenv("HOME")) + "/.local/share/Quillon/IRA");
  }
  if (saved != nullptr) ::setenv("XDG_DATA_HOME", keep.c_str(), 1); else ::unsetenv("XDG_DATA_HOME");
}

}  // namespace
