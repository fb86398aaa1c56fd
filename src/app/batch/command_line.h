// The command line: "/silent" starts the batch run, "/input FILE" names the
// scenario and "/output FILE" the report file. Switch names are matched
// without regard to case; their values keep their case (file names are
// case-sensitive here). A value follows its switch after a blank or "=" and
// may be quoted: tallyra /silent /input "my plan.ira" /output=plan.txt.
// "/rules described" or "/rules current" overrides the scenario's rule set.
// The GNU forms --silent, --input, --output, --rules, --help and --version work too.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ira::app {

// The arguments as one command line, each quoted when it holds a blank.
std::string JoinArguments(const std::vector<std::string>& args);
// Splits at blanks outside double quotes; the quotes are removed.
std::vector<std::string> SplitCommandLine(std::string_view commandLine);

// True when the command line holds the switch /silent (or --silent).
bool IsSilent(std::string_view commandLine);
// The value that follows `switchName` ("/input", "/output"), or "" when the
// switch is absent or has no value. A plain file name without an extension
// gets `defaultExtension` (".ira", "txt": the dot is added when missing); "-",
// a folder ("dir/", ".") and an existing device or FIFO are left as given.
std::string GetArg(std::string_view commandLine, std::string_view defaultExtension, std::string_view switchName);

struct CommandLine {
  bool silent = false;
  std::string input;   // the scenario file of the batch run
  std::string output;  // the report file of the batch run
  std::optional<std::int16_t> rules;  // --rules: the rule set that overrides the file's
  // The folder batch: every scenario of batchFolder into outFolder.
  std::string batchFolder;
  std::string outFolder;
  bool recursive = false;
  int jobs = 0;  // 0: one per processor
  // Further outputs beside each text report (folder and single-file batch).
  bool json = false;
  bool pdf = false;
  bool help = false;
  bool version = false;
  std::string error;  // a switch nobody knows, or a file switch without a file
};

// The program's arguments as given: a value may hold any character, quotes
// and tabs included. A file or rules switch given twice is an error.
CommandLine ParseArguments(const std::vector<std::string>& args);
// The same on one line split by SplitCommandLine.
CommandLine ParseCommandLine(std::string_view commandLine);

// The most scenarios a folder batch computes at once.
inline constexpr int kMaxJobs = 256;

// What --help prints.
std::string UsageText();

}  // namespace ira::app
