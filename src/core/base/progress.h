// Progress notices and the busy indicator around long computations.
#pragma once

#include <string_view>

namespace ira {

class ProgressSink {
 public:
  virtual ~ProgressSink() = default;
  virtual void Show(std::string_view text) = 0;  // shows or replaces the notice
  virtual void Hide() = 0;
  virtual void SetBusy(bool busy) = 0;  // hourglass on or off
};

ProgressSink& Progress();
// For the calling thread; nullptr restores the silent default.
void SetProgressSink(ProgressSink* sink);

// Shows a notice for the lifetime of the object, with the hourglass.
class ProgressScope {
 public:
  explicit ProgressScope(std::string_view text);
  ~ProgressScope();
  ProgressScope(const ProgressScope&) = delete;
  ProgressScope& operator=(const ProgressScope&) = delete;
};

}  // namespace ira
