#include "core/base/errors.h"

namespace ira {
namespace {

class SilentReport final : public ErrorReport {
 public:
  void Report(int, std::string_view, std::string_view) override {}
};

SilentReport g_silent;
// Per thread, like the message sink.
thread_local ErrorReport* g_report = &g_silent;

}  // namespace

ErrorReport& Errors() { return *g_report; }

void SetErrorReport(ErrorReport* report) { g_report = report != nullptr ? report : &g_silent; }

void ReportUnexpected(std::string_view where, const std::exception& e) {
  const auto* err = dynamic_cast<const Error*>(&e);
  Errors().Report(err != nullptr ? err->Number() : 0, e.what(), where);
}

}  // namespace ira
