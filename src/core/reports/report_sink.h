// Where a report's content goes. Every report is one routine that writes to a
// ReportSink and never asks whether the lines end up in a window, on paper or
// in the batch output file; the sink of the mode decides.
//
// Writing a report routine (signature: void Routine(ReportSink& sink)):
//
//   - Read the program-wide scenario (TheScenario()); compute with the engine.
//   - Text reports (Inputs, General Information, Distribution Calculations):
//       if (sink.Mode() == ReportMode::View) { sink.SetCaption(title); ...screen heading lines... }
//       BlockWriter out(sink, heading);
//       out.Add("  IRA Owner's date of birth: " + ...);
//       out.Emit(1);                       // the block's line count, as the report's rules give it
//     In view and file mode the lines are kept as text (each line + CRLF); in
//     print mode Emit announces the count to PrnManager2 (page heading, page
//     break, page number) and then prints the lines. The screen heading is
//     written only in view mode: printed pages carry the page heading instead
//     and the batch file carries no heading.
//   - Grid reports (Calendar Year Summary, Projection):
//       view mode:   build a GridReport (caption, heading text, column widths,
//                    cells, labels) and hand it over with sink.ShowGrid(grid);
//                    the desktop only lays it out.
//       print mode:  before each block of n lines call sink.Block(n, heading);
//                    when it returns kPrnNewPageBegun a page just began, so
//                    print the column headings again (and count them in n);
//                    then sink.Line(...) for each line.
//       file mode:   the same code as print mode: the file sink keeps the
//                    printed layout without page headings or page numbers.
//   - Do not catch printer errors or show the print progress notice: the
//     dispatcher (display_master.h) does both around every report.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/base/print_device.h"

namespace ira::reports {

// The report mode every report routine runs in.
enum class ReportMode : std::int16_t { View = 0, Print = 1, File = 2 };

// Lines end with carriage return and line feed in report text.
inline constexpr std::string_view kCrLf = "\r\n";

// The three lines at the top of every printed page.
struct PageHeading {
  std::string line1;  // the owner's name field
  std::string line2;  // the Other Info field
  std::string line3;  // the report's title
};

// A named label beside a grid (a footnote, the regulations used, ...).
struct GridLabel {
  std::string name;  // the window's control name: "lblNoData", "lblRegUsed", ...
  std::string text;
  bool visible = true;
};

// Everything a grid window shows; the desktop only lays it out.
struct GridReport {
  std::string caption;  // window caption
  std::string heading;  // the heading text: lines joined by CRLF
  // Column widths as multiples of the width of "X" in the grid's font.
  std::vector<int> columnWidths;
  int fixedRows = 0;  // header rows at the top; their cells may hold CRLF-joined lines
  int fixedCols = 0;  // label columns at the left
  std::vector<std::vector<std::string>> cells;  // [row][column]
  std::vector<GridLabel> labels;
};

class ReportSink {
 public:
  virtual ~ReportSink() = default;
  virtual ReportMode Mode() const = 0;
  // Announces `lineCount` lines that follow as one block (print: through
  // PrnManager2, so 1..40). Returns kPrnNewPageBegun (1) when a page with the
  // page heading has just begun, kPrnFits (2) otherwise; view and file sinks
  // always return kPrnFits.
  virtual std::int16_t Block(int lineCount, const PageHeading& heading) = 0;
  // One line of text, without its line end.
  virtual void Line(std::string_view text) = 0;
  // View mode only; other sinks ignore them.
  virtual void SetCaption(std::string_view caption);
  virtual void ShowGrid(GridReport grid);
};

// Print mode: blocks go through PrnManager2, lines to the device.
class PrintSink final : public ReportSink {
 public:
  explicit PrintSink(PrintDevice& device) : m_device(device) {}
  ReportMode Mode() const override { return ReportMode::Print; }
  std::int16_t Block(int lineCount, const PageHeading& heading) override;
  void Line(std::string_view text) override;

 private:
  PrintDevice& m_device;
};

// View and file modes: keeps the report's text (each line + CRLF); in view
// mode also the window caption and a grid report's content. Given a stream
// (file mode), the text goes out to it whenever it passes 64 KiB, so that a
// report of any length is held only in part; Flush writes the rest, and a
// failed write throws ira::FileError with the system's reason.
class TextSink final : public ReportSink {
 public:
  explicit TextSink(ReportMode mode, std::FILE* stream = nullptr) : m_mode(mode), m_stream(stream) {}
  ReportMode Mode() const override { return m_mode; }
  std::int16_t Block(int lineCount, const PageHeading& heading) override;
  void Line(std::string_view text) override;
  void SetCaption(std::string_view caption) override;
  void ShowGrid(GridReport grid) override;

  // The text not yet written out.
  const std::string& Text() const { return m_text; }
  void Flush();
  const std::string& Caption() const { return m_caption; }
  bool HasGrid() const { return m_hasGrid; }
  const GridReport& Grid() const { return m_grid; }

 private:
  ReportMode m_mode;
  std::FILE* m_stream;
  std::string m_text;
  std::string m_caption;
  bool m_hasGrid = false;
  GridReport m_grid;
};

// The block output of the text reports: `block` holds one or more lines, each
// ending with CRLF. Announces `lineCount` to the sink, writes the lines, and
// empties the block.
void OutputBlock(ReportSink& sink, std::string& block, int lineCount, const PageHeading& heading);

// Builds one block at a time for OutputBlock.
class BlockWriter {
 public:
  BlockWriter(ReportSink& sink, PageHeading heading) : m_sink(sink), m_heading(std::move(heading)) {}
  // Adds one line (without its line end) to the current block.
  void Add(std::string_view line);
  // Outputs the current block announced as `lineCount` lines.
  void Emit(int lineCount);
  // Outputs the current block announced as the number of lines it holds.
  void EmitAll();
  ReportSink& Sink() { return m_sink; }

 private:
  ReportSink& m_sink;
  PageHeading m_heading;
  std::string m_block;
  int m_lines = 0;
};

}  // namespace ira::reports
