#include <gtest/gtest.h>

#include <memory>

#include "app/desktop/frmMain.h"
#include "core/base/program.h"
#include "core/scenario/scenario.h"
#include "support/recording_sinks.h"
#include "support/scenario_files.h"

using namespace ira;
using ira::desktop::frmMain;

namespace {

class ReportCommands : public ::testing::Test {
 protected:
  void SetUp() override {
    SetProgramFolder(program.Path());
    config.file = program.File("tallyra.ini");
    config.dataFolder = data.Path();
    window = std::make_unique<frmMain>(config, data.Path(), 0);
    window->Quit = [](int) {};
  }
  void TearDown() override {
    window.reset();
    TheScenario().Reset();
    SetProgramFolder(".");
  }

  ira::testing::RecordingScope rec;
  ira::testing::TempFolder program;
  ira::testing::TempFolder data;
  settings::Settings config;
  std::unique_ptr<frmMain> window;
};

TEST_F(ReportCommands, PrintCommandsPrintTheChosenReportsWhereTheyAsk) {
  const struct {
    const char* name;
    shell::Command command;
    int chosen;
    bool printed;
    views::PrintOutput output;
  } rows[] = {
      {"Print on the printer", shell::Command::Print, reports::kRptInputs, true, views::PrintOutput::Printer},
      {"Print Preview", shell::Command::Preview, reports::kRptAll, true, views::PrintOutput::Preview},
      {"Save as PDF", shell::Command::SavePdf, reports::kRptGenInfo, true, views::PrintOutput::Pdf},
      {"choices cancelled", shell::Command::Print, 0, false, views::PrintOutput::Printer},
  };
  for (const auto& row : rows) {
    reports::ReportMode askedMode = reports::ReportMode::View;
    window->ChooseReports = [&](reports::ReportMode mode) { return askedMode = mode, row.chosen; };
    int printedFlags = -1;
    views::PrintOutput printedOutput{};
    window->PrintReports = [&](int flags, views::PrintOutput output) {
      printedFlags = flags;
      printedOutput = output;
    };
    window->Run(row.command);
    EXPECT_EQ(askedMode, reports::ReportMode::Print) << row.name;
    EXPECT_EQ(printedFlags, row.printed ? row.chosen : -1) << row.name;
    if (row.printed) {
      EXPECT_EQ(printedOutput, row.output) << row.name;
    }
  }
}

TEST_F(ReportCommands, SaveAsPdfSuggestsTheScenariosNameAndWritesTheFile) {
  window->ChooseReports = [](reports::ReportMode) { return reports::kRptGenInfo; };
  QString suggested;
  window->ChoosePdfFile = [&](const QString& s) {
    suggested = s;
    return QString::fromStdString(data.File("plan.pdf"));
  };
  window->Run(shell::Command::SavePdf);
  EXPECT_EQ(suggested.toStdString(), data.File("Reports.pdf"));
  EXPECT_EQ(ira::testing::ReadFileBytes(data.File("plan.pdf")).rfind("%PDF", 0), 0u);
  EXPECT_TRUE(rec.messages.messages.empty());
}

}  // namespace
