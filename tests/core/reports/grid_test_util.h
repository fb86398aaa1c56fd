// The labels beside a grid report as one line each, so that a test compares
// all of them, with their visibility, in one expectation.
#pragma once

#include <string>
#include <vector>

#include "core/reports/report_sink.h"

namespace ira::reports::test {

// "name: text", with " (hidden)" after a label the window does not show.
inline std::vector<std::string> LabelLines(const GridReport& grid) {
  std::vector<std::string> lines;
  for (const GridLabel& label : grid.labels)
    lines.push_back(label.name + ": " + label.text + (label.visible ? "" : " (hidden)"));
  return lines;
}

}  // namespace ira::reports::test
