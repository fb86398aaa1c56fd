// The interactive program: start-up screen, settings, data folder, tables,
// then the main window until it closes.
#pragma once

#include <functional>
#include <string>

namespace ira::desktop {

// `inputFile`: a scenario to open at once (the command line's /input), or "".
int RunDesktop(int argc, char** argv, const std::string& inputFile = {});

// Paints the reports of the calling thread's scenario into a PDF file, as the
// desktop's Save as PDF does; false after a message when nothing was written.
using PdfPainter = std::function<bool(const std::string& path, int flags)>;

// Runs `batch` with a painter for its PDF files. No display is needed: Qt
// draws offscreen unless QT_QPA_PLATFORM names another platform. The painter
// may be called from any thread, one PDF at a time.
int WithPdfPainter(int& argc, char** argv, const std::function<int(PdfPainter painter)>& batch);

}  // namespace ira::desktop
