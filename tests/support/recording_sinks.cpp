#include "support/recording_sinks.h"

namespace ira::testing {

MsgAnswer RecordingMessageSink::Show(const Message& message) {
  messages.push_back(message);
  if (answers.empty()) return DefaultAnswer(message.buttons);
  const MsgAnswer a = answers.front();
  answers.pop_front();
  return a;
}

void RecordingErrorReport::Report(int number, std::string_view text, std::string_view where) {
  errors.push_back({number, std::string(text), std::string(where)});
}

RecordingScope::RecordingScope() {
  SetMessageSink(&messages);
  SetErrorReport(&errors);
  SetProgressSink(&progress);
}

RecordingScope::~RecordingScope() {
  SetMessageSink(nullptr);
  SetErrorReport(nullptr);
  SetProgressSink(nullptr);
}

}  // namespace ira::testing
