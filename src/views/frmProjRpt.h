// The Projection window: the regulations and the income note above the grid
// of years, the notes and footnotes under it.
#pragma once

#include "views/grid_window.h"

namespace ira::views {

class frmProjRpt : public GridReportWindow {
  Q_OBJECT
 public:
  static constexpr const char* kCaption = "Projection of Distributions Report";
  explicit frmProjRpt(const reports::GridReport& grid, QWidget* parent = nullptr)
      : GridReportWindow("frmProjRpt", grid, {"Label1", "lblIncomeCalc"}, parent) {}
};

}  // namespace ira::views
