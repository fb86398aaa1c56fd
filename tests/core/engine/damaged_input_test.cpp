// What the engine makes of inputs no dialog lets through but a damaged file
// or a missing table can bring: an ira::Error for the report to show, never a
// crash or a figure computed from nonsense.
#include <limits>

#include "engine_fixture.h"
#include "support/scenario_files.h"

namespace ira::testing {
namespace {

using namespace rep_calc;

class DamagedInputTest : public EngineTest {
 protected:
  // Tables as at a start-up that found no table file; the next suite's
  // tables are loaded again.
  void StartWithoutTables() {
    SetProgramFolder(m_empty.Path());
    tables::ClearTables();
  }
  void TearDown() override {
    SetProgramFolder(TALLYRA_PROGRAM_DIR);
    tables::ReadTableVI();
    tables::ReadTableV();
  }

 private:
  TempFolder m_empty;
};

TEST_F(DamagedInputTest, GivesAnErrorForTheReport) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  struct Row {
    const char* name;
    bool noTables;
    std::int16_t distType, method;
    float intRate;
    Date birth;
    int error;
  } rows[] = {
      {"amortization, no table: a term of 0", true, 0, kMethodAmortization, 5.0f, MakeDate(1950, 1, 1),
       kErrDivisionByZero},
      {"amortization at no interest, no table", true, 0, kMethodAmortization, 0.0f, MakeDate(1950, 1, 1),
       kErrDivisionByZero},
      {"birthday that is no number", false, kTrue, kMethodMinimum, 0.0f, nan, kErrOverflow},
      {"birthday past 9999", false, 0, kMethodAmortization, 5.0f, 1e7, kErrOverflow},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    if (r.noTables) StartWithoutTables();
    GeneralInputs gen = Owner(r.birth, 2005);
    gen.DistType = r.distType;
    gen.EarlyMethod = r.method;
    gen.IntRate = r.intRate;
    gen.AnnuityIntRate = 6.0f;
    IraDistResults out;
    try {
      CalcIraDist(gen, Ira("100000"), out, 0.0f);
      ADD_FAILURE() << "no error";
    } catch (const Error& e) {
      EXPECT_EQ(e.Number(), r.error) << e.what();
    }
  }
}

// The user's factor counts from 0.01 on, however far it lies from there.
TEST_F(DamagedInputTest, ExtremeUsersFactorsAreComparedExactly) {
  struct Row {
    const char* name;
    float factor;
    float used;
  } rows[] = {
      {"largest single", 3.4e38f, 3.4e38f},
      {"smallest single", 1e-45f, 11.84583f},  // the 90CM factor at 6.0%, age 55
      {"negative and large", -3.4e38f, 11.84583f},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    GeneralInputs gen = Owner(MakeDate(1950, 1, 1), 2005);
    gen.DistType = 0;
    gen.AnnuityOverride = kTrue;
    gen.AnnuityFactor = r.factor;
    gen.AnnuityIntRate = 6.0f;
    EXPECT_EQ(EarlyAnnuityFactor(gen), r.used);
  }
}

}  // namespace
}  // namespace ira::testing
