// Early distributions (a series of substantially equal periodic payments):
// the minimum distribution, amortization and annuity methods. Owner born
// 1/1/1950, 55 in the DCY 2005 (51 in 2001), balance 100,000.00.
#include "engine_fixture.h"

namespace ira::testing {
namespace {

using namespace rep_calc;

class EarlyDistTest : public EngineTest {
 protected:
  static GeneralInputs Early(std::int16_t dcy, std::int16_t method) {
    GeneralInputs gen = Owner(MakeDate(1950, 1, 1), dcy);
    gen.DistType = 0;
    gen.EarlyMethod = method;
    return gen;
  }
};

TEST_F(EarlyDistTest, MinimumDistributionUsesTheDistributionPeriod) {
  struct Row {
    const char* name;
    std::int16_t dcy, use2002;
    const char *gross1987, *grossLater;
  } rows[] = {
      // 2002 Distribution Period J(55, 45) = 41.6: 2,403.846154 -> 2,403.85.
      {"2002 table chosen", 2005, kTrue, "0", "2403.85"},
      // 1986 figure VI(55, 45) = 40.4 (CSV): 2,475.247525 -> 2,475.2475 -> 2,475.25.
      {"1986 table chosen", 2005, 0, "0", "2475.25"},
      // 2001 reads the 2002 table whatever the choice: J(51, 41) = 45.5: 2,197.802198 -> 2,197.80;
      // the 1987 amount is the single V(51) = 32.2: 3,105.590062 -> 3,105.59.
      {"2001, 1986 table chosen", 2001, 0, "3105.59", "2197.80"},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    IraRecord ira = Ira("100000");
    ira.chkUse2002Table = r.use2002;
    IraDistResults out;
    CalcIraDist(Early(r.dcy, kMethodMinimum), ira, out, 0.0f);
    EXPECT_EQ(out.AgesSupported, kTrue);
    EXPECT_EQ(out.RbdSlot, kSlotOwnerSingle);
    EXPECT_EQ(out.Gross1987, M(r.gross1987));
    EXPECT_EQ(out.GrossLater, M(r.grossLater));
    // Unused early slots read one year, never the sentinel.
    EXPECT_FLOAT_EQ(out.DcyLifeExp[kSlotMdib], 1.0f);
  }
}

TEST_F(EarlyDistTest, AmortizationPayment) {
  struct Row {
    const char* name;
    std::int16_t use2002;
    const char* payment;
  } rows[] = {
      // Term single(55) = 29.6 (2002): 100,000 x 0.05 / (1 - 1.05^-29.6)
      // = 5,000 / (1 - 0.2359373773) = 6,543.966230 -> 6,543.9662 (no cent rounding).
      {"2002 table", kTrue, "6543.9662"},
      // Term V(55) = 28.6 (1986): 5,000 / (1 - 0.2477342462) = 6,646.587293 -> 6,646.5873.
      {"1986 table", 0, "6646.5873"},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    GeneralInputs gen = Early(2005, kMethodAmortization);
    gen.IntRate = 5.0f;
    IraRecord ira = Ira("100000");
    ira.chkUse2002Table = r.use2002;
    ira.DistributedThisYear = M("1000");
    IraDistResults out;
    CalcIraDist(gen, ira, out, 0.0f);
    EXPECT_EQ(out.GrossLater, M(r.payment));
    EXPECT_EQ(out.Gross1987, M(r.payment));  // stored for both regimes
    EXPECT_EQ(out.ToPayLater, M(r.payment) - M("1000"));
  }
  // At no interest the balance is spread evenly: 100,000 / 29.6 = 3,378.378378 -> 3,378.3784.
  GeneralInputs gen = Early(2005, kMethodAmortization);
  IraRecord ira = Ira("100000");
  ira.chkUse2002Table = kTrue;
  EXPECT_EQ(AmortizationPayment(gen, ira), M("3378.3784"));
}

TEST_F(EarlyDistTest, AnnuityPaymentUsesTheUsersFactorOrLifeTable90CM) {
  struct Row {
    const char* name;
    std::int16_t override_;
    float userFactor;
    const char* payment;
  } rows[] = {
      // 100,000 / 15.5 = 6,451.612903 -> 6,451.6129.
      {"user's factor", kTrue, 15.5f, "6451.6129"},
      // Table S at 6.0%, age 55: 0.28925; (1 - 0.28925) / 0.06 = 11.845833 -> 11.84583;
      // 100,000 / 11.84583 = 8,441.789220 -> 8,441.7892.
      {"no user's factor", 0, 15.5f, "8441.7892"},
      {"user's factor below 0.01 is ignored", kTrue, 0.005f, "8441.7892"},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    GeneralInputs gen = Early(2005, kMethodAnnuity);
    gen.AnnuityOverride = r.override_;
    gen.AnnuityFactor = r.userFactor;
    gen.AnnuityIntRate = 6.0f;
    IraDistResults out;
    CalcIraDist(gen, Ira("100000"), out, 0.0f);
    EXPECT_EQ(out.GrossLater, M(r.payment));
    EXPECT_EQ(out.ToPayLater, M(r.payment));
  }
  EXPECT_TRUE(rec.messages.messages.empty());
}

}  // namespace
}  // namespace ira::testing
