#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QFontInfo>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QStringList>
#include <QTableWidget>
#include <memory>

#include "core/base/text.h"
#include "core/reports/display_master.h"
#include "views/frmCalSumm.h"
#include "views/frmProjRpt.h"
#include "views/frmReportForm.h"
#include "views/grid_export.h"
#include "views/projection_chart.h"
#include <QTabWidget>
#include <cmath>
#include "support/scenario_files.h"
#include "views/qt_report_viewer.h"
#include "views/report_font.h"
#include "views_test_util.h"

using namespace ira;
using namespace ira::views;
using ira::testing::TempFolder;

namespace {

// The windows are compared with what the report routines give in view mode;
// the texts themselves are the reports' business.
class ReportWindows : public test::DemoScenarioTest {
 protected:
  // The windows the dispatcher opened, in the order they were opened.
  std::vector<QWidget*> Show(int flags) {
    reports::DisplayMaster(reports::ReportMode::View, flags, reports::ReportTarget{&viewer, nullptr, {}});
    std::vector<QWidget*> windows;
    for (QWidget* w : owner->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
      if (w->isWindow()) windows.push_back(w);
    return windows;
  }
  static reports::TextSink Viewed(int flag) {
    reports::TextSink sink(reports::ReportMode::View);
    for (const reports::ReportEntry& entry : reports::Reports())
      if (entry.flag == flag) entry.routine(sink);
    return sink;
  }
  static QString Stacked(const std::string& cell) {
    return QString::fromStdString(cell).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  }

  std::unique_ptr<QWidget> owner = std::make_unique<QWidget>();
  QtReportViewer viewer{owner.get()};
};

TEST_F(ReportWindows, EveryChosenReportOpensItsOwnWindowWithTheReportsCaption) {
  const std::vector<QWidget*> windows = Show(reports::kRptAll);
  ASSERT_EQ(windows.size(), reports::Reports().size());
  for (std::size_t i = 0; i < windows.size(); ++i) {
    const reports::TextSink sink = Viewed(reports::Reports()[i].flag);
    // Text reports in the text window, grids in a grid window.
    EXPECT_EQ(qobject_cast<GridReportWindow*>(windows[i]) != nullptr, sink.HasGrid()) << i;
    EXPECT_EQ(windows[i]->windowTitle().toStdString(), sink.HasGrid() ? sink.Grid().caption : sink.Caption()) << i;
    EXPECT_TRUE(windows[i]->isVisible()) << i;
  }
  EXPECT_TRUE(rec.messages.messages.empty());
}

TEST_F(ReportWindows, TextWindowShowsTheWholeReportInTheReportFont) {
  reports::ReportFont() = {"Courier New", 12.0f};
  const std::vector<QWidget*> windows = Show(reports::kRptGenInfo | reports::kRptDistCalc);
  ASSERT_EQ(windows.size(), 2u);
  const int flags[] = {reports::kRptGenInfo, reports::kRptDistCalc};
  for (std::size_t i = 0; i < 2; ++i) {
    auto* form = qobject_cast<frmReportForm*>(windows[i]);
    ASSERT_NE(form, nullptr);
    // Line for line what the report wrote.
    QStringList expected = QString::fromStdString(Viewed(flags[i]).Text()).split(QStringLiteral("\r\n"));
    if (expected.back().isEmpty()) expected.removeLast();
    EXPECT_EQ(form->txtReport->toPlainText().split(QLatin1Char('\n')), expected);
    EXPECT_TRUE(SameFontMetrics("Courier New", QFontInfo(form->txtReport->font()).family().toStdString()));
    EXPECT_EQ(form->txtReport->font().pointSizeF(), 12.0);
  }
}

// The demonstration scenario hides a label in each grid (no account beyond
// the tables, no excess distribution) and shows the others.
TEST_F(ReportWindows, GridWindowLaysOutTheReportsGrid) {
  for (const int flag : {reports::kRptCalSumm, reports::kRptProjection}) {
    SCOPED_TRACE(flag);
    const reports::GridReport grid = Viewed(flag).Grid();
    const std::vector<QWidget*> windows = Show(flag);
    ASSERT_EQ(windows.size(), 1u);
    auto* w = qobject_cast<GridReportWindow*>(windows[0]);
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(w->txtHeading->text(), Stacked(grid.heading));

    // Fixed rows stack into the column headers; a fixed label column becomes
    // the row headers, which only then are shown.
    QTableWidget* t = w->vsGrdDisplay;
    const auto fixedCols = static_cast<std::size_t>(grid.fixedCols);
    const auto fixedRows = static_cast<std::size_t>(grid.fixedRows);
    ASSERT_EQ(static_cast<std::size_t>(t->columnCount()), grid.columnWidths.size() - fixedCols);
    ASSERT_EQ(static_cast<std::size_t>(t->rowCount()), grid.cells.size() - fixedRows);
    EXPECT_EQ(t->verticalHeader()->isHidden(), fixedCols == 0);
    for (int c = 0; c < t->columnCount(); ++c) {
      QStringList header;
      for (std::size_t r = 0; r < fixedRows; ++r) header << Stacked(grid.cells[r][fixedCols + c]);
      EXPECT_EQ(t->horizontalHeaderItem(c)->text(), header.join(QLatin1Char('\n'))) << c;
    }
    for (int r = 0; r < t->rowCount(); ++r) {
      const std::vector<std::string>& row = grid.cells[fixedRows + static_cast<std::size_t>(r)];
      if (fixedCols > 0) {
        EXPECT_EQ(t->verticalHeaderItem(r)->text(), Stacked(row[0])) << r;
      }
      for (int c = 0; c < t->columnCount(); ++c) {
        const std::size_t k = fixedCols + static_cast<std::size_t>(c);
        const QTableWidgetItem* item = t->item(r, c);
        EXPECT_EQ(item ? item->text() : QString(), k < row.size() ? Stacked(row[k]) : QString()) << r << "/" << c;
        if (item && k > 0) {
          EXPECT_TRUE(item->textAlignment() & Qt::AlignRight) << r << "/" << c;
        }
      }
    }

    // Widths in widths of "X", each with the same cell margins.
    const int x = QFontMetrics(t->font()).horizontalAdvance(QLatin1Char('X'));
    const int first = grid.columnWidths[fixedCols];
    for (int c = 1; c < t->columnCount(); ++c)
      EXPECT_EQ(t->columnWidth(c) - t->columnWidth(0), (grid.columnWidths[fixedCols + c] - first) * x) << c;
    if (fixedCols > 0) {
      EXPECT_EQ(t->verticalHeader()->width() - t->columnWidth(0), (grid.columnWidths[0] - first) * x);
    }

    bool someHidden = false;
    for (const reports::GridLabel& l : grid.labels) {
      QLabel* label = w->Label(l.name.c_str());
      ASSERT_NE(label, nullptr) << l.name;
      EXPECT_EQ(label->text().toStdString(), l.text);
      EXPECT_EQ(label->isVisible(), l.visible) << l.name;
      someHidden = someHidden || !l.visible;
    }
    EXPECT_TRUE(someHidden);
    delete w;
  }
}

TEST_F(ReportWindows, ProjectionWithoutProjectionModeOffersItsHelp) {
  TheScenario().Gen.ProjectionYears = 0;
  rec.messages.answers = {MsgAnswer::Ok};
  EXPECT_TRUE(Show(reports::kRptProjection).empty());
  ASSERT_EQ(rec.messages.messages.size(), 2u);
  EXPECT_EQ(rec.messages.Last().title, kProjectionHelpTitle);
}

}  // namespace

// A one-header-row grid with a label column, as the Calendar Year Summary has.
static reports::GridReport SmallGrid(std::vector<int> widths, std::vector<std::vector<std::string>> cells) {
  reports::GridReport grid;
  grid.caption = "Calendar Year Summary";
  grid.columnWidths = std::move(widths);
  grid.fixedRows = 1;
  grid.fixedCols = 1;
  grid.cells = std::move(cells);
  return grid;
}

// Columns are counted in widths of "X", but an amount wider than its count
// must still show whole: $39,301,310,043.67 in a 14-wide column lost "39,".
TEST(GridWindowColumns, FitWhatTheyHoldButLetRulesBeCut) {
  const reports::GridReport grid = SmallGrid(
      {6, 14}, {{"Row", "Amount"}, {"A", "39,301,310,043.67"}, {"B", std::string(60, '-')}});
  frmCalSumm window(grid);
  const QFontMetrics fm(window.vsGrdDisplay->font());
  const int amount = fm.horizontalAdvance(QStringLiteral("39,301,310,043.67"));
  EXPECT_GT(window.vsGrdDisplay->columnWidth(0), amount);
  // The rule does not widen the column to its own 60 dashes.
  EXPECT_LT(window.vsGrdDisplay->columnWidth(0), fm.horizontalAdvance(QString(60, QLatin1Char('-'))));
}

// A typo of 50% for 100 years grows the balances past what an amount holds:
// the projection ends there and says so, and nothing is reported as a fault.
TEST_F(ReportWindows, ProjectionBeyondTheLargestAmountStopsAndSaysWhy) {
  Scenario& sc = TheScenario();
  // An owner of 40 takes nothing for decades, so the balances outgrow an
  // amount long before the tables run out.
  sc.Gen.OwnerBirthDate = MakeDate(sc.Gen.DCY - 40, 1, 1);
  for (IraRecord& ira : sc.Ira) ira.RateOfReturn = 50.0f;
  sc.Gen.ProjectionYears = 100;
  sc.Gen.PercentOver = 0.0f;
  const std::vector<QWidget*> windows = Show(reports::kRptProjection);
  EXPECT_TRUE(rec.errors.errors.empty());
  ASSERT_EQ(windows.size(), 1u);
  const QLabel* note = static_cast<frmProjRpt*>(windows[0])->Label("lblOverflow");
  ASSERT_NE(note, nullptr);
  EXPECT_FALSE(note->isHidden());
  EXPECT_TRUE(note->text().startsWith(QStringLiteral("The projection stops before ")));

  reports::TextSink paper(reports::ReportMode::File);
  reports::Reports()[4].routine(paper);
  EXPECT_NE(paper.Text().find("The projection stops before "), std::string::npos);
  EXPECT_TRUE(rec.errors.errors.empty());
}

// A report shown again reuses its window; another report's window cascades
// from it; Escape closes; both kinds of window name their button alike.
TEST_F(ReportWindows, WindowsAreReusedCascadedAndClosedAlike) {
  const auto show = [this](int flag) {
    viewer.SetReport(flag);
    reports::DisplayMaster(reports::ReportMode::View, flag, reports::ReportTarget{&viewer, nullptr, {}});
    viewer.SetReport(0);
  };
  show(reports::kRptInputs);
  show(reports::kRptInputs);
  show(reports::kRptCalSumm);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  std::vector<QWidget*> windows;
  for (QWidget* w : owner->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
    if (w->isWindow() && w->isVisible()) windows.push_back(w);
  ASSERT_EQ(windows.size(), 2u);
  EXPECT_EQ(viewer.OpenReports(), reports::kRptInputs | reports::kRptCalSumm);

  auto* text = qobject_cast<frmReportForm*>(windows[0]);
  auto* grid = qobject_cast<GridReportWindow*>(windows[1]);
  ASSERT_NE(text, nullptr);
  ASSERT_NE(grid, nullptr);
  EXPECT_EQ(text->btn3DExit->text(), grid->btnClose->text());

  // The scenario changes: the open windows are filled again in place.
  TheScenario().Gen.OwnerName = FixedText("Someone Else", kOwnerNameWidth);
  const QRect before = text->geometry();
  viewer.RefreshOpen([&](int flag) {
    reports::DisplayMaster(reports::ReportMode::View, flag, reports::ReportTarget{&viewer, nullptr, {}});
  });
  EXPECT_TRUE(text->txtReport->toPlainText().contains(QStringLiteral("Someone Else")));
  EXPECT_EQ(text->geometry(), before);

  QApplication::setActiveWindow(text);
  ASSERT_TRUE(QTest::qWaitForWindowActive(text));
  QTest::keyClick(text->txtReport, Qt::Key_Escape);
  EXPECT_FALSE(text->isVisible());
  EXPECT_EQ(viewer.OpenReports(), reports::kRptCalSumm);
}

TEST_F(ReportWindows, CtrlCCopiesTheSelectedCellsAsTabSeparatedText) {
  const reports::GridReport grid =
      SmallGrid({6, 14, 14}, {{"Row", "One", "Two"}, {"A", "1,000.00", "2,000.00"}, {"B", "3,000.00", "4,000.00"}});
  frmCalSumm window(grid);
  window.show();
  QApplication::setActiveWindow(&window);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  window.vsGrdDisplay->setRangeSelected(QTableWidgetSelectionRange(0, 0, 1, 1), true);
  window.vsGrdDisplay->setFocus();
  QGuiApplication::clipboard()->clear();
  QTest::keySequence(window.vsGrdDisplay, QKeySequence::Copy);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("1,000.00\t2,000.00\n3,000.00\t4,000.00\n"));
}

// Amounts become plain numbers, commas in text are quoted, stacked header
// lines joined, and a row ends with CRLF.
TEST(GridExport, CsvAndClipboardHoldTheWholeGrid) {
  const reports::GridReport grid = SmallGrid({10, 14}, {{"IRA", "Required\r\nDistribution"},
                                                         {"Smith, Jo", "39,301,310,043.67"},
                                                         {"Total", "-1,000.00"},
                                                         {"Note", "No Data**"}});
  EXPECT_EQ(GridCsv(grid), QStringLiteral("IRA,Required Distribution\r\n"
                                          "\"Smith, Jo\",39301310043.67\r\n"
                                          "Total,-1000.00\r\n"
                                          "Note,No Data**\r\n"));
  EXPECT_EQ(GridTsv(grid), QStringLiteral("IRA\tRequired Distribution\nSmith, Jo\t39,301,310,043.67\n"
                                          "Total\t-1,000.00\nNote\tNo Data**\n"));

  TempFolder folder;
  frmCalSumm window(grid);
  window.ChooseCsvFile = [&](const QString&) { return QString::fromStdString(folder.File("summary")); };
  ASSERT_TRUE(window.ExportCsv());
  EXPECT_EQ(QString::fromStdString(ira::testing::ReadFileBytes(folder.File("summary.csv"))), GridCsv(grid));
  window.CopyAll();
  EXPECT_EQ(QGuiApplication::clipboard()->text(), GridTsv(grid));
}

// The chart reads its figures from the report's own rows; a year without a
// figure is a gap, and years past the end are dropped.
TEST(ProjectionChartData, ReadsTheAccountsAndTotalsRows) {
  reports::GridReport grid;
  grid.fixedRows = 2;
  grid.fixedCols = 1;
  grid.cells = {{"Year:", "2026", "2027", "2028"},
                {"Age(Owner):", "75", "76", "77"},
                {"Rollover", "", "", ""},
                {"Beg. Balance", "1,000.00", "900.00", ""},
                {"Distributions", "100.00", "No Data**", ""},
                {"Ending Balance", "900.00", "810.00", ""},
                {"Total Distributions for Year", "100.00*", "90.00", ""},
                {"Combined Ending Balance", "1,900.50", "810.00", ""}};
  const ProjectionChartData data = ChartDataOf(grid);
  EXPECT_EQ(data.years, (std::vector<int>{2026, 2027}));
  ASSERT_EQ(data.accounts.size(), 1u);
  EXPECT_EQ(data.accounts[0].name, QStringLiteral("Rollover"));
  EXPECT_EQ(data.accounts[0].distribution[0], 100.0);
  EXPECT_TRUE(std::isnan(data.accounts[0].distribution[1]));
  EXPECT_EQ(data.accounts[0].balance[1], 810.0);
  EXPECT_EQ(data.total.distribution[0], 100.0);  // the penalty mark is not part of the figure
  EXPECT_EQ(data.total.balance[0], 1900.5);
}

TEST_F(ReportWindows, ProjectionWindowHasTheChartOfItsFigures) {
  const std::vector<QWidget*> windows = Show(reports::kRptProjection);
  ASSERT_EQ(windows.size(), 1u);
  auto* w = qobject_cast<frmProjRpt*>(windows[0]);
  ASSERT_NE(w, nullptr);
  EXPECT_EQ(w->tabView->count(), 2);
  EXPECT_EQ(w->chtProjection->Data().accounts.size(), TheScenario().Ira.size());
  EXPECT_EQ(w->chtProjection->Data().years.size(), static_cast<std::size_t>(TheScenario().Gen.ProjectionYears));
  EXPECT_FALSE(w->chtProjection->grab().isNull());
}
