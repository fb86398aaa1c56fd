#include <QApplication>
#include <QFileInfo>
#include <QPainter>
#include <QSplashScreen>
#include <filesystem>

#include "app/desktop/desktop.h"
#include "app/desktop/frmMain.h"
#include "app/desktop/qt_sinks.h"
#include "app/shell/commands.h"
#include "app/shell/settings.h"
#include "core/base/program.h"
#include "core/tables/tables.h"
#include "views/report_font.h"

namespace ira::desktop {
namespace {

QPixmap StartupPicture() {
  QPixmap pixmap(420, 200);
  pixmap.fill(QColor(30, 90, 140));
  QPainter p(&pixmap);
  p.setPen(Qt::white);
  QFont title(QStringLiteral("Sans"), 26, QFont::Bold);
  p.setFont(title);
  p.drawText(QRect(0, 40, 420, 60), Qt::AlignCenter, QString::fromLatin1(shell::kProductName));
  QFont small(QStringLiteral("Sans"), 11);
  p.setFont(small);
  p.drawText(QRect(0, 100, 420, 30), Qt::AlignCenter,
             QStringLiteral("Required distributions from individual retirement arrangements"));
  p.drawText(QRect(0, 150, 410, 30), Qt::AlignRight | Qt::AlignVCenter,
             QStringLiteral("Version: ") + QString::fromStdString(VersionText()));
  return pixmap;
}

}  // namespace

int RunDesktop(int argc, char** argv, const std::string& inputFile) {
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Tallyra"));
  QApplication::setOrganizationName(QStringLiteral("Quillon"));
  SetProgramFolder(QCoreApplication::applicationDirPath().toStdString());
  const long startTime = shell::SecondsSinceMidnight();

  QSplashScreen splash(StartupPicture());
  splash.show();
  QApplication::processEvents();

  // Settings beside the program, or in the per-user folder when the
  // program folder cannot be written; the data folder defaults to the
  // per-user one, where the demonstration scenario waits.
  const std::string userFolder = settings::UserDataFolder();
  std::error_code ec;
  std::filesystem::create_directories(userFolder, ec);
  const std::string programName = QFileInfo(QCoreApplication::applicationFilePath()).fileName().toStdString();
  settings::Settings config =
      settings::LoadSettings(settings::SettingsFilePath(ProgramFolder(), programName, userFolder), userFolder);
  settings::InstallDemo(ProgramFolder(), userFolder);
  reports::ReportFont() = config.font;

  QtMessageSink messages;
  SetMessageSink(&messages);
  frmMain main(config, userFolder, startTime);
  QtErrorReport errors(config.hideError380, [&main](bool save) { main.ShutDown(save); });
  SetErrorReport(&errors);
  QtProgressSink progress(main.statusBar());
  SetProgressSink(&progress);

  try {
    ProgressScope notice("Loading the life expectancy tables");
    tables::ReadTableVI();
    tables::ReadTableV();
    tables::ReadTables2022();
  } catch (const std::exception& e) {
    ReportUnexpected("Main()", e);
  }

  main.show();
  splash.finish(&main);
  views::CheckSavedReportFont([&main] { main.GetFonts(); });
  if (!inputFile.empty()) main.OpenScenario(QFileInfo(QString::fromStdString(inputFile)).absoluteFilePath().toStdString());
  const int code = QApplication::exec();
  SetProgressSink(nullptr);
  SetErrorReport(nullptr);
  SetMessageSink(nullptr);
  return code;
}

}  // namespace ira::desktop
