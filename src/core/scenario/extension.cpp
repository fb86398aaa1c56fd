#include "core/scenario/extension.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace ira::file {
namespace {

constexpr std::string_view kMagic = "TLYEXT";
constexpr std::int16_t kBlockVersion = 1;
constexpr std::array<char, 4> kRuleId{'R', 'U', 'L', 'E'};
constexpr std::array<char, 4> kBeneId{'B', 'E', 'N', 'E'};
constexpr std::size_t kRuleSize = 4;

void StoreChunkHeader(std::vector<std::uint8_t>& out, const std::array<char, 4>& id, std::size_t size) {
  out.insert(out.end(), id.begin(), id.end());
  Store(out, static_cast<std::int32_t>(size));
}

bool HasBeneDetails(const IraRecord& r) {
  return r.BeneKind != 0 || r.SpouseChoice != 0 || r.SpouseChoiceYear != 0 || r.BeneKept != 0;
}

// A "RULE" payload; false when the rule set is none this version knows.
bool ReadRule(std::span<const std::uint8_t> payload, GeneralInputs& gen) {
  const auto ruleSet = Load<std::int16_t>(payload.data());
  const auto age = Load<std::int16_t>(payload.data() + 2);
  if (ruleSet != kRulesDescribed && ruleSet != kRulesCurrent) return false;
  gen.RuleSet = ruleSet;
  gen.Age1959 = age == kAge1959Alternative ? kAge1959Alternative : kAge1959Default;
  return true;
}

// A "BENE" payload of one entry per IRA; an entry with a code this version
// does not know keeps its defaults and makes the block damaged.
bool ReadBene(std::span<const std::uint8_t> payload, std::vector<IraRecord>& iras) {
  bool whole = true;
  for (std::size_t i = 0; i < iras.size(); ++i) {
    const std::uint8_t* p = payload.data() + i * kBeneEntrySize;
    const auto kind = Load<std::int16_t>(p);
    const auto choice = Load<std::int16_t>(p + 2);
    const auto year = Load<std::int16_t>(p + 4);
    if (kind < kBeneIndividual || kind > kBeneNotIndividual || choice < kSpouseRemainBeneficiary ||
        choice > kSpouseTreatedAsOwner || year < 0) {
      whole = false;
      continue;
    }
    iras[i].BeneKind = kind;
    iras[i].SpouseChoice = choice;
    iras[i].SpouseChoiceYear = year;
    iras[i].BeneKept = Load<std::int16_t>(p + 6);
  }
  return whole;
}

}  // namespace

// Each known chunk is written only when it holds something other than its
// defaults: "RULE" when the rule set or the 1959 age differs, "BENE" when any
// IRA's entry does (then for every IRA, as its length requires). Chunks of
// later versions always go back, after the known ones. A reader takes a
// missing chunk as its defaults, so the file reads back the same scenario.
void WriteExtension(ByteWriter& out, const Scenario& scenario) {
  const GeneralInputs& gen = scenario.Gen;
  const bool rule = gen.RuleSet != kRulesDescribed || gen.Age1959 != kAge1959Default;
  const bool bene = std::any_of(scenario.Ira.begin(), scenario.Ira.end(), HasBeneDetails);
  if (!rule && !bene && scenario.OtherChunks.empty()) return;

  std::vector<std::uint8_t> chunks;
  if (rule) {
    StoreChunkHeader(chunks, kRuleId, kRuleSize);
    Store(chunks, gen.RuleSet);
    Store(chunks, gen.Age1959);
  }
  if (bene) {
    StoreChunkHeader(chunks, kBeneId, kBeneEntrySize * scenario.Ira.size());
    for (const IraRecord& r : scenario.Ira) {
      Store(chunks, r.BeneKind);
      Store(chunks, r.SpouseChoice);
      Store(chunks, r.SpouseChoiceYear);
      Store(chunks, r.BeneKept);
    }
  }
  for (const ExtensionChunk& chunk : scenario.OtherChunks) {
    StoreChunkHeader(chunks, chunk.Id, chunk.Payload.size());
    chunks.insert(chunks.end(), chunk.Payload.begin(), chunk.Payload.end());
  }

  std::vector<std::uint8_t>& data = out.Data();
  data.insert(data.end(), kMagic.begin(), kMagic.end());
  Store(data, kBlockVersion);
  Store(data, static_cast<std::int32_t>(chunks.size()));
  data.insert(data.end(), chunks.begin(), chunks.end());
}

bool ReadExtension(std::span<const std::uint8_t> rest, Scenario& scenario) {
  if (rest.size() < kMagic.size() || std::memcmp(rest.data(), kMagic.data(), kMagic.size()) != 0) return true;
  if (rest.size() < kExtensionHeaderSize) return false;
  if (Load<std::int16_t>(rest.data() + 6) != kBlockVersion) return false;
  const auto declared = Load<std::int32_t>(rest.data() + 8);
  const std::size_t available = rest.size() - kExtensionHeaderSize;
  // A block that runs past the end still gives the chunks that are whole.
  bool whole = declared >= 0 && static_cast<std::size_t>(declared) <= available;
  const std::span<const std::uint8_t> chunks =
      rest.subspan(kExtensionHeaderSize, std::min(available, static_cast<std::size_t>(std::max(declared, 0))));

  bool seenRule = false;
  bool seenBene = false;
  for (std::size_t pos = 0; pos < chunks.size();) {
    if (chunks.size() - pos < kChunkHeaderSize) return false;
    std::array<char, 4> id{};
    std::memcpy(id.data(), chunks.data() + pos, id.size());
    const auto length = Load<std::int32_t>(chunks.data() + pos + 4);
    pos += kChunkHeaderSize;
    if (length < 0 || static_cast<std::size_t>(length) > chunks.size() - pos) return false;
    const std::span<const std::uint8_t> payload = chunks.subspan(pos, static_cast<std::size_t>(length));
    pos += payload.size();

    if (id == kRuleId) {
      whole = !seenRule && payload.size() == kRuleSize && ReadRule(payload, scenario.Gen) && whole;
      seenRule = true;
    } else if (id == kBeneId) {
      whole = !seenBene && payload.size() == kBeneEntrySize * scenario.Ira.size() &&
              ReadBene(payload, scenario.Ira) && whole;
      seenBene = true;
    } else {
      scenario.OtherChunks.push_back({id, {payload.begin(), payload.end()}});
    }
  }
  return whole;
}

}  // namespace ira::file
