#include "views/qt_print_device.h"

#include <QFontMetricsF>
#include <QPrinter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "core/reports/prnmastr.h"
#include "views/report_font.h"

namespace ira::views {

QtPrintDevice::QtPrintDevice(QPrinter& printer) : m_printer(printer) {
  // Every print job starts in Courier New; the report font takes over as
  // soon as the first block asks how many lines fit.
  SetFont(MakeFont({reports::kDefaultFontName, reports::ReportFont().size}));
}

QtPrintDevice::~QtPrintDevice() {
  if (m_painter.isActive()) m_painter.end();
}

void QtPrintDevice::SetFont(const QFont& font) {
  m_font = font;
  const QFontMetricsF fm(m_font, &m_printer);
  // The height of one line of text, measured as the page manager's sample.
  m_lineHeight = std::max(1.0, fm.size(Qt::TextSingleLine, QStringLiteral("nLinesPerPage")).height());
  m_ascent = fm.ascent();
}

int QtPrintDevice::LinesPerPage() {
  SetFont(ReportQFont());
  return static_cast<int>(std::floor(m_printer.height() / m_lineHeight));
}

void QtPrintDevice::PrintLine(std::string_view text) {
  if (m_ended) Fail(QStringLiteral("a line was printed after the end of the document"));
  if (!m_pageBegun) BeginPage();
  m_lines << QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

void QtPrintDevice::SetOrientation(QPageLayout::Orientation orientation) {
  if (m_printer.pageLayout().orientation() != orientation) m_printer.setPageOrientation(orientation);
}

void QtPrintDevice::FigurePage(const QStringList& headings,
                               const std::function<void(QPainter&, const QRectF&)>& paint) {
  const int lines = LinesPerPage();
  if (m_pageBegun) DrawPage();
  BeginPage();
  // Laid out as a page of lines: two blank, the headings, a blank, the
  // figure, and "Page N" on the footer line.
  m_lines = QStringList{QString(), QString()} + headings + QStringList{QString()};
  const int footer = lines - 6;
  const double top = static_cast<double>(m_lines.size()) * m_lineHeight;
  const double bottom = static_cast<double>(footer - 1) * m_lineHeight;
  while (m_lines.size() < footer) m_lines << QString();
  m_lines << QStringLiteral("Page %1").arg(m_page);
  m_painter.save();
  QFont small = m_font;
  small.setPointSizeF(m_font.pointSizeF() * 0.9);
  m_painter.setFont(small);
  paint(m_painter, QRectF(0, top, m_printer.width(), bottom - top));
  m_painter.restore();
  DrawPage();
  ++m_page;
}

void QtPrintDevice::NewPage() {
  ++m_page;
  // A page on which nothing was printed never appears.
  if (m_pageBegun) DrawPage();
}

void QtPrintDevice::EndDoc() {
  if (m_ended) return;
  m_ended = true;
  if (m_pageBegun) DrawPage();
  if (m_painter.isActive() && !m_painter.end()) Fail(QStringLiteral("the document could not be finished"));
}

void QtPrintDevice::BeginPage() {
  if (!m_painter.isActive()) {
    if (!m_painter.begin(&m_printer)) {
      Fail(m_printer.outputFileName().isEmpty()
               ? QStringLiteral("the printer \"%1\" could not be started").arg(m_printer.printerName())
               : QStringLiteral("the file \"%1\" could not be written").arg(m_printer.outputFileName()));
    }
  } else if (!m_printer.newPage()) {
    Fail(QStringLiteral("the printer did not take a new page"));
  }
  m_pageBegun = true;
}

void QtPrintDevice::DrawPage() {
  const QStringList lines = std::exchange(m_lines, {});
  m_pageBegun = false;
  m_painter.setFont(m_font);
  const QFontMetricsF fm(m_font, &m_printer);
  double widest = 0;
  for (QString line : lines) {
    while (!line.isEmpty() && line.back().isSpace()) line.chop(1);
    widest = std::max(widest, fm.horizontalAdvance(line));
  }
  m_painter.save();
  if (widest > m_printer.width()) m_painter.scale(m_printer.width() / widest, 1.0);
  for (qsizetype i = 0; i < lines.size(); ++i)
    m_painter.drawText(QPointF(0, static_cast<double>(i) * m_lineHeight + m_ascent), lines[i]);
  m_painter.restore();
  ++m_pagesDrawn;
}

void QtPrintDevice::Fail(const QString& what) {
  throw reports::PrinterError(what.toStdString());
}

}  // namespace ira::views
