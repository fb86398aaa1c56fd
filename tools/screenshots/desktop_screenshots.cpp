// Renders the desktop's windows, filled with a sample scenario, to PNG files
// in the folder given on the command line.
#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <QTimer>
#include <iostream>

#include "app/desktop/dlgAbout.h"
#include "app/desktop/frmError.h"
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

void Sample(Scenario& sc) {
  sc.Reset();
  GeneralInputs& g = sc.Gen;
  g.OwnerName = FixedText("Margaret A. Sample", kOwnerNameWidth);
  g.OtherInfo = FixedText("Prepared for the 2014 review", kOtherInfoWidth);
  g.SpouseBen = kTrue;
  g.OwnerBirthDate = MakeDate(1942, 3, 14);
  g.SpouseBirthDate = MakeDate(1944, 9, 2);
  g.DCY = 2014;
  g.DistType = kTrue;
  g.InflationRate = 3;
  g.AnnuityIntRate = 5;
  g.ProjectionYears = 10;
  g.PercentOver = 10;
  IraRecord& a = sc.AddIra();
  a.IraName = FixedText("Rollover IRA", kIraNameWidth);
  a.SpouseBen = kTrue;
  a.Benefit = Money::FromString("412,650.18");
  a.DistributedThisYear = Money::FromString("4,000.00");
  a.RateOfReturn = 5.5f;
  IraRecord& b = sc.AddIra();
  b.IraName = FixedText("Contributory IRA", kIraNameWidth);
  b.OtherBen = kTrue;
  b.BeneficiaryName = FixedText("Daniel Sample", kBeneficiaryNameWidth);
  b.BeneBirthDate = MakeDate(1971, 5, 20);
  b.Benefit = Money::FromString("86,210.55");
  b.RateOfReturn = 4;
  b.bRecalc = 1;
  IraRecord& c = sc.AddIra();
  c.IraName = FixedText("Brokerage IRA", kIraNameWidth);
  c.SpouseBen = kTrue;
  c.Benefit = Money::FromString("158,904.00");
  c.RateOfReturn = 6;
}

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
  // The demonstration scenario when it is installed beside the program.
  SetProgramFolder(QCoreApplication::applicationDirPath().toStdString());
  Scenario& sc = TheScenario();
  if (!file::OpenFile(ProgramFile("demo.ira"), sc)) Sample(sc);
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
  main.Quit = [](int) {};
  TheScenario().Reset();
  return ok ? 0 : 1;
}
