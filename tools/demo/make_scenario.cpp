// Writes a scenario file from a readable description: "key = value" lines
// naming the fields of the general inputs, then one "[IRA]" group per
// account naming the fields of its record. "#" starts a comment. Dates are
// m/d/yyyy (empty: no date), flags yes/no, amounts plain decimals.
//
//   make_scenario DESCRIPTION OUTPUT.ira
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>

#include "core/base/checked.h"
#include "core/base/text.h"
#include "core/scenario/file.h"
#include "core/scenario/scenario.h"

namespace {

using namespace ira;

// A bad line: the caller adds the file name and line number.
struct DescriptionError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

std::int16_t Int16(const std::string& v) {
  std::size_t used = 0;
  const long n = std::stol(v, &used);
  if (used != v.size()) throw DescriptionError("not a whole number: " + v);
  return CheckedInt16(n, "make_scenario");
}

std::int16_t Flag(const std::string& v) {
  const std::string lower = ToLower(v);
  if (lower == "yes") return kTrue;
  if (lower == "no") return kFalse;
  throw DescriptionError("not yes or no: " + v);
}

float Single(const std::string& v) {
  std::size_t used = 0;
  const float f = std::stof(v, &used);
  if (used != v.size()) throw DescriptionError("not a number: " + v);
  return f;
}

Date DateValue(const std::string& v) {
  if (v.empty()) return kNoDate;
  const std::optional<Date> d = ParseDate(v);
  if (!d) throw DescriptionError("not a date: " + v);
  return *d;
}

// "described" (the regulations as the program has always applied them) or
// "current" (the law in force in each year).
std::int16_t RuleSetValue(const std::string& v) {
  const std::string lower = ToLower(v);
  if (lower == "described") return kRulesDescribed;
  if (lower == "current") return kRulesCurrent;
  throw DescriptionError("not described or current: " + v);
}

using Setter = std::function<void(const std::string&)>;

std::map<std::string, Setter> GeneralFields(GeneralInputs& g) {
  return {
      {"OwnerName", [&](const std::string& v) { g.OwnerName = FixedText(v, kOwnerNameWidth); }},
      {"OtherInfo", [&](const std::string& v) { g.OtherInfo = FixedText(v, kOtherInfoWidth); }},
      {"SpouseBen", [&](const std::string& v) { g.SpouseBen = Flag(v); }},
      {"OwnerBirthDate", [&](const std::string& v) { g.OwnerBirthDate = DateValue(v); }},
      {"OwnerDeathDate", [&](const std::string& v) { g.OwnerDeathDate = DateValue(v); }},
      {"SpouseBirthDate", [&](const std::string& v) { g.SpouseBirthDate = DateValue(v); }},
      {"DCY", [&](const std::string& v) { g.DCY = Int16(v); }},
      {"DistType", [&](const std::string& v) { g.DistType = ToLower(v) == "early" ? kFalse : kTrue; }},
      {"ProjectionYears", [&](const std::string& v) { g.ProjectionYears = Int16(v); }},
      {"IncomeCalc", [&](const std::string& v) { g.IncomeCalc = Flag(v); }},
      {"EarlyMethod", [&](const std::string& v) { g.EarlyMethod = Int16(v); }},
      {"InflationRate", [&](const std::string& v) { g.InflationRate = Single(v); }},
      {"IntRate", [&](const std::string& v) { g.IntRate = Single(v); }},
      {"AnnuityFactor", [&](const std::string& v) { g.AnnuityFactor = Single(v); }},
      {"AnnuityIntRate", [&](const std::string& v) { g.AnnuityIntRate = Single(v); }},
      {"AnnuityOverride", [&](const std::string& v) { g.AnnuityOverride = Flag(v); }},
      {"PercentOver", [&](const std::string& v) { g.PercentOver = Single(v); }},
      {"RuleSet", [&](const std::string& v) { g.RuleSet = RuleSetValue(v); }},
      {"Age1959", [&](const std::string& v) { g.Age1959 = Int16(v); }},
  };
}

std::map<std::string, Setter> IraFields(IraRecord& r) {
  return {
      {"IraName", [&](const std::string& v) { r.IraName = FixedText(v, kIraNameWidth); }},
      {"SpouseBen", [&](const std::string& v) { r.SpouseBen = Flag(v); }},
      {"OtherBen", [&](const std::string& v) { r.OtherBen = Flag(v); }},
      {"BeneficiaryName", [&](const std::string& v) { r.BeneficiaryName = FixedText(v, kBeneficiaryNameWidth); }},
      {"BeneBirthDate", [&](const std::string& v) { r.BeneBirthDate = DateValue(v); }},
      {"DistributedThisYear", [&](const std::string& v) { r.DistributedThisYear = Money::FromString(v); }},
      {"Benefit", [&](const std::string& v) { r.Benefit = Money::FromString(v); }},
      {"FirstYearDist", [&](const std::string& v) { r.FirstYearDist = Money::FromString(v); }},
      {"RateOfReturn", [&](const std::string& v) { r.RateOfReturn = Single(v); }},
      {"bRecalc", [&](const std::string& v) { r.bRecalc = Int16(v); }},
      {"chkUse2002Table", [&](const std::string& v) { r.chkUse2002Table = Flag(v); }},
      {"BeneKind", [&](const std::string& v) { r.BeneKind = Int16(v); }},
      {"SpouseChoice", [&](const std::string& v) { r.SpouseChoice = Int16(v); }},
      {"SpouseChoiceYear", [&](const std::string& v) { r.SpouseChoiceYear = Int16(v); }},
  };
}

void ReadDescription(std::istream& in, const std::string& name, Scenario& scenario) {
  scenario.Reset();
  std::map<std::string, Setter> fields = GeneralFields(scenario.Gen);
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    try {
      const std::string text = Trim(line.substr(0, line.find('#')));
      if (text.empty()) continue;
      if (text == "[IRA]") {
        fields = IraFields(scenario.AddIra());
        continue;
      }
      const std::size_t eq = text.find('=');
      if (eq == std::string::npos) throw DescriptionError("expected key = value");
      const std::string key = Trim(text.substr(0, eq));
      const auto field = fields.find(key);
      if (field == fields.end()) throw DescriptionError("unknown field " + key);
      field->second(Trim(text.substr(eq + 1)));
    } catch (const std::exception& e) {
      throw DescriptionError(name + ":" + std::to_string(number) + ": " + e.what());
    }
  }
}

void PutLittleEndian(std::string& bytes, std::uint32_t value, int size) {
  for (int i = 0; i < size; ++i) bytes.push_back(static_cast<char>((value >> (8 * i)) & 0xFF));
}

// The rule set travels in the file's extension block ("TLYEXT", version 1,
// the chunk "RULE": rule set and 1959 age, int16 each). When the file code
// already wrote the block (the file is longer than its records) nothing is
// added; otherwise a scenario off the defaults gets the block appended.
void AppendRuleChunk(const std::string& path, const Scenario& scenario) {
  const GeneralInputs& g = scenario.Gen;
  if (g.RuleSet == kRulesDescribed && g.Age1959 == kAge1959Default) return;
  const auto records = static_cast<std::uintmax_t>(211 + 138 * static_cast<int>(scenario.Ira.size()));
  if (std::filesystem::file_size(path) != records) return;
  std::string block = "TLYEXT";
  PutLittleEndian(block, 1, 2);
  PutLittleEndian(block, 12, 4);  // one chunk: id, length, 4 bytes
  block += "RULE";
  PutLittleEndian(block, 4, 4);
  PutLittleEndian(block, static_cast<std::uint16_t>(g.RuleSet), 2);
  PutLittleEndian(block, static_cast<std::uint16_t>(g.Age1959), 2);
  std::ofstream out(path, std::ios::binary | std::ios::app);
  out.write(block.data(), static_cast<std::streamsize>(block.size()));
  if (!out) throw std::runtime_error(path + ": cannot be written");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: make_scenario DESCRIPTION OUTPUT.ira\n";
    return 2;
  }
  try {
    std::ifstream in(argv[1]);
    if (!in) throw std::runtime_error(std::string(argv[1]) + ": cannot be read");
    ira::Scenario scenario;
    ReadDescription(in, argv[1], scenario);
    ira::file::SaveFile(argv[2], scenario);
    AppendRuleChunk(argv[2], scenario);
  } catch (const std::exception& e) {
    std::cerr << "make_scenario: " << e.what() << "\n";
    return 1;
  }
  return 0;
}
