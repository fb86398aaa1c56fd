#include <QFontInfo>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QStringList>
#include <QTableWidget>
#include <memory>

#include "core/reports/display_master.h"
#include "views/frmCalSumm.h"
#include "views/frmProjRpt.h"
#include "views/frmReportForm.h"
#include "views/qt_report_viewer.h"
#include "views/report_font.h"
#include "views_test_util.h"

using namespace ira;
using namespace ira::views;

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
  const char* forms[] = {"frmReportForm", "frmReportForm", "frmReportForm", "frmCalSumm", "frmProjRpt"};
  ASSERT_EQ(windows.size(), std::size(forms));
  for (std::size_t i = 0; i < windows.size(); ++i) {
    const reports::TextSink sink = Viewed(reports::Reports()[i].flag);
    EXPECT_EQ(windows[i]->objectName().toStdString(), forms[i]) << i;
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
