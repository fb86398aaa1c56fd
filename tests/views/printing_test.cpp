#include <QPrinter>
#include <QProcess>
#include <QStandardPaths>
#include <vector>
#include <filesystem>

#include <sys/stat.h>

#include "core/reports/display_master.h"
#include "core/reports/text_print_device.h"
#include "support/scenario_files.h"
#include "views/qt_print_device.h"
#include "views/report_printing.h"
#include "views_test_util.h"

using namespace ira;
using namespace ira::views;
using ira::testing::TempFolder;

namespace {

// A page's lines with their runs of blanks closed up, empty lines left out:
// how the text comes back out of a PDF, whatever the column spacing.
QStringList Words(const QString& page) {
  QStringList lines;
  for (const QString& line : page.split(QLatin1Char('\n'))) {
    const QString s = line.simplified();
    if (!s.isEmpty()) lines << s;
  }
  return lines;
}

class Printing : public test::DemoScenarioTest {
 protected:
  // The lines a page of `linesPerPage` lines gets, page by page.
  static QStringList TextPages(int flags, int linesPerPage) {
    reports::TextPrintDevice device(linesPerPage);
    reports::PrintSelectedReports(flags, device);
    return QString::fromStdString(device.Text()).split(QLatin1Char('\f'));
  }
  static int LinesPerPageFor(int flags) {
    QPrinter printer(QPrinter::HighResolution);
    PreparePrinter(printer, flags);
    printer.setOutputFormat(QPrinter::PdfFormat);
    return QtPrintDevice(printer).LinesPerPage();
  }

  TempFolder folder;
};

TEST_F(Printing, PdfPagesHoldThePageManagersLinesAndNumbers) {
  if (test::PdfToText().isEmpty()) GTEST_SKIP() << "pdftotext is not installed";
  const struct {
    const char* name;
    int flags;
    float fontSize;
  } rows[] = {
      {"text reports upright", reports::kRptInputs | reports::kRptGenInfo | reports::kRptDistCalc, 10.0f},
      {"the grids sideways", reports::kRptCalSumm | reports::kRptProjection, 10.0f},
      {"a large font: fewer lines, more pages", reports::kRptGenInfo | reports::kRptDistCalc, 16.0f},
  };
  int previousLines = 0;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    reports::ReportFont().size = row.fontSize;
    const int lines = LinesPerPageFor(row.flags);
    if (previousLines != 0) {
      EXPECT_LT(lines, previousLines);
    }
    previousLines = lines;
    const QString path = QString::fromStdString(folder.File(std::string(row.name) + ".pdf"));
    ASSERT_TRUE(SaveReportsAsPdf(row.flags, path));

    const QStringList pdf = test::PdfPages(path);
    const QStringList expected = TextPages(row.flags, lines);
    // The projection is followed by its chart on a page of its own.
    const bool chart = (row.flags & reports::kRptProjection) != 0;
    ASSERT_EQ(pdf.size(), expected.size() + (chart ? 1 : 0));
    for (qsizetype i = 0; i < pdf.size(); ++i) {
      const QStringList got = Words(pdf[i]);
      if (i < expected.size()) {
        EXPECT_EQ(got, Words(expected[i])) << "page " << i + 1;
      } else {
        EXPECT_TRUE(got.contains(QStringLiteral("Projection of distributions: chart")));
      }
      ASSERT_FALSE(got.isEmpty());
      EXPECT_EQ(got.back(), QStringLiteral("Page %1").arg(i + 1));
    }
  }
  EXPECT_TRUE(rec.messages.messages.empty());
}

// The sizes of a PDF's pages in points, width by height, from pdfinfo.
std::vector<QSize> PdfPageSizes(const QString& path) {
  QProcess p;
  p.start(QStandardPaths::findExecutable(QStringLiteral("pdfinfo")),
          {QStringLiteral("-f"), QStringLiteral("1"), QStringLiteral("-l"), QStringLiteral("999"), path});
  EXPECT_TRUE(p.waitForFinished(60000));
  std::vector<QSize> sizes;
  for (const QString& line : QString::fromUtf8(p.readAllStandardOutput()).split(QLatin1Char('\n'))) {
    const QStringList w = line.simplified().split(QLatin1Char(' '));
    // "Page    1 size: 612 x 792 pts (letter)"
    if (w.size() >= 7 && w[0] == QStringLiteral("Page") && w[2] == QStringLiteral("size:"))
      sizes.emplace_back(qRound(w[3].toDouble()), qRound(w[5].toDouble()));
  }
  return sizes;
}

// Text reports print upright, so accounts share pages; the grids sideways.
TEST_F(Printing, TextReportsPrintUprightAndGridsSideways) {
  if (test::PdfToText().isEmpty() || QStandardPaths::findExecutable(QStringLiteral("pdfinfo")).isEmpty())
    GTEST_SKIP() << "poppler's tools are not installed";
  const int text = reports::kRptInputs | reports::kRptGenInfo | reports::kRptDistCalc;
  const int grids = reports::kRptCalSumm | reports::kRptProjection;
  const QString path = QString::fromStdString(folder.File("all.pdf"));
  ASSERT_TRUE(SaveReportsAsPdf(reports::kRptAll, path));
  const std::vector<QSize> sizes = PdfPageSizes(path);
  // Each part takes the pages it takes alone at its own lines per page.
  const std::size_t upright = static_cast<std::size_t>(TextPages(text, LinesPerPageFor(text)).size());
  const std::size_t sideways = static_cast<std::size_t>(TextPages(grids, LinesPerPageFor(grids)).size());
  ASSERT_EQ(sizes.size(), upright + sideways + 1);  // and the projection's chart
  for (std::size_t i = 0; i < sizes.size(); ++i) {
    // US Letter is 612 x 792 points.
    EXPECT_EQ(sizes[i], i < upright ? QSize(612, 792) : QSize(792, 612)) << "page " << i + 1;
  }
  EXPECT_TRUE(rec.messages.messages.empty());
}

TEST_F(Printing, PrinterThatCannotStartStopsEachReportWithPrinterError) {
  QPrinter printer(QPrinter::HighResolution);
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(QString::fromStdString(folder.File("missing/reports.pdf")));
  EXPECT_EQ(PaintReports(printer, reports::kRptInputs | reports::kRptGenInfo), 0);
  ASSERT_EQ(rec.messages.messages.size(), 2u);
  for (const Message& m : rec.messages.messages) {
    EXPECT_EQ(m.title, "PRINTER ERROR");
    EXPECT_EQ(m.text.rfind("A Printer Error: the file ", 0), 0u) << m.text;
    EXPECT_NE(m.text.find("missing/reports.pdf"), std::string::npos);
    EXPECT_TRUE(m.text.ends_with(" has occured."));
  }
  // The next job starts from a fresh page count.
  EXPECT_EQ(reports::PageLineCounter(), 0);
}

TEST_F(Printing, PdfFileIsReplacedOnlyByACompleteDocument) {
  const std::string path = folder.File("reports.pdf");
  ira::testing::WriteFileBytes(path, "earlier");
  TheScenario().Gen.ProjectionYears = 0;  // the Projection report alone prints nothing
  EXPECT_FALSE(SaveReportsAsPdf(reports::kRptProjection, QString::fromStdString(path)));
  EXPECT_EQ(rec.messages.Last().title, "Please Note!");
  EXPECT_EQ(ira::testing::ReadFileBytes(path), "earlier");

  EXPECT_TRUE(SaveReportsAsPdf(reports::kRptGenInfo, QString::fromStdString(path)));
  EXPECT_EQ(ira::testing::ReadFileBytes(path).rfind("%PDF", 0), 0u);
  // Readable as the user's other files are, not private like the temporary file.
  const mode_t mask = ::umask(022);
  EXPECT_TRUE(SaveReportsAsPdf(reports::kRptGenInfo, QString::fromStdString(path)));
  ::umask(mask);
  EXPECT_EQ(std::filesystem::status(path).permissions() & std::filesystem::perms::all,
            std::filesystem::perms(0644));  // 0666 less the mask 022
  // No temporary file is left beside it.
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);

  EXPECT_FALSE(SaveReportsAsPdf(reports::kRptGenInfo, QString::fromStdString(folder.File("missing/reports.pdf"))));
  EXPECT_EQ(rec.messages.Last().title, "WARNING");
  EXPECT_NE(rec.messages.Last().text.find("missing/reports.pdf"), std::string::npos);
}

}  // namespace
