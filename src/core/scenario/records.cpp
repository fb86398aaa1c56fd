#include "core/scenario/records.h"

#include <string>

#include "core/base/checked.h"

namespace ira::file {

std::size_t GeneralLayout::Size() const {
  return kGeneralRecordSize - (deathDate ? 0 : 8) - (incomeCalc ? 0 : 2) - (inflationRate ? 0 : 4) -
         (annuityIntRate ? 0 : 4) - (overrideSwitch ? 0 : 2);
}

namespace {

// The field order is written once, for reading (ByteReader, records by
// reference) and writing (ByteWriter, const records) alike.
template <typename Io, typename General>
void GeneralFields(Io& io, General& g, const GeneralLayout& layout) {
  io.Field(g.OwnerName, kOwnerNameWidth);
  io.Field(g.OtherInfo, kOtherInfoWidth);
  io.Field(g.SpouseBen);
  io.Field(g.OwnerBirthDate);
  if (layout.deathDate) io.Field(g.OwnerDeathDate);
  io.Field(g.SpouseBirthDate);
  io.Field(g.Reserved);
  io.Field(g.DCY);
  io.Field(g.DistType);
  io.Field(g.OtherInputs);
  io.Field(g.ProjectionYears);
  io.Field(g.IraCount);
  if (layout.incomeCalc) io.Field(g.IncomeCalc);
  io.Field(g.EarlyMethod);
  if (layout.inflationRate) io.Field(g.InflationRate);
  io.Field(g.IntRate);
  io.Field(g.AnnuityFactor);
  if (layout.annuityIntRate) io.Field(g.AnnuityIntRate);
  if (layout.overrideSwitch) io.Field(g.AnnuityOverride);
  io.Field(g.Kept174);
  io.Field(g.PercentOver);
  io.Field(g.Kept180);
}

template <typename Io, typename Ira>
void IraFields(Io& io, Ira& r) {
  io.Field(r.IraName, kIraNameWidth);
  io.Field(r.SpouseBen);
  io.Field(r.OtherBen);
  io.Field(r.Kept36);
  io.Field(r.BeneficiaryName, kBeneficiaryNameWidth);
  io.Field(r.BeneBirthDate);
  io.Field(r.DistributedThisYear);
  io.Field(r.Benefit);
  io.Field(r.FirstYearDist);
  io.Field(r.Kept122);
  io.Field(r.RateOfReturn);
  io.Field(r.bRecalc);
  io.Field(r.chkUse2002Table);
  io.Field(r.Kept132);
}

std::vector<IraRecord> ReadIraList(ByteReader& in, const GeneralInputs& gen) {
  const int count = gen.IraCount;
  if (count < 0) in.Refuse("is damaged: it gives a negative number of IRAs (" + std::to_string(count) + ").");
  const std::size_t present = in.Remaining() / kIraRecordSize;
  if (present < static_cast<std::size_t>(count)) {
    in.Refuse("is incomplete: it should hold " + std::to_string(count) + " IRA records but holds only " +
              std::to_string(present) + ".");
  }
  std::vector<IraRecord> list(static_cast<std::size_t>(count));
  for (IraRecord& ira : list) IraFields(in, ira);
  return list;
}

}  // namespace

void ReadScenario(ByteReader& in, const GeneralLayout& layout, Scenario& out) {
  in.Expect(layout.Size(), "general inputs");
  Scenario loaded;
  GeneralFields(in, loaded.Gen, layout);
  if (!layout.annuityIntRate) loaded.Gen.AnnuityIntRate = kDefaultAnnuityIntRate;
  loaded.Ira = ReadIraList(in, loaded.Gen);
  out = std::move(loaded);
}

void WriteRecords(ByteWriter& out, const Scenario& scenario) {
  GeneralInputs gen = scenario.Gen;
  gen.IraCount = CheckedInt16(static_cast<long long>(scenario.Ira.size()), "SaveFile()");
  GeneralFields(out, gen, GeneralLayout{});
  for (const IraRecord& ira : scenario.Ira) IraFields(out, ira);
}

}  // namespace ira::file
