// A print device with a fixed page length that records every printed line,
// page by page, and can be told to fail (once) at its n-th line, as a printer
// that goes off line part way through a job.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/base/print_device.h"

namespace ira::testing {

class FakePrintDevice : public PrintDevice {
 public:
  explicit FakePrintDevice(int pageLength) : linesPerPage(pageLength) {}

  int linesPerPage;
  int failAtLine = 0;  // 1-based count of PrintLine calls; 0: never fails
  std::vector<std::vector<std::string>> pages;  // pages that received at least one line
  bool ended = false;

  int LinesPerPage() override { return linesPerPage; }
  void PrintLine(std::string_view text) override;
  int PageNumber() const override { return m_page; }
  void NewPage() override;
  void EndDoc() override { ended = true; }

 private:
  int m_page = 1;
  int m_linesPrinted = 0;
  bool m_pageOpen = false;
};

}  // namespace ira::testing
