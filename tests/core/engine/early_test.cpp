// Early distributions: the minimum distribution, amortization and annuity
// methods. Owner born 1/1/1950, 55 in 2005 and 51 in 2001; balance 100,000.00.
#include "engine_fixture.h"

namespace ira::testing {
namespace {

using namespace rep_calc;

class EarlyDistTest : public EngineTest {};

TEST_F(EarlyDistTest, PaymentByMethod) {
  struct Row {
    const char* name;
    std::int16_t dcy, method, use2002, userFactorOn;
    float userFactor, intRate;
    const char *gross1987, *grossLater;
  } rows[] = {
      // Distribution Period J(55, 45) = 41.6: 2,403.846154 -> 2,403.85.
      {"minimum, 2002 table", 2005, kMethodMinimum, kTrue, 0, 0, 0, "0", "2403.85"},
      // VI(55, 45) = 40.4 (1986, read from the partly reconstructed CSV): 2,475.247525 -> 2,475.25.
      {"minimum, 1986 table", 2005, kMethodMinimum, 0, 0, 0, 0, "0", "2475.25"},
      // 2001 takes the 2002 table anyway: J(51, 41) = 45.5: 2,197.802198; 1987: V(51) = 32.2: 3,105.590062.
      {"minimum, 2001", 2001, kMethodMinimum, 0, 0, 0, 0, "3105.59", "2197.80"},
      // 5,000 / (1 - 1.05^-29.6) = 5,000 / (1 - 0.2359373773) = 6,543.966230, not rounded to cents.
      {"amortization, single(55) = 29.6", 2005, kMethodAmortization, kTrue, 0, 0, 5.0f, "6543.9662", "6543.9662"},
      // 5,000 / (1 - 1.05^-28.6) = 5,000 / (1 - 0.2477342462) = 6,646.587293.
      {"amortization, V(55) = 28.6", 2005, kMethodAmortization, 0, 0, 0, 5.0f, "6646.5873", "6646.5873"},
      // No interest: 100,000 / 29.6 = 3,378.378378.
      {"amortization at 0%", 2005, kMethodAmortization, kTrue, 0, 0, 0, "3378.3784", "3378.3784"},
      // 100,000 / 15.5 = 6,451.612903.
      {"annuity, user's factor", 2005, kMethodAnnuity, 0, kTrue, 15.5f, 6.0f, "6451.6129", "6451.6129"},
      // Table S at 6.0%, 55: 0.28925; (1 - 0.28925) / 0.06 = 11.84583; 100,000 / 11.84583 = 8,441.789220.
      {"annuity, 90CM", 2005, kMethodAnnuity, 0, 0, 15.5f, 6.0f, "8441.7892", "8441.7892"},
      {"annuity, user's factor below 0.01", 2005, kMethodAnnuity, 0, kTrue, 0.005f, 6.0f, "8441.7892", "8441.7892"},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    GeneralInputs gen = Owner(MakeDate(1950, 1, 1), r.dcy);
    gen.DistType = 0;
    gen.EarlyMethod = r.method;
    gen.IntRate = r.intRate;
    gen.AnnuityIntRate = r.intRate;
    gen.AnnuityOverride = r.userFactorOn;
    gen.AnnuityFactor = r.userFactor;
    IraRecord ira = Ira("100000");
    ira.chkUse2002Table = r.use2002;
    ira.DistributedThisYear = M("1000");
    IraDistResults out;
    CalcIraDist(gen, ira, out, 0.0f);
    EXPECT_EQ(out.AgesSupported, kTrue);
    EXPECT_EQ(out.Gross1987, M(r.gross1987));
    EXPECT_EQ(out.GrossLater, M(r.grossLater));
    EXPECT_EQ(out.ToPayLater, M(r.grossLater) - M("1000"));
  }
  EXPECT_TRUE(rec.messages.messages.empty());
}

}  // namespace
}  // namespace ira::testing
