// The main window's commands without the window: toolbar keys, the title
// rule, the unsaved-data questions and the About box's usage text. The desktop layer only wires them to widgets.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/base/messages.h"

namespace ira::shell {

enum class Command {
  New, Open, Save, SaveAs, Print, Display, General, Ira, Projection, Help, Exit, Font, About, Preview, SavePdf
};

// The command a toolbar key names ("New", "Open", ..., "Exit"); nothing for
// any other key.
std::optional<Command> CommandForKey(std::string_view key);
// An unknown key: the "WARNING" message naming the support line.
void WarnUnknownToolbarKey();
inline constexpr const char* kUnknownKeyTitle = "WARNING";

// The name of a scenario that was never saved.
inline constexpr const char* kUntitledFileName = "UNTITLED.IRA";
inline constexpr const char* kProductName = "QSW - Tallyra";
// "UNTITLED IRA - " while the scenario was never saved, else the file name
// (without its folder).
std::string MainTitle(const std::string& currentFile);

// The unsaved-data questions before New/Open and before Exit. The Exit
// wording lacks "you" and both run their fragments together: that is the
// program's established text.
inline constexpr const char* kUnsavedTitle = "Unsaved Data Exists!";
inline constexpr const char* kUnsavedBeforeReplace = "Current Inputs have not been Saved!Do you want to save them first?";
inline constexpr const char* kUnsavedBeforeExit = "Current Inputs have not been Saved!Do want to save your data?";
// Yes: save first; No: go on without saving; Cancel (or Escape): back out.
MsgAnswer AskUnsaved(bool exiting);

// Seconds since midnight, as the start time is kept.
long SecondsSinceMidnight();
// Whole seconds from `start` to `now` (both since midnight), across midnight.
long UsageSeconds(long start, long now);
// "You have spent 1 hour, and 2 minutes 3 seconds using Quillon's ...".
std::string UsageText(long seconds);
// The About box's lines on how to order and whom to call.
inline constexpr const char* kOrderingLines =
    "To order additional copies or site licenses:\n"
    "Quillon Software Works, Order Department\n"
    "1200 Harbor Street, Suite 400, Portland, ME 04101\n"
    "Orders: (800) 555-0142";

// The manual beside the program.
inline constexpr const char* kManualFile = "manvesk.pdf";

}  // namespace ira::shell
