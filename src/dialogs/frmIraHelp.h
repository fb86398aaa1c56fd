// A help text in a window of its own: the caption is the help's title.
#pragma once

#include <QDialog>

class QPlainTextEdit;

namespace ira::dialogs {

class frmIraHelp : public QDialog {
  Q_OBJECT
 public:
  frmIraHelp(const QString& title, const QString& text, QWidget* parent = nullptr);
  QPlainTextEdit* txtHelp;
};

// Shows the help modally.
void ShowHelp(const std::string& title, const std::string& text, QWidget* parent);

}  // namespace ira::dialogs
