// The Calendar Year Summary window: which regulations were used above the
// grid, the footnote on accounts that could not be computed under it.
#pragma once

#include "views/grid_window.h"

namespace ira::views {

class frmCalSumm : public GridReportWindow {
  Q_OBJECT
 public:
  static constexpr const char* kCaption = "Calendar Year Summary Report";
  explicit frmCalSumm(const reports::GridReport& grid, QWidget* parent = nullptr)
      : GridReportWindow("frmCalSumm", grid, {"lblRegUsed"}, parent) {}
};

}  // namespace ira::views
