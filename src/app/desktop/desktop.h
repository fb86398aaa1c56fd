// The interactive program: start-up screen, settings, data folder, tables,
// then the main window until it closes.
#pragma once

#include <string>

namespace ira::desktop {

// `inputFile`: a scenario to open at once (the command line's /input), or "".
int RunDesktop(int argc, char** argv, const std::string& inputFile = {});

}  // namespace ira::desktop
