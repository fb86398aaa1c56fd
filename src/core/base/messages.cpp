#include "core/base/messages.h"

namespace ira {
namespace {

class DefaultSink final : public MessageSink {
 public:
  MsgAnswer Show(const Message& message) override { return DefaultAnswer(message.buttons); }
};

DefaultSink g_default;
// Per thread, so that each worker of a folder batch collects its own scenario's messages.
thread_local MessageSink* g_sink = &g_default;

}  // namespace

MsgAnswer DefaultAnswer(MsgButtons buttons) {
  switch (buttons) {
    case MsgButtons::Ok:
    case MsgButtons::OkCancel:
      return MsgAnswer::Ok;
    case MsgButtons::YesNo:
    case MsgButtons::YesNoCancel:
      return MsgAnswer::Yes;
  }
  return MsgAnswer::Ok;
}

MessageSink& Messages() { return *g_sink; }

void SetMessageSink(MessageSink* sink) { g_sink = sink != nullptr ? sink : &g_default; }

MsgAnswer ShowMessage(std::string title, std::string text, MsgIcon icon, MsgButtons buttons) {
  return Messages().Show(Message{std::move(title), std::move(text), icon, buttons});
}

}  // namespace ira
