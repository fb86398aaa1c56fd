// Shared setup of the engine tests: the installed tables are loaded once from
// the build's program folder, and small builders keep each case to the inputs
// that matter for it.
#pragma once

#include <gtest/gtest.h>

#include "core/base/calendar.h"
#include "core/base/checked.h"
#include "core/base/money.h"
#include "core/engine/rep_calc.h"
#include "core/scenario/scenario.h"
#include "support/installed_tables.h"
#include "support/recording_sinks.h"

namespace ira::testing {

inline Money M(const char* text) { return Money::FromString(text); }

class EngineTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { LoadInstalledTables(); }

  // A required-distribution owner; no spouse, living.
  static GeneralInputs Owner(Date birth, std::int16_t dcy) {
    GeneralInputs gen;
    gen.OwnerBirthDate = birth;
    gen.DCY = dcy;
    gen.DistType = kTrue;
    return gen;
  }

  static IraRecord Ira(const char* benefit) {
    IraRecord ira;
    ira.Benefit = M(benefit);
    return ira;
  }

  RecordingScope rec;
};

}  // namespace ira::testing
