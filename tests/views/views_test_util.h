// Shared setup of the report window and printing tests: the installed tables
// and the demonstration scenario (three IRAs, a ten-year projection), the
// report font reset, and every message recorded.
#pragma once

#include <gtest/gtest.h>

#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

#include "core/base/program.h"
#include "core/reports/prnmastr.h"
#include "core/scenario/file.h"
#include "core/scenario/scenario.h"
#include "support/installed_tables.h"
#include "support/recording_sinks.h"

namespace ira::views::test {

class DemoScenarioTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { ira::testing::LoadInstalledTables(); }
  void SetUp() override {
    reports::ReportFont() = {};
    ASSERT_TRUE(file::OpenFile(ProgramFile("demo.ira"), TheScenario()));
  }
  void TearDown() override {
    TheScenario().Reset();
    reports::ReportFont() = {};
  }

  ira::testing::RecordingScope rec;
};

// The pages of a PDF file as text in their printed layout, read back with
// pdftotext; tests skip when it is not installed.
inline QString PdfToText() { return QStandardPaths::findExecutable(QStringLiteral("pdftotext")); }
inline QStringList PdfPages(const QString& path) {
  QProcess p;
  p.start(PdfToText(), {QStringLiteral("-layout"), path, QStringLiteral("-")});
  EXPECT_TRUE(p.waitForFinished(60000));
  QStringList pages = QString::fromUtf8(p.readAllStandardOutput()).split(QLatin1Char('\f'));
  if (!pages.isEmpty() && pages.back().trimmed().isEmpty()) pages.removeLast();
  return pages;
}

}  // namespace ira::views::test
