#include "support/scenario_files.h"

#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "core/base/text.h"

namespace ira::testing {
namespace {

template <typename T>
void Put(std::string& out, T value) {
  char bytes[sizeof value];
  std::memcpy(bytes, &value, sizeof value);  // the test machines are little-endian, as the files
  out.append(bytes, sizeof value);
}

void PutText(std::string& out, const std::string& utf8, std::size_t width) {
  std::string text = Utf8ToCp1252(utf8);
  text.resize(width, ' ');
  out += text;
}

template <std::size_t N>
void PutBytes(std::string& out, const std::array<std::uint8_t, N>& bytes) {
  out.append(reinterpret_cast<const char*>(bytes.data()), N);
}

void PutGeneral(std::string& out, const GeneralInputs& g, FileVersion v) {
  const bool current = v == FileVersion::Current;
  const bool has2001 = current || v == FileVersion::V2001;
  const bool hasSwitch = has2001 || v == FileVersion::V2000_1;
  PutText(out, g.OwnerName, 51);
  PutText(out, g.OtherInfo, 51);
  Put(out, g.SpouseBen);
  Put(out, g.OwnerBirthDate);
  if (has2001) Put(out, g.OwnerDeathDate);
  Put(out, g.SpouseBirthDate);
  PutBytes(out, g.Reserved);
  Put(out, g.DCY);
  Put(out, g.DistType);
  PutBytes(out, g.OtherInputs);
  Put(out, g.ProjectionYears);
  Put(out, g.IraCount);
  if (current) Put(out, g.IncomeCalc);
  Put(out, g.EarlyMethod);
  if (current) Put(out, g.InflationRate);
  Put(out, g.IntRate);
  Put(out, g.AnnuityFactor);
  if (has2001) Put(out, g.AnnuityIntRate);
  if (hasSwitch) Put(out, g.AnnuityOverride);
  Put(out, g.Kept174);
  Put(out, g.PercentOver);
  PutBytes(out, g.Kept180);
}

void PutIra(std::string& out, const IraRecord& r) {
  PutText(out, r.IraName, 32);
  Put(out, r.SpouseBen);
  Put(out, r.OtherBen);
  Put(out, r.Kept36);
  PutText(out, r.BeneficiaryName, 52);
  Put(out, r.BeneBirthDate);
  Put(out, r.DistributedThisYear.Raw());
  Put(out, r.Benefit.Raw());
  Put(out, r.FirstYearDist.Raw());
  Put(out, r.Kept122);
  Put(out, r.RateOfReturn);
  Put(out, r.bRecalc);
  Put(out, r.chkUse2002Table);
  PutBytes(out, r.Kept132);
}

}  // namespace

std::string FileBytes(const Scenario& s, FileVersion version, std::string_view tag) {
  std::string out = version == FileVersion::Legacy ? "" : "NOTVB3";
  static const char* const kTags[] = {"VESK2014.10", "VESK1999.2", "VESK2000.1", "VESK2001.2", "VESK1999.19"};
  PutText(out, tag.empty() ? kTags[static_cast<int>(version)] : std::string(tag), 21);
  PutGeneral(out, s.Gen, version);
  for (const IraRecord& r : s.Ira) PutIra(out, r);
  return out;
}

Scenario AsConverted(Scenario s, FileVersion version) {
  if (version == FileVersion::Current) return s;
  s.Gen.IncomeCalc = 0;
  s.Gen.InflationRate = 0;
  if (version == FileVersion::V2001) return s;
  s.Gen.OwnerDeathDate = kNoDate;
  s.Gen.AnnuityIntRate = 6.0f;
  if (version != FileVersion::V2000_1) s.Gen.AnnuityOverride = s.Gen.AnnuityFactor > 0.1f ? -1 : 0;
  return s;
}

Scenario FullScenario(int iraCount) {
  Scenario s;
  GeneralInputs& g = s.Gen;
  g.OwnerName = FixedText("Zo\xC3\xAB M\xC3\xBCller-\xC3\x85str\xC3\xB6m \xE2\x82\xAC", 51);  // Zoë Müller-Åström €
  g.OtherInfo = std::string(51, 'x');  // full width, no blank to trim
  g.SpouseBen = -1;
  g.OwnerBirthDate = MakeDate(1931, 8, 31);
  g.OwnerDeathDate = MakeDate(2003, 2, 14);
  g.SpouseBirthDate = MakeDate(1935, 2, 28);
  g.Reserved = {1, 2, 3, 4, 5, 6, 7, 0xFF};
  g.DCY = 2004;
  g.DistType = -1;
  g.OtherInputs = {0x80, 0x81, 0, 9, 8, 7, 6, 5};
  g.ProjectionYears = 12;
  g.IncomeCalc = -1;
  g.EarlyMethod = 2;
  g.InflationRate = 3.1f;
  g.IntRate = 7.25f;
  g.AnnuityFactor = 0.11f;
  g.AnnuityIntRate = 5.4f;
  g.AnnuityOverride = 0;  // disagrees with the factor, so a converter's rule shows
  g.Kept174 = -2;
  g.PercentOver = 10.5f;
  g.Kept180 = {0xDE, 0xAD, 0xBE, 0xEF};
  for (int i = 0; i < iraCount; ++i) {
    IraRecord& r = s.AddIra();
    r.IraName = FixedText("Roll-over IRA #" + std::to_string(i + 1), 32);
    r.SpouseBen = static_cast<std::int16_t>(i % 2 == 0 ? -1 : 0);
    r.OtherBen = -1;
    r.Kept36 = static_cast<std::int16_t>(300 + i);
    r.BeneficiaryName = FixedText("Ren\xC3\xA9" + std::string(48, 'e'), 52);  // René and 48 letters: full width
    r.BeneBirthDate = MakeDate(1960 + i, 12, 31);
    r.DistributedThisYear = Money::FromRaw(-12345 - i);
    r.Benefit = Money::FromRaw(9'223'372'036'854'775'807LL - i);
    r.FirstYearDist = Money::FromRaw(1234567);
    r.Kept122 = 7;
    r.RateOfReturn = 6.4f;
    r.bRecalc = static_cast<std::int16_t>(i % 4);
    r.chkUse2002Table = -1;
    r.Kept132 = {0xA0, 0xB1, 0xC2, 0xD3, 0xE4, static_cast<std::uint8_t>(i)};
  }
  return s;
}

void WriteFileBytes(const std::string& path, std::string_view bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!out) throw std::runtime_error("cannot write " + path);
}

std::string ReadFileBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

TempFolder::TempFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "tallyra-test-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("cannot create a temporary folder");
  m_path = pattern;
}

TempFolder::~TempFolder() {
  std::error_code ec;
  std::filesystem::remove_all(m_path, ec);
}

}  // namespace ira::testing
