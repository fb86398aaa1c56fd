// The projection and the excess distribution limit (its first indexed year,
// taxed, is the golden batch run projection-excess-2050). Each year's
// required amount is the projected balance over the Uniform Lifetime figure
// for the owner's age, to four decimals and then to the cent; income is the
// balance before the distribution times the rate, to the cent.
#include <string>
#include <vector>

#include "engine_fixture.h"

namespace ira::testing {
namespace {

using namespace rep_calc;

class ProjectionTest : public EngineTest {
 protected:
  void SetOwner(Date birth, std::int16_t dcy, std::int16_t years, std::int16_t incomeCalc,
                std::int16_t distType = kTrue) {
    scenario.Reset();
    scenario.Gen.OwnerBirthDate = birth;
    scenario.Gen.DistType = distType;
    scenario.Gen.DCY = dcy;
    scenario.Gen.ProjectionYears = years;
    scenario.Gen.IncomeCalc = incomeCalc;
  }
  // Born 7/1/1933: 70 1/2 on 1/1/2004, so the first DCY is 2004 and the second 2005.
  void OwnerOf2004(std::int16_t dcy, std::int16_t years, std::int16_t incomeCalc) {
    SetOwner(MakeDate(1933, 7, 1), dcy, years, incomeCalc);
  }

  IraRecord& AddIra(const char* benefit, float rate) {
    IraRecord& ira = scenario.AddIra();
    ira.Benefit = M(benefit);
    ira.RateOfReturn = rate;
    return ira;
  }

  void Run() { CalcProjResults(scenario, cells, totals); }

  Scenario scenario;
  ProjCells cells;
  std::vector<ProjYearTotals> totals;
};

TEST_F(ProjectionTest, TenYearsThroughTheFirstAndSecondDcy) {
  // 2002..2011, owner 69..78: uniform 28.3, 27.4, 26.5, 25.6, 24.7, 23.8, 22.9, 22.0, 21.2, 20.3.
  // Income on: {distribution, income, end}; income off differs from 2002 on (no income that year).
  const char* incomeOn[][3] = {
      {"3533.57", "5000.00", "101466.43"},  // 100,000.00 / 28.3 = 3,533.568905; 100,000 x 5%
      {"3703.15", "5073.32", "102836.60"},  // 101,466.43 / 27.4 = 3,703.154380; x 5% = 5,073.3215
      {"3880.63", "5141.83", "104097.80"},  // 102,836.60 / 26.5 = 3,880.626415
      {"4066.32", "5204.89", "105236.37"},  // 104,097.80 / 25.6 = 4,066.320313
      {"4260.58", "5261.82", "106237.61"},  // 105,236.37 / 24.7 = 4,260.581781
      {"4463.77", "5311.88", "107085.72"},  // 106,237.61 / 23.8 = 4,463.765126
      {"4676.23", "5354.29", "107763.78"},  // 107,085.72 / 22.9 = 4,676.232314
      {"4898.35", "5388.19", "108253.62"},  // 107,763.78 / 22.0 = 4,898.353636
      {"5106.30", "5412.68", "108560.00"},  // 108,253.62 / 21.2 = 5,106.302830
      {"5347.78", "5428.00", "108640.22"},  // 108,560.00 / 20.3 = 5,347.783251
  };
  const char* incomeOff[][3] = {
      {"3533.57", "0", "96466.43"},
      {"3520.67", "4823.32", "97769.08"},  // 96,466.43 / 27.4 = 3,520.672628
  };
  for (std::int16_t incomeCalc : {kTrue, kFalse}) {
    SCOPED_TRACE(incomeCalc == kTrue ? "income on" : "income off");
    OwnerOf2004(2002, 10, incomeCalc);
    scenario.Gen.SpouseBen = kTrue;
    scenario.Gen.SpouseBirthDate = MakeDate(1999, 1, 1);
    IraRecord& a = AddIra("100000", 5.0f);
    a.DistributedThisYear = M("500");
    a.FirstYearDist = M("2000");  // cleared in 2004, so never taken off in 2005
    IraRecord& b = AddIra("1000", 4.0f);  // takes more than it holds
    b.DistributedThisYear = M("1200");
    b.FirstYearDist = M("100");
    AddIra("50000", 5.0f).SpouseBen = kTrue;  // a spouse of 3 has no table figure
    Run();

    ASSERT_EQ(totals.size(), 10u);
    EXPECT_EQ(LastProjYear(), 9);
    const auto& expected = incomeCalc == kTrue ? incomeOn : incomeOff;
    const std::size_t years = incomeCalc == kTrue ? 10 : 2;
    for (std::size_t y = 0; y < years; ++y) {
      SCOPED_TRACE(y);
      EXPECT_EQ(cells[0][y].BegBalance, y == 0 ? M("100000") : cells[0][y - 1].EndBalance);
      EXPECT_EQ(cells[0][y].Distribution, M(expected[y][0]));
      EXPECT_EQ(cells[0][y].Income, M(expected[y][1]));
      EXPECT_EQ(cells[0][y].EndBalance, M(expected[y][2]));
    }
    // The dry account distributes what was taken, then shows -200; the other -100 throughout.
    const Money bEnd = M("1000") + (incomeCalc == kTrue ? M("40") : Money()) - M("1200");
    EXPECT_EQ(cells[1][0].Distribution, M("1200"));
    EXPECT_EQ(cells[1][0].EndBalance, bEnd);
    EXPECT_EQ(cells[1][9].Distribution.Raw(), kProjStoppedRaw);
    EXPECT_EQ(cells[2][0].Distribution.Raw(), kProjNoDataRaw);
    EXPECT_EQ(cells[2][9].Distribution.Raw(), kProjNoDataRaw);
    // The year an account is found unsupported still counts its sentinel and its balance.
    EXPECT_EQ(totals[0].TotalDist, M("3533.57") + M("1200") + M("-100"));
    EXPECT_EQ(totals[0].CombinedEnd, M(expected[0][2]) + bEnd + M("50000"));
    EXPECT_EQ(totals[1].TotalDist, M(expected[1][0]));
    EXPECT_EQ(totals[1].CombinedEnd, M(expected[1][2]));
    // Only an account still projected in the first DCY has its first-year amount cleared.
    EXPECT_EQ(scenario.Ira[0].FirstYearDist, Money());
    EXPECT_EQ(scenario.Ira[1].FirstYearDist, M("100"));
  }
}

TEST_F(ProjectionTest, StartingInTheSecondDcyTakesOffTheFirstYearDistributions) {
  // 2005: 100,000 - 2,000 = 98,000 / 25.6 = 3,828.125 -> 3,828.12 (tie to the even cent).
  // The running balance carries the 2,000 off; the ending balance shown does not.
  OwnerOf2004(2005, 2, kFalse);
  IraRecord& ira = AddIra("100000", 5.0f);
  ira.FirstYearDist = M("2000");
  Run();
  EXPECT_EQ(cells[0][0].Distribution, M("3828.12"));
  EXPECT_EQ(cells[0][0].EndBalance, M("96171.88"));  // 100,000 - 3,828.12
  EXPECT_EQ(totals[0].CombinedEnd, M("94171.88"));   // 98,000 - 3,828.12
  // 2006 goes on from 94,171.88: / 24.7 = 3,812.626721 -> 3,812.63; income 4,708.594 -> 4,708.59.
  EXPECT_EQ(cells[0][1].Distribution, M("3812.63"));
  EXPECT_EQ(cells[0][1].Income, M("4708.59"));
  EXPECT_EQ(cells[0][1].EndBalance, M("95067.84"));
  // Not the first DCY: the scenario keeps its amount.
  EXPECT_EQ(scenario.Ira[0].FirstYearDist, M("2000"));
}

TEST_F(ProjectionTest, StopsWhenNoAccountIsLeft) {
  OwnerOf2004(2002, 10, kFalse);
  AddIra("1000", 0.0f).DistributedThisYear = M("1000");  // exactly empty after 2002
  Run();
  EXPECT_EQ(LastProjYear(), 0);
  EXPECT_EQ(cells[0][0].EndBalance, Money());
  EXPECT_EQ(rec.progress.notices, std::vector<std::string>{"Doing calculations for Projection Report"});
  // Years after the stop are left as they were.
  EXPECT_EQ(cells[0][1].Distribution, Money());
  EXPECT_EQ(totals[1].Limit, Money());

  // Nothing to project: the arrays are not touched, the index still follows the years.
  OwnerOf2004(2002, 4, kFalse);
  cells.clear();
  Run();
  EXPECT_TRUE(cells.empty());
  EXPECT_EQ(LastProjYear(), 3);
}

TEST_F(ProjectionTest, RegimeOf2001DependsOnTheTypeOfDistribution) {
  // Born 3/1/1929, 72 in 2001. Required: the 2001 amount, 100,000 / VI(72, 62) = 24.4 -> 4,098.36.
  // Early by minimum distribution: the 1987 amount, 100,000 / V(72) = 14.6 -> 6,849.32.
  for (std::int16_t distType : {kTrue, kFalse}) {
    SetOwner(MakeDate(1929, 3, 1), 2001, 1, kFalse, distType);
    AddIra("100000", 5.0f);
    Run();
    ASSERT_EQ(totals.size(), 1u);
    EXPECT_EQ(cells[0][0].Distribution, distType == kTrue ? M("4098.36") : M("6849.32"));
  }
}

TEST(GetExcessDistLimit, IndexedOnlyAfter2050) {
  RecordingScope rec;
  struct Row {
    std::int16_t year;
    float inflation;
    const char* limit;
  } rows[] = {
      {1997, 3.0f, "999999999"},
      {2001, 3.0f, "999999999"},
      {2050, 3.0f, "999999999"},
      // 161,169 kept whole at no inflation: 160,000 is the multiple of 5,000 below it.
      {2051, 0.0f, "160000"},
      // 161,169 x 1.03 fifty-four times (1998..2051), each kept to four decimals:
      // 795,227.9675, and 795,000 below it.
      {2051, 3.0f, "795000"},
  };
  for (const Row& r : rows) EXPECT_EQ(GetExcessDistLimit(r.inflation, r.year), M(r.limit)) << r.year;
  EXPECT_TRUE(rec.messages.messages.empty());

  EXPECT_EQ(GetExcessDistLimit(3.0f, 1996), M("160000"));
  ASSERT_EQ(rec.messages.messages.size(), 1u);
  EXPECT_EQ(rec.messages.Last().title, kProgramTitle);
  EXPECT_EQ(rec.messages.Last().text,
            "Cannot calculate 4980A(c) limitation because a year in the calculation, 1996, is before 1997.");
}

}  // namespace
}  // namespace ira::testing
