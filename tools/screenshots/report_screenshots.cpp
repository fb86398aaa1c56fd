// Renders the report windows of the demonstration scenario to PNG files in the
// folder given on the command line; with --pdf, also prints all the reports
// into reports.pdf there, to look at the printed pages.
#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <QTabWidget>
#include <QWidget>
#include <iostream>
#include <string>

#include "core/base/program.h"
#include "core/reports/display_master.h"
#include "core/scenario/file.h"
#include "core/scenario/scenario.h"
#include "core/tables/tables.h"
#include "views/frmProjRpt.h"
#include "views/qt_report_viewer.h"
#include "views/report_printing.h"

namespace {

using namespace ira;

// File names of the windows, in list order.
const char* const kShots[] = {"report-inputs.png", "report-general-information.png",
                              "report-distribution-calculations.png", "report-calendar-year-summary.png",
                              "report-projection.png"};

bool SaveWindows(const QDir& dir) {
  QWidget owner;
  views::QtReportViewer viewer(&owner);
  reports::ReportTarget target;
  target.viewer = &viewer;
  reports::DisplayMaster(reports::ReportMode::View, reports::kRptAll, target);
  for (int i = 0; i < 5; ++i) QApplication::processEvents();
  bool ok = true;
  int n = 0;
  for (QWidget* w : owner.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
    if (!w->isWindow() || n >= 5) continue;
    const QString name = QString::fromLatin1(kShots[n++]);
    if (!w->grab().save(dir.filePath(name))) {
      std::cerr << "could not write " << name.toStdString() << "\n";
      ok = false;
    }
  }
  // The projection's second tab: its chart.
  if (auto* projection = owner.findChild<views::frmProjRpt*>()) {
    projection->tabView->setCurrentIndex(1);
    QApplication::processEvents();
    ok &= projection->grab().save(dir.filePath(QStringLiteral("report-projection-chart.png")));
  }
  return ok && n == 5;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  if (argc < 2) {
    std::cerr << "usage: report_screenshots FOLDER [--pdf]\n";
    return 2;
  }
  QDir dir(QString::fromLocal8Bit(argv[1]));
  if (!dir.mkpath(QStringLiteral("."))) return 1;
  SetProgramFolder(QCoreApplication::applicationDirPath().toStdString());
  tables::ReadTableVI();
  tables::ReadTableV();
  tables::ReadTables2022();
  if (!file::OpenFile(ProgramFile("demo.ira"), TheScenario())) return 1;

  bool ok = SaveWindows(dir);
  if (argc > 2 && std::string(argv[2]) == "--pdf")
    ok &= views::SaveReportsAsPdf(reports::kRptAll, dir.filePath(QStringLiteral("reports.pdf")));
  return ok ? 0 : 1;
}
