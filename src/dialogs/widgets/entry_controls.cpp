#include "dialogs/widgets/entry_controls.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QRegularExpressionValidator>

#include "core/base/errors.h"
#include "dialogs/rules/entries.h"

namespace ira::widgets {
namespace {

class EnterMovesFocus final : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::KeyPress) return false;
    auto* key = static_cast<QKeyEvent*>(event);
    if ((key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter) || key->modifiers() & ~Qt::KeypadModifier) {
      return false;
    }
    if (qobject_cast<QPushButton*>(watched) != nullptr) return false;
    QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
    QCoreApplication::sendEvent(watched, &tab);
    return true;
  }
};

}  // namespace

void InstallEnterMovesFocus(QWidget* dialog) {
  auto* filter = new EnterMovesFocus(dialog);
  for (QWidget* child : dialog->findChildren<QWidget*>()) {
    if (child->focusPolicy() != Qt::NoFocus) child->installEventFilter(filter);
  }
}

void ShowRange(QLineEdit* edit, const std::string& hint) {
  const QString tip = edit->toolTip();
  edit->setToolTip((tip.isEmpty() ? QString() : tip + QLatin1Char('\n')) + QString::fromStdString(hint));
}

namespace {
void SendBack(QLineEdit* edit) {
  edit->setFocus();
  edit->selectAll();
}
}  // namespace

bool EntriesWithinRange(std::initializer_list<std::pair<QLineEdit*, const rules::Range*>> entries) {
  for (const auto& [edit, range] : entries) {
    if (!edit->isEnabled()) continue;
    if (!rules::WithinRange(edit->text().toStdString(), *range)) {
      SendBack(edit);
      return false;
    }
  }
  return true;
}

bool DatesWithinRange(std::initializer_list<std::pair<QLineEdit*, const char*>> dates) {
  for (const auto& [edit, field] : dates) {
    if (!edit->isEnabled()) continue;
    if (!rules::DateWithinRange(edit->text().toStdString(), field)) {
      SendBack(edit);
      return false;
    }
  }
  return true;
}

QDialogButtonBox* OkCancelButtons(QWidget* dialog) {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, dialog);
  buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("&OK"));
  buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("&Cancel"));
  return buttons;
}

EntryEdit::EntryEdit(QWidget* parent, int maxLength) : QLineEdit(parent) { setMaxLength(maxLength); }

std::string EntryEdit::Text() const { return text().toStdString(); }

void EntryEdit::SetText(const std::string& text) { setText(QString::fromStdString(text)); }

DateEdit::DateEdit(QWidget* parent) : EntryEdit(parent, 10) {
  setPlaceholderText(QStringLiteral("m/d/yyyy"));
  setMaximumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00/00/00000")) + 16);
}

void DateEdit::SetDate(Date date) { SetText(rules::DateText(date)); }

CurrencyEdit::CurrencyEdit(QWidget* parent) : EntryEdit(parent, 20) {
  setAlignment(Qt::AlignRight);
  setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral(R"(\$?-?[0-9,]*\.?[0-9]*)")), this));
  setMaximumWidth(fontMetrics().horizontalAdvance(QStringLiteral("999,999,999,999.00")) + 16);
  connect(this, &QLineEdit::editingFinished, this, &CurrencyEdit::Reformat);
}

void CurrencyEdit::SetAmount(Money amount) { SetText(rules::AmountText(amount)); }

void CurrencyEdit::Reformat() {
  std::string t = Text();
  if (!t.empty() && t.front() == '$') t.erase(0, 1);
  if (t.empty()) return;
  try {
    SetAmount(Money::FromString(t));
  } catch (const Error&) {
    // Left as typed: OK names the field.
  }
}

}  // namespace ira::widgets
