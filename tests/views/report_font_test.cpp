#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>

#include "views/report_font.h"
#include "views_test_util.h"

using namespace ira;
using namespace ira::views;

namespace {

TEST(SameFontMetrics, OnlySubstitutesOfTheSameWidthsCount) {
  const struct {
    const char* requested;
    const char* actual;
    bool same;
  } rows[] = {
      {"Courier New", "Courier New", true},
      {"courier new", "COURIER NEW", true},
      {"Courier New", "Liberation Mono", true},
      {"Courier", "Nimbus Mono PS", true},
      {"Arial", "Liberation Sans", true},
      {"Courier New", "DejaVu Sans Mono", false},
      {"Courier New", "Liberation Sans", false},
      {"Lucida Console", "DejaVu Sans", false},
  };
  for (const auto& row : rows)
    EXPECT_EQ(SameFontMetrics(row.requested, row.actual), row.same) << row.requested << " / " << row.actual;
}

class ReportFontChecks : public test::DemoScenarioTest {};

bool EqualWidths(const QFont& font) {
  const QFontMetricsF metrics(font);
  return metrics.horizontalAdvance("iiii") == metrics.horizontalAdvance("MMMM");
}

TEST_F(ReportFontChecks, MissingFontIsToldOnceAndFallsBackToAFixedFont) {
  reports::ReportFont() = {"Tallyra Missing Typeface", 11.0f};
  const QFont first = ReportQFont();
  const QFont second = ReportQFont();
  ASSERT_EQ(rec.messages.messages.size(), 1u);
  EXPECT_EQ(rec.messages.Last().text, reports::FontNotLocatedText(reports::ReportFont()));
  EXPECT_TRUE(EqualWidths(first)) << QFontInfo(first).family().toStdString();
  EXPECT_EQ(second.pointSizeF(), 11.0);
}

// Each way the fallback can go, whichever monospaced families this machine
// has: a known family judged by its widths (a proportional one is passed
// over), and the system's fixed font when no candidate is installed.
TEST_F(ReportFontChecks, FallbackIsAMonospacedFamilyWhateverIsInstalled) {
  const QStringList installed = QFontDatabase::families();
  for (const QString& family : QStringList{"Liberation Mono", "DejaVu Sans Mono", "Noto Sans Mono"}) {
    if (!installed.contains(family, Qt::CaseInsensitive)) continue;
    const QFont font = FallbackReportFont(9.0, {"DejaVu Sans", family});
    EXPECT_EQ(QFontInfo(font).family(), family);
    EXPECT_TRUE(EqualWidths(font)) << family.toStdString();
  }
  if (installed.contains("DejaVu Sans", Qt::CaseInsensitive)) {
    EXPECT_FALSE(DrawsMonospaced("DejaVu Sans"));
  }
  const QFont system = FallbackReportFont(9.0, {"Tallyra Missing Typeface"});
  EXPECT_EQ(system.pointSizeF(), 9.0);
  EXPECT_EQ(QFontInfo(FallbackReportFont(9.0)).family(), "Liberation Mono");
}

TEST_F(ReportFontChecks, SavedFontIsQuestionedOnlyWhenItCannotBeHad) {
  const struct {
    const char* name;
    bool offered;
  } rows[] = {{"Courier New", false}, {"Tallyra Missing Typeface", true}};
  for (const auto& row : rows) {
    rec.messages.messages.clear();
    reports::ReportFont() = {row.name, 10.0f};
    bool offered = false;
    CheckSavedReportFont([&] { offered = true; });
    EXPECT_EQ(offered, row.offered) << row.name;
    EXPECT_EQ(rec.messages.messages.size(), row.offered ? 1u : 0u) << row.name;
    if (row.offered) {
      EXPECT_EQ(rec.messages.Last().text, reports::FontMissingText(reports::ReportFont()));
    }
  }
}

}  // namespace
