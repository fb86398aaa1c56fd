// Projection options: years to project, the percentage over the required
// minimum and the income option. Edits a copy of the general inputs and
// writes it back on OK; there is no Cancel.
#pragma once

#include <QDialog>

#include "core/scenario/scenario.h"
#include "dialogs/rules/projopts.h"

class QLabel;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;

namespace ira::widgets {
class EntryEdit;
}

namespace ira::dialogs {

class dlgProjOptions : public QDialog {
  Q_OBJECT
 public:
  explicit dlgProjOptions(GeneralInputs& gen, QWidget* parent = nullptr);
  ~dlgProjOptions() override;

  QLabel* CSCaptProjYrs;
  widgets::EntryEdit* txtProjYrs;
  QLabel* CSCaptOverMin;
  widgets::EntryEdit* txtOverMin;
  QRadioButton* CSOptIncomeYes;
  QRadioButton* CSOptIncomeNo;
  QLabel* csLabel1;
  widgets::EntryEdit* CStxtReduction;
  QPlainTextEdit* txtHelp;
  QPushButton* btnOK;

  void btnOK_Click();

 private:
  void ShowHint(QWidget* now);

  GeneralInputs& m_target;
  GeneralInputs m_gen;
  QMetaObject::Connection m_hints;
};

}  // namespace ira::dialogs
