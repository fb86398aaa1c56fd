// The life expectancy tables installed beside the build's programs, loaded
// into the program-wide arrays as start-up does.
#pragma once

#include "core/base/program.h"
#include "core/tables/tables.h"

namespace ira::testing {

inline void LoadInstalledTables() {
  SetProgramFolder(TALLYRA_PROGRAM_DIR);
  tables::ClearTables();
  tables::ReadTableVI();
  tables::ReadTableV();
  tables::ReadTables2022();
}

}  // namespace ira::testing
