// The report font on screen and on paper. Fonts are asked for by name; the
// font system may hand back another family. A substitute drawn to the same
// widths (Liberation Mono for "Courier New") keeps every report column in
// place and counts as the font itself; any other substitute does not.
#pragma once

#include <QFont>
#include <QStringList>
#include <functional>
#include <string_view>

#include "core/reports/prnmastr.h"

namespace ira::views {

// Whether `actual`, the family given for `requested`, draws to the same widths.
bool SameFontMetrics(std::string_view requested, std::string_view actual);

// The font as the system would draw it, and whether that is the font asked for.
QFont MakeFont(const reports::ReportFontInfo& font);
bool FontAvailable(const reports::ReportFontInfo& font);

// Whether `family` draws every character to one width, measured ("iiii" and
// "MMMM" as wide): the font database's fixed-pitch flag is not reliable (it
// is false for some monospaced families).
bool DrawsMonospaced(const QString& family);

// The font a report falls back on when its own font cannot be had: the first
// installed monospaced family of `candidates` (by default the ones the
// program knows, Liberation Mono first), else the system's fixed font.
QFont FallbackReportFont(double pointSize, const QStringList& candidates = {});

// The report font for a window or the printer. When it cannot be had, says so
// once per font and gives the fallback font at the report size.
QFont ReportQFont();

// At start-up: when the saved report font cannot be had, says so and offers
// the font choice.
void CheckSavedReportFont(const std::function<void()>& offerFontChoice);

}  // namespace ira::views
