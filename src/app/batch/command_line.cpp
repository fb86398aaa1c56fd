#include "app/batch/command_line.h"

#include <sys/stat.h>

#include <algorithm>
#include <optional>

#include "core/base/text.h"
#include "core/scenario/scenario.h"

namespace ira::app {
namespace {

enum class Switch { None, Silent, Input, Output, Rules, Help, Version, Batch, Out, Recursive, Jobs, Json, Pdf };

struct SwitchName {
  const char* name;
  Switch kind;
};

// Names after the leading "/" or "--", lower case.
constexpr SwitchName kSwitches[] = {
    {"silent", Switch::Silent}, {"input", Switch::Input},     {"output", Switch::Output},
    {"help", Switch::Help},     {"?", Switch::Help},          {"version", Switch::Version},
    {"rules", Switch::Rules},
    {"batch", Switch::Batch},   {"out", Switch::Out},         {"recursive", Switch::Recursive},
    {"jobs", Switch::Jobs},     {"json", Switch::Json},       {"pdf", Switch::Pdf},
};

// The values of --rules, matched without regard to case.
constexpr struct {
  const char* name;
  std::int16_t ruleSet;
} kRuleNames[] = {{"described", kRulesDescribed}, {"current", kRulesCurrent}};

struct Token {
  Switch kind = Switch::None;
  std::optional<std::string> inlineValue;  // the part after "="
};

Token ReadSwitch(std::string_view arg) {
  std::string_view name;
  if (arg.starts_with("--"))
    name = arg.substr(2);
  else if (arg.starts_with("/"))
    name = arg.substr(1);
  else
    return {};
  Token token;
  const std::size_t eq = name.find('=');
  if (eq != std::string_view::npos) {
    token.inlineValue = std::string(name.substr(eq + 1));
    name = name.substr(0, eq);
  }
  const std::string lower = ToLower(name);
  for (const SwitchName& s : kSwitches)
    if (lower == s.name) token.kind = s.kind;
  if (token.kind == Switch::None) token.inlineValue.reset();
  return token;
}

// The value of the file switch at args[i]; advances i past a separate value.
std::optional<std::string> ValueAt(const std::vector<std::string>& args, std::size_t& i, const Token& token) {
  if (token.inlineValue) return token.inlineValue;
  if (i + 1 < args.size() && ReadSwitch(args[i + 1]).kind == Switch::None) return args[++i];
  return std::nullopt;
}

// 0 for anything but a whole number from 1 to kMaxJobs.
int ParseJobs(const std::string& text) {
  int n = 0;
  for (char c : text) {
    if (c < '0' || c > '9') return 0;
    n = n * 10 + (c - '0');
    if (n > kMaxJobs) return 0;
  }
  return n;
}

bool HasExtension(std::string_view path) {
  const std::size_t slash = path.rfind('/');
  const std::string_view name = slash == std::string_view::npos ? path : path.substr(slash + 1);
  const std::size_t dot = name.rfind('.');
  return dot != std::string_view::npos && dot > 0;
}

// Only a plain file name gets the default extension: not "-" (standard
// output), not a folder ("dir/", ".", ".."), not a device or FIFO that
// exists under the name as given (/dev/null, /dev/stdout).
std::string WithDefaultExtension(std::string value, std::string_view defaultExtension) {
  if (value.empty() || value == "-" || value.ends_with('/') || HasExtension(value)) return value;
  const std::string_view name = std::string_view(value).substr(value.rfind('/') + 1);
  if (name == "." || name == "..") return value;
  struct stat st {};
  if (::stat(value.c_str(), &st) == 0 && !S_ISREG(st.st_mode)) return value;
  if (!defaultExtension.starts_with('.')) value += '.';
  value += defaultExtension;
  return value;
}

// The value of the first `wanted` switch among `args`, with its default extension.
std::string FileValue(const std::vector<std::string>& args, Switch wanted, std::string_view defaultExtension) {
  for (std::size_t i = 0; i < args.size(); ++i) {
    const Token token = ReadSwitch(args[i]);
    if (token.kind == wanted) return WithDefaultExtension(ValueAt(args, i, token).value_or(""), defaultExtension);
  }
  return {};
}

bool HasSilent(const std::vector<std::string>& args) {
  for (const std::string& arg : args)
    if (ReadSwitch(arg).kind == Switch::Silent) return true;
  return false;
}

}  // namespace

std::string JoinArguments(const std::vector<std::string>& args) {
  std::string line;
  for (const std::string& arg : args) {
    if (!line.empty()) line += ' ';
    if (arg.empty() || arg.find(' ') != std::string::npos)
      line += '"' + arg + '"';
    else
      line += arg;
  }
  return line;
}

std::vector<std::string> SplitCommandLine(std::string_view commandLine) {
  std::vector<std::string> args;
  std::string current;
  bool inQuotes = false;
  bool inArg = false;
  for (char c : commandLine) {
    if (c == '"') {
      inQuotes = !inQuotes;
      inArg = true;
    } else if ((c == ' ' || c == '\t') && !inQuotes) {
      if (inArg) args.push_back(current);
      current.clear();
      inArg = false;
    } else {
      current += c;
      inArg = true;
    }
  }
  if (inArg) args.push_back(current);
  return args;
}

bool IsSilent(std::string_view commandLine) { return HasSilent(SplitCommandLine(commandLine)); }

std::string GetArg(std::string_view commandLine, std::string_view defaultExtension, std::string_view switchName) {
  return FileValue(SplitCommandLine(commandLine), ReadSwitch(switchName).kind, defaultExtension);
}

CommandLine ParseCommandLine(std::string_view commandLine) { return ParseArguments(SplitCommandLine(commandLine)); }

CommandLine ParseArguments(const std::vector<std::string>& args) {
  CommandLine cl;
  auto fail = [&cl](std::string error) {
    if (cl.error.empty()) cl.error = std::move(error);
  };
  std::vector<Switch> seen;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const Token token = ReadSwitch(args[i]);
    const std::string written = args[i].substr(0, args[i].find('='));
    // A second file or rules switch would leave one of the two ignored.
    if (token.kind == Switch::Input || token.kind == Switch::Output || token.kind == Switch::Rules) {
      if (std::find(seen.begin(), seen.end(), token.kind) != seen.end()) fail(written + " is given more than once");
      seen.push_back(token.kind);
    }
    switch (token.kind) {
      case Switch::None:
        fail("Unknown argument: " + args[i]);
        break;
      case Switch::Help:
        cl.help = true;
        break;
      case Switch::Version:
        cl.version = true;
        break;
      case Switch::Silent:
        break;
      case Switch::Recursive:
        cl.recursive = true;
        break;
      case Switch::Json:
        cl.json = true;
        break;
      case Switch::Pdf:
        cl.pdf = true;
        break;
      case Switch::Batch:
      case Switch::Out:
      case Switch::Jobs: {
        const std::string name = args[i].substr(0, args[i].find('='));  // as written, without its value
        const std::optional<std::string> value = ValueAt(args, i, token);
        if (!value || value->empty()) {
          if (cl.error.empty()) cl.error = name + (token.kind == Switch::Jobs ? " needs a number" : " needs a folder");
        } else if (token.kind == Switch::Batch) {
          cl.batchFolder = *value;
        } else if (token.kind == Switch::Out) {
          cl.outFolder = *value;
        } else {
          cl.jobs = ParseJobs(*value);
          if (cl.jobs == 0 && cl.error.empty()) cl.error = name + " needs a number from 1 to " + std::to_string(kMaxJobs);
        }
        break;
      }
      case Switch::Input:
      case Switch::Output:
        if (!ValueAt(args, i, token)) fail(args[i] + " needs a file name");
        break;
      case Switch::Rules: {
        const std::string value = ValueAt(args, i, token).value_or("");
        for (const auto& r : kRuleNames)
          if (ToLower(value) == r.name) cl.rules = r.ruleSet;
        if (!cl.rules) fail(written + " takes \"described\" or \"current\"" + (value.empty() ? "" : ", not \"" + value + "\""));
        break;
      }
    }
  }
  cl.silent = HasSilent(args);
  cl.input = FileValue(args, Switch::Input, ".ira");
  cl.output = FileValue(args, Switch::Output, "txt");
  return cl;
}

std::string UsageText() {
  return "Usage: tallyra [/silent /input SCENARIO[.ira] /output REPORT[.txt]] [--rules described|current]\n"
         "                [--json] [--pdf]\n"
         "       tallyra --batch DIR --out OUTDIR [--recursive] [--jobs N] [--rules described|current]\n"
         "                [--json] [--pdf]\n"
         "\n"
         "Without /silent or /batch the desktop program starts. With /silent the scenario\n"
         "is read and its reports are written to the output file, without a window.\n"
         "With /batch every NAME.ira of DIR gets its report NAME.txt in OUTDIR, and\n"
         "OUTDIR gets summary.csv (a row per account) and totals.csv (a row per scenario).\n"
         "\n"
         "  /silent, --silent          run the batch job\n"
         "  /input FILE, --input FILE  the scenario file (\".ira\" is added when FILE has no extension)\n"
         "  /output FILE, --output FILE\n"
         "                             the report file (\".txt\" is added when FILE has no extension)\n"
         "  /rules WHICH, --rules WHICH\n"
         "                             compute under these rules, whatever the scenario file says:\n"
         "                             \"described\" (the regulations of 1987 to 2002) or \"current\"\n"
         "                             (the law in force in each year)\n"
         "  /batch DIR, --batch DIR    every scenario file of the folder DIR\n"
         "  /out DIR, --out DIR        the folder the folder batch writes into\n"
         "  --recursive                the scenarios of DIR's subfolders too\n"
         "  --jobs N                   scenarios computed at once (default: one per processor)\n"
         "  --json                     also NAME.json beside each report: the inputs and every figure\n"
         "  --pdf                      also NAME.pdf beside each report: the reports as printed\n"
         "  --help                     show this text\n"
         "  --version                  show the program's version\n"
         "\n"
         "Switch names may be written in any case; a value may follow a blank or \"=\".\n";
}

}  // namespace ira::app
