// Printing the reports: to the system printer, in a print preview or into a
// PDF file. All three run one paint routine, PaintReports, on the QPrinter
// they are given, so what the preview shows is what the printer gets.
#pragma once

#include <QString>

class QPrinter;
class QWidget;

namespace ira::views {

enum class PrintOutput { Printer, Preview, Pdf };

// The page setup a print job of the reports of `flags` starts from: US
// Letter with half-inch margins, turned as its first report prints. Text
// reports print upright, the two grid reports sideways for their columns.
void PreparePrinter(QPrinter& printer, int flags);

// The reports of `flags` (report selection flags) in one document on
// `printer`, each report beginning on a new page. Returns the pages drawn.
int PaintReports(QPrinter& printer, int flags);

// The printer dialog, then the reports; false when the dialog was cancelled.
bool PrintReports(int flags, QWidget* parent);
void PreviewReports(int flags, QWidget* parent);
// The reports into `path`. The file is written under a temporary name in the
// same folder and renamed over `path` once complete, so an earlier file is
// never left half overwritten. False, with a message naming the file, when
// nothing could be written.
bool SaveReportsAsPdf(int flags, const QString& path);

}  // namespace ira::views
