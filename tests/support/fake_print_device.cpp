#include "support/fake_print_device.h"

#include <stdexcept>

#include "core/base/errors.h"

namespace ira::testing {

void FakePrintDevice::PrintLine(std::string_view text) {
  if (ended) throw std::logic_error("FakePrintDevice: printing after the end of the document");
  if (++m_linesPrinted == failAtLine) throw Error(kErrPrinter, "Printer not ready");
  if (!m_pageOpen) {
    pages.emplace_back();
    m_pageOpen = true;
  }
  pages.back().emplace_back(text);
}

void FakePrintDevice::NewPage() {
  ++m_page;
  m_pageOpen = false;
}

}  // namespace ira::testing
