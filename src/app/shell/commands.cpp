#include "app/shell/commands.h"

#include <array>
#include <ctime>
#include <filesystem>
#include <utility>

namespace ira::shell {

std::optional<Command> CommandForKey(std::string_view key) {
  static constexpr std::array<std::pair<std::string_view, Command>, 10> kKeys{{
      {"New", Command::New},
      {"Open", Command::Open},
      {"Save", Command::Save},
      {"Print", Command::Print},
      {"Display", Command::Display},
      {"General", Command::General},
      {"IRA", Command::Ira},
      {"Projection", Command::Projection},
      {"Help", Command::Help},
      {"Exit", Command::Exit},
  }};
  for (const auto& [name, command] : kKeys) {
    if (name == key) return command;
  }
  return std::nullopt;
}

void WarnUnknownToolbarKey() {
  ShowMessage(kUnknownKeyTitle,
              std::string("The program does not understand the toolbar choice. Please let Quillon ") + kSupportPhone +
                  " know about this.",
              MsgIcon::Exclamation);
}

std::string MainTitle(const std::string& currentFile) {
  if (currentFile.empty() || currentFile == kUntitledFileName) return std::string("UNTITLED IRA - ") + kProductName;
  // The name says which scenario it is; the folder only crowds the title.
  return std::filesystem::path(currentFile).filename().string() + " - " + kProductName;
}

MsgAnswer AskUnsaved(bool exiting) {
  return ShowMessage(kUnsavedTitle, exiting ? kUnsavedBeforeExit : kUnsavedBeforeReplace, MsgIcon::Question,
                     MsgButtons::YesNoCancel);
}

long SecondsSinceMidnight() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return local.tm_hour * 3600L + local.tm_min * 60L + local.tm_sec;
}

long UsageSeconds(long start, long now) {
  constexpr long kDay = 24L * 3600L;
  return ((now - start) % kDay + kDay) % kDay;
}

std::string UsageText(long seconds) {
  const long hours = seconds / 3600;
  const long minutes = seconds / 60 % 60;
  const long secs = seconds % 60;
  return "You have spent " + std::to_string(hours) + (hours == 1 ? " hour" : " hours") + ", and " +
         std::to_string(minutes) + (minutes == 1 ? " minute " : " minutes ") + std::to_string(secs) +
         (secs == 1 ? " second " : " seconds ") + "using Quillon's " + kProductName +
         ". How long would your work have taken without it?";
}

}  // namespace ira::shell
