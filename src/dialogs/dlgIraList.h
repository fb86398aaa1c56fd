// The list of the owner's IRAs: add, edit, delete and reorder. Works on a
// copy of the list and writes it back, with IraCount, on OK.
#pragma once

#include <QDialog>
#include <functional>
#include <vector>

#include "core/scenario/scenario.h"

class QDialogButtonBox;
class QTreeWidget;
class QPushButton;

namespace ira::dialogs {

class dlgIraList : public QDialog {
  Q_OBJECT
 public:
  explicit dlgIraList(Scenario& scenario, QWidget* parent = nullptr);

  QTreeWidget* lstIras;
  QPushButton* btnAdd;
  QPushButton* btnEdit;
  QPushButton* btnDelete;
  QPushButton* btnUp;
  QPushButton* btnDown;
  QDialogButtonBox* buttons;

  void btnAdd_Click();
  void btnEdit_Click();
  void btnDelete_Click();
  void MoveSelected(int step);
  void btnOK_Click();
  int CurrentRow() const;
  void SetCurrentRow(int row);

  // Opens the IRA inputs dialog on `ira`; true when it was confirmed. Tests
  // replace it to fill the record without a window.
  std::function<bool(const GeneralInputs&, IraRecord&)> EditIra;

 private:
  void FillList(int select);
  void SetListEnables();

  Scenario& m_target;
  std::vector<IraRecord> m_iras;
};

}  // namespace ira::dialogs
