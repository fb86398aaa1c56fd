// Test doubles for the core's outbound interfaces: every message, error and
// progress notice is recorded so that tests can assert the exact texts.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "core/base/errors.h"
#include "core/base/messages.h"
#include "core/base/progress.h"

namespace ira::testing {

class RecordingMessageSink : public MessageSink {
 public:
  std::vector<Message> messages;
  std::deque<MsgAnswer> answers;  // scripted answers; default button when empty

  MsgAnswer Show(const Message& message) override;
  const Message& Last() const { return messages.back(); }
};

struct RecordedError {
  int number;
  std::string text;
  std::string where;
};

class RecordingErrorReport : public ErrorReport {
 public:
  std::vector<RecordedError> errors;
  void Report(int number, std::string_view text, std::string_view where) override;
};

class RecordingProgress : public ProgressSink {
 public:
  std::vector<std::string> notices;
  int busyDepth = 0;
  void Show(std::string_view text) override { notices.emplace_back(text); }
  void Hide() override {}
  void SetBusy(bool busy) override { busyDepth += busy ? 1 : -1; }
};

// Installs recording sinks for the lifetime of a test and restores the
// defaults afterwards.
class RecordingScope {
 public:
  RecordingMessageSink messages;
  RecordingErrorReport errors;
  RecordingProgress progress;

  RecordingScope();
  ~RecordingScope();
  RecordingScope(const RecordingScope&) = delete;
  RecordingScope& operator=(const RecordingScope&) = delete;
};

}  // namespace ira::testing
