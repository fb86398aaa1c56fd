// The error form: what went wrong where, and whether to save the data
// before the program shuts down. Accepted means "save".
#pragma once

#include <QDialog>

class QLabel;

namespace ira::desktop {

class frmError : public QDialog {
  Q_OBJECT
 public:
  frmError(int number, const QString& text, const QString& where, QWidget* parent = nullptr);
  QLabel* lblError;
  QLabel* lblQuestion;
};

// The form's text, line by line.
QString ErrorFormText(int number, const QString& text, const QString& where);
inline constexpr const char* kSaveBeforeShutdown = "Do you want to save your data before the program shuts down?";

}  // namespace ira::desktop
