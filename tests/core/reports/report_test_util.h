// Shared setup of the report tests: the installed tables loaded once, a fresh
// scenario around every test, and the text, page or labels a report gives.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/base/calendar.h"
#include "core/reports/prnmastr.h"
#include "core/reports/report_sink.h"
#include "core/scenario/scenario.h"
#include "support/fake_print_device.h"
#include "support/installed_tables.h"
#include "support/recording_sinks.h"

namespace ira::reports::test {

class ReportTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { ira::testing::LoadInstalledTables(); }
  void SetUp() override { TheScenario().Reset(); }
  void TearDown() override { TheScenario().Reset(); }

  static IraRecord& AddIra(const std::string& name, const char* benefit) {
    IraRecord& ira = TheScenario().AddIra();
    ira.IraName = FixedText(name, kIraNameWidth);
    ira.Benefit = Money::FromString(benefit);
    return ira;
  }

  GeneralInputs& gen = TheScenario().Gen;
  ira::testing::RecordingScope rec;
};

template <typename Routine>
std::string RunText(Routine routine, ReportMode mode, std::string* caption = nullptr) {
  TextSink sink(mode);
  routine(sink);
  if (caption != nullptr) *caption = sink.Caption();
  return sink.Text();
}

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

inline Date D(int month, int day, int year) { return MakeDate(year, month, day); }

inline void SetNames(GeneralInputs& gen, const char* owner, const char* other) {
  gen.OwnerName = FixedText(owner, kOwnerNameWidth);
  gen.OtherInfo = FixedText(other, kOtherInfoWidth);
}

}  // namespace ira::reports::test
