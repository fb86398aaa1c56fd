// One printed document, as the page manager sees it. The desktop draws on a
// QPrinter; tests use a fake device with a fixed page length; the text device
// writes pages separated by form feeds.
#pragma once

#include <string_view>

namespace ira {

class PrintDevice {
 public:
  virtual ~PrintDevice() = default;
  // Lines of the current report font that fit on a page.
  virtual int LinesPerPage() = 0;
  virtual void PrintLine(std::string_view text) = 0;
  // The device's own page counter: 1 on the first page, running on across reports.
  virtual int PageNumber() const = 0;
  virtual void NewPage() = 0;
  // Sends the document to the spooler; nothing may be printed afterwards.
  virtual void EndDoc() = 0;
};

}  // namespace ira
