// A print device that writes plain text: lines end with "\n" and pages are
// separated by form feeds ("\f"). Used for golden files of printed output.
#pragma once

#include <string>
#include <string_view>

#include "core/base/print_device.h"

namespace ira::reports {

class TextPrintDevice final : public PrintDevice {
 public:
  explicit TextPrintDevice(int linesPerPage) : m_linesPerPage(linesPerPage) {}

  int LinesPerPage() override { return m_linesPerPage; }
  void PrintLine(std::string_view text) override;
  int PageNumber() const override { return m_page; }
  // The page is opened lazily: a page on which nothing is printed never appears.
  void NewPage() override;
  void EndDoc() override { m_ended = true; }

  const std::string& Text() const { return m_text; }
  bool Ended() const { return m_ended; }

 private:
  int m_linesPerPage;
  int m_page = 1;
  bool m_pageBreakPending = false;
  bool m_ended = false;
  std::string m_text;
};

}  // namespace ira::reports
