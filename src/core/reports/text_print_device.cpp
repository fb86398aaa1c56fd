#include "core/reports/text_print_device.h"

#include <stdexcept>

namespace ira::reports {

void TextPrintDevice::PrintLine(std::string_view text) {
  if (m_ended) throw std::logic_error("TextPrintDevice: printing after the end of the document");
  if (m_pageBreakPending) {
    m_text += '\f';
    m_pageBreakPending = false;
  }
  m_text += text;
  m_text += '\n';
}

void TextPrintDevice::NewPage() {
  ++m_page;
  m_pageBreakPending = true;
}

}  // namespace ira::reports
