#include "views/report_printing.h"

#include <QDir>
#include <QFileInfo>
#include <QPageLayout>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QTemporaryFile>
#include <filesystem>

#include <sys/stat.h>

#include "core/base/messages.h"
#include "core/reports/display_master.h"
#include "core/reports/prnmastr.h"
#include "core/scenario/scenario.h"
#include "views/grid_export.h"
#include "views/projection_chart.h"
#include "views/qt_print_device.h"

namespace ira::views {
namespace {

void Warn(const QString& text) { ShowMessage("WARNING", text.toStdString(), MsgIcon::Exclamation); }

// The grids need the width of a sideways page; text reports fit more lines,
// and so more accounts a page, upright.
QPageLayout::Orientation OrientationOf(int flag) {
  return flag == reports::kRptCalSumm || flag == reports::kRptProjection ? QPageLayout::Landscape
                                                                          : QPageLayout::Portrait;
}

// The first report that will print: the Projection report prints nothing
// without projection mode.
int FirstPrinted(int flags) {
  for (const reports::ReportEntry& entry : reports::Reports()) {
    if ((flags & entry.flag) == 0 || !entry.routine) continue;
    if (entry.flag == reports::kRptProjection && !reports::ProjectionModeOn()) continue;
    return entry.flag;
  }
  return 0;
}

}  // namespace

void PreparePrinter(QPrinter& printer, int flags) {
  printer.setPageLayout(QPageLayout(QPageSize(QPageSize::Letter), OrientationOf(FirstPrinted(flags)),
                                    QMarginsF(0.5, 0.5, 0.5, 0.5), QPageLayout::Inch));
  printer.setDocName(QStringLiteral("Tallyra reports"));
}

int PaintReports(QPrinter& printer, int flags) {
  QtPrintDevice device(printer);
  // Each report turns the paper its own way before its first page.
  reports::ReportTable table = reports::Reports();
  for (reports::ReportEntry& entry : table) {
    if (!entry.routine) continue;
    const bool chart = entry.flag == reports::kRptProjection;
    entry.routine = [&device, routine = entry.routine, orientation = OrientationOf(entry.flag),
                     chart](reports::ReportSink& sink) {
      device.SetOrientation(orientation);
      // The chart's figures are read before the report runs, from the same scenario.
      const auto grid = chart ? ReportGrid(reports::kRptProjection) : std::nullopt;
      const int before = device.PagesDrawn();
      routine(sink);
      if (grid && (device.PagesDrawn() > before || reports::PageLineCounter() != 0)) {
        // The report's last page is finished (and numbered) before the chart's.
        reports::PrnManager2(device, reports::kPrnEndReport, "", "", "");
        const GeneralInputs& gen = TheScenario().Gen;
        const ProjectionChartData data = ChartDataOf(*grid);
        device.FigurePage({QString::fromStdString(gen.OwnerName).trimmed(),
                           QString::fromStdString(gen.OtherInfo).trimmed(),
                           QStringLiteral("Projection of distributions: chart")},
                          [&data](QPainter& p, const QRectF& area) { PaintProjectionChart(p, area, data); });
      }
    };
  }
  reports::PrintSelectedReports(flags, device, table);
  return device.PagesDrawn();
}

bool PrintReports(int flags, QWidget* parent) {
  QPrinter printer(QPrinter::HighResolution);
  PreparePrinter(printer, flags);
  QPrintDialog dialog(&printer, parent);
  dialog.setWindowTitle(QStringLiteral("Print Reports"));
  if (dialog.exec() != QDialog::Accepted) return false;
  PaintReports(printer, flags);
  return true;
}

void PreviewReports(int flags, QWidget* parent) {
  QPrinter printer(QPrinter::HighResolution);
  PreparePrinter(printer, flags);
  QPrintPreviewDialog preview(&printer, parent);
  preview.setWindowTitle(QStringLiteral("Print Preview"));
  QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview,
                   [flags](QPrinter* p) { PaintReports(*p, flags); });
  preview.exec();
}

bool SaveReportsAsPdf(int flags, const QString& path) {
  const QFileInfo target(path);
  QTemporaryFile temp(target.absoluteDir().filePath(QStringLiteral(".%1-XXXXXX.pdf").arg(target.completeBaseName())));
  if (!temp.open()) {
    Warn(QStringLiteral("The file %1 cannot be written: %2").arg(path, temp.errorString()));
    return false;
  }
  temp.close();  // the printer writes it afresh

  QPrinter printer(QPrinter::HighResolution);
  PreparePrinter(printer, flags);
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(temp.fileName());
  printer.setDocName(target.completeBaseName());
  if (PaintReports(printer, flags) == 0) {
    ShowMessage("Please Note!", "No report was printed, so " + path.toStdString() + " was not written.",
                MsgIcon::Information);
    return false;
  }
  if (printer.printerState() == QPrinter::Error) {
    Warn(QStringLiteral("The file %1 was not written: printing into it failed.").arg(path));
    return false;
  }
  std::error_code ec;
  std::filesystem::rename(temp.fileName().toStdString(), target.absoluteFilePath().toStdString(), ec);
  if (ec) {
    Warn(QStringLiteral("The file %1 cannot be written: %2").arg(path, QString::fromStdString(ec.message())));
    return false;
  }
  temp.setAutoRemove(false);
  // The temporary file was private to the user; the PDF is an ordinary file.
  const mode_t mask = ::umask(0);
  ::umask(mask);
  std::filesystem::permissions(target.absoluteFilePath().toStdString(),
                               static_cast<std::filesystem::perms>(0666 & ~mask), ec);
  return true;
}

}  // namespace ira::views
