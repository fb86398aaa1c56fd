// The input dialogs' entry controls: a plain entry, a date entry and an
// amount entry, and the one rule every input dialog shares, that Enter moves
// the focus to the next control (a push button still takes Enter as a click).
#pragma once

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QObject>

#include "core/base/calendar.h"
#include "core/base/money.h"
#include "dialogs/rules/entries.h"
#include <initializer_list>
#include <utility>

class QWidget;

namespace ira::widgets {

// Turns Enter into Tab in every control of `dialog` except push buttons.
void InstallEnterMovesFocus(QWidget* dialog);
// The entry's tooltip ends with the range it accepts.
void ShowRange(QLineEdit* edit, const std::string& hint);
// At OK: each enabled entry within its range, else the message, the focus on
// the entry and false.
bool EntriesWithinRange(std::initializer_list<std::pair<QLineEdit*, const rules::Range*>> entries);
bool DatesWithinRange(std::initializer_list<std::pair<QLineEdit*, const char*>> dates);
// OK and Cancel with their Alt letters, whatever the desktop's theme names them.
QDialogButtonBox* OkCancelButtons(QWidget* dialog);

class EntryEdit : public QLineEdit {
  Q_OBJECT
 public:
  explicit EntryEdit(QWidget* parent = nullptr, int maxLength = 32767);
  std::string Text() const;  // UTF-8
  void SetText(const std::string& text);
};

// Dates are typed m/d/yyyy; an empty entry is "no date".
class DateEdit : public EntryEdit {
  Q_OBJECT
 public:
  explicit DateEdit(QWidget* parent = nullptr);
  void SetDate(Date date);
};

// Amounts show as "#,###,##0.00" and are right-aligned; a readable amount is
// shown in that form again when the entry is left.
class CurrencyEdit : public EntryEdit {
  Q_OBJECT
 public:
  explicit CurrencyEdit(QWidget* parent = nullptr);
  void SetAmount(Money amount);

 private:
  void Reformat();
};

}  // namespace ira::widgets
