// One IRA's inputs: name, beneficiaries, amounts, rate of return and the
// elections. Edits a copy of the record and writes it back on OK.
#pragma once

#include <QDialog>

#include "core/scenario/scenario.h"
#include "dialogs/rules/irainputs.h"

class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QSpinBox;

namespace ira::widgets {
class EntryEdit;
class DateEdit;
class CurrencyEdit;
}  // namespace ira::widgets

namespace ira::dialogs {

class dlgIraInputs : public QDialog {
  Q_OBJECT
 public:
  dlgIraInputs(const GeneralInputs& gen, IraRecord& ira, QWidget* parent = nullptr);

  widgets::EntryEdit* txtIraName;
  QCheckBox* CSOptSpouseBen;
  QCheckBox* CSOptOtherBen;
  widgets::EntryEdit* txtBeneName;
  widgets::DateEdit* CSDtBeneBD;
  widgets::CurrencyEdit* CSCurBenefit;
  widgets::CurrencyEdit* CSCurDistributed;
  widgets::CurrencyEdit* CSCurFirstYear;
  widgets::EntryEdit* CStxtRateOfReturn;
  QComboBox* lstRecalc;
  QCheckBox* chkUse2002Table;
  QComboBox* lstBeneKind;
  QComboBox* lstSpouseChoice;
  QSpinBox* spnSpouseChoiceYear;
  QDialogButtonBox* buttons;

  irainputs::IraEntries Entries() const;
  void btnOK_Click();

 private:
  void SetIraEnables();
  void FillRecalcChoices(std::int16_t bRecalc);
  std::int16_t SelectedRecalc() const;

  const GeneralInputs& m_gen;
  IraRecord& m_target;
  IraRecord m_ira;
};

}  // namespace ira::dialogs
