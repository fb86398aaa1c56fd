#include "core/reports/proj_rpt.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "core/base/calendar.h"
#include "core/base/checked.h"
#include "core/base/messages.h"
#include "core/base/text.h"
#include "core/engine/rep_calc.h"
#include "core/law/law.h"
#include "core/reports/formats.h"
#include "core/reports/prnmastr.h"
#include "core/scenario/scenario.h"
#include "core/tables/datefun.h"
#include "core/tables/table_check.h"

namespace ira::reports {
namespace {

using rep_calc::ProjCell;
using rep_calc::ProjYearTotals;

constexpr std::string_view kWhere = "DisplayProjRpt()";
constexpr const char* kCaption = "Projection of Distributions Report";
constexpr const char* kLabel1 = "Computations made using 2002 final regulations";
constexpr const char* kLabel1Current = "Computations made using the law in force in each year";
constexpr const char* kAadNote = "The distributions are net of any Amounts Already Distributed.";
constexpr const char* kPenaltyScreen = "* Possible Penalty for Excess Distributions";
constexpr const char* kPenaltyPaper = "* Possible Penalty for Excess Distributions.";
// The runs of blanks make the line breaks in the window; the 59 1/2 text is
// printed as the window shows it.
constexpr const char* kNoDataScreen =
    "** Calculations can not be made for this account because either the Owner's or a Beneficiary's age      is "
    "not supported by this system's life expectancy tables. Totals do not include this account.";
const std::array<const char*, 2> kNoDataPaper = {
    "** Calculations can not be made for this account because either the Owner's or a Beneficiary's age ",
    "   is not supported by this system's life expectancy tables. Totals do not include this account.",
};
constexpr const char* kOver59Half =
    "** Calculations will no longer be made for this account because the Owner is 59 and 1/2 and can make         "
    "   regular distributions.";
const std::string kSeparator = "----------------------";

// Printed layout: a 33-character label column, then 15-character year
// columns with every value right-aligned and followed by one blank.
// Why a projection ends early when its amounts outgrow what the program holds.
std::string OverflowText(std::int16_t year) {
  return "The projection stops before " + std::to_string(year) + ": its amounts would exceed " +
         "922,337,203,685,477.58, the largest amount the program can hold.";
}

constexpr std::size_t kLabelWidth = 33;
constexpr std::size_t kYearWidth = 15;
constexpr std::size_t kYearsPerGroup = 10;
constexpr int kColumnHeadingLines = 4;

// One value as the window and the paper show it.
struct Cell {
  std::string screen;
  std::string paper;
};

Cell Amount(Money m) { return {FormatAmount(m), FormatAmount(m) + " "}; }
Cell NoData() { return {"No Data**", "No Data** "}; }
Cell NotComputed() { return {"Not computed", "Not computed "}; }

// The per-account rows and the yearly totals rows, in the order shown.
enum AccountRow : std::size_t { kBegBalance, kIncome, kDistributions, kEndBalance, kAccountRows };
enum TotalsRow : std::size_t { kTotalDist, kLimit, kExcess, kTaxRate, kTax, kCombined, kTotalsRows };

constexpr std::array<const char*, kAccountRows> kAccountLabels = {"Beg. Balance", "Annual Income", "Distributions",
                                                                  "Ending Balance"};
constexpr std::array<const char*, kTotalsRows> kTotalsScreenLabels = {
    "Total Distributions for Year", "Excess Distribution Limit", "Excess Distribution",
    "Excess Dist. Tax Rate",        "Excess Distribution Tax",   "Combined Ending Balance"};
constexpr std::array<const char*, kTotalsRows> kTotalsPaperLabels = {
    "Total Distributions for year ", "Excess Distribution Limit    ", "Excess Distribution          ",
    "Excess Distribution Tax Rate ", "Excess Distribution Tax      ", "Combined Ending Balance      "};

struct Account {
  std::string name;
  std::vector<std::array<Cell, kAccountRows>> years;
};

// Everything both destinations show, per projection year.
struct Projection {
  std::vector<std::int16_t> calendarYear;
  std::vector<std::int16_t> ownerAge;
  std::size_t dataYears = 0;  // years up to the engine's last projected year
  std::vector<Account> accounts;
  std::vector<std::array<Cell, kTotalsRows>> totals;
  // Per year: which marks appear in it.
  std::vector<bool> penalty, notComputable, over59Half, notComputedYet;
  // Under the law in force the excess distribution rows leave the table
  // (the tax is repealed after 1996) and a note says so.
  bool excessRows = true;
  bool currentLaw = false;
  bool ShowsRow(std::size_t r) const { return excessRows || r == kTotalDist || r == kCombined; }

  std::size_t Years() const { return calendarYear.size(); }
};

std::array<Cell, kAccountRows> AccountCells(const ProjCell& c) {
  // What was already taken this year is not shown again as a distribution.
  return {Amount(c.BegBalance), Amount(c.Income), Amount(c.Distribution - c.Distributed), Amount(c.EndBalance)};
}

std::array<Cell, kTotalsRows> TotalsCells(const ProjYearTotals& t) {
  std::array<Cell, kTotalsRows> cells;
  cells[kTotalDist] = Amount(t.TotalDist);
  if (t.Excess > Money()) {
    // The mark takes the place of the blank after the amount.
    cells[kTotalDist].screen += "*";
    cells[kTotalDist].paper.back() = '*';
  }
  cells[kLimit] = t.Limit.Raw() == rep_calc::kNoLimitRaw ? Cell{"No Limit", "Not Limited "} : Amount(t.Limit);
  cells[kExcess] = Amount(t.Excess);
  const std::string rate = FormatRate(rep_calc::kExcessTaxRate * 100.0f);
  cells[kTaxRate] = {rate, rate + " "};
  cells[kTax] = Amount(t.Tax);
  cells[kCombined] = Amount(t.CombinedEnd);
  return cells;
}

Projection Project(Scenario& scenario) {
  rep_calc::ProjCells engineCells;
  std::vector<ProjYearTotals> engineTotals;
  rep_calc::CalcProjResults(scenario, engineCells, engineTotals);

  const GeneralInputs& gen = scenario.Gen;
  const std::size_t years = static_cast<std::size_t>(gen.ProjectionYears);
  Projection p;
  p.dataYears = std::min(years, static_cast<std::size_t>(std::max(rep_calc::LastProjYear() + 1, 0)));
  p.penalty.assign(years, false);
  p.notComputable.assign(years, false);
  p.over59Half.assign(years, false);
  p.notComputedYet.assign(years, false);
  p.currentLaw = law::UsesCurrentLaw(gen);
  p.excessRows = !(p.currentLaw && law::ExcessRepealed(gen.DCY));
  for (std::size_t y = 0; y < years; ++y) {
    const std::int16_t year = CheckedInt16(gen.DCY + static_cast<long long>(y), kWhere);
    p.calendarYear.push_back(year);
    p.ownerAge.push_back(datefun::AgeInYear(gen.OwnerBirthDate, year));
  }
  // Every account of an early series stops in the year the owner reaches 59 1/2.
  const std::int16_t year59Half = YearOf(datefun::Date59Half(gen.OwnerBirthDate));
  const auto past59Half = [&](std::size_t y) { return IsEarly(gen) && p.calendarYear[y] >= year59Half; };

  for (std::size_t i = 0; i < scenario.Ira.size(); ++i) {
    Account& account = p.accounts.emplace_back();
    account.name = RTrim(scenario.Ira[i].IraName);
    account.years.resize(years);
    for (std::size_t y = 0; y < p.dataYears && i < engineCells.size() && y < engineCells[i].size(); ++y) {
      const ProjCell& c = engineCells[i][y];
      std::array<Cell, kAccountRows>& cells = account.years[y];
      if (c.Distribution.Raw() == rep_calc::kProjStoppedRaw) continue;
      if (c.NotComputed) {
        cells.fill(NotComputed());
        p.notComputedYet[y] = true;
        continue;
      }
      if (c.Distribution.Raw() == rep_calc::kProjNoDataRaw) {
        cells.fill(NoData());
        p.notComputable[y] = true;
      } else if (past59Half(y)) {
        cells.fill(NoData());
        p.over59Half[y] = true;
      } else {
        cells = AccountCells(c);
      }
    }
  }

  p.totals.resize(years);
  for (std::size_t y = 0; y < p.dataYears && y < engineTotals.size(); ++y) {
    if (past59Half(y)) continue;
    p.totals[y] = TotalsCells(engineTotals[y]);
    p.penalty[y] = engineTotals[y].Excess > Money();
  }
  return p;
}

std::string Title(const GeneralInputs& gen) {
  if (IsEarly(gen)) return "Projection of distributions";
  return "Projection of distributions at " + NumberText(gen.PercentOver) + "% over Required Minimum Distribution";
}

std::string IncomeText(const GeneralInputs& gen) {
  return std::string(gen.IncomeCalc != 0 ? "Income calculated for " : "Income not calculated for ") +
         std::to_string(gen.DCY);
}

// Whether some year of [from, to) carries the mark.
bool Any(const std::vector<bool>& marks, std::size_t from, std::size_t to) {
  for (std::size_t y = from; y < to; ++y)
    if (marks[y]) return true;
  return false;
}

void ShowWindow(ReportSink& sink, const GeneralInputs& gen, const Projection& p) {
  const std::size_t years = p.Years();
  GridReport grid;
  grid.caption = kCaption;
  grid.heading = RTrim(gen.OwnerName) + std::string(kCrLf) + RTrim(gen.OtherInfo) + std::string(kCrLf) + Title(gen);
  grid.columnWidths.assign(years + 1, 13);
  grid.columnWidths[0] = 33;
  grid.fixedRows = 2;
  grid.fixedCols = 1;

  const auto row = [&grid](const std::string& label) -> std::vector<std::string>& {
    std::vector<std::string>& r = grid.cells.emplace_back();
    r.push_back(label);
    return r;
  };
  const auto separator = [&grid, years] { grid.cells.emplace_back(years + 1, kSeparator); };
  std::vector<std::string>& yearRow = row("Year:");
  for (std::int16_t year : p.calendarYear) yearRow.push_back(std::to_string(year));
  std::vector<std::string>& ageRow = row("Age(Owner):");
  for (std::int16_t age : p.ownerAge) ageRow.push_back(std::to_string(age));

  for (const Account& account : p.accounts) {
    row(account.name).resize(years + 1);
    for (std::size_t r = 0; r < kAccountRows; ++r) {
      std::vector<std::string>& cells = row(kAccountLabels[r]);
      for (std::size_t y = 0; y < years; ++y) cells.push_back(account.years[y][r].screen);
    }
    separator();
  }
  for (std::size_t r = 0; r < kTotalsRows; ++r) {
    if (!p.ShowsRow(r)) continue;
    if (r == kCombined) separator();
    std::vector<std::string>& cells = row(kTotalsScreenLabels[r]);
    for (std::size_t y = 0; y < years; ++y) cells.push_back(p.totals[y][r].screen);
  }
  std::vector<std::string>& doubleRule = row("");
  doubleRule.resize(years + 1, "=============");

  const bool notComputable = Any(p.notComputable, 0, years);
  const bool over59Half = Any(p.over59Half, 0, years);
  grid.labels = {
      {"Label1", p.currentLaw ? kLabel1Current : kLabel1, true},
      {"lblAADNote", kAadNote, true},
      {"lblIncomeCalc", "~ " + IncomeText(gen) + " ~", true},
      // One label: the accounts the tables do not cover come first.
      {"lblNoData", notComputable || !over59Half ? kNoDataScreen : kOver59Half, notComputable || over59Half},
      {"lblXSPenalty", kPenaltyScreen, Any(p.penalty, 0, years)},
  };
  if (p.currentLaw) {
    grid.labels.push_back({"lblExcessRepealed", law::kExcessRepealedText, !p.excessRows});
    grid.labels.push_back({"lblNotComputed", law::kNotComputedYetText, Any(p.notComputedYet, 0, years)});
  }
  if (const std::int16_t overflow = rep_calc::ProjOverflowYear(); overflow != 0)
    grid.labels.push_back({"lblOverflow", OverflowText(overflow), true});
  sink.ShowGrid(std::move(grid));
}

// One group of at most 10 year columns on paper.
class PaperGroup {
 public:
  PaperGroup(ReportSink& sink, const PageHeading& heading, const Projection& p, std::size_t from, std::size_t to)
      : m_sink(sink), m_heading(heading), m_p(p), m_from(from), m_to(to) {}

  void Print(const GeneralInputs& gen) {
    m_sink.Block(2, m_heading);
    m_sink.Line("");
    m_sink.Line(IncomeText(gen));
    for (const Account& account : m_p.accounts) {
      std::vector<std::string> lines = {"", account.name};
      for (std::size_t r = 0; r < kAccountRows; ++r)
        lines.push_back(Row(kAccountLabels[r], [&account, r](std::size_t y) {
          return account.years[y][r].paper;
        }));
      TableBlock(lines);
    }
    std::vector<std::string> lines = {""};
    for (std::size_t r = 0; r < kTotalsRows; ++r)
      if (m_p.ShowsRow(r))
        lines.push_back(Row(kTotalsPaperLabels[r],
                            [this, r](std::size_t y) { return m_p.totals[y][r].paper; }));
    lines.push_back(Row("", [](std::size_t) { return std::string(" ============= "); }));
    TableBlock(lines);
    Footnotes();
  }

 private:
  template <typename CellText>
  std::string Row(const std::string& label, CellText cellText) const {
    std::string line = PadRight(label, kLabelWidth);
    for (std::size_t y = m_from; y < m_to; ++y) line += PadLeft(cellText(y), kYearWidth);
    return line;
  }

  void ColumnHeadings() {
    m_sink.Line(Row(PadLeft("Year: ", kLabelWidth),
                    [this](std::size_t y) { return std::to_string(m_p.calendarYear[y]) + " "; }));
    m_sink.Line(Row(PadLeft("Age(Owner): ", kLabelWidth),
                    [this](std::size_t y) { return std::to_string(m_p.ownerAge[y]) + " "; }));
    m_sink.Line(PadLeft("Description: ", kLabelWidth));
    m_sink.Line(
        Row(std::string(kLabelWidth - 1, '-') + " ", [](std::size_t) { return std::string(" ------------- "); }));
  }

  // A block of the table: announced with the column headings, which are
  // printed above it at the start of the group and on every new page.
  void TableBlock(const std::vector<std::string>& lines) {
    const std::int16_t result = m_sink.Block(static_cast<int>(lines.size()) + kColumnHeadingLines, m_heading);
    if (m_first || result == kPrnNewPageBegun) ColumnHeadings();
    m_first = false;
    for (const std::string& line : lines) m_sink.Line(line);
  }

  void Footnotes() {
    std::vector<std::string> lines;
    if (Any(m_p.penalty, m_from, m_to)) lines.emplace_back(kPenaltyPaper);
    if (Any(m_p.notComputable, m_from, m_to)) {
      lines.insert(lines.end(), kNoDataPaper.begin(), kNoDataPaper.end());
      // The ages may be fine: a table file the figures need may be the cause.
      if (tables::AnyTableDamaged())
        lines.emplace_back("   Or a table file the figures need is missing or damaged: reinstall the program.");
    }
    if (Any(m_p.over59Half, m_from, m_to)) lines.emplace_back(kOver59Half);
    if (Any(m_p.notComputedYet, m_from, m_to)) lines.emplace_back(law::kNotComputedYetText);
    if (!m_p.excessRows) lines.emplace_back(law::kExcessRepealedText);
    if (lines.empty()) return;
    m_sink.Block(static_cast<int>(lines.size()) + 1, m_heading);
    m_sink.Line("");
    for (const std::string& line : lines) m_sink.Line(line);
  }

  ReportSink& m_sink;
  const PageHeading& m_heading;
  const Projection& m_p;
  std::size_t m_from;
  std::size_t m_to;
  bool m_first = true;
};

}  // namespace

std::string ProjectionTooLargeText(const GeneralInputs& gen) {
  return "The projection of " + std::to_string(gen.IraCount) + " IRAs over " + std::to_string(gen.ProjectionYears) +
         " years (" + std::to_string(rep_calc::ProjectedAccountYears(gen)) +
         " account-years) is too large to compute: at most " + std::to_string(rep_calc::kMaxProjectedAccountYears) +
         " account-years can be projected. Project fewer years or fewer IRAs.";
}

void DisplayProjRpt(ReportSink& sink) {
  Scenario& scenario = TheScenario();
  const GeneralInputs& gen = scenario.Gen;
  if (gen.ProjectionYears < 1) return;
  if (!rep_calc::ProjectionFits(gen)) {
    const std::string text = ProjectionTooLargeText(gen);
    ShowMessage(kProjTooLargeTitle, text, MsgIcon::Exclamation);
    if (sink.Mode() != ReportMode::View) {
      sink.Block(1, PageHeading{gen.OwnerName, gen.OtherInfo, Title(gen)});
      sink.Line("  " + text);
    }
    return;
  }
  const Projection p = Project(scenario);
  if (sink.Mode() == ReportMode::View) {
    ShowWindow(sink, gen, p);
    return;
  }
  const PageHeading heading{gen.OwnerName, gen.OtherInfo, Title(gen)};
  for (std::size_t from = 0; from < p.dataYears; from += kYearsPerGroup)
    PaperGroup(sink, heading, p, from, std::min(from + kYearsPerGroup, p.dataYears)).Print(gen);
  if (const std::int16_t overflow = rep_calc::ProjOverflowYear(); overflow != 0) {
    sink.Block(2, heading);
    sink.Line("");
    sink.Line(OverflowText(overflow));
  }
}

}  // namespace ira::reports
