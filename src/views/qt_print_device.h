// The print device of the desktop: the page manager's lines drawn on a
// QPrinter, whether it is the system printer, a print preview or a PDF file.
//
// Lines are spaced by the height of the report font on the printer, the same
// height nLinesPerPage divides the page by, so a page holds exactly the lines
// the page manager counts. A page is begun on the printer with its first line,
// so a printer that fails does so while the report prints; its lines are drawn
// when it is finished, and a page with a line wider than the paper is narrowed
// to the paper's width rather than cut.
#pragma once

#include <QFont>
#include <QPageLayout>
#include <QPainter>
#include <QStringList>
#include <functional>

#include "core/base/print_device.h"

class QPrinter;

namespace ira::views {

class QtPrintDevice : public PrintDevice {
 public:
  explicit QtPrintDevice(QPrinter& printer);
  ~QtPrintDevice() override;
  QtPrintDevice(const QtPrintDevice&) = delete;
  QtPrintDevice& operator=(const QtPrintDevice&) = delete;

  // Sets the report font on the printer, then counts its lines on a page.
  int LinesPerPage() override;
  void PrintLine(std::string_view text) override;
  int PageNumber() const override { return m_page; }
  void NewPage() override;
  void EndDoc() override;

  int PagesDrawn() const { return m_pagesDrawn; }
  // The paper's orientation from the next page on (lines per page follow).
  void SetOrientation(QPageLayout::Orientation orientation);
  // A page of its own with the three heading lines, a figure drawn by `paint`
  // in the space the lines would take, and the page number where the page
  // manager puts it.
  void FigurePage(const QStringList& headings, const std::function<void(QPainter&, const QRectF&)>& paint);

 private:
  void SetFont(const QFont& font);
  void BeginPage();
  void DrawPage();
  [[noreturn]] void Fail(const QString& what);

  QPrinter& m_printer;
  QPainter m_painter;
  QFont m_font;
  double m_lineHeight = 1;
  double m_ascent = 0;
  QStringList m_lines;  // the page being filled
  bool m_pageBegun = false;
  int m_page = 1;
  int m_pagesDrawn = 0;
  bool m_ended = false;
};

}  // namespace ira::views
