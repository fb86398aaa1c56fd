#include "views/report_printing.h"

#include <QDir>
#include <QFileInfo>
#include <QPageLayout>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QTemporaryFile>
#include <filesystem>

#include "core/base/messages.h"
#include "core/reports/display_master.h"
#include "views/qt_print_device.h"

namespace ira::views {
namespace {

void Warn(const QString& text) { ShowMessage("WARNING", text.toStdString(), MsgIcon::Exclamation); }

}  // namespace

void PreparePrinter(QPrinter& printer, int flags) {
  const bool wide = (flags & reports::kRptProjection) != 0 && reports::ProjectionModeOn();
  printer.setPageLayout(QPageLayout(QPageSize(QPageSize::Letter), wide ? QPageLayout::Landscape : QPageLayout::Portrait,
                                    QMarginsF(0.5, 0.5, 0.5, 0.5), QPageLayout::Inch));
  printer.setDocName(QStringLiteral("Tallyra reports"));
}

int PaintReports(QPrinter& printer, int flags) {
  QtPrintDevice device(printer);
  reports::PrintSelectedReports(flags, device);
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
  return true;
}

}  // namespace ira::views
