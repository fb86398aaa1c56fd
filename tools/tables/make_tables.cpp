// Writes the binary table files the program reads beside its executable from
// the published tables kept as CSV in data/:
//   v86.tbl, v02.tbl    single life, ages 5..115 (1986 as singles, 2002 as doubles)
//   vi86.tbl, vi02.tbl  joint and last survivor, the full 111 x 111 square, first
//                       age outer, second age inner (1986 singles, 2002 doubles)
//   s-90cm.tbl          Table S: 50 rows (rates 4.2..14.0) x (rate + ages 0..109),
//                       written column by column, doubles
//   v22.tbl, vi22.tbl   the 2022 Single Life (ages 0..120) and Joint and Last
//                       Survivor (0..120 square, first age outer) tables, doubles
//   ul22.tbl            the 2022 Uniform Lifetime Table, ages 10..120, doubles
// All little-endian, no header. Each value is the nearest single or double to
// the CSV's decimal text. Every file written is also entered in the manifest,
// a C++ fragment compiled into the program: its name, size and SHA-256, by
// which the program knows a damaged or cut table file when it loads it.
// Usage: make_tables <csv folder> <output folder> <manifest file>
#include <bit>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "core/tables/digest.h"

namespace fs = std::filesystem;

namespace {

constexpr int kFirstAge = 5;
constexpr int kLastAge = 115;
constexpr int kRateRows = 50;
constexpr int kFactorAges = 110;  // Table S ages 0..109
constexpr int k2022FirstAge = 0;
constexpr int k2022LastAge = 120;
constexpr int kUniformFirstAge = 10;

struct Csv {
  std::string name;
  std::vector<std::vector<std::string>> rows;  // header dropped
  std::vector<int> lines;
};

[[noreturn]] void Fail(const std::string& file, int line, const std::string& what) {
  throw std::runtime_error(file + (line > 0 ? ":" + std::to_string(line) : "") + ": " + what);
}

Csv ReadCsv(const fs::path& folder, const std::string& name, std::size_t columns) {
  std::ifstream in(folder / name);
  if (!in) Fail(name, 0, "cannot be opened");
  Csv csv{name, {}, {}};
  std::string text;
  int line = 0;
  while (std::getline(in, text)) {
    ++line;
    if (!text.empty() && text.back() == '\r') text.pop_back();
    if (line == 1 || text.empty()) continue;
    std::vector<std::string> fields;
    std::stringstream ss(text);
    for (std::string f; std::getline(ss, f, ',');) fields.push_back(f);
    if (fields.size() != columns)
      Fail(name, line, "expected " + std::to_string(columns) + " fields, found " + std::to_string(fields.size()));
    csv.rows.push_back(std::move(fields));
    csv.lines.push_back(line);
  }
  return csv;
}

template <typename T>
T Parse(const Csv& csv, std::size_t row, std::size_t column) {
  const std::string& s = csv.rows[row][column];
  T value{};
  const auto res = std::from_chars(s.data(), s.data() + s.size(), value);
  if (res.ec != std::errc() || res.ptr != s.data() + s.size())
    Fail(csv.name, csv.lines[row], "\"" + s + "\" is not a number");
  return value;
}

// Values are kept as the decimal text's nearest double and nearest single
// (read from the same text, not narrowed from the double).
struct Value {
  double asDouble;
  float asSingle;
};

// The values of one table by key: a key given twice is an error at its line,
// a missing one when it is asked for.
template <typename Key>
class Keyed {
 public:
  explicit Keyed(std::string name) : m_name(std::move(name)) {}
  void Add(const Key& key, const Csv& csv, std::size_t row, std::size_t column) {
    const Value v{Parse<double>(csv, row, column), Parse<float>(csv, row, column)};
    if (!m_values.emplace(key, v).second) Fail(m_name, csv.lines[row], "value given twice");
  }
  const Value& At(const Key& key, const std::string& what) const {
    const auto it = m_values.find(key);
    if (it == m_values.end()) Fail(m_name, 0, "no value for " + what);
    return it->second;
  }

 private:
  std::string m_name;
  std::map<Key, Value> m_values;
};

Keyed<int> ReadSingle(const fs::path& folder, const std::string& name) {
  const Csv csv = ReadCsv(folder, name, 2);
  Keyed<int> out(name);
  for (std::size_t r = 0; r < csv.rows.size(); ++r) out.Add(Parse<int>(csv, r, 0), csv, r, 1);
  return out;
}

Keyed<std::pair<int, int>> ReadJoint(const fs::path& folder, const std::string& name) {
  const Csv csv = ReadCsv(folder, name, 3);
  Keyed<std::pair<int, int>> out(name);
  for (std::size_t r = 0; r < csv.rows.size(); ++r)
    out.Add({Parse<int>(csv, r, 0), Parse<int>(csv, r, 1)}, csv, r, 2);
  return out;
}

struct ManifestEntry {
  std::string name;
  std::size_t size;
  std::string sha256;  // lower-case hex
};

// Every table file written, in the order written.
std::vector<ManifestEntry>& Manifest() {
  static std::vector<ManifestEntry> entries;
  return entries;
}

void WriteManifest(const fs::path& path) {
  std::ostringstream text;
  text << "// Generated by make_tables: every table file as built, {name, size, SHA-256}.\n";
  for (const ManifestEntry& e : Manifest()) text << "{\"" << e.name << "\", " << e.size << ", \"" << e.sha256 << "\"},\n";
  // Left alone when unchanged, so that a rebuild of the tables recompiles nothing.
  std::ifstream old(path, std::ios::binary);
  const std::string before{std::istreambuf_iterator<char>(old), std::istreambuf_iterator<char>()};
  if (before == text.str()) return;
  old.close();
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << text.str();
  if (!out) Fail(path.string(), 0, "cannot be written");
}

class Writer {
 public:
  void Single(float v) { Put(std::bit_cast<std::uint32_t>(v), 4); }
  void Double(double v) { Put(std::bit_cast<std::uint64_t>(v), 8); }

  // Written beside the target and renamed into place, so a failed build never
  // leaves a half-written table for the program to read.
  void Save(const fs::path& folder, const std::string& name, std::size_t expectedSize) const {
    if (m_bytes.size() != expectedSize)
      Fail(name, 0, std::to_string(m_bytes.size()) + " bytes instead of " + std::to_string(expectedSize));
    const fs::path target = folder / name;
    const fs::path temp = folder / (name + ".tmp");
    {
      std::ofstream out(temp, std::ios::binary | std::ios::trunc);
      out.write(reinterpret_cast<const char*>(m_bytes.data()), static_cast<std::streamsize>(m_bytes.size()));
      if (!out) Fail(temp.string(), 0, "cannot be written");
    }
    fs::rename(temp, target);
    Manifest().push_back({name, m_bytes.size(), ira::tables::Sha256Hex(m_bytes)});
  }

 private:
  void Put(std::uint64_t bits, int bytes) {
    for (int i = 0; i < bytes; ++i) m_bytes.push_back(static_cast<unsigned char>(bits >> (8 * i)));
  }
  std::vector<unsigned char> m_bytes;
};

void WriteSingleTables(const fs::path& in, const fs::path& out) {
  const auto v86 = ReadSingle(in, "table_v_1986.csv");
  const auto v02 = ReadSingle(in, "single_life_2002.csv");
  Writer w86, w02;
  for (int age = kFirstAge; age <= kLastAge; ++age) {
    const std::string what = "age " + std::to_string(age);
    w86.Single(v86.At(age, what).asSingle);
    w02.Double(v02.At(age, what).asDouble);
  }
  w86.Save(out, "v86.tbl", 444);
  w02.Save(out, "v02.tbl", 888);
}

void WriteJointTables(const fs::path& in, const fs::path& out) {
  const auto vi86 = ReadJoint(in, "table_vi_1986.csv");
  const auto vi02 = ReadJoint(in, "joint_life_2002.csv");
  Writer w86, w02;
  for (int i = kFirstAge; i <= kLastAge; ++i) {
    for (int j = kFirstAge; j <= kLastAge; ++j) {
      const std::string what = "ages " + std::to_string(i) + "/" + std::to_string(j);
      w86.Single(vi86.At({i, j}, what).asSingle);
      w02.Double(vi02.At({i, j}, what).asDouble);
    }
  }
  w86.Save(out, "vi86.tbl", 49'284);
  w02.Save(out, "vi02.tbl", 98'568);
}

void WriteFactorTable(const fs::path& in, const fs::path& out) {
  const std::string name = "table_s_90cm.csv";
  const Csv csv = ReadCsv(in, name, 3);
  std::set<double> rates;
  Keyed<std::pair<double, int>> factors(name);
  for (std::size_t r = 0; r < csv.rows.size(); ++r) {
    const double rate = Parse<double>(csv, r, 0);
    rates.insert(rate);
    factors.Add({rate, Parse<int>(csv, r, 1)}, csv, r, 2);
  }
  if (rates.size() != kRateRows)
    Fail(name, 0, std::to_string(rates.size()) + " interest rates instead of " + std::to_string(kRateRows));
  Writer w;
  for (double rate : rates) w.Double(rate);
  for (int age = 0; age < kFactorAges; ++age) {
    for (double rate : rates) {
      std::ostringstream what;
      what << "rate " << rate << " age " << age;
      w.Double(factors.At({rate, age}, what.str()).asDouble);
    }
  }
  w.Save(out, "s-90cm.tbl", 44'400);
}

// The tables in force from 2022 reach age 120 and start at 0 (the Uniform
// Lifetime Table at 10), so they get files of their own.
void Write2022Tables(const fs::path& in, const fs::path& out) {
  const auto single = ReadSingle(in, "single_life_2022.csv");
  const auto joint = ReadJoint(in, "joint_life_2022.csv");
  const auto uniform = ReadSingle(in, "uniform_lifetime_2022.csv");
  Writer ws, wj, wu;
  for (int i = k2022FirstAge; i <= k2022LastAge; ++i) {
    ws.Double(single.At(i, "age " + std::to_string(i)).asDouble);
    for (int j = k2022FirstAge; j <= k2022LastAge; ++j)
      wj.Double(joint.At({i, j}, "ages " + std::to_string(i) + "/" + std::to_string(j)).asDouble);
  }
  for (int age = kUniformFirstAge; age <= k2022LastAge; ++age)
    wu.Double(uniform.At(age, "age " + std::to_string(age)).asDouble);
  constexpr std::size_t ages = k2022LastAge - k2022FirstAge + 1;
  ws.Save(out, "v22.tbl", ages * 8);
  wj.Save(out, "vi22.tbl", ages * ages * 8);
  wu.Save(out, "ul22.tbl", (k2022LastAge - kUniformFirstAge + 1) * 8);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "usage: make_tables <csv folder> <output folder> <manifest file>\n";
    return 2;
  }
  try {
    const fs::path in = argv[1];
    const fs::path out = argv[2];
    fs::create_directories(out);
    WriteSingleTables(in, out);
    WriteJointTables(in, out);
    WriteFactorTable(in, out);
    Write2022Tables(in, out);
    WriteManifest(argv[3]);
  } catch (const std::exception& e) {
    std::cerr << "make_tables: " << e.what() << "\n";
    return 1;
  }
  return 0;
}
