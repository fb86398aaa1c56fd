// Helpers shared by the report tests: whole texts from lines, and the text a
// report routine produces in each mode.
#pragma once

#include <string>
#include <vector>

#include "core/base/calendar.h"
#include "core/reports/report_sink.h"
#include "core/scenario/scenario.h"

namespace ira::reports::test {

// Each line followed by CRLF, as the reports write them.
inline std::string CrLfText(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\r\n";
  return text;
}

template <typename Routine>
std::string RunText(Routine routine, ReportMode mode, std::string* caption = nullptr) {
  TextSink sink(mode);
  routine(sink);
  if (caption != nullptr) *caption = sink.Caption();
  return sink.Text();
}

inline Date D(int month, int day, int year) { return MakeDate(year, month, day); }

inline void SetNames(GeneralInputs& gen, const char* owner, const char* other) {
  gen.OwnerName = FixedText(owner, kOwnerNameWidth);
  gen.OtherInfo = FixedText(other, kOtherInfoWidth);
}

}  // namespace ira::reports::test
