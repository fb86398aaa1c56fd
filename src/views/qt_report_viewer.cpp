#include "views/qt_report_viewer.h"

#include "core/base/messages.h"
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

void QtReportViewer::ShowText(const std::string& caption, const std::string& text) {
  auto* form = new frmReportForm(m_owner);
  form->setWindowTitle(QString::fromStdString(caption));
  form->AppendReport(text);
  form->Place();
  form->show();
}

void QtReportViewer::ShowGrid(const reports::GridReport& grid) {
  GridReportWindow* window = nullptr;
  if (grid.caption == frmProjRpt::kCaption)
    window = new frmProjRpt(grid, m_owner);
  else
    window = new frmCalSumm(grid, m_owner);
  window->Place();
  window->show();
}

void QtReportViewer::ShowProjectionHelp() {
  ShowMessage(kProjectionHelpTitle, kProjectionHelpText, MsgIcon::Information);
}

}  // namespace ira::views
