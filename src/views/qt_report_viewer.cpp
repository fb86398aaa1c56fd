#include "views/qt_report_viewer.h"

#include "core/base/messages.h"
#include "views/grid_window.h"
#include "views/frmCalSumm.h"
#include "views/frmProjRpt.h"
#include "views/frmReportForm.h"

namespace ira::views {

const char* const kProjectionHelpText =
    "The Projection of Distributions report rolls the balance of every IRA forward, year by year, "
    "from the Distribution Calendar Year on: the beginning balance, the income at each IRA's rate "
    "of return, the distributions and the ending balance, with each year's totals, the excess "
    "distribution limit and the excess distribution tax.\n\n"
    "The report needs projection mode. To set it up:\n"
    "  1. Enter at least one IRA (Inputs, IRA List).\n"
    "  2. Choose Inputs, Projection Options (or the Projection button).\n"
    "  3. Enter the number of years to project and, for required distributions, the percentage "
    "over the required minimum distribution to withdraw each year (0 takes the minimum).\n"
    "  4. Choose whether income is calculated for the current Distribution Calendar Year, and "
    "press OK.\n\n"
    "Then choose Display or Print again and tick Projection of Distributions.";

QWidget* QtReportViewer::Open(int flag) const {
  const auto it = m_windows.find(flag);
  return it == m_windows.end() ? nullptr : it->second.data();
}

int QtReportViewer::OpenReports() const {
  int flags = 0;
  for (const auto& [flag, window] : m_windows)
    if (window && window->isVisible()) flags |= flag;
  return flags;
}

void QtReportViewer::CloseReport(int flag) {
  if (QWidget* w = Open(flag)) w->close();
  m_windows.erase(flag);
}

void QtReportViewer::RefreshOpen(const std::function<void(int flag)>& run) {
  const int open = OpenReports();
  if (open == 0) return;
  m_refreshing = true;
  for (int flag = 1; flag <= reports::kRptAll; flag <<= 1) {
    if ((open & flag) == 0) continue;
    SetReport(flag);
    run(flag);
  }
  m_refreshing = false;
}

void QtReportViewer::Present(QWidget* window, QWidget* replaced) {
  if (replaced != nullptr) {
    window->setGeometry(replaced->geometry());
    replaced->close();
  } else {
    // Cascade: each window open already moves the new one down and right.
    int open = 0;
    for (const auto& [flag, w] : m_windows)
      if (w && w->isVisible() && w != window) ++open;
    window->move(window->pos() + QPoint(28, 28) * (open % 8));
  }
  if (m_flag != 0) m_windows[m_flag] = window;
  window->show();
  if (!m_refreshing) {
    window->raise();
    window->activateWindow();
  }
}

void QtReportViewer::ShowText(const std::string& caption, const std::string& text) {
  if (auto* form = qobject_cast<frmReportForm*>(Open(m_flag)); form != nullptr && form->isVisible()) {
    // The same report again: its window shows the new text where it stands.
    form->setWindowTitle(QString::fromStdString(caption));
    form->SetReport(text);
    if (!m_refreshing) {
      form->raise();
      form->activateWindow();
    }
    return;
  }
  auto* form = new frmReportForm(m_owner);
  form->setWindowTitle(QString::fromStdString(caption));
  form->AppendReport(text);
  form->Place();
  Present(form, nullptr);
}

void QtReportViewer::ShowGrid(const reports::GridReport& grid) {
  GridReportWindow* window = nullptr;
  if (grid.caption == frmProjRpt::kCaption)
    window = new frmProjRpt(grid, m_owner);
  else
    window = new frmCalSumm(grid, m_owner);
  window->Place();
  QWidget* old = Open(m_flag);
  Present(window, old != nullptr && old->isVisible() ? old : nullptr);
}

void QtReportViewer::ShowProjectionHelp() {
  ShowMessage(kProjectionHelpTitle, kProjectionHelpText, MsgIcon::Information);
}

}  // namespace ira::views
