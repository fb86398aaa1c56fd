#include "core/reports/prnmastr.h"

#include <string>

#include "core/base/checked.h"
#include "core/base/messages.h"
#include "core/base/text.h"

namespace ira::reports {
namespace {

// Per thread: each worker of a folder batch prints its own document.
thread_local std::int16_t g_lineCounter = 0;
ReportFontInfo g_font;

constexpr std::string_view kWhere = "PrnManager2()";
// The run-on wording of the out-of-range message is deliberate.
constexpr const char* kBadLinesText = " lines passed to PrnManager2().";
constexpr const char* kBadLinesRange = " Please use between 1 and ";

constexpr const char* kFontWarning =
    "We strongly recommend the use of either the COURIER NEW or the COURIER font. Other fonts might "
    "not align properly, or may cause an error 380.";

}  // namespace

std::int16_t PageLineCounter() { return g_lineCounter; }

std::int16_t nLinesPerPage(PrintDevice& device) { return CheckedInt16(device.LinesPerPage(), "nLinesPerPage()"); }

void PrintHeadings(PrintDevice& device, std::string_view heading1, std::string_view heading2,
                   std::string_view heading3) {
  device.PrintLine("");
  device.PrintLine("");
  device.PrintLine(heading1);
  device.PrintLine(heading2);
  device.PrintLine(heading3);
  device.PrintLine("");
}

void PrnPgNo(PrintDevice& device, std::int16_t counter) {
  const int footerLine = nLinesPerPage(device) - 6;
  for (int i = counter; i < footerLine; ++i) device.PrintLine("");
  device.PrintLine("Page " + std::to_string(device.PageNumber()));
  device.NewPage();
}

std::int16_t PrnManager2(PrintDevice& device, int lines, std::string_view heading1, std::string_view heading2,
                         std::string_view heading3) {
  // The heading block prints 6 lines and is counted as 7.
  constexpr std::int16_t kHeadingLines = 7;
  std::int16_t result = kPrnFits;
  switch (lines) {
    case kPrnReset:
      g_lineCounter = 0;
      return kPrnNewPageBegun;
    case kPrnNewPage:
      PrnPgNo(device, g_lineCounter);
      PrintHeadings(device, heading1, heading2, heading3);
      g_lineCounter = kHeadingLines;
      return kPrnNewPageBegun;
    case kPrnEndReport:
      // A report that never began a page has no page to number.
      if (g_lineCounter != 0) PrnPgNo(device, g_lineCounter);
      g_lineCounter = 0;
      return kPrnNewPageBegun;
    case kPrnEndDocument:
      if (g_lineCounter != 0) PrnManager2(device, kPrnEndReport, "", "", "");
      device.EndDoc();
      return kPrnNewPageBegun;
    default:
      break;
  }
  if (lines < 1 || lines > kPrnMaxBlock) {
    ShowMessage(kPrnErrorTitle, std::to_string(lines) + kBadLinesText + kBadLinesRange + std::to_string(kPrnMaxBlock),
                MsgIcon::Critical);
    return result;
  }
  if (g_lineCounter == 0) {
    PrintHeadings(device, heading1, heading2, heading3);
    g_lineCounter = kHeadingLines;
    result = kPrnNewPageBegun;
  }
  if (g_lineCounter + lines >= nLinesPerPage(device) - 6) {
    PrnPgNo(device, g_lineCounter);
    PrintHeadings(device, heading1, heading2, heading3);
    g_lineCounter = kHeadingLines;
    result = kPrnNewPageBegun;
  }
  g_lineCounter = CheckedInt16(g_lineCounter + lines, kWhere);
  return result;
}

ReportFontInfo& ReportFont() { return g_font; }

void GetFonts(const std::function<std::optional<ReportFontInfo>(const ReportFontInfo& current)>& fontDialog) {
  ShowMessage("WARNING!", kFontWarning, MsgIcon::Exclamation);
  std::optional<ReportFontInfo> chosen = fontDialog(g_font);
  if (!chosen) return;
  if (Trim(chosen->name).empty()) chosen->name = kDefaultFontName;
  if (!(chosen->size >= kSmallestFontSize)) chosen->size = kDefaultFontSize;
  g_font = *chosen;
}

std::string FontMissingText(const ReportFontInfo& font) {
  return "This program requires the " + font.name + " (" + NumberText(font.size) + " point) " +
         "font, which is not available on this system. Please install " +
         "this font. The program will use the default font for this " +
         "system. Report formatting may be affected. As an " +
         "alternative, the program will let you select a font.";
}

std::string FontNotLocatedText(const ReportFontInfo& font) {
  return font.name + " (" + NumberText(font.size) + " point) font, could not be located. " +
         "The program will use the default font. " + "Report formatting may be affected.";
}

}  // namespace ira::reports
