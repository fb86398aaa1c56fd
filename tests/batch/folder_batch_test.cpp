// The folder batch end to end: a folder of scenarios (good, damaged, refused,
// early, with projection, in a subfolder) through the real executable. Each
// report must be byte for byte the single-file batch's, the unreadable files
// listed and the run finished; the CSV rows are checked against figures
// worked by hand and the JSON documents against the engine.
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "core/engine/rep_calc.h"
#include "core/scenario/file.h"
#include "run_program.h"
#include "support/installed_tables.h"
#include "support/scenario_files.h"

namespace ira::testing {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

const std::string kProgram = std::string(TALLYRA_PROGRAM_DIR) + "/tallyra";
const std::string kCases = TALLYRA_BATCH_WORK;  // the generated batch scenarios

// Scenarios generated from tests/batch, placed in the subfolder.
const char* const kSubCases[] = {"deceased-owner", "early-amortization", "projection-excess-2050",
                                 "year-2001-both-rules"};
// Read: the top-level scenarios whose reports must exist.
const char* const kGoodTop[] = {"demo", "quoted"};

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  for (std::size_t end; (end = text.find("\r\n", start)) != std::string::npos; start = end + 2)
    lines.push_back(text.substr(start, end - start));
  return lines;
}

// The fields of a line without quoted fields.
std::vector<std::string> Fields(const std::string& line) {
  std::vector<std::string> fields;
  std::stringstream in(line);
  for (std::string f; std::getline(in, f, ',');) fields.push_back(f);
  if (!line.empty() && line.back() == ',') fields.emplace_back();
  return fields;
}

// An owner and an account whose names need quoting in a CSV file.
Scenario QuotedScenario() {
  Scenario s;
  s.Reset();
  s.Gen.OwnerName = FixedText("Smith, John \"Jack\"", kOwnerNameWidth);
  s.Gen.OwnerBirthDate = MakeDate(1930, 1, 1);
  s.Gen.DCY = 2005;
  s.Gen.DistType = -1;
  IraRecord& ira = s.AddIra();
  ira.IraName = FixedText("Main, IRA", kIraNameWidth);
  ira.Benefit = Money::FromString("100000");
  return s;
}

class FolderBatch : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder = new TempFolder;
    const fs::path in = folder->File("in");
    fs::create_directories(in / "sub");
    fs::copy_file(std::string(TALLYRA_PROGRAM_DIR) + "/demo.ira", in / "demo.ira");
    for (const char* name : kSubCases) fs::copy_file(kCases + "/" + name + ".ira", in / "sub" / (std::string(name) + ".ira"));
    WriteFileBytes((in / "quoted.ira").string(), FileBytes(QuotedScenario(), FileVersion::Current));
    const std::string demo = ReadFileBytes((in / "demo.ira").string());
    WriteFileBytes((in / "truncated.ira").string(), demo.substr(0, 120));  // damaged: cut inside the general record
    WriteFileBytes((in / "empty.ira").string(), "");                          // refused
    WriteFileBytes((in / "notes.IRA").string(), "not a scenario\n");          // refused, upper-case extension
    WriteFileBytes((in / "readme.txt").string(), "left alone\n");
    run = RunProgram(kProgram,
                     {"--batch", in.string(), "--out", folder->File("out"), "--recursive", "--json", "--jobs", "3"},
                     folder->File("err.txt"));
  }
  static void TearDownTestSuite() {
    delete folder;
    folder = nullptr;
  }
  static std::string Out(const std::string& name) { return folder->File("out/" + name); }
  static std::string In(const std::string& name) { return folder->File("in/" + name); }
  static void ExpectNoTemporaryFile() {
    for (const auto& entry : fs::recursive_directory_iterator(folder->File("out")))
      EXPECT_NE(entry.path().filename().string().front(), '.') << entry.path();
  }

  static TempFolder* folder;
  static RunResult run;
};

TempFolder* FolderBatch::folder = nullptr;
RunResult FolderBatch::run;

TEST_F(FolderBatch, UnreadableFilesAreListedAndTheRunGoesOn) {
  EXPECT_EQ(run.status, 1) << run.err;  // some scenario could not be read
  for (const char* name : {"truncated.ira: ", "empty.ira: ", "notes.IRA: "})
    EXPECT_NE(("\n" + run.err).find(std::string("\n") + name), std::string::npos) << name << " in:\n" << run.err;
  for (const char* name : {"truncated.txt", "empty.txt", "notes.txt", "readme.txt"})
    EXPECT_FALSE(fs::exists(Out(name))) << name;
  ExpectNoTemporaryFile();
}

TEST_F(FolderBatch, ASecondRunReplacesEveryFileWhole) {
  const std::string before = ReadFileBytes(Out("demo.txt"));
  WriteFileBytes(Out("quoted.txt"), "an older report\n");
  const RunResult again = RunProgram(kProgram, {"--batch", folder->File("in"), "--out", folder->File("out"), "--recursive"},
                                     folder->File("err2.txt"));
  EXPECT_EQ(again.status, 1) << again.err;
  EXPECT_EQ(ReadFileBytes(Out("demo.txt")), before);
  EXPECT_NE(ReadFileBytes(Out("quoted.txt")), "an older report\n");
  ExpectNoTemporaryFile();
}

TEST_F(FolderBatch, ReportsAndJsonEqualTheSingleFileBatch) {
  std::vector<std::string> names(std::begin(kGoodTop), std::end(kGoodTop));
  for (const char* name : kSubCases) names.push_back(std::string("sub/") + name);
  for (const std::string& name : names) {
    const std::string single = folder->File("single.txt");
    const RunResult one =
        RunProgram(kProgram, {"/silent", "/input", In(name + ".ira"), "/output", single, "--json"}, folder->File("e"));
    EXPECT_EQ(one.status, 0) << name << one.err;
    EXPECT_EQ(ReadFileBytes(Out(name + ".txt")), ReadFileBytes(single)) << name;
    Json fromFolder = Json::parse(ReadFileBytes(Out(name + ".json")));
    Json fromSingle = Json::parse(ReadFileBytes(folder->File("single.json")));
    // Only the name a document carries differs: relative to the folder, or the file's own.
    EXPECT_EQ(fromFolder["file"], name + ".ira");
    fromFolder["file"] = fromSingle["file"];
    EXPECT_EQ(fromFolder, fromSingle) << name;
  }
}

TEST_F(FolderBatch, SummaryRowsHoldTheHandWorkedFigures) {
  const std::vector<std::string> summary = Lines(ReadFileBytes(Out("summary.csv")));
  const std::vector<std::string> expected = {
      "file,owner,account,rule_set,distribution_year,due_date,balance,divisor,required_amount,already_distributed,"
      "still_to_pay,final_year,status,message",
      // The law in force, 2026: owner 75 (born 2/10/1951), spouse 63 (born 11/20/1963) the sole
      // beneficiary of the first two accounts, more than 10 years younger: joint table 75/63 = 26.1;
      // 412,350.00 / 26.1 = 15,798.8506; less 6,000.00 taken = 9,798.85.
      "demo.ira,Margaret A. Lindqvist,Rollover IRA - Vanguard,1,2026,2026-12-31,412350.00,26.10,15798.85,6000.00,"
      "9798.85,,ok,",
      // 87,920.55 / 26.1 = 3,368.6034.
      "demo.ira,Margaret A. Lindqvist,Contributory IRA - Schwab,1,2026,2026-12-31,87920.55,26.10,3368.60,0.00,"
      "3368.60,,ok,",
      // A daughter's account: Uniform Lifetime 75 = 24.6; 153,400.00 / 24.6 = 6,235.7724; less 2,500.00.
      "demo.ira,Margaret A. Lindqvist,IRA for Laura,1,2026,2026-12-31,153400.00,24.60,6235.77,2500.00,3735.77,,ok,",
  };
  ASSERT_GT(summary.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(summary[i], expected[i]);
  // Rows follow the file names: after demo.ira comes the empty file.
  EXPECT_EQ(summary[4].rfind("empty.ira,,,,,,,,,,,,read error,", 0), 0u) << summary[4];

  const auto row = [&](const std::string& start) {
    for (const std::string& line : summary)
      if (line.rfind(start, 0) == 0) return line;
    return std::string("(no row) ") + start;
  };
  // Born 1/1/1930, 75 in 2005: Uniform Lifetime Table 22.9; 100,000.00 / 22.9 = 4,366.8122.
  // The comma and the quotes are quoted, the quotes doubled.
  EXPECT_EQ(row("quoted.ira,"),
            "quoted.ira,\"Smith, John \"\"Jack\"\"\",\"Main, IRA\",0,2005,2005-12-31,100000.00,22.90,4366.81,0.00,"
            "4366.81,,ok,");
  // Died 2003; Dana born 1/1/1960 is 44 in 2004, single life 39.8, less one for 2005 = 38.8:
  // 80,000.00 / 38.8 = 2,061.8557. Sam, born 2000, is below the tables' ages.
  EXPECT_EQ(row("sub/deceased-owner.ira,Estate of Carl Late,Young Heir IRA,"),
            "sub/deceased-owner.ira,Estate of Carl Late,Young Heir IRA,0,2005,2005-12-31,,,,,,,ages not supported,");
  EXPECT_EQ(row("sub/deceased-owner.ira,Estate of Carl Late,Inherited IRA,"),
            "sub/deceased-owner.ira,Estate of Carl Late,Inherited IRA,0,2005,2005-12-31,80000.00,38.80,2061.86,0.00,"
            "2061.86,,ok,");
  // 2001, second year: 50,000.00 less the 2,000.00 taken by 4/1/2001 = 48,000.00; the 2001 table at
  // 71 is 25.3: 48,000.00 / 25.3 = 1,897.2332; 4,000.00 already taken leaves -2,102.77.
  EXPECT_EQ(row("sub/year-2001-both-rules.ira,"),
            "sub/year-2001-both-rules.ira,Walter Brook,Old IRA,0,2001,2001-12-31,48000.00,25.30,1897.23,4000.00,"
            "-2102.77,,ok,");
  // An amortization series has a level payment and no divisor.
  const std::vector<std::string> early = Fields(row("sub/early-amortization.ira,"));
  ASSERT_EQ(early.size(), 14u);
  EXPECT_EQ(early[7], "");
  EXPECT_EQ(early[12], "ok");

  const std::vector<std::string> totals = Lines(ReadFileBytes(Out("totals.csv")));
  ASSERT_GE(totals.size(), 2u);
  EXPECT_EQ(totals[0],
            "file,owner,rule_set,distribution_year,accounts,accounts_computed,balance,required_amount,"
            "already_distributed,still_to_pay,status,message");
  // 412,350.00 + 87,920.55 + 153,400.00 = 653,670.55; 15,798.85 + 3,368.60 + 6,235.77 = 25,403.22;
  // 6,000.00 + 2,500.00 = 8,500.00; 25,403.22 - 8,500.00 = 16,903.22.
  EXPECT_EQ(totals[1], "demo.ira,Margaret A. Lindqvist,1,2026,3,3,653670.55,25403.22,8500.00,16903.22,ok,");
  // One row per scenario, the unreadable ones included: 2 + 4 good, 3 unreadable, and the header.
  EXPECT_EQ(totals.size(), 10u);
  // The account the tables cannot compute is left out of the totals.
  bool found = false;
  for (const std::string& line : totals)
    if (line.rfind("sub/deceased-owner.ira,", 0) == 0) {
      found = true;
      EXPECT_EQ(line, "sub/deceased-owner.ira,Estate of Carl Late,0,2005,2,1,80000.00,2061.86,0.00,2061.86,"
                      "ages not supported,");
    }
  EXPECT_TRUE(found);
}

Money Amount(const Json& j) { return Money::FromString(j.get<std::string>()); }

TEST_F(FolderBatch, JsonHoldsTheEnginesFigures) {
  LoadInstalledTables();
  std::vector<std::string> names(std::begin(kGoodTop), std::end(kGoodTop));
  for (const char* name : kSubCases) names.push_back(std::string("sub/") + name);
  for (const std::string& name : names) {
    SCOPED_TRACE(name);
    Scenario s;
    ASSERT_TRUE(file::OpenFile(In(name + ".ira"), s));
    const Json doc = Json::parse(ReadFileBytes(Out(name + ".json")));
    ASSERT_EQ(doc["accounts"].size(), s.Ira.size());
    for (std::size_t i = 0; i < s.Ira.size(); ++i) {
      rep_calc::IraDistResults r;
      rep_calc::CalcIraDist(s.Gen, s.Ira[i], r, 0.0f);
      const Json& a = doc["accounts"][i];
      if (r.AgesSupported == 0) {
        EXPECT_EQ(a["status"], "ages not supported");
        continue;
      }
      EXPECT_EQ(Amount(a["adjustedBalance"]), r.AdjustedBenefit);
      for (const Json& regime : a["regimes"]) {
        const bool rules1987 = regime["rules"] == "1987";
        EXPECT_EQ(Amount(regime["gross"]), rules1987 ? r.Gross1987 : r.GrossLater);
        EXPECT_EQ(Amount(regime["toPay"]), rules1987 ? r.ToPay1987 : r.ToPayLater);
      }
      EXPECT_EQ(a["regimes"].size(), (s.Gen.DCY == 2001) ? 2u : 1u);
    }
    if (s.Gen.ProjectionYears < 1) {
      EXPECT_TRUE(doc["projection"].is_null());
      continue;
    }
    rep_calc::ProjCells cells;
    std::vector<rep_calc::ProjYearTotals> totals;
    rep_calc::CalcProjResults(s, cells, totals);
    const Json& years = doc["projection"]["years"];
    ASSERT_FALSE(years.empty());
    for (std::size_t y = 0; y < years.size(); ++y) {
      EXPECT_EQ(years[y]["year"], s.Gen.DCY + static_cast<int>(y));
      EXPECT_EQ(Amount(years[y]["totalDistribution"]), totals[y].TotalDist);
      EXPECT_EQ(Amount(years[y]["combinedEndBalance"]), totals[y].CombinedEnd);
      EXPECT_EQ(Amount(years[y]["tax"]), totals[y].Tax);
      for (std::size_t i = 0; i < cells.size(); ++i) {
        if (years[y]["accounts"][i]["status"] == "ok") {
          EXPECT_EQ(Amount(years[y]["accounts"][i]["endBalance"]), cells[i][y].EndBalance);
        }
      }
    }
  }
}

#ifdef TALLYRA_HAS_DESKTOP
TEST_F(FolderBatch, PdfReportsArePaintedWithoutADisplay) {
  const std::string out = folder->File("pdf");
  fs::create_directories(folder->File("pdfin"));
  fs::copy_file(In("demo.ira"), folder->File("pdfin/demo.ira"));
  const RunResult pdf = RunProgram("/usr/bin/env", {"-u", "DISPLAY", "-u", "WAYLAND_DISPLAY", "-u", "QT_QPA_PLATFORM",
                                                    kProgram, "--batch", folder->File("pdfin"), "--out", out, "--pdf"},
                                   folder->File("e"));
  EXPECT_EQ(pdf.status, 0) << pdf.err;
  EXPECT_EQ(ReadFileBytes(out + "/demo.pdf").substr(0, 5), "%PDF-");
  // The same reports as the text file, drawn on pages.
  const RunResult text = RunProgram("/usr/bin/pdftotext", {out + "/demo.pdf", out + "/demo.pdf.txt"}, folder->File("e"));
  ASSERT_EQ(text.status, 0) << text.err;
  const std::string drawn = ReadFileBytes(out + "/demo.pdf.txt");
  for (const char* title : {"Distribution Calculations", "Calendar Year Summary", "Rollover IRA - Vanguard"})
    EXPECT_NE(drawn.find(title), std::string::npos) << title;
}
#endif

}  // namespace
}  // namespace ira::testing
