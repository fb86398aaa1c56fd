#include "core/base/progress.h"

namespace ira {
namespace {

class SilentProgress final : public ProgressSink {
 public:
  void Show(std::string_view) override {}
  void Hide() override {}
  void SetBusy(bool) override {}
};

SilentProgress g_silent;
// Per thread, like the message sink.
thread_local ProgressSink* g_sink = &g_silent;

}  // namespace

ProgressSink& Progress() { return *g_sink; }

void SetProgressSink(ProgressSink* sink) { g_sink = sink != nullptr ? sink : &g_silent; }

ProgressScope::ProgressScope(std::string_view text) {
  Progress().SetBusy(true);
  Progress().Show(text);
}

ProgressScope::~ProgressScope() {
  Progress().Hide();
  Progress().SetBusy(false);
}

}  // namespace ira
