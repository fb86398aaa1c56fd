// View mode on the desktop: every report shown has a window of its own,
// modeless, so several reports can be compared side by side. Showing a report
// again reuses its window; new windows cascade from the centre of the screen.
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <map>

#include "core/reports/display_master.h"

namespace ira::views {

class QtReportViewer final : public reports::ReportViewer {
 public:
  // The windows belong to `owner` (they close with it) but stand on their own.
  explicit QtReportViewer(QWidget* owner) : m_owner(owner) {}

  void ShowText(const std::string& caption, const std::string& text) override;
  void ShowGrid(const reports::GridReport& grid) override;
  void ShowProjectionHelp() override;

  // The report (selection flag) whose window the next Show fills.
  void SetReport(int flag) { m_flag = flag; }
  // The reports that have a window open, as selection flags.
  int OpenReports() const;
  // Closes the window of a report, if it has one.
  void CloseReport(int flag);
  // Refills the open windows in place: the scenario has changed. `run` runs
  // one report into this viewer.
  void RefreshOpen(const std::function<void(int flag)>& run);

 private:
  QWidget* Open(int flag) const;
  // A new window takes its place (cascaded) or the place of the one it replaces.
  void Present(QWidget* window, QWidget* replaced);

  QPointer<QWidget> m_owner;
  int m_flag = 0;
  bool m_refreshing = false;
  std::map<int, QPointer<QWidget>> m_windows;
};

// The help on projection reports, offered when the Projection report is asked
// for before projection mode is set up.
inline constexpr const char* kProjectionHelpTitle = "Help on Projection Reports";
extern const char* const kProjectionHelpText;

}  // namespace ira::views
