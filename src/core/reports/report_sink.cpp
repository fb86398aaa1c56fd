#include "core/reports/report_sink.h"

#include <cerrno>
#include <cstring>

#include "core/base/errors.h"
#include "core/reports/prnmastr.h"

namespace ira::reports {

void ReportSink::SetCaption(std::string_view) {}
void ReportSink::ShowGrid(GridReport) {}

std::int16_t PrintSink::Block(int lineCount, const PageHeading& heading) {
  return PrnManager2(m_device, lineCount, heading.line1, heading.line2, heading.line3);
}

void PrintSink::Line(std::string_view text) { m_device.PrintLine(text); }

std::int16_t TextSink::Block(int, const PageHeading&) { return kPrnFits; }

void TextSink::Line(std::string_view text) {
  m_text += text;
  m_text += kCrLf;
  if (m_stream != nullptr && m_text.size() >= 65536) Flush();
}

void TextSink::Flush() {
  if (m_stream == nullptr || m_text.empty()) return;
  if (std::fwrite(m_text.data(), 1, m_text.size(), m_stream) != m_text.size())
    throw FileError(kErrPathAccess, std::strerror(errno));
  m_text.clear();
}

void TextSink::SetCaption(std::string_view caption) {
  if (m_mode == ReportMode::View) m_caption = caption;
}

void TextSink::ShowGrid(GridReport grid) {
  if (m_mode != ReportMode::View) return;
  m_grid = std::move(grid);
  m_hasGrid = true;
}

void OutputBlock(ReportSink& sink, std::string& block, int lineCount, const PageHeading& heading) {
  sink.Block(lineCount, heading);
  std::string_view rest = block;
  while (!rest.empty()) {
    const std::size_t end = rest.find(kCrLf);
    if (end == std::string_view::npos) {
      sink.Line(rest);
      break;
    }
    sink.Line(rest.substr(0, end));
    rest.remove_prefix(end + kCrLf.size());
  }
  block.clear();
}

void BlockWriter::Add(std::string_view line) {
  m_block += line;
  m_block += kCrLf;
  ++m_lines;
}

void BlockWriter::Emit(int lineCount) {
  OutputBlock(m_sink, m_block, lineCount, m_heading);
  m_lines = 0;
}

void BlockWriter::EmitAll() { Emit(m_lines); }

}  // namespace ira::reports
