// The general inputs: owner, spouse, DCY, type of distribution, early
// method and rates. Edits a copy of the general inputs, runs the GINPUTS
// rules as entries are left, and writes the copy back on OK.
#pragma once

#include <QDialog>

#include "core/scenario/scenario.h"
#include "dialogs/rules/ginputs.h"

class QDialogButtonBox;
class QListWidget;
class QRadioButton;

namespace ira::widgets {
class EntryEdit;
class DateEdit;
}  // namespace ira::widgets

namespace ira::dialogs {

class dlgGenInputs : public QDialog {
  Q_OBJECT
 public:
  explicit dlgGenInputs(GeneralInputs& gen, QWidget* parent = nullptr);

  widgets::EntryEdit* txtOwnerName;
  widgets::EntryEdit* txtOtherInfo;
  widgets::DateEdit* CSDtOwnerBD;
  widgets::DateEdit* CSDtDeath;
  QRadioButton* CSOptSpouseBenYes;
  QRadioButton* CSOptSpouseBenNo;
  widgets::DateEdit* CSDtSpouseBD;
  widgets::EntryEdit* txtDCY;
  QRadioButton* CSOptDistType[3];
  QRadioButton* CSoptEarlyDistMeth[3];
  widgets::EntryEdit* CStxtIntRate;
  QListWidget* lstAnnuityMethod;
  widgets::EntryEdit* CStxtAnnuityIntRate;
  widgets::EntryEdit* CStxtAnnuityFactor;
  widgets::EntryEdit* txtInflateRate;
  QDialogButtonBox* buttons;

  ginputs::GenEntries Entries() const;
  void txtDCY_LostFocus();
  void CSOptDistType_Click();
  void btnOK_Click();

 private:
  void Fill(const ginputs::GenEntries& e);
  void SetGenIPEnables();
  void RunDcyCheck();

  GeneralInputs& m_target;
  GeneralInputs m_gen;
  bool m_filling = false;
};

}  // namespace ira::dialogs
