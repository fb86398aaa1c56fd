// Message boxes without a window: the core states a title, a text, an icon
// and buttons, and gets the user's answer back. The desktop shows a message
// box, batch mode writes to standard error, tests record and assert.
#pragma once

#include <string>

namespace ira {

enum class MsgIcon { None, Information, Exclamation, Critical, Question };
enum class MsgButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class MsgAnswer { Ok, Cancel, Yes, No };

struct Message {
  std::string title;
  std::string text;
  MsgIcon icon = MsgIcon::None;
  MsgButtons buttons = MsgButtons::Ok;
};

class MessageSink {
 public:
  virtual ~MessageSink() = default;
  virtual MsgAnswer Show(const Message& message) = 0;
};

// The answer a dialog gives when nobody is there to choose: its first button.
MsgAnswer DefaultAnswer(MsgButtons buttons);

// The program-wide sink. Until one is installed, messages are answered with
// their default button and otherwise dropped.
MessageSink& Messages();
// For the calling thread; nullptr restores the default.
void SetMessageSink(MessageSink* sink);

// Shorthand for Messages().Show(...).
MsgAnswer ShowMessage(std::string title, std::string text, MsgIcon icon,
                      MsgButtons buttons = MsgButtons::Ok);

// The default title of a message box that names none (the program's name).
inline constexpr const char* kProgramTitle = "Tallyra";

// The vendor's support line, part of several fixed texts.
inline constexpr const char* kSupportPhone = "(800) 555-0199";

}  // namespace ira
