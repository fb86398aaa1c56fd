#include "core/scenario/scenario.h"

#include "core/base/checked.h"

namespace ira {

void Scenario::Reset() {
  Gen = GeneralInputs{};
  Ira.clear();
  OtherChunks.clear();
}

void Scenario::ResetForNew() {
  Reset();
  Gen.RuleSet = kRulesCurrent;
}

IraRecord& Scenario::AddIra() {
  Gen.IraCount = CheckedInt16(static_cast<long long>(Ira.size()) + 1, "AddIra()");
  return Ira.emplace_back();
}

void Scenario::RemoveIra(std::size_t index) {
  if (index >= Ira.size()) return;
  Ira.erase(Ira.begin() + static_cast<std::ptrdiff_t>(index));
  Gen.IraCount = static_cast<std::int16_t>(Ira.size());
}

Scenario& TheScenario() {
  // One per thread: the desktop has the one, each worker of a folder batch its own.
  static thread_local Scenario scenario;
  return scenario;
}

}  // namespace ira
