#include "views/report_font.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <algorithm>
#include <array>
#include <string>

#include "core/base/messages.h"
#include "core/base/text.h"

namespace ira::views {
namespace {

// Families drawn to the same character widths, as the font configuration of
// free systems substitutes them for the common Windows and PostScript fonts.
// All the Courier faces advance 0.6 em per character, so they share a group.
constexpr std::array<std::array<std::string_view, 8>, 4> kMetricGroups{{
    {"courier new", "courier", "liberation mono", "cousine", "nimbus mono ps", "nimbus mono l", "tex gyre cursor"},
    {"arial", "helvetica", "liberation sans", "arimo", "nimbus sans", "nimbus sans l", "tex gyre heros", "albany"},
    {"times new roman", "times", "liberation serif", "tinos", "nimbus roman", "nimbus roman no9 l", "tex gyre termes",
     "thorndale"},
    {"arial narrow", "liberation sans narrow", "nimbus sans narrow"},
}};

int MetricGroup(const std::string& family) {
  for (std::size_t g = 0; g < kMetricGroups.size(); ++g) {
    const auto& names = kMetricGroups[g];
    if (std::find(names.begin(), names.end(), family) != names.end()) return static_cast<int>(g);
  }
  return -1;
}

constexpr const char* kFontTitle = "WARNING";

// Monospaced families the set-up installs or free systems commonly have, in
// order of preference; Liberation Mono draws to Courier New's widths.
const QStringList& KnownMonospacedFamilies() {
  static const QStringList families{"Liberation Mono", "DejaVu Sans Mono", "Noto Sans Mono", "Nimbus Mono PS"};
  return families;
}

}  // namespace

bool SameFontMetrics(std::string_view requested, std::string_view actual) {
  const std::string want = ToLower(Trim(requested));
  const std::string got = ToLower(Trim(actual));
  if (want == got) return true;
  const int group = MetricGroup(want);
  return group >= 0 && group == MetricGroup(got);
}

QFont MakeFont(const reports::ReportFontInfo& font) {
  QFont f(QString::fromStdString(font.name));
  f.setPointSizeF(static_cast<double>(font.size));
  f.setStyleHint(QFont::TypeWriter);
  return f;
}

bool FontAvailable(const reports::ReportFontInfo& font) {
  return SameFontMetrics(font.name, QFontInfo(MakeFont(font)).family().toStdString());
}

QFont ReportQFont() {
  const reports::ReportFontInfo& font = reports::ReportFont();
  if (FontAvailable(font)) return MakeFont(font);
  // Said once per font: every report window and every printed page asks.
  static std::string told;
  const std::string key = font.name + "/" + NumberText(font.size);
  if (told != key) {
    told = key;
    ShowMessage(kFontTitle, reports::FontNotLocatedText(font), MsgIcon::Exclamation);
  }
  return FallbackReportFont(static_cast<double>(font.size));
}

bool DrawsMonospaced(const QString& family) {
  QFont f(family);
  f.setPointSizeF(12.0);
  const QFontMetricsF metrics(f);
  return metrics.horizontalAdvance(QStringLiteral("iiii")) == metrics.horizontalAdvance(QStringLiteral("MMMM"));
}

QFont FallbackReportFont(double pointSize, const QStringList& candidates) {
  const QStringList installed = QFontDatabase::families();
  for (const QString& family : candidates.isEmpty() ? KnownMonospacedFamilies() : candidates) {
    if (installed.contains(family, Qt::CaseInsensitive) && DrawsMonospaced(family)) {
      QFont f(family);
      f.setStyleHint(QFont::TypeWriter);
      f.setPointSizeF(pointSize);
      return f;
    }
  }
  QFont fallback = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  fallback.setPointSizeF(pointSize);
  return fallback;
}

void CheckSavedReportFont(const std::function<void()>& offerFontChoice) {
  const reports::ReportFontInfo& font = reports::ReportFont();
  if (FontAvailable(font)) return;
  ShowMessage(kFontTitle, reports::FontMissingText(font), MsgIcon::Exclamation);
  offerFontChoice();
}

}  // namespace ira::views
