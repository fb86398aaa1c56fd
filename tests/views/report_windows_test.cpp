#include <QFontInfo>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QStringList>
#include <QTableWidget>
#include <memory>

#include "core/base/checked.h"
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
  // What a report routine gives in view mode.
  static reports::TextSink Viewed(int flag) {
    reports::TextSink sink(reports::ReportMode::View);
    for (const reports::ReportEntry& entry : reports::Reports())
      if (entry.flag == flag) entry.routine(sink);
    return sink;
  }
  static int XWidth(QWidget* w) { return QFontMetrics(w->font()).horizontalAdvance(QLatin1Char('X')); }

  std::unique_ptr<QWidget> owner = std::make_unique<QWidget>();
  QtReportViewer viewer{owner.get()};
};

TEST_F(ReportWindows, EveryChosenReportOpensItsOwnWindowWithTheReportsCaption) {
  const std::vector<QWidget*> windows = Show(reports::kRptAll);
  const struct {
    const char* form;
    const char* caption;
  } expected[] = {
      {"frmReportForm", "Input Report"},
      {"frmReportForm", "Owner/IRA Information"},
      {"frmReportForm", "Distribution Calculations"},
      {"frmCalSumm", "Calendar Year Summary Report"},
      {"frmProjRpt", "Projection of Distributions Report"},
  };
  ASSERT_EQ(windows.size(), std::size(expected));
  for (std::size_t i = 0; i < windows.size(); ++i) {
    EXPECT_EQ(windows[i]->objectName().toStdString(), expected[i].form) << i;
    EXPECT_EQ(windows[i]->windowTitle().toStdString(), expected[i].caption) << i;
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

TEST_F(ReportWindows, CalendarYearSummaryGridHasItsHeadersWidthsAndLabels) {
  // The owner died in 2003; a child heir of the first IRA is below the
  // tables: "*" in its cells and the footnote shown.
  TheScenario().Gen.OwnerDeathDate = MakeDate(2003, 5, 10);
  TheScenario().Ira[0].SpouseBen = 0;
  TheScenario().Ira[0].OtherBen = kTrue;
  TheScenario().Ira[0].BeneBirthDate = MakeDate(2000, 1, 1);
  const std::vector<QWidget*> windows = Show(reports::kRptCalSumm);
  ASSERT_EQ(windows.size(), 1u);
  auto* w = qobject_cast<frmCalSumm*>(windows[0]);
  ASSERT_NE(w, nullptr);
  QTableWidget* grid = w->vsGrdDisplay;
  const char* headers[] = {"\n\nDescription of IRA", "\nAdjusted\nBenefit", "Total\nRequired\nDistribution",
                           "Amount\nAlready\nDistributed", "Net\nRequired\nDistribution"};
  ASSERT_EQ(grid->columnCount(), 5);
  for (int c = 0; c < 5; ++c) EXPECT_EQ(grid->horizontalHeaderItem(c)->text().toStdString(), headers[c]) << c;
  EXPECT_TRUE(grid->verticalHeader()->isHidden());
  // 33 and 13 widths of "X", each with the same cell margins.
  EXPECT_EQ(grid->columnWidth(0) - grid->columnWidth(1), 20 * XWidth(grid));
  for (int c = 2; c < 5; ++c) EXPECT_EQ(grid->columnWidth(c), grid->columnWidth(1));

  ASSERT_EQ(grid->rowCount(), 6);  // three IRAs, the rule, the totals, the double rule
  EXPECT_EQ(grid->item(0, 0)->text(), QStringLiteral("Rollover IRA - Vanguard"));
  for (int c = 1; c < 5; ++c) EXPECT_EQ(grid->item(0, c)->text(), QStringLiteral("*"));
  EXPECT_EQ(grid->item(4, 0)->text(), QStringLiteral("Totals:"));
  EXPECT_TRUE(grid->item(4, 1)->textAlignment() & Qt::AlignRight);

  EXPECT_EQ(w->txtHeading->text(),
            QStringLiteral("Robert J. Whitfield\nDemonstration scenario\n2005 Distribution Calendar Year Summary"));
  ASSERT_NE(w->Label("lblRegUsed"), nullptr);
  EXPECT_EQ(w->Label("lblRegUsed")->text(), QStringLiteral("COMPUTED USING 2001 PROPOSED REGULATIONS"));
  ASSERT_NE(w->Label("lblNoData"), nullptr);
  EXPECT_TRUE(w->Label("lblNoData")->isVisible());
}

TEST_F(ReportWindows, ProjectionGridKeepsYearsAndLabelsAsHeaders) {
  const std::vector<QWidget*> windows = Show(reports::kRptProjection);
  ASSERT_EQ(windows.size(), 1u);
  auto* w = qobject_cast<frmProjRpt*>(windows[0]);
  ASSERT_NE(w, nullptr);
  QTableWidget* grid = w->vsGrdDisplay;
  ASSERT_EQ(grid->columnCount(), 10);
  EXPECT_EQ(grid->horizontalHeaderItem(0)->text(), QStringLiteral("2005\n73"));
  EXPECT_EQ(grid->horizontalHeaderItem(9)->text(), QStringLiteral("2014\n82"));
  // The label column stays in view as the row headers, 33 widths of "X".
  EXPECT_EQ(grid->verticalHeaderItem(0)->text(), QStringLiteral("Rollover IRA - Vanguard"));
  EXPECT_EQ(grid->verticalHeaderItem(1)->text(), QStringLiteral("Beg. Balance"));
  EXPECT_EQ(grid->item(1, 0)->text(), QStringLiteral("412,350.00"));
  EXPECT_EQ(grid->verticalHeader()->width() - grid->columnWidth(0), 20 * XWidth(grid));

  const struct {
    const char* name;
    const char* text;
    bool visible;
  } labels[] = {
      {"Label1", "Computations made using 2002 final regulations", true},
      {"lblAADNote", "The distributions are net of any Amounts Already Distributed.", true},
      {"lblIncomeCalc", "~ Income calculated for 2005 ~", true},
      {"lblXSPenalty", "* Possible Penalty for Excess Distributions", false},
  };
  for (const auto& l : labels) {
    QLabel* label = w->Label(l.name);
    ASSERT_NE(label, nullptr) << l.name;
    EXPECT_EQ(label->text().toStdString(), l.text);
    EXPECT_EQ(label->isVisible(), l.visible) << l.name;
  }
}

TEST_F(ReportWindows, ProjectionWithoutProjectionModeOffersItsHelp) {
  TheScenario().Gen.ProjectionYears = 0;
  const struct {
    const char* name;
    MsgAnswer answer;
    bool help;
  } rows[] = {{"OK shows the help", MsgAnswer::Ok, true}, {"Cancel does not", MsgAnswer::Cancel, false}};
  for (const auto& row : rows) {
    rec.messages.messages.clear();
    rec.messages.answers = {row.answer};
    EXPECT_TRUE(Show(reports::kRptProjection).empty()) << row.name;
    ASSERT_GE(rec.messages.messages.size(), 1u) << row.name;
    EXPECT_EQ(rec.messages.messages[0].title, "Can't Show Report");
    EXPECT_EQ(rec.messages.messages[0].buttons, MsgButtons::OkCancel);
    EXPECT_EQ(rec.messages.messages.size(), row.help ? 2u : 1u) << row.name;
    if (row.help) {
      EXPECT_EQ(rec.messages.Last().title, "Help on Projection Reports");
    }
  }
}

}  // namespace
