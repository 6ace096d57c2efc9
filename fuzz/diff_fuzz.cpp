// Two sides of profiles of any bytes, compared: the JSON and the CSV are read back and say the
// same, a side does not differ from itself, and the table is made without a fault.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "companion/byte_sink.h"
#include "compare/comparison.h"
#include "compare/gates.h"
#include "compare/row_order.h"
#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "profile/profile_loader.h"
#include "ptick_diff/diff.h"
#include "ptick_diff/diff_options.h"
#include "ptick_diff/diff_writers.h"
#include "support/text_record.h"

namespace {

using namespace ptick::compare;
using ptick::fuzz::Require;
using ptick::fuzz::RequireEqual;

constexpr std::array kKinds = {Kind::kLine, Kind::kProgram, Kind::kCommand, Kind::kSubroutine,
                               Kind::kCounter};
constexpr std::array kOrders = {SortBy::kChange, SortBy::kRelative, SortBy::kOld, SortBy::kNew,
                                SortBy::kName};

struct Profiles {
  std::vector<std::string> texts;
  std::vector<std::string> names;
};

void AddRuns(const Profiles& profiles, Side& side) {
  for (const std::string& text : profiles.texts) {
    ptick::ProfileTables tables;
    // A record of no known type ends a profile; what was before it is there.
    ptick::ReadProfile(std::make_unique<ptick::testing::TextRecord>(text), "run",
                       Side::NeededOptions(side.GetKind()), tables);
    side.AddRun(tables);
  }
}

// A table of CSV, read the plain way.
std::vector<std::vector<std::string>> ReadCsv(const std::string& csv) {
  std::vector<std::vector<std::string>> rows(1, {""});
  bool is_quoted = false;
  for (std::size_t n = 0; n < csv.size(); ++n) {
    const char c = csv[n];
    if (is_quoted) {
      if (c == '"' && n + 1 < csv.size() && csv[n + 1] == '"') {
        rows.back().back() += csv[n++];
      } else if (c == '"') {
        is_quoted = false;
      } else {
        rows.back().back() += c;
      }
    } else if (c == '"') {
      is_quoted = true;
    } else if (c == ',') {
      rows.back().emplace_back();
    } else if (c == '\r') {
      Require(n + 1 < csv.size() && csv[n + 1] == '\n', "a row ends with CR LF");
      ++n;
      rows.push_back({""});
    } else {
      rows.back().back() += c;
    }
  }
  Require(!is_quoted && rows.back().size() == 1 && rows.back()[0].empty(), "CSV is whole");
  rows.pop_back();
  return rows;
}

std::string FieldOf(const nlohmann::json& value) {
  if (value.is_null()) {
    return "";
  }
  return value.is_string() ? value.get<std::string>() : value.dump();
}

void CompareField(const nlohmann::json& value, const std::string& field) {
  if (value.is_number()) {
    const auto want = value.get<double>();
    // Not stod, which refuses what is smaller than a normal number.
    Require(want == std::strtod(field.c_str(), nullptr), "numbers in CSV are those in JSON");
  } else {
    RequireEqual(FieldOf(value), field, "texts in CSV are those in JSON");
  }
}

void CompareForms(const Diff& diff) {
  ptick::companion::StringSink json_text;
  WriteDiffJson(diff, kAllRows, json_text);
  const auto json = nlohmann::ordered_json::parse(json_text.Text());
  ptick::companion::StringSink csv_text;
  WriteDiffCsv(diff, kAllRows, csv_text);
  const auto rows = ReadCsv(csv_text.Text());
  Require(rows.size() == json.at("rows").size() + 1, "CSV has the rows of JSON and a head");
  Require(json.at("rows").size() == diff.comparison.Rows().size(), "all rows are written");
  for (std::size_t n = 1; n < rows.size(); ++n) {
    const auto& row = json.at("rows").at(n - 1);
    Require(rows[n].size() == row.size() && rows[n].size() == rows[0].size(), "rows are complete");
    std::size_t field = 0;
    for (const auto& [name, value] : row.items()) {
      RequireEqual(name, rows[0][field], "columns of CSV are those of JSON");
      CompareField(value, rows[n][field++]);
    }
  }
}

void CheckRows(const Comparison& comparison) {
  for (const Row& row : comparison.Rows()) {
    if (row.IsTested()) {
      Require(row.p_value >= 0 && row.p_value <= 1, "p is a probability");
      Require(row.rate >= row.p_value && row.rate <= 1, "q is not below p");
    } else {
      Require(row.is_significant, "what is not tested is no noise");
    }
  }
}

void CheckDiff(const Profiles& old_runs, const Profiles& new_runs, Kind kind, unsigned int bits) {
  KeyNames names;
  Side old_side(kind, names);
  Side new_side(kind, names);
  AddRuns(old_runs, old_side);
  AddRuns(new_runs, new_side);
  const bool normalize = (bits & 1U) != 0 && CanNormalize(old_side, new_side);
  const Comparison comparison(old_side, new_side, {.normalize = normalize});
  CheckRows(comparison);
  const Diff diff = {.comparison = comparison,
                     .old_profiles = old_runs.names,
                     .new_profiles = new_runs.names,
                     .is_normalized = normalize,
                     .has_sources = (bits & 2U) != 0,
                     .programs_without_source = {},
                     .order = OrderRows(comparison, kOrders.at((bits >> 2U) % kOrders.size()))};
  CompareForms(diff);
  ptick::companion::StringSink table;
  WriteDiffTable(diff, {.top = bits, .shows_noise = (bits & 8U) != 0}, table, {});
  IsTotalSlower(comparison, 5);
  SlowerRows(comparison, diff.order, 1);
  Require(Comparison(old_side, old_side).Rows().empty(), "a side does not differ from itself");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ptick::fuzz::FuzzInput input(data, size);
  const unsigned int bits = input.TakeByte();
  const Kind kind = kKinds.at(input.TakeByte() % kKinds.size());
  const int old_count = input.TakeBetween(1, 4);
  const int new_count = input.TakeBetween(1, 4);
  Profiles sides[2];
  for (int n = 0; n < old_count + new_count; ++n) {
    Profiles& side = sides[n < old_count ? 0 : 1];
    side.texts.push_back(input.TakeUpTo('\f'));
    side.names.push_back("run" + std::to_string(n));
  }
  CheckDiff(sides[0], sides[1], kind, bits);
  return 0;
}
