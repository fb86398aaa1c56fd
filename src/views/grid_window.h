// What the two grid report windows share: the heading, the grid
// vsGrdDisplay and the labels of a reports::GridReport, in the report font.
//
// The grid's fixed rows become its column headers (their cells' lines stacked)
// and a fixed label column becomes its row headers, so that both stay in view
// while the amounts scroll. Column widths are counted in widths of "X".
#pragma once

#include <QLabel>
#include <QWidget>
#include <functional>
#include <initializer_list>
#include <string>

#include "core/reports/report_sink.h"

class QPushButton;
class QTableWidget;

namespace ira::views {

class GridReportWindow : public QWidget {
  Q_OBJECT
 public:
  QLabel* txtHeading;
  QTableWidget* vsGrdDisplay;
  QPushButton* btnClose;
  QPushButton* btnExportCsv;
  QPushButton* btnCopyAll;
  // The CSV file to write, from a suggested name; empty when cancelled.
  std::function<QString(const QString& suggested)> ChooseCsvFile;

  // A label of the report by its control name; nullptr when it has none.
  QLabel* Label(const char* name) const;
  // Sized to the grid (within the screen) and centred.
  void Place();
  // The selected cells as tab-separated lines (Ctrl+C puts them on the
  // clipboard); unselected cells within the selection's bounds stay empty.
  QString SelectionText() const;
  void CopySelection();
  // The whole grid: on the clipboard as tab-separated text, or into a CSV file.
  void CopyAll();
  bool ExportCsv();
  const reports::GridReport& Grid() const { return m_grid; }

 protected:
  // The labels named in `above` go between the heading and the grid, the
  // others under it, in the report's order.
  GridReportWindow(const char* objectName, const reports::GridReport& grid,
                   std::initializer_list<const char*> above, QWidget* parent);

 protected:
  // Escape closes the window, as in a dialog.
  void keyPressEvent(QKeyEvent* event) override;

 private:
  reports::GridReport m_grid;
};

// Cell text as the grid shows it: CRLF-joined lines stacked.
QString CellText(const std::string& cell);

}  // namespace ira::views
