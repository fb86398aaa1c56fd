#include "core/reports/cal_summ.h"

#include <array>
#include <string>
#include <vector>

#include "core/base/text.h"
#include "core/engine/rep_calc.h"
#include "core/law/law.h"
#include "core/reports/formats.h"
#include "core/scenario/scenario.h"

namespace ira::reports {
namespace {

using rep_calc::IraDistResults;

enum class Rules { Later, Rules1987 };

constexpr const char* kCaption = "Calendar Year Summary Report";
constexpr const char* kTitleTail = " Distribution Calendar Year Summary";
constexpr const char* kNotComputable = "*";

// Screen and paper word the footnote differently; both wordings are kept.
// The run of blanks makes the line break in the window.
constexpr const char* kScreenFootnote =
    "* Calculations can not be made for this account because either the Owner's or a Beneficiary's age is "
    "not         supported by this system's life expectancy tables. Totals do not include this account.";
// Added to the footnote when the reason is a missing or damaged table file.
constexpr const char* kTableFootnote = "Here a table file the figures need is missing or damaged: reinstall the program.";
const std::array<const char*, 3> kPaperFootnote = {
    "* Calculations can not be made for this account because either the Owner's or a ",
    "    beneficiary's age is not supported by this system's life-expectancy tables. ",
    "    The Totals do not include this account.",
};

// Under the law in force an account is left out for its ages, because its
// beneficiary rules are not computed yet, or for want of an annuity factor;
// its own report says which.
constexpr const char* kCurrentFootnote =
    "* Not computed: the Distribution Calculations report gives the reason for this account. Totals do not "
    "include this account.";
const std::array<const char*, 2> kCurrentPaperFootnote = {
    "* Not computed: the Distribution Calculations report gives the reason for this ",
    "    account. The Totals do not include this account.",
};

bool CurrentLaw(const GeneralInputs& gen) {
  return law::ComputesRequiredYear(gen, gen.DCY) || law::ComputesNoticeSeries(gen);
}

// The printed layout: a nine-blank margin, a 32-character description and
// four 14-character amount columns two blanks apart, each amount
// right-aligned in 13 characters under the right end of its dashes.
const std::string kMargin(9, ' ');
constexpr std::size_t kDescWidth = 32;
constexpr std::size_t kAmountWidth = 13;
constexpr const char* kColumnGap = "   ";
constexpr const char* kHeading1 =
    "                                                      Total          Amount            Net";
constexpr const char* kHeading2Required =
    "                                     Adjusted        Required        Already         Required  ";
constexpr const char* kHeading2Maximum =
    "                                     Adjusted        Maximum         Already         Maximum   ";
constexpr const char* kHeading3 =
    "Description                          Benefit       Distribution    Distributed     Distribution ";
constexpr const char* kDashLine =
    "--------------------------------  --------------  --------------  --------------  -------------- ";
constexpr const char* kTotalsRule =
    "                                  --------------  --------------  --------------  -------------- ";
constexpr const char* kTotalsLabel = "Totals:                         ";
constexpr const char* kDoubleRule =
    "                                  ==============  ==============  ==============  ============== ";

// One account under one set of rules, or the totals.
struct Amounts {
  Money adjusted;
  Money total;
  Money already;
  Money net;

  void Add(const Amounts& a) {
    adjusted += a.adjusted;
    total += a.total;
    already += a.already;
    net += a.net;
  }
  std::array<Money, 4> Columns() const { return {adjusted, total, already, net}; }
};

struct Account {
  std::string name;
  IraDistResults results;
  bool Computable() const { return results.AgesSupported != 0; }
  bool TableDamaged() const { return results.TableDamaged; }
  Amounts Under(Rules rules) const {
    const IraDistResults& r = results;
    return rules == Rules::Later ? Amounts{r.AdjustedBenefit, r.GrossLater, r.DistributedThisYear, r.ToPayLater}
                                 : Amounts{r.AdjustedBenefit, r.Gross1987, r.DistributedThisYear, r.ToPay1987};
  }
};

std::vector<Account> ComputeAccounts(const Scenario& scenario) {
  std::vector<Account> accounts;
  for (const IraRecord& ira : scenario.Ira) {
    Account& a = accounts.emplace_back();
    a.name = ira.IraName;
    rep_calc::CalcIraDist(scenario.Gen, ira, a.results, 0.0f);
  }
  return accounts;
}

// The word of the third and fifth columns.
const char* DistWord(const GeneralInputs& gen) { return IsEarly(gen) ? "Maximum" : "Required"; }

// The one set of rules the window shows.
Rules ScreenRules(const GeneralInputs& gen) {
  if (gen.DCY != 2001) return rep_calc::HasLaterAmount(gen.DCY) ? Rules::Later : Rules::Rules1987;
  return rep_calc::ProjectionUsesLaterRules(gen.DistType, gen.DCY) ? Rules::Later : Rules::Rules1987;
}

std::string Title(const GeneralInputs& gen) { return std::to_string(gen.DCY) + kTitleTail; }

void ShowWindow(ReportSink& sink, const GeneralInputs& gen, const std::vector<Account>& accounts) {
  const Rules rules = ScreenRules(gen);
  const std::string word = DistWord(gen);
  GridReport grid;
  grid.caption = kCaption;
  grid.heading = RTrim(gen.OwnerName) + std::string(kCrLf) + RTrim(gen.OtherInfo) + std::string(kCrLf) + Title(gen);
  grid.columnWidths = {33, 13, 13, 13, 13};
  grid.fixedRows = 1;
  const std::string nl(kCrLf);
  grid.cells.push_back({nl + nl + "Description of IRA", nl + "Adjusted" + nl + "Benefit",
                        "Total" + nl + word + nl + "Distribution", "Amount" + nl + "Already" + nl + "Distributed",
                        "Net" + nl + word + nl + "Distribution"});
  Amounts totals;
  bool someNotComputable = false;
  bool someTableDamaged = false;
  for (const Account& a : accounts) {
    std::vector<std::string>& row = grid.cells.emplace_back();
    row.push_back(RTrim(a.name));
    if (!a.Computable()) {
      someNotComputable = true;
      someTableDamaged = someTableDamaged || a.TableDamaged();
      row.insert(row.end(), 4, kNotComputable);
      continue;
    }
    const Amounts amounts = a.Under(rules);
    totals.Add(amounts);
    for (Money m : amounts.Columns()) row.push_back(FormatAmount(m));
  }
  grid.cells.push_back({"", "------------", "------------", "------------", "------------"});
  std::vector<std::string>& totalsRow = grid.cells.emplace_back(1, "Totals:");
  for (Money m : totals.Columns()) totalsRow.push_back(FormatAmount(m));
  grid.cells.push_back({"", "============", "============", "============", "============"});

  const char* regYear = rules == Rules::Later ? "2001" : "1987";
  if (CurrentLaw(gen)) {
    grid.labels.push_back({"lblRegUsed", "COMPUTED USING THE LAW IN FORCE FOR " + std::to_string(gen.DCY), true});
    grid.labels.push_back({"lblNoData", kCurrentFootnote, someNotComputable});
    sink.ShowGrid(std::move(grid));
    return;
  }
  grid.labels.push_back({"lblRegUsed", std::string("COMPUTED USING ") + regYear + " PROPOSED REGULATIONS", true});
  grid.labels.push_back({"lblNoData", kScreenFootnote + (someTableDamaged ? " " + std::string(kTableFootnote) : ""),
                         someNotComputable});
  sink.ShowGrid(std::move(grid));
}

std::string PaperLine(const std::string& description, const std::array<std::string, 4>& fields) {
  std::string line = kMargin + FixedText(description, kDescWidth);
  for (const std::string& f : fields) line += kColumnGap + PadLeft(f, kAmountWidth);
  return line;
}

std::array<std::string, 4> AmountTexts(const Amounts& amounts) {
  std::array<std::string, 4> texts;
  const std::array<Money, 4> columns = amounts.Columns();
  for (std::size_t i = 0; i < texts.size(); ++i) texts[i] = FormatAmount(columns[i]);
  return texts;
}

void PrintSection(ReportSink& sink, const PageHeading& heading, const GeneralInputs& gen, Rules rules,
                  const std::vector<Account>& accounts) {
  const auto line = [&sink](const std::string& text) { sink.Line(kMargin + text); };
  sink.Block(8, heading);
  line("");
  if (CurrentLaw(gen))
    line("COMPUTATIONS USING THE LAW IN FORCE FOR " + std::to_string(gen.DCY) + ":");
  else
    line(rules == Rules::Later ? "COMPUTATIONS USING 2002 FINAL REGULATIONS:"
                               : "COMPUTATIONS USING 1987 PROPOSED REGULATIONS:");
  line("");
  line(kHeading1);
  line(IsEarly(gen) ? kHeading2Maximum : kHeading2Required);
  line(kHeading3);
  line(kDashLine);
  line("");

  Amounts totals;
  bool someNotComputable = false;
  bool someTableDamaged = false;
  for (const Account& a : accounts) {
    sink.Block(1, heading);
    if (!a.Computable()) {
      someNotComputable = true;
      someTableDamaged = someTableDamaged || a.TableDamaged();
      sink.Line(PaperLine(a.name, {kNotComputable, kNotComputable, kNotComputable, kNotComputable}));
      continue;
    }
    const Amounts amounts = a.Under(rules);
    totals.Add(amounts);
    sink.Line(PaperLine(a.name, AmountTexts(amounts)));
  }

  sink.Block(4, heading);
  line("");
  line(kTotalsRule);
  sink.Line(PaperLine(kTotalsLabel, AmountTexts(totals)));
  line(kDoubleRule);

  if (someNotComputable) {
    sink.Block(someTableDamaged ? 5 : 4, heading);
    line("");
    if (CurrentLaw(gen))
      for (const char* text : kCurrentPaperFootnote) line(text);
    else
      for (const char* text : kPaperFootnote) line(text);
    if (someTableDamaged) line(std::string("    ") + kTableFootnote);
  }
}

}  // namespace

void DisplayCalSumm(ReportSink& sink) {
  const Scenario& scenario = TheScenario();
  const GeneralInputs& gen = scenario.Gen;
  const std::vector<Account> accounts = ComputeAccounts(scenario);
  if (sink.Mode() == ReportMode::View) {
    ShowWindow(sink, gen, accounts);
    return;
  }
  const std::string indent(6, ' ');
  const PageHeading heading{indent + gen.OwnerName, indent + gen.OtherInfo, indent + Title(gen)};
  if (rep_calc::HasLaterAmount(gen.DCY)) PrintSection(sink, heading, gen, Rules::Later, accounts);
  if (rep_calc::Has1987Amount(gen.DCY)) PrintSection(sink, heading, gen, Rules::Rules1987, accounts);
}

}  // namespace ira::reports
