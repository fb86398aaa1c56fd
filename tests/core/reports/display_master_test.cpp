#include "core/reports/display_master.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "core/reports/prnmastr.h"
#include "core/scenario/scenario.h"
#include "support/fake_print_device.h"
#include "support/recording_sinks.h"
#include "support/scenario_files.h"

namespace ira::reports {
namespace {

using ira::testing::FakePrintDevice;
using ira::testing::RecordingScope;

class RecordingViewer : public ReportViewer {
 public:
  std::vector<std::string> shown;  // "caption|text" or "grid:caption"
  int helpShown = 0;
  void ShowText(const std::string& caption, const std::string& text) override { shown.push_back(caption + "|" + text); }
  void ShowGrid(const GridReport& grid) override { shown.push_back("grid:" + grid.caption); }
  void ShowProjectionHelp() override { ++helpShown; }
};

// Each report writes one block of two lines naming itself; the grid report
// hands a grid over in view mode.
ReportTable TestTable() {
  ReportTable table = Reports();
  for (ReportEntry& entry : table) {
    const std::string name = entry.listName;
    entry.routine = [name](ReportSink& sink) {
      if (sink.Mode() == ReportMode::View) sink.SetCaption(name);
      if (name == "Calendar Year Summary" && sink.Mode() == ReportMode::View) {
        GridReport grid;
        grid.caption = name;
        sink.ShowGrid(grid);
        return;
      }
      BlockWriter out(sink, {"Owner", "Other", name});
      out.Add("  " + name);
      out.Add("  end");
      out.Emit(2);
    };
  }
  return table;
}

class DisplayMasterTest : public ::testing::Test {
 protected:
  void SetUp() override {
    TheScenario().Reset();
    PrnManager2(device, kPrnReset, "", "", "");
  }
  void TearDown() override {
    TheScenario().Reset();
    PrnManager2(device, kPrnReset, "", "", "");
  }
  void Print(int flags) { DisplayMaster(ReportMode::Print, flags, ReportTarget{nullptr, &device, {}}, table); }

  RecordingScope rec;
  FakePrintDevice device{30};
  ReportTable table = TestTable();
};

TEST_F(DisplayMasterTest, PrintingEachReportEndsWithItsPageNumber) {
  Print(kRptInputs | kRptDistCalc);
  ASSERT_EQ(device.pages.size(), 2u);
  EXPECT_EQ(device.pages[0][4], "Inputs");
  EXPECT_EQ(device.pages[0][6], "  Inputs");
  EXPECT_EQ(device.pages[0].back(), "Page 1");
  EXPECT_EQ(device.pages[0].size(), 24u);  // the heading counts one line more than it prints
  EXPECT_EQ(device.pages[1][4], "Distribution Calculation");
  EXPECT_EQ(device.pages[1].back(), "Page 2");
  EXPECT_TRUE(device.ended);
  EXPECT_EQ(rec.progress.notices,
            (std::vector<std::string>{"Sending Inputs Report to printer/Print Manager",
                                      "Sending Distribution Calculations Report to printer/Print Manager"}));
  EXPECT_EQ(rec.progress.busyDepth, 0);
}

TEST_F(DisplayMasterTest, APrinterErrorStopsOnlyThatReport) {
  device.failAtLine = 8;  // the first report's second line
  Print(kRptInputs | kRptGenInfo);
  ASSERT_EQ(rec.messages.messages.size(), 1u);
  EXPECT_EQ(rec.messages.Last().title, "PRINTER ERROR");
  EXPECT_EQ(rec.messages.Last().text, "A Printer Error: Printer not ready has occured.");
  ASSERT_EQ(device.pages.size(), 2u);
  EXPECT_EQ(device.pages[0].back(), "Page 1");
  EXPECT_EQ(device.pages[1][4], "General Information");
  EXPECT_EQ(device.pages[1][7], "  end");
  EXPECT_EQ(device.pages[1].back(), "Page 2");
}

TEST_F(DisplayMasterTest, ProjectionNeedsProjectionMode) {
  // Printing all reports leaves the projection out.
  Print(kRptAll);
  EXPECT_EQ(device.pages.size(), 4u);
  EXPECT_TRUE(rec.messages.messages.empty());

  // Viewing it explains why, and offers the help on OK only.
  RecordingViewer viewer;
  rec.messages.answers = {MsgAnswer::Ok, MsgAnswer::Cancel};
  for (int i = 0; i < 2; ++i) DisplayMaster(ReportMode::View, kRptProjection, ReportTarget{&viewer, nullptr, {}}, table);
  ASSERT_EQ(rec.messages.messages.size(), 2u);
  EXPECT_EQ(rec.messages.Last().title, "Can't Show Report");
  EXPECT_EQ(rec.messages.Last().text,
            "Projection Report can't be displayed. If you would like more information select OK.");
  EXPECT_EQ(rec.messages.Last().buttons, MsgButtons::OkCancel);
  EXPECT_EQ(viewer.helpShown, 1);
  EXPECT_TRUE(viewer.shown.empty());

  TheScenario().Gen.ProjectionYears = 3;
  DisplayMaster(ReportMode::View, kRptProjection, ReportTarget{&viewer, nullptr, {}}, table);
  EXPECT_EQ(viewer.shown, std::vector<std::string>{"Projection of Distributions|  Projection of Distributions\r\n  end\r\n"});
}

TEST_F(DisplayMasterTest, ViewModeOpensOneWindowPerReportInListOrder) {
  RecordingViewer viewer;
  DisplayMaster(ReportMode::View, kRptCalSumm | kRptInputs, ReportTarget{&viewer, nullptr, {}}, table);
  EXPECT_EQ(viewer.shown, (std::vector<std::string>{"Inputs|  Inputs\r\n  end\r\n", "grid:Calendar Year Summary"}));
}

TEST_F(DisplayMasterTest, FileModeEmptiesTheFileThenAppendsEachReport) {
  const ira::testing::TempFolder folder;
  const std::string path = folder.File("out.txt");
  ira::testing::WriteFileBytes(path, "old content");
  DisplayMaster(ReportMode::File, kRptGenInfo | kRptInputs, ReportTarget{nullptr, nullptr, path}, table);
  EXPECT_EQ(ira::testing::ReadFileBytes(path), "  Inputs\r\n  end\r\n  General Information\r\n  end\r\n");

  const std::string missing = folder.File("no-such-folder/out.txt");
  try {
    DisplayMaster(ReportMode::File, kRptInputs, ReportTarget{nullptr, nullptr, missing}, table);
    FAIL() << "no error for an unwritable file";
  } catch (const FileError& e) {
    EXPECT_NE(std::string(e.what()).find(missing), std::string::npos) << e.what();
  }
}

TEST_F(DisplayMasterTest, AFailingReportIsReportedAndTheNextOneRuns) {
  table[0].routine = [](ReportSink&) { throw std::runtime_error("boom"); };
  RecordingViewer viewer;
  DisplayMaster(ReportMode::View, kRptInputs | kRptGenInfo, ReportTarget{&viewer, nullptr, {}}, table);
  ASSERT_EQ(rec.errors.errors.size(), 1u);
  EXPECT_EQ(rec.errors.errors[0].where, "DisplayInputs()");
  EXPECT_EQ(rec.errors.errors[0].text, "boom");
  ASSERT_EQ(viewer.shown.size(), 1u);
  EXPECT_EQ(viewer.shown[0].substr(0, 20), "General Information|");
}

}  // namespace
}  // namespace ira::reports
