// Tallyra's entry point: the command line decides between the desktop program
// and the silent batch run.
#include <exception>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "app/batch/batch_outputs.h"
#include "app/batch/batch_run.h"
#include "app/batch/command_line.h"
#include "app/batch/folder_batch.h"
#include "core/base/program.h"
#ifdef TALLYRA_HAS_DESKTOP
#include "app/desktop/desktop.h"
#endif

int main(int argc, char** argv) {
  using namespace ira::app;
  try {
    const CommandLine cl = ParseArguments(std::vector<std::string>(argv + 1, argv + argc));
    if (cl.help) {
      std::cout << UsageText();
      return kExitOk;
    }
    if (cl.version) {
      std::cout << "Tallyra " << ira::VersionText() << "\n";
      return kExitOk;
    }
    ira::SetProgramFolder(ExecutableFolder(argc > 0 ? argv[0] : nullptr));
    const bool folder = !cl.batchFolder.empty() || !cl.outFolder.empty();
#ifdef TALLYRA_HAS_DESKTOP
    // The desktop takes the arguments it knows (Qt's own among them).
    if (!cl.silent && !folder) return ira::desktop::RunDesktop(argc, argv, cl.input);
#endif
    if (!cl.error.empty()) {
      std::cerr << "tallyra: " << cl.error << "\nTry 'tallyra --help'.\n";
      return kExitUsage;
    }
    const auto batch = [&] { return folder ? RunFolderBatch(cl, std::cerr) : RunBatch(cl, std::cerr); };
    if (cl.pdf && (cl.silent || folder)) {
#ifdef TALLYRA_HAS_DESKTOP
      return ira::desktop::WithPdfPainter(argc, argv, [&](ira::desktop::PdfPainter painter) {
        SetPdfPainter(std::move(painter));
        return batch();
      });
#else
      std::cerr << "tallyra: this program was built without Qt and writes no PDF files\n";
      return kExitUsage;
#endif
    }
    if (cl.silent || folder) return batch();
    std::cerr << "tallyra: this build has no desktop program; run the batch job with /silent\n";
    return kExitUsage;
  } catch (const std::exception& e) {
    std::cerr << "tallyra: unexpected error: " << e.what() << "\n";
    return kExitUnexpected;
  }
}
