#include "core/scenario/records.h"

#include <string>

namespace ira::file {

std::size_t GeneralLayout::Size() const {
  return kGeneralRecordSize - (deathDate ? 0 : 8) - (incomeCalc ? 0 : 2) - (inflationRate ? 0 : 4) -
         (annuityIntRate ? 0 : 4) - (overrideSwitch ? 0 : 2);
}

GeneralInputs ReadGeneral(ByteReader& in, const GeneralLayout& layout) {
  in.Expect(layout.Size(), "general inputs");
  GeneralInputs gen;
  gen.OwnerName = in.Text(kOwnerNameWidth);
  gen.OtherInfo = in.Text(kOtherInfoWidth);
  gen.SpouseBen = in.Int16();
  gen.OwnerBirthDate = in.Double();
  if (layout.deathDate) gen.OwnerDeathDate = in.Double();
  gen.SpouseBirthDate = in.Double();
  in.Bytes(gen.Reserved);
  gen.DCY = in.Int16();
  gen.DistType = in.Int16();
  in.Bytes(gen.OtherInputs);
  gen.ProjectionYears = in.Int16();
  gen.IraCount = in.Int16();
  if (layout.incomeCalc) gen.IncomeCalc = in.Int16();
  gen.EarlyMethod = in.Int16();
  if (layout.inflationRate) gen.InflationRate = in.Single();
  gen.IntRate = in.Single();
  gen.AnnuityFactor = in.Single();
  if (layout.annuityIntRate) gen.AnnuityIntRate = in.Single();
  if (layout.overrideSwitch) gen.AnnuityOverride = in.Int16();
  gen.Kept174 = in.Int16();
  gen.PercentOver = in.Single();
  in.Bytes(gen.Kept180);
  return gen;
}

void WriteGeneral(ByteWriter& out, const GeneralInputs& gen) {
  out.Text(gen.OwnerName, kOwnerNameWidth);
  out.Text(gen.OtherInfo, kOtherInfoWidth);
  out.Int16(gen.SpouseBen);
  out.Double(gen.OwnerBirthDate);
  out.Double(gen.OwnerDeathDate);
  out.Double(gen.SpouseBirthDate);
  out.Bytes(gen.Reserved);
  out.Int16(gen.DCY);
  out.Int16(gen.DistType);
  out.Bytes(gen.OtherInputs);
  out.Int16(gen.ProjectionYears);
  out.Int16(gen.IraCount);
  out.Int16(gen.IncomeCalc);
  out.Int16(gen.EarlyMethod);
  out.Single(gen.InflationRate);
  out.Single(gen.IntRate);
  out.Single(gen.AnnuityFactor);
  out.Single(gen.AnnuityIntRate);
  out.Int16(gen.AnnuityOverride);
  out.Int16(gen.Kept174);
  out.Single(gen.PercentOver);
  out.Bytes(gen.Kept180);
}

IraRecord ReadIra(ByteReader& in) {
  in.Expect(kIraRecordSize, "IRA records");
  IraRecord ira;
  ira.IraName = in.Text(kIraNameWidth);
  ira.SpouseBen = in.Int16();
  ira.OtherBen = in.Int16();
  ira.Kept36 = in.Int16();
  ira.BeneficiaryName = in.Text(kBeneficiaryNameWidth);
  ira.BeneBirthDate = in.Double();
  ira.DistributedThisYear = in.Currency();
  ira.Benefit = in.Currency();
  ira.FirstYearDist = in.Currency();
  ira.Kept122 = in.Int16();
  ira.RateOfReturn = in.Single();
  ira.bRecalc = in.Int16();
  ira.chkUse2002Table = in.Int16();
  in.Bytes(ira.Kept132);
  return ira;
}

void WriteIra(ByteWriter& out, const IraRecord& ira) {
  out.Text(ira.IraName, kIraNameWidth);
  out.Int16(ira.SpouseBen);
  out.Int16(ira.OtherBen);
  out.Int16(ira.Kept36);
  out.Text(ira.BeneficiaryName, kBeneficiaryNameWidth);
  out.Double(ira.BeneBirthDate);
  out.Currency(ira.DistributedThisYear);
  out.Currency(ira.Benefit);
  out.Currency(ira.FirstYearDist);
  out.Int16(ira.Kept122);
  out.Single(ira.RateOfReturn);
  out.Int16(ira.bRecalc);
  out.Int16(ira.chkUse2002Table);
  out.Bytes(ira.Kept132);
}

std::vector<IraRecord> ReadIraList(ByteReader& in, const GeneralInputs& gen) {
  const int count = gen.IraCount;
  if (count < 0) in.Refuse("is damaged: it gives a negative number of IRAs (" + std::to_string(count) + ").");
  const std::size_t present = in.Remaining() / kIraRecordSize;
  if (present < static_cast<std::size_t>(count)) {
    in.Refuse("is incomplete: it should hold " + std::to_string(count) + " IRA records but holds only " +
              std::to_string(present) + ".");
  }
  std::vector<IraRecord> list;
  list.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) list.push_back(ReadIra(in));
  return list;
}

void ReadScenario(ByteReader& in, const GeneralLayout& layout, Scenario& out) {
  Scenario loaded;
  loaded.Gen = ReadGeneral(in, layout);
  if (!layout.annuityIntRate) loaded.Gen.AnnuityIntRate = kDefaultAnnuityIntRate;
  loaded.Ira = ReadIraList(in, loaded.Gen);
  out = std::move(loaded);
}

}  // namespace ira::file
