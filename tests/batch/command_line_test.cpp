#include "app/batch/command_line.h"

#include <gtest/gtest.h>

#include "core/scenario/scenario.h"

namespace ira::app {
namespace {

struct Row {
  const char* name;
  const char* line;
  bool silent;
  const char* input;
  const char* output;
  const char* error;
};

TEST(ParseCommandLine, SwitchesValuesAndDefaultExtensions) {
  const Row rows[] = {
      {"empty line: interactive", "", false, "", "", ""},
      {"the classic form", "/silent /input plan /output plan", true, "plan.ira", "plan.txt", ""},
      {"switches in capitals, values keep their case", "/SILENT /Input Plan.IRA /OUTPUT Out", true, "Plan.IRA",
       "Out.txt", ""},
      {"equals sign", "/silent /input=a.ira /output=b.log", true, "a.ira", "b.log", ""},
      {"quoted value with blanks", "/silent /input \"my plan\" /output \"my out.txt\"", true, "my plan.ira",
       "my out.txt", ""},
      {"GNU forms", "--silent --input=x --output y.txt", true, "x.ira", "y.txt", ""},
      {"absolute paths are values, not switches", "/silent /input /plans/silent/x /output /o/r", true,
       "/plans/silent/x.ira", "/o/r.txt", ""},
      {"a dot in a folder is not an extension", "/input ./data.d/plan", false, "./data.d/plan.ira", "", ""},
      {"input without silent starts interactively", "/input plan.ira", false, "plan.ira", "", ""},
      {"unknown switch", "/silent /colour red", true, "", "", "Unknown argument: /colour"},
      {"file switch without a file", "/silent /input /output x", true, "", "x.txt", "/input needs a file name"},
      {"devices, standard output and folders keep their names", "/input /dev/null /output -", false, "/dev/null",
       "-", ""},
      {"folders keep their names", "/input . /output=dir/", false, ".", "dir/", ""},
      {"a file switch twice", "/silent /input a /output b /INPUT=c", true, "a.ira", "b.txt",
       "/INPUT is given more than once"},
  };
  for (const Row& r : rows) {
    const CommandLine cl = ParseCommandLine(r.line);
    EXPECT_EQ(cl.silent, r.silent) << r.name;
    EXPECT_EQ(cl.input, r.input) << r.name;
    EXPECT_EQ(cl.output, r.output) << r.name;
    EXPECT_EQ(cl.error, r.error) << r.name;
  }
  EXPECT_TRUE(ParseCommandLine("--HELP").help);
  EXPECT_TRUE(ParseCommandLine("--version").version);
}

TEST(ParseCommandLine, RulesOverrideTakesDescribedOrCurrent) {
  const struct {
    const char* line;
    std::optional<std::int16_t> rules;
    const char* error;
  } rows[] = {
      {"/silent", std::nullopt, ""},
      {"/silent /rules described", kRulesDescribed, ""},
      {"/silent --RULES=Current", kRulesCurrent, ""},
      {"/silent /Rules current /rules described", kRulesDescribed, "/rules is given more than once"},
      {"/silent /rules law", std::nullopt, "/rules takes \"described\" or \"current\", not \"law\""},
      {"/silent --rules=", std::nullopt, "--rules takes \"described\" or \"current\""},
      {"/silent /rules /input x", std::nullopt, "/rules takes \"described\" or \"current\""},
  };
  for (const auto& r : rows) {
    const CommandLine cl = ParseCommandLine(r.line);
    EXPECT_EQ(cl.rules, r.rules) << r.line;
    EXPECT_EQ(cl.error, r.error) << r.line;
  }
}

// Arguments are taken as the program got them: quotes and tabs belong to
// the file names.
TEST(ParseArguments, KeepsQuotesAndTabsInValues) {
  const CommandLine cl = ParseArguments({"/silent", "/input", "my \"plan\"\t1", "--output=a \"b\".txt"});
  EXPECT_EQ(cl.error, "");
  EXPECT_EQ(cl.input, "my \"plan\"\t1.ira");
  EXPECT_EQ(cl.output, "a \"b\".txt");
}

TEST(ParseCommandLine, FolderBatchSwitches) {
  struct FolderRow {
    const char* name;
    const char* line;
    const char* batch;
    const char* out;
    int jobs;
    bool recursive, json, pdf;
    const char* error;
  } rows[] = {
      {"GNU forms, folders keep no extension", "--batch clients --out reports --recursive --jobs 4 --json", "clients",
       "reports", 4, true, true, false, ""},
      {"slash forms in capitals", "/BATCH=c /Out r /PDF", "c", "r", 0, false, false, true, ""},
      {"no folder", "--batch --out r", "", "r", 0, false, false, false, "--batch needs a folder"},
      {"jobs of 0", "--batch c --out r --jobs 0", "c", "r", 0, false, false, false,
       "--jobs needs a number from 1 to 256"},
      {"jobs beyond the most", "--batch c --out r --jobs 257", "c", "r", 0, false, false, false,
       "--jobs needs a number from 1 to 256"},
      {"jobs not a number", "--batch c --out r --jobs=2x", "c", "r", 0, false, false, false,
       "--jobs needs a number from 1 to 256"},
  };
  for (const FolderRow& r : rows) {
    const CommandLine cl = ParseCommandLine(r.line);
    EXPECT_EQ(cl.batchFolder, r.batch) << r.name;
    EXPECT_EQ(cl.outFolder, r.out) << r.name;
    EXPECT_EQ(cl.jobs, r.jobs) << r.name;
    EXPECT_EQ(cl.recursive, r.recursive) << r.name;
    EXPECT_EQ(cl.json, r.json) << r.name;
    EXPECT_EQ(cl.pdf, r.pdf) << r.name;
    EXPECT_EQ(cl.error, r.error) << r.name;
  }
}

TEST(JoinArguments, RoundTripsThroughSplitCommandLine) {
  const std::vector<std::string> args = {"/silent", "/input", "my plan.ira", "", "/output=a b.txt"};
  EXPECT_EQ(JoinArguments(args), "/silent /input \"my plan.ira\" \"\" \"/output=a b.txt\"");
  EXPECT_EQ(SplitCommandLine(JoinArguments(args)), args);
}

}  // namespace
}  // namespace ira::app
