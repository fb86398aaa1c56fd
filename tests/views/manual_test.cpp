#include <QRegularExpression>
#include <filesystem>
#include <vector>

#include "views_test_util.h"

using namespace ira;

namespace {

// The manual is typeset at build time; its contents must lead to the pages
// where the chapters and sections really are.
TEST(UserManual, ContentsLeadToTheNumberedPagesOfTheirHeadings) {
  const std::string manual = std::string(TALLYRA_PROGRAM_DIR) + "/manvesk.pdf";
  if (!std::filesystem::exists(manual)) GTEST_SKIP() << "the manual is not built here";
  if (views::test::PdfToText().isEmpty()) GTEST_SKIP() << "pdftotext is not installed";
  const QStringList pages = views::test::PdfPages(QString::fromStdString(manual));
  ASSERT_GT(pages.size(), 3);

  // Each page's lines, trimmed, without the empty ones.
  std::vector<QStringList> lines;
  for (const QString& page : pages) {
    QStringList filled;
    for (const QString& l : page.split(QLatin1Char('\n')))
      if (!l.trimmed().isEmpty()) filled << l.trimmed();
    lines.push_back(filled);
  }
  for (std::size_t p = 1; p < lines.size(); ++p) {
    ASSERT_FALSE(lines[p].isEmpty());
    EXPECT_EQ(lines[p].back(), QStringLiteral("Page %1").arg(p + 1));
  }

  // Contents entries: a heading, blanks, its page number; sections indented.
  const QRegularExpression entry(QStringLiteral("^(\\s*)(\\S.*\\S)\\s{2,}(\\d+)$"));
  QStringList chapters;
  for (const QString& l : pages[1].split(QLatin1Char('\n'))) {
    const auto m = entry.match(l);
    if (!m.hasMatch()) continue;
    const QString heading = m.captured(2);
    const int target = m.captured(3).toInt();
    ASSERT_LE(target, pages.size()) << l.toStdString();
    EXPECT_TRUE(lines[static_cast<std::size_t>(target - 1)].contains(heading))
        << heading.toStdString() << " is not on page " << target;
    if (m.captured(1).isEmpty()) chapters << heading;
  }
  for (const char* chapter : {"Setting up", "General Inputs", "The IRA list and IRA inputs", "Projection Options",
                              "Reports", "The batch run"})
    EXPECT_TRUE(chapters.contains(QString::fromLatin1(chapter))) << chapter;
}

}  // namespace
