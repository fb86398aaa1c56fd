// The text report window: one per report shown, several open at once. The
// report's lines sit in txtReport in the report font, unwrapped, so that the
// columns the report lays out with blanks stay in line.
#pragma once

#include <QWidget>
#include <string>

class QPlainTextEdit;
class QPushButton;

namespace ira::views {

class frmReportForm : public QWidget {
  Q_OBJECT
 public:
  explicit frmReportForm(QWidget* parent = nullptr);

  QWidget* pnlToolBar;
  QPushButton* btn3DExit;
  QPlainTextEdit* txtReport;

  // Lines end with CRLF.
  void AppendReport(const std::string& text);
  // Replaces the text, keeping the place the reader scrolled to.
  void SetReport(const std::string& text);
  // Sized to the report's width and centred on the screen.
  void Place();

 protected:
  // Escape closes the window, as in a dialog.
  void keyPressEvent(QKeyEvent* event) override;
};

// Report text as the window shows it: CRLF line ends become plain ones.
QString WindowText(const std::string& reportText);

}  // namespace ira::views
