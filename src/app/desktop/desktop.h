// The interactive program: start-up screen, settings, data folder, tables,
// then the main window until it closes.
#pragma once

namespace ira::desktop {

int RunDesktop(int argc, char** argv);

}  // namespace ira::desktop
