// The print manager (PRNMASTR): page headings, page numbers and page breaks
// for every printed report, over the PrintDevice of the current print job,
// and the report font that the window, the grids and the printer share.
//
// Page layout, with L = nLinesPerPage() lines on a page:
//   - a page begins with the heading block: two empty lines, heading lines 1,
//     2 and 3, one empty line. It prints 6 lines but counts as 7: the spare
//     line is a deliberate margin;
//   - blocks of 1..40 lines follow while (counter + lines) < L - 6;
//   - the 6 lines at the foot hold the footer: the page is filled with empty
//     lines up to L - 6, then "Page n" (the device's page number) is printed
//     and a new page begun.
// Devices must not emit a page on which nothing was printed, so that ending
// the document right after a page break leaves no blank page.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/base/errors.h"
#include "core/base/print_device.h"

namespace ira::reports {

// Print control codes passed to PrnManager2 instead of a line count.
inline constexpr int kPrnReset = -400;          // counter to 0, nothing printed
inline constexpr int kPrnNewPage = -300;        // footer, then a fresh page with headings
inline constexpr int kPrnEndReport = -200;      // footer of the report's last page
inline constexpr int kPrnEndDocument = -100;    // finish the last page and end the job
inline constexpr int kPrnMaxBlock = 40;

// PrnManager2 results.
inline constexpr std::int16_t kPrnNewPageBegun = 1;  // heading block just printed (or a code carried out)
inline constexpr std::int16_t kPrnFits = 2;          // the block fits; nothing printed

// The title of the message for a line count outside 1..40.
inline constexpr const char* kPrnErrorTitle = "Error!";

// A device failure (no printer, off line, spooler refusal): any ira::Error
// numbered kErrPrinter; devices may throw this one.
// The dispatcher shows "PRINTER ERROR" and stops only the report in progress.
class PrinterError : public Error {
 public:
  explicit PrinterError(const std::string& text) : Error(kErrPrinter, text) {}
};

// Lines used on the current printed page; 0 when no page has been begun.
// Program-wide and changed only by PrnManager2.
std::int16_t PageLineCounter();

// Announces a block of `lines` (1..40) that the caller prints next, or carries
// out a control code. Returns kPrnNewPageBegun when the heading block was just
// printed (a report with column headings prints them again first), kPrnFits
// otherwise. Any other count shows the "Error!" message, prints nothing and
// leaves the counter as it was. Ending a report (-200) on which nothing was
// printed prints nothing.
std::int16_t PrnManager2(PrintDevice& device, int lines, std::string_view heading1, std::string_view heading2,
                         std::string_view heading3);

// Fills the page up to L - 6 after `counter` used lines, prints "Page n" and
// begins a new page.
void PrnPgNo(PrintDevice& device, std::int16_t counter);
// Two empty lines, the three heading lines, one empty line.
void PrintHeadings(PrintDevice& device, std::string_view heading1, std::string_view heading2,
                   std::string_view heading3);
// Lines of the report font that fit on the device's page (asked anew at every
// call, so a font change takes effect at once).
std::int16_t nLinesPerPage(PrintDevice& device);

// The report font: the text report window, the grids and the printer use it.
inline constexpr const char* kDefaultFontName = "Courier New";
inline constexpr float kDefaultFontSize = 10.0f;
inline constexpr float kSmallestFontSize = 5.0f;

struct ReportFontInfo {
  std::string name = kDefaultFontName;
  float size = kDefaultFontSize;
};

// Program-wide; the desktop loads it from and saves it to the settings file.
ReportFontInfo& ReportFont();

// The font command: warns that only Courier aligns, lets `fontDialog` choose
// (it returns nothing when cancelled), and keeps the choice with an empty name
// read as "Courier New" and a size below 5 points as 10.
void GetFonts(const std::function<std::optional<ReportFontInfo>(const ReportFontInfo& current)>& fontDialog);

// Texts shown when the saved report font cannot be set on the screen or the
// printer: the first when the user is then offered the font choice, the second
// when the system's default font is used without one.
std::string FontMissingText(const ReportFontInfo& font);
std::string FontNotLocatedText(const ReportFontInfo& font);

}  // namespace ira::reports
