#include <gtest/gtest.h>

#include <QAction>
#include <QCoreApplication>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <deque>
#include <filesystem>
#include <algorithm>
#include <set>

#include "app/desktop/frmError.h"
#include "app/desktop/frmManual.h"
#include <QListWidget>
#include <QTextBrowser>
#include "app/desktop/frmMain.h"
#include "app/desktop/qt_sinks.h"
#include "core/base/program.h"
#include "core/scenario/file.h"
#include "views/frmReportForm.h"
#include <QPlainTextEdit>
#include "support/recording_sinks.h"
#include "support/scenario_files.h"

using namespace ira;
using ira::desktop::frmMain;
using ira::testing::RecordingScope;
using ira::testing::TempFolder;

namespace {

constexpr const char* kAskReplace = "Current Inputs have not been Saved!Do you want to save them first?";
constexpr const char* kAskExit = "Current Inputs have not been Saved!Do want to save your data?";

class MainWindow : public ::testing::Test {
 protected:
  void SetUp() override {
    SetProgramFolder(program.Path());
    config.file = program.File("tallyra.ini");
    config.dataFolder = data.Path();
    window = std::make_unique<frmMain>(config, data.Path(), 0);
    window->ChooseFile = [this](bool save, const QString& folder) {
      chooserCalls.push_back({save, folder.toStdString()});
      if (chosen.empty()) return QString();
      const std::string path = chosen.front();
      chosen.pop_front();
      return QString::fromStdString(path);
    };
    window->Quit = [this](int code) { quitCode = code; };
  }
  void TearDown() override {
    window.reset();
    SetProgramFolder(".");
  }
  void Edit() {
    TheScenario().AddIra().IraName = FixedText("Rollover", kIraNameWidth);
    window->SetModified();
    window->Refresh();
  }
  std::vector<std::string> Texts() const {
    std::vector<std::string> t;
    for (const auto& m : rec.messages.messages) t.push_back(m.text);
    return t;
  }

  RecordingScope rec;
  TempFolder program;
  TempFolder data;
  settings::Settings config;
  std::unique_ptr<frmMain> window;
  std::deque<std::string> chosen;
  std::vector<std::pair<bool, std::string>> chooserCalls;
  int quitCode = 0;
};

TEST_F(MainWindow, SavingANeverSavedScenarioAsksForAName) {
  EXPECT_EQ(window->windowTitle().toStdString(), "UNTITLED IRA - QSW - Tallyra");
  auto* projection = window->tlbMain->findChild<QAction*>("tlbProjection");
  ASSERT_NE(projection, nullptr);
  EXPECT_FALSE(projection->isEnabled());  // nothing to project yet
  Edit();
  EXPECT_TRUE(projection->isEnabled());
  EXPECT_EQ(window->windowTitle().toStdString(), "*UNTITLED IRA - QSW - Tallyra");  // unsaved changes

  chosen.push_back(data.File("plan"));
  window->tlbMain_ButtonClick("Save");
  ASSERT_EQ(chooserCalls.size(), 1u);
  EXPECT_TRUE(chooserCalls[0].first);
  EXPECT_EQ(chooserCalls[0].second, data.Path());
  EXPECT_TRUE(std::filesystem::exists(data.File("plan.ira")));  // the default extension
  EXPECT_EQ(window->windowTitle().toStdString(), "plan.ira - QSW - Tallyra");
  EXPECT_FALSE(window->Modified());
  EXPECT_EQ(settings::GetProfileString(config.file, "Data Files", "Data File Path", ""), data.Path());

  // Saved once, Save writes the same file without asking.
  Edit();
  window->tlbMain_ButtonClick("Save");
  EXPECT_EQ(chooserCalls.size(), 1u);
  EXPECT_FALSE(window->Modified());
  EXPECT_TRUE(rec.messages.messages.empty());
}

TEST_F(MainWindow, UnsavedDataIsOfferedBeforeItIsReplaced) {
  Edit();
  rec.messages.answers = {MsgAnswer::No};
  EXPECT_TRUE(window->FileNew());
  EXPECT_EQ(Texts(), std::vector<std::string>{kAskReplace});
  EXPECT_EQ(rec.messages.Last().title, "Unsaved Data Exists!");
  EXPECT_EQ(TheScenario().Gen.IraCount, 0);
  EXPECT_EQ(window->CurrentFile(), "UNTITLED.IRA");
  EXPECT_TRUE(chooserCalls.empty());

  // Yes saves first; backing out of the file dialog keeps everything.
  Edit();
  rec.messages.answers = {MsgAnswer::Yes};
  EXPECT_FALSE(window->FileNew());
  EXPECT_EQ(TheScenario().Gen.IraCount, 1);
  EXPECT_TRUE(window->Modified());

  // Open: the same question, then the chosen file replaces the scenario.
  Scenario other;
  other.AddIra();
  other.AddIra();
  file::SaveFile(data.File("other.ira"), other);
  rec.messages.answers = {MsgAnswer::Yes};
  chosen = {data.File("first.ira"), data.File("other.ira")};
  EXPECT_TRUE(window->FileOpen());
  EXPECT_TRUE(std::filesystem::exists(data.File("first.ira")));
  EXPECT_EQ(TheScenario().Gen.IraCount, 2);
  EXPECT_EQ(window->CurrentFile(), data.File("other.ira"));
  EXPECT_FALSE(window->Modified());
}

TEST_F(MainWindow, ClosingAsksThenKeepsTheSessionInDebugIra) {
  Edit();
  rec.messages.answers = {MsgAnswer::No};
  window->tlbMain_ButtonClick("Exit");
  EXPECT_EQ(Texts(), std::vector<std::string>{kAskExit});
  EXPECT_EQ(window->DebugFile(), program.File("DEBUG.IRA"));
  Scenario back;
  ASSERT_TRUE(file::OpenFile(program.File("DEBUG.IRA"), back));
  EXPECT_EQ(back.Gen.IraCount, 1);
}

TEST_F(MainWindow, SaveAsRefusesTheReservedName) {
  chosen.push_back(program.File("debug.ira"));
  EXPECT_FALSE(window->FileSaveAs());
  EXPECT_EQ(rec.messages.Last().title, "Reserved File Name");
  EXPECT_FALSE(std::filesystem::exists(program.File("debug.ira")));
  EXPECT_EQ(window->CurrentFile(), "UNTITLED.IRA");
}

TEST_F(MainWindow, UnknownToolbarKeyOnlyWarns) {
  Edit();
  window->tlbMain_ButtonClick("Frobnicate");
  ASSERT_EQ(rec.messages.messages.size(), 1u);
  EXPECT_EQ(rec.messages.Last().title, "WARNING");
  EXPECT_EQ(TheScenario().Gen.IraCount, 1);
  // Every button of the toolbar carries a key the window knows.
  for (QAction* a : window->tlbMain->actions()) {
    if (a->isSeparator()) continue;
    EXPECT_TRUE(shell::CommandForKey(a->data().toString().toStdString()).has_value()) << a->text().toStdString();
  }
}

TEST_F(MainWindow, ReportFontIsRecommendedCheckedAndKept) {
  window->ChooseFont = [](const QFont&) {
    QFont f;
    f.setFamily(QString());
    f.setPointSizeF(4);
    return std::optional<QFont>(f);
  };
  window->GetFonts();
  ASSERT_EQ(rec.messages.messages.size(), 1u);
  EXPECT_EQ(rec.messages.Last().title, "WARNING!");  // the recommendation, worded in the print manager
  EXPECT_EQ(window->Settings().font.name, "Courier New");
  EXPECT_EQ(reports::ReportFont().size, 10.0f);
  EXPECT_EQ(settings::GetProfileString(config.file, "User Preferences", "Font Size", ""), "10");
}

TEST_F(MainWindow, UnexpectedErrorOffersToSaveThenEnds) {
  int asked = 0;
  desktop::QtErrorReport hiding(1, [&](bool save) { window->ShutDown(save); });
  hiding.AskToSave = [&](int, std::string_view, std::string_view) { return ++asked, true; };
  hiding.Report(kErrInvalidProperty, "Invalid property value", "frmMain");
  EXPECT_EQ(asked, 0);  // 380 hidden by the settings
  EXPECT_EQ(quitCode, 0);

  Edit();
  chosen.push_back(data.File("rescued.ira"));
  hiding.Report(kErrOverflow, "Overflow", "CalcIraDist()");
  EXPECT_EQ(asked, 1);
  EXPECT_TRUE(std::filesystem::exists(data.File("rescued.ira")));
  EXPECT_TRUE(std::filesystem::exists(program.File("DEBUG.IRA")));
  EXPECT_EQ(quitCode, 1);
  EXPECT_TRUE(Texts().empty());  // no second question on the way out

  EXPECT_EQ(desktop::ErrorFormText(6, "Overflow", "CalcIraDist()").toStdString(),
            "An error has occurred in the QSW - Tallyra program, CalcIraDist().\n\n"
            "Error Number:   6\nError Type:        Overflow\nLocation:           CalcIraDist()");
}

TEST_F(MainWindow, PrintCommandsPrintTheChosenReportsWhereTheyAsk) {
  const struct {
    const char* name;
    shell::Command command;
    int chosen;
    bool printed;
    views::PrintOutput output;
  } rows[] = {
      {"Print on the printer", shell::Command::Print, reports::kRptInputs, true, views::PrintOutput::Printer},
      {"Print Preview", shell::Command::Preview, reports::kRptAll, true, views::PrintOutput::Preview},
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

TEST_F(MainWindow, SaveAsPdfSuggestsTheScenariosNameAndWritesTheFile) {
  window->ChooseReports = [](reports::ReportMode mode) {
    EXPECT_EQ(mode, reports::ReportMode::Print);
    return reports::kRptGenInfo;
  };
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

TEST_F(MainWindow, ShowsTheRuleSetAndNewTakesTheLawInForce) {
  const auto shown = [this] { return window->findChild<QLabel*>("lblStatusRules")->text().toStdString(); };
  EXPECT_EQ(TheScenario().Gen.RuleSet, kRulesCurrent);  // start-up is a new scenario
  EXPECT_EQ(shown(), "Rules: the law in force in each year");

  window->RunDialog = [](shell::Command) {
    TheScenario().Gen.RuleSet = kRulesDescribed;
    return true;
  };
  window->Run(shell::Command::General);
  EXPECT_EQ(shown(), "Rules: the regulations as described (1987-2002)");

  rec.messages.answers = {MsgAnswer::No};
  window->FileNew();
  EXPECT_EQ(TheScenario().Gen.RuleSet, kRulesCurrent);
  // Not the early type: the first year typed would be refused before the type could be chosen.
  EXPECT_FALSE(IsEarly(TheScenario().Gen));
  EXPECT_EQ(shown(), "Rules: the law in force in each year");
}

// Cancel (which Escape gives) backs out of New, Open and Exit with the edits
// kept; the questions keep their wording.
TEST_F(MainWindow, CancellingTheUnsavedQuestionKeepsTheEdits) {
  Edit();
  rec.messages.answers = {MsgAnswer::Cancel, MsgAnswer::Cancel, MsgAnswer::Cancel};
  EXPECT_FALSE(window->FileNew());
  EXPECT_FALSE(window->FileOpen());
  EXPECT_FALSE(window->close());
  EXPECT_EQ(Texts(), (std::vector<std::string>{kAskReplace, kAskReplace, kAskExit}));
  for (const auto& m : rec.messages.messages) EXPECT_EQ(m.buttons, MsgButtons::YesNoCancel);
  EXPECT_TRUE(chooserCalls.empty());
  EXPECT_EQ(TheScenario().Gen.IraCount, 1);
  EXPECT_TRUE(window->Modified());
}

// Alt+R, D must reach Display: every menu's entries have distinct letters.
TEST_F(MainWindow, MenuEntriesHaveDistinctMnemonicsAndSaveAsItsShortcut) {
  for (QAction* top : window->menuBar()->actions()) {
    std::set<QChar> letters;
    for (QAction* a : top->menu()->actions()) {
      if (a->isSeparator()) continue;
      const qsizetype amp = a->text().indexOf(QLatin1Char('&'));
      ASSERT_GE(amp, 0) << a->text().toStdString();
      EXPECT_TRUE(letters.insert(a->text()[amp + 1].toLower()).second) << a->text().toStdString();
    }
  }
  EXPECT_EQ(window->mnuSaveAs->shortcut(), QKeySequence(QStringLiteral("Ctrl+Shift+S")));
}

// Display asks for the reports to view; an open report follows the scenario;
// Display again reuses its window.
TEST_F(MainWindow, DisplayedReportWindowsFollowTheScenario) {
  window->ChooseReports = [](reports::ReportMode mode) {
    EXPECT_EQ(mode, reports::ReportMode::View);
    return int{reports::kRptInputs};
  };
  const auto reportWindows = [this] {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    std::vector<views::frmReportForm*> forms;
    for (auto* f : window->findChildren<views::frmReportForm*>())
      if (f->isVisible()) forms.push_back(f);
    return forms;
  };
  window->Run(shell::Command::Display);
  ASSERT_EQ(reportWindows().size(), 1u);
  EXPECT_FALSE(reportWindows()[0]->txtReport->toPlainText().contains(QStringLiteral("Pat Doe")));

  window->RunDialog = [](shell::Command) {
    TheScenario().Gen.OwnerName = FixedText("Pat Doe", kOwnerNameWidth);
    return true;
  };
  window->Run(shell::Command::General);
  ASSERT_EQ(reportWindows().size(), 1u);
  EXPECT_TRUE(reportWindows()[0]->txtReport->toPlainText().contains(QStringLiteral("Pat Doe")));

  window->Run(shell::Command::Display);
  EXPECT_EQ(reportWindows().size(), 1u);
}

// The last eight files, latest first, kept in the settings file; a file gone
// since is said so and dropped. Dropping a .ira opens it after the question.
TEST_F(MainWindow, RecentFilesAndDroppedFilesOpenAfterTheQuestion) {
  std::vector<std::string> files;
  for (int i = 1; i <= 9; ++i) {
    files.push_back(data.File("s" + std::to_string(i) + ".ira"));
    file::SaveFile(files.back(), Scenario{});
    ASSERT_TRUE(window->OpenScenario(files.back()));
  }
  ASSERT_EQ(window->RecentFiles().size(), 8u);
  EXPECT_EQ(window->RecentFiles().front(), files[8]);
  EXPECT_EQ(window->RecentFiles().back(), files[1]);
  EXPECT_EQ(window->mnuRecent->actions().front()->text(), QStringLiteral("&1 s9.ira"));
  EXPECT_EQ(settings::LoadRecentFiles(config.file), window->RecentFiles());

  ASSERT_TRUE(window->OpenScenario(files[4]));  // again: moves to the top, once
  EXPECT_EQ(window->RecentFiles().front(), files[4]);
  EXPECT_EQ(std::count(window->RecentFiles().begin(), window->RecentFiles().end(), files[4]), 1);

  Edit();
  rec.messages.answers = {MsgAnswer::Cancel};
  EXPECT_FALSE(window->OpenAfterAsking(files[2]));
  EXPECT_EQ(Texts(), std::vector<std::string>{kAskReplace});
  EXPECT_TRUE(window->Modified());

  std::filesystem::remove(files[3]);
  EXPECT_FALSE(window->OpenAfterAsking(files[3]));
  EXPECT_EQ(rec.messages.Last().title, "File not found");
  EXPECT_EQ(std::count(window->RecentFiles().begin(), window->RecentFiles().end(), files[3]), 0);

  // A drop of a scenario file goes the same way.
  rec.messages.answers = {MsgAnswer::No};
  window->OpenDropped(files[2]);
  EXPECT_EQ(window->CurrentFile(), files[2]);
}

TEST_F(MainWindow, WindowPlaceIsKeptBetweenRuns) {
  window->setGeometry(120, 90, 700, 500);
  window->close();
  frmMain again(config, data.Path(), 0);
  EXPECT_EQ(again.size(), QSize(700, 500));
}

// A missing manual is reported; without a PDF viewer the chapters are shown
// in a window of the program.
TEST_F(MainWindow, ManualIsReportedMissingOrReadInTheProgram) {
  bool opened = false;
  window->OpenDocument = [&](const QString&) { return opened = true; };
  window->tlbMain_ButtonClick("Help");
  EXPECT_EQ(rec.messages.Last().title, "File not found");
  EXPECT_EQ(rec.messages.Last().text, "File: " + program.File("manvesk.pdf") +
                                          " does not exist.Please verify the file is in the correct directory.");
  rec.messages.messages.clear();

  ira::testing::WriteFileBytes(program.File("manvesk.pdf"), "%PDF-1.4");
  std::filesystem::create_directories(program.File("manual"));
  ira::testing::WriteFileBytes(program.File("manual/01-start.md"), "# Getting started\n\nText.\n");
  ira::testing::WriteFileBytes(program.File("manual/02-reports.md"), "# Reports\n\nMore.\n");
  window->PdfViewerAvailable = [] { return false; };
  window->tlbMain_ButtonClick("Help");
  EXPECT_FALSE(opened);
  auto* manual = window->findChild<desktop::frmManual*>();
  ASSERT_NE(manual, nullptr);
  ASSERT_EQ(manual->lstChapters->count(), 2);
  EXPECT_EQ(manual->lstChapters->item(1)->text(), QStringLiteral("Reports"));
  EXPECT_TRUE(manual->txtChapter->toPlainText().contains(QStringLiteral("Getting started")));
  EXPECT_TRUE(rec.messages.messages.empty());
}
