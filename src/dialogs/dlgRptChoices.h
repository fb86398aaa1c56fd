// The report choices: which reports to show or print. "Run All Reports"
// stands for every entry of the list; Cancel runs none.
#pragma once

#include <QDialog>

#include "core/reports/report_sink.h"

class QCheckBox;
class QListWidget;
class QPushButton;

namespace ira::dialogs {

class dlgRptChoices : public QDialog {
  Q_OBJECT
 public:
  explicit dlgRptChoices(reports::ReportMode mode, QWidget* parent = nullptr);

  QCheckBox* chkAll;
  QListWidget* chkReport;
  QPushButton* btnOK;
  QPushButton* btnCancel;

  // The report selection flags of the ticked entries (all with chkAll).
  int Flags() const;
  // OK: refuses an empty choice; otherwise remembers it for the next time.
  void btnOK_Click();
  // As at start-up: nothing remembered.
  static void ForgetChoice();
};

}  // namespace ira::dialogs
