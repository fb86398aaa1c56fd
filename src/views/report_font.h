// The report font on screen and on paper. Fonts are asked for by name; the
// font system may hand back another family. A substitute drawn to the same
// widths (Liberation Mono for "Courier New") keeps every report column in
// place and counts as the font itself; any other substitute does not.
#pragma once

#include <QFont>
#include <functional>
#include <string_view>

#include "core/reports/prnmastr.h"

namespace ira::views {

// Whether `actual`, the family given for `requested`, draws to the same widths.
bool SameFontMetrics(std::string_view requested, std::string_view actual);

// The font as the system would draw it, and whether that is the font asked for.
QFont MakeFont(const reports::ReportFontInfo& font);
bool FontAvailable(const reports::ReportFontInfo& font);

// The report font for a window or the printer. When it cannot be had, says so
// once per font and gives the system's fixed-pitch font at the report size.
QFont ReportQFont();

// At start-up: when the saved report font cannot be had, says so and offers
// the font choice.
void CheckSavedReportFont(const std::function<void()>& offerFontChoice);

}  // namespace ira::views
