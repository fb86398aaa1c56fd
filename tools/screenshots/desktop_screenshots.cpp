// Renders the desktop's windows, filled with a sample scenario, to PNG files
// in the folder given on the command line.
#include <QApplication>
#include <QDir>
#include <QListWidget>
#include <QPixmap>
#include <QTimer>
#include <iostream>

#include "app/desktop/dlgAbout.h"
#include "app/desktop/frmError.h"
#include "app/desktop/frmManual.h"
#include "app/desktop/frmMain.h"
#include "core/base/checked.h"
#include "core/base/program.h"
#include "core/scenario/file.h"
#include "core/scenario/scenario.h"
#include "core/tables/life_exp.h"
#include "dialogs/dlgGenInputs.h"
#include "dialogs/dlgIraInputs.h"
#include "dialogs/dlgIraList.h"
#include "dialogs/dlgProjOptions.h"
#include "dialogs/dlgRptChoices.h"
#include "dialogs/frmIraHelp.h"

namespace {

using namespace ira;

bool Save(QWidget& w, const QDir& dir, const char* name) {
  w.show();
  for (int i = 0; i < 5; ++i) QApplication::processEvents();
  const bool ok = w.grab().save(dir.filePath(QString::fromLatin1(name)));
  if (!ok) std::cerr << "could not write " << name << "\n";
  w.hide();
  return ok;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  if (argc < 2) {
    std::cerr << "usage: desktop_screenshots FOLDER\n";
    return 2;
  }
  QDir dir(QString::fromLocal8Bit(argv[1]));
  if (!dir.mkpath(QStringLiteral("."))) return 1;
  SetTodayForTesting(MakeDate(2014, 6, 1));

  settings::Settings config;
  config.dataFolder = dir.absolutePath().toStdString();
  desktop::frmMain main(config, config.dataFolder, shell::SecondsSinceMidnight() - 754);
  // The pictures show the demonstration scenario installed beside the program.
  SetProgramFolder(QCoreApplication::applicationDirPath().toStdString());
  Scenario& sc = TheScenario();
  if (!file::OpenFile(ProgramFile("demo.ira"), sc)) return 1;
  main.Refresh();
  main.setWindowTitle(QString::fromStdString(shell::MainTitle("~/.local/share/Quillon/IRA/demo.ira")));
  bool ok = Save(main, dir, "main-window.png");

  dialogs::dlgGenInputs gen(sc.Gen, &main);
  ok &= Save(gen, dir, "general-inputs.png");
  dialogs::dlgIraList list(sc, &main);
  ok &= Save(list, dir, "ira-list.png");
  dialogs::dlgIraInputs ira(sc.Gen, sc.Ira.back(), &main);
  ok &= Save(ira, dir, "ira-inputs.png");
  dialogs::dlgProjOptions proj(sc.Gen, &main);
  ok &= Save(proj, dir, "projection-options.png");
  dialogs::dlgRptChoices choices(reports::ReportMode::View, &main);
  ok &= Save(choices, dir, "report-choices.png");
  dialogs::frmIraHelp help(QString::fromLatin1(life_exp::kBeneficiaryAgeHelpTitle),
                           QString::fromLatin1(life_exp::kBeneficiaryAgeHelp).replace(QStringLiteral("\r\n"), QStringLiteral("\n")),
                           &main);
  ok &= Save(help, dir, "beneficiary-age-help.png");
  desktop::dlgAbout about(shell::SecondsSinceMidnight() - 3725, &main);
  ok &= Save(about, dir, "about.png");
  desktop::frmError error(kErrOverflow, QStringLiteral("Overflow"), QStringLiteral("CalcIraDist()"), &main);
  ok &= Save(error, dir, "error-form.png");
  const QStringList chapters = desktop::ManualChapters(QString::fromStdString(ProgramFile(desktop::kManualFolder)));
  if (!chapters.isEmpty()) {
    desktop::frmManual manual(chapters, &main);
    manual.setAttribute(Qt::WA_DeleteOnClose, false);
    manual.resize(900, 620);
    manual.ShowChapter(2);
    manual.lstChapters->setCurrentRow(2);
    ok &= Save(manual, dir, "manual-window.png");
  }
  main.Quit = [](int) {};
  TheScenario().Reset();
  return ok ? 0 : 1;
}
