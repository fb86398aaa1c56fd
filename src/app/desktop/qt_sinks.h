// The desktop's side of the core's outbound interfaces: messages become
// message boxes over the active window, progress notices go to the main
// window's status bar with the busy cursor, and unexpected errors open the
// error form.
#pragma once

#include <QPointer>
#include <QStatusBar>
#include <functional>

#include "core/base/errors.h"
#include "core/base/messages.h"
#include "core/base/progress.h"

namespace ira::desktop {

// Messages titled "Help on ..." carry a help text and show in a help window.
inline constexpr const char* kHelpTitlePrefix = "Help on ";

class QtMessageSink final : public MessageSink {
 public:
  MsgAnswer Show(const Message& message) override;
};

class QtProgressSink final : public ProgressSink {
 public:
  explicit QtProgressSink(QStatusBar* statusBar) : m_statusBar(statusBar) {}
  ~QtProgressSink() override;
  void Show(std::string_view text) override;
  void Hide() override;
  void SetBusy(bool busy) override;

 private:
  QPointer<QStatusBar> m_statusBar;
  int m_busyDepth = 0;
};

// Shows frmError, then hands the user's answer to the save question to
// `shutDown`. Error 380 is passed over when the settings ask for it.
class QtErrorReport final : public ErrorReport {
 public:
  QtErrorReport(int hideError380, std::function<void(bool save)> shutDown)
      : m_hide380(hideError380 != 0), m_shutDown(std::move(shutDown)) {}
  void Report(int number, std::string_view text, std::string_view where) override;
  // Tests answer the form without showing it.
  std::function<bool(int number, std::string_view text, std::string_view where)> AskToSave;

 private:
  bool m_hide380;
  std::function<void(bool)> m_shutDown;
  bool m_reporting = false;
};

}  // namespace ira::desktop
