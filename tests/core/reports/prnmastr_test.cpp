#include "core/reports/prnmastr.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/reports/text_print_device.h"
#include "support/fake_print_device.h"
#include "support/recording_sinks.h"

namespace ira::reports {
namespace {

using ira::testing::FakePrintDevice;
using ira::testing::RecordingScope;
using Lines = std::vector<std::string>;

const Lines kHeadingBlock = {"", "", "Owner", "Other", "Title", ""};

class PrnManager2Test : public ::testing::Test {
 protected:
  void SetUp() override { PrnManager2(device, kPrnReset, "", "", ""); }
  void TearDown() override { PrnManager2(device, kPrnReset, "", "", ""); }

  // Announces a block and prints it the way a report does.
  std::int16_t Block(int lines) {
    const std::int16_t result = PrnManager2(device, lines, "Owner", "Other", "Title");
    for (int i = 0; i < lines; ++i) device.PrintLine("x");
    return result;
  }

  RecordingScope rec;
  FakePrintDevice device{66};
};

TEST_F(PrnManager2Test, LineCountsOutsideOneToFortyAreRefused) {
  EXPECT_EQ(PrnManager2(device, 40, "Owner", "Other", "Title"), kPrnNewPageBegun);
  EXPECT_EQ(PageLineCounter(), 47);
  const std::size_t printed = device.pages[0].size();

  for (const int lines : {41, 0, -1}) {
    EXPECT_EQ(PrnManager2(device, lines, "Owner", "Other", "Title"), kPrnFits) << lines;
    ASSERT_FALSE(rec.messages.messages.empty());
    EXPECT_EQ(rec.messages.Last().title, "Error!");
    EXPECT_EQ(rec.messages.Last().text,
              std::to_string(lines) + " lines passed to PrnManager2(). Please use between 1 and 40");
    EXPECT_EQ(rec.messages.Last().icon, MsgIcon::Critical);
    EXPECT_EQ(PageLineCounter(), 47) << lines;
    EXPECT_EQ(device.pages[0].size(), printed) << lines;
  }
}

TEST_F(PrnManager2Test, FirstBlockBeginsWithTheHeadingBlockCountedAsSeven) {
  EXPECT_EQ(Block(3), kPrnNewPageBegun);
  EXPECT_EQ(PageLineCounter(), 10);
  EXPECT_EQ(Block(2), kPrnFits);
  EXPECT_EQ(PageLineCounter(), 12);
  Lines expected = kHeadingBlock;
  expected.insert(expected.end(), 5, "x");
  EXPECT_EQ(device.pages, std::vector<Lines>{expected});
}

TEST_F(PrnManager2Test, ABlockThatWouldReachLMinusSixMovesToTheNextPage) {
  // L = 66: blocks are placed while counter + lines < 60.
  Block(40);  // 47
  EXPECT_EQ(Block(12), kPrnFits);  // 59
  EXPECT_EQ(Block(1), kPrnNewPageBegun);
  EXPECT_EQ(PageLineCounter(), 8);
  ASSERT_EQ(device.pages.size(), 2u);
  const Lines& first = device.pages[0];
  // 6 heading lines, 52 block lines, 60 - 59 = 1 filler line, the page number.
  ASSERT_EQ(first.size(), 60u);
  EXPECT_EQ(first[58], "");
  EXPECT_EQ(first[59], "Page 1");
  Lines second = kHeadingBlock;
  second.push_back("x");
  EXPECT_EQ(device.pages[1], second);
}

TEST_F(PrnManager2Test, EveryPageEndsWithItsNumberAndNoBlankPageFollows) {
  // A report that never announced a block has no page to number.
  PrnManager2(device, kPrnEndReport, "", "", "");
  EXPECT_TRUE(device.pages.empty());

  Block(5);  // counter 12
  EXPECT_EQ(PrnManager2(device, kPrnEndReport, "", "", ""), kPrnNewPageBegun);
  EXPECT_EQ(PageLineCounter(), 0);
  ASSERT_EQ(device.pages.size(), 1u);
  EXPECT_EQ(device.pages[0].size(), 6u + 5u + (60u - 12u) + 1u);
  EXPECT_EQ(device.pages[0].back(), "Page 1");

  // The next report starts on a fresh page with the heading block.
  Block(2);
  EXPECT_EQ(device.pages[1][2], "Owner");
  // Ending the document finishes that page too, then nothing more.
  PrnManager2(device, kPrnEndDocument, "", "", "");
  EXPECT_TRUE(device.ended);
  ASSERT_EQ(device.pages.size(), 2u);
  EXPECT_EQ(device.pages[1].back(), "Page 2");
}

TEST_F(PrnManager2Test, ControlCodesNewPageAndReset) {
  Block(1);  // counter 8
  EXPECT_EQ(PrnManager2(device, kPrnNewPage, "A", "B", "C"), kPrnNewPageBegun);
  EXPECT_EQ(PageLineCounter(), 7);
  ASSERT_EQ(device.pages.size(), 2u);
  EXPECT_EQ(device.pages[0].back(), "Page 1");
  EXPECT_EQ(device.pages[1], (Lines{"", "", "A", "B", "C", ""}));

  EXPECT_EQ(PrnManager2(device, kPrnReset, "", "", ""), kPrnNewPageBegun);
  EXPECT_EQ(PageLineCounter(), 0);
  EXPECT_EQ(device.pages.size(), 2u);  // a reset prints nothing
}

TEST_F(PrnManager2Test, PageLengthIsAskedAtEveryBlock) {
  Block(10);  // counter 17
  device.linesPerPage = 24;  // a larger font: 17 + 1 reaches 24 - 6
  EXPECT_EQ(Block(1), kPrnNewPageBegun);
  EXPECT_EQ(device.pages[0].back(), "Page 1");
  EXPECT_EQ(device.pages[0].size(), 6u + 10u + 1u + 1u);
}

TEST(TextPrintDevice, PagesSeparatedByFormFeedsWithoutATrailingBlankPage) {
  TextPrintDevice device(15);  // footer after line 9
  PrnManager2(device, kPrnReset, "", "", "");
  PrnManager2(device, 1, "H1", "H2", "H3");
  device.PrintLine("a");
  PrnManager2(device, kPrnEndDocument, "", "", "");
  EXPECT_EQ(device.Text(), "\n\nH1\nH2\nH3\n\na\n\nPage 1\n");
  EXPECT_TRUE(device.Ended());
}

TEST(GetFonts, EmptyNameAndTinySizesFallBack) {
  RecordingScope rec;
  const ReportFontInfo saved = ReportFont();
  struct Row {
    const char* name;
    ReportFontInfo chosen;
    ReportFontInfo kept;
  } const rows[] = {
      {"a real choice", {"Liberation Mono", 12.0f}, {"Liberation Mono", 12.0f}},
      {"no name", {"", 11.0f}, {"Courier New", 11.0f}},
      {"size 4", {"Courier", 4.0f}, {"Courier", 10.0f}},
      {"size 5 is allowed", {"Courier", 5.0f}, {"Courier", 5.0f}},
  };
  for (const Row& r : rows) {
    GetFonts([&](const ReportFontInfo&) { return std::optional<ReportFontInfo>(r.chosen); });
    EXPECT_EQ(ReportFont().name, r.kept.name) << r.name;
    EXPECT_EQ(ReportFont().size, r.kept.size) << r.name;
  }
  GetFonts([](const ReportFontInfo&) { return std::optional<ReportFontInfo>(); });
  EXPECT_EQ(ReportFont().name, "Courier");  // cancelled: unchanged
  EXPECT_EQ(rec.messages.messages.size(), 5u);
  EXPECT_EQ(rec.messages.Last().title, "WARNING!");
  EXPECT_EQ(rec.messages.Last().text,
            "We strongly recommend the use of either the COURIER NEW or the COURIER font. Other fonts might not "
            "align properly, or may cause an error 380.");
  ReportFont() = saved;
}

}  // namespace
}  // namespace ira::reports
