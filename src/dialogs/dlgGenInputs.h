// The general inputs: owner, spouse, DCY, type of distribution, early
// method and rates. Edits a copy of the general inputs, runs the GINPUTS
// rules as entries are left, and writes the copy back on OK.
#pragma once

#include <QDialog>

#include "core/scenario/scenario.h"
#include "dialogs/rules/ginputs.h"

class QComboBox;
class QDialogButtonBox;
class QLabel;
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
  QComboBox* cboRuleSet;
  QComboBox* cboAge1959;
  QLabel* lblRuleHint;
  QDialogButtonBox* buttons;

  ginputs::GenEntries Entries() const;
  // The DCY and type check runs when the pair is left (focus goes elsewhere
  // after either changed) and at OK, never while the user types.
  void DcyAndTypeLeft();
  void btnOK_Click();

 private:
  void Fill(const ginputs::GenEntries& e);
  void SetGenIPEnables();
  // False when the year and the type conflict.
  bool RunDcyCheck();
  bool InDcyAndType(const QWidget* w) const;
  void FocusChanged(QWidget* old, QWidget* now);

  GeneralInputs& m_target;
  GeneralInputs m_gen;
  bool m_filling = false;
  bool m_dcyTypePending = false;
};

}  // namespace ira::dialogs
