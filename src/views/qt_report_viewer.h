// View mode on the desktop: every report shown opens a window of its own,
// modeless, so several reports can be compared side by side.
#pragma once

#include <QPointer>
#include <QWidget>

#include "core/reports/display_master.h"

namespace ira::views {

class QtReportViewer final : public reports::ReportViewer {
 public:
  // The windows belong to `owner` (they close with it) but stand on their own.
  explicit QtReportViewer(QWidget* owner) : m_owner(owner) {}

  void ShowText(const std::string& caption, const std::string& text) override;
  void ShowGrid(const reports::GridReport& grid) override;
  void ShowProjectionHelp() override;

 private:
  QPointer<QWidget> m_owner;
};

// The help on projection reports, offered when the Projection report is asked
// for before projection mode is set up.
inline constexpr const char* kProjectionHelpTitle = "Help on Projection Reports";
extern const char* const kProjectionHelpText;

}  // namespace ira::views
