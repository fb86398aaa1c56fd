// The Projection window: the regulations and the income note above the grid
// of years, the notes and footnotes under it; the grid and a chart of the
// same figures on two tabs.
#pragma once

#include "views/grid_window.h"

class QTabWidget;

namespace ira::views {

class ProjectionChart;

class frmProjRpt : public GridReportWindow {
  Q_OBJECT
 public:
  static constexpr const char* kCaption = "Projection of Distributions Report";
  explicit frmProjRpt(const reports::GridReport& grid, QWidget* parent = nullptr);

  QTabWidget* tabView;
  ProjectionChart* chtProjection;
};

}  // namespace ira::views
