// Tallyra's entry point: the command line decides between the desktop program
// and the silent batch run.
#include <cstring>
#include <iostream>

#include "core/base/program.h"
#ifdef TALLYRA_HAS_DESKTOP
#include "app/desktop/desktop.h"
#endif

int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--version") == 0) {
      std::cout << "Tallyra " << ira::VersionText() << "\n";
      return 0;
    }
  }
#ifdef TALLYRA_HAS_DESKTOP
  return ira::desktop::RunDesktop(argc, argv);
#endif
  std::cerr << "tallyra: nothing to do\n";
  return 2;
}
