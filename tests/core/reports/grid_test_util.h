// Shared setup of the grid report tests: the installed tables loaded once, a
// fresh scenario around every test, and the labels beside a grid as lines.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/base/program.h"
#include "core/reports/prnmastr.h"
#include "core/reports/report_sink.h"
#include "core/scenario/scenario.h"
#include "core/tables/tables.h"
#include "support/fake_print_device.h"
#include "support/recording_sinks.h"

namespace ira::reports::test {

class GridReportTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    SetProgramFolder(TALLYRA_PROGRAM_DIR);
    tables::ReadTableVI();
    tables::ReadTableV();
  }
  void SetUp() override { TheScenario().Reset(); }
  void TearDown() override { TheScenario().Reset(); }

  static IraRecord& AddIra(const std::string& name, const char* benefit) {
    IraRecord& ira = TheScenario().AddIra();
    ira.IraName = FixedText(name, kIraNameWidth);
    ira.Benefit = Money::FromString(benefit);
    return ira;
  }

  ira::testing::RecordingScope rec;
};

// The report printed as one document, from a reset page line counter.
template <typename Routine>
void PrintDocument(Routine routine, ira::testing::FakePrintDevice& device) {
  PrnManager2(device, kPrnReset, "", "", "");
  PrintSink sink(device);
  routine(sink);
  PrnManager2(device, kPrnEndDocument, "", "", "");
}

// "name: text", with " (hidden)" after a label the window does not show.
inline std::vector<std::string> LabelLines(const GridReport& grid) {
  std::vector<std::string> lines;
  for (const GridLabel& label : grid.labels)
    lines.push_back(label.name + ": " + label.text + (label.visible ? "" : " (hidden)"));
  return lines;
}

}  // namespace ira::reports::test
