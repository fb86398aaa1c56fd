#include "views/frmProjRpt.h"

#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>

#include "views/projection_chart.h"

namespace ira::views {

frmProjRpt::frmProjRpt(const reports::GridReport& grid, QWidget* parent)
    : GridReportWindow("frmProjRpt", grid, {"Label1", "lblIncomeCalc"}, parent) {
  // The grid moves onto the first tab, in its place in the layout.
  auto* box = static_cast<QVBoxLayout*>(layout());
  const int at = box->indexOf(vsGrdDisplay);
  tabView = new QTabWidget(this);
  tabView->setObjectName(QStringLiteral("tabView"));
  box->insertWidget(at, tabView, 1);
  box->removeWidget(vsGrdDisplay);
  chtProjection = new ProjectionChart(ChartDataOf(grid), tabView);
  tabView->addTab(vsGrdDisplay, QStringLiteral("&Table"));
  tabView->addTab(chtProjection, QStringLiteral("C&hart"));
}

}  // namespace ira::views
