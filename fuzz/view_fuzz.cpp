// The document of a page, of two profiles of any bytes and a source: it is JSON that cannot leave
// the element that holds it, and every program, line, command and input of the run is found in it.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "companion/byte_sink.h"
#include "companion/utf8.h"
#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "ptick_view/document.h"
#include "support/memory_platform.h"
#include "support/profiles.h"

namespace {

using namespace ptick;
using fuzz::Require;
using nlohmann::json;

std::string Document(const ProfileTables& tables, const ProfileTables& old_tables,
                     const companion::SourceFolders& sources) {
  view::ComparedKinds kinds;
  kinds.AddRun(old_tables, false);
  kinds.AddRun(tables, true);
  const view::BaselineSide baseline = {.profile = {old_tables, 1}, .kinds = kinds};
  companion::StringSink sink;
  view::WriteDocument({.producer = "fuzz",
                       .profile = {tables, 1},
                       .baseline = &baseline,
                       .sources = sources,
                       .limits = {}},
                      sink);
  return sink.Text();
}

// Bytes that would let the text end its element, begin a comment or break a line of a script.
void CheckInert(std::string_view text) {
  Require(companion::IsUtf8(text), "the document is UTF-8");
  Require(text.find('<') == std::string_view::npos, "nothing ends the element");
  Require(text.find("\xE2\x80\xA8") == std::string_view::npos, "no line separator");
  Require(text.find("\xE2\x80\xA9") == std::string_view::npos, "no paragraph separator");
  Require(std::ranges::none_of(text, [](char c) { return c >= '\0' && c < ' ' && c != '\n'; }),
          "no control character");
}

// The text of a name, and how often " (Latin-1)" follows it, once where the name says so itself.
bool IsTextOf(std::string_view shown, const std::string& name) {
  constexpr std::string_view kSecond = " (Latin-1)";
  const std::string text = companion::ToUtf8(name);
  if (!shown.starts_with(text)) {
    return false;
  }
  for (shown.remove_prefix(text.size()); shown.starts_with(kSecond);) {
    shown.remove_prefix(kSecond.size());
  }
  return shown.empty();
}

// The lines of each program, both by their bytes.
using LiteralPrograms = std::map<std::string, std::set<std::string>>;

LiteralPrograms ProgramsOf(const ProfileTables& tables) {
  const TickTable& details = tables.Details;
  LiteralPrograms programs;
  details.ForEach([&](const TickEntry& entry) {
    const bool is_exact = entry.HasExactText();
    programs[std::string(details.Programs()[entry.program])].insert(
        is_exact ? std::string(details.ExactLine(entry)) : std::to_string(entry.line));
  });
  return programs;
}

std::string TextOf(const json& line) {
  return line.is_string() ? line.get<std::string>() : line.dump();
}

// Every line of every program has one row, and no row is of another.
void CheckLines(const json& document, const LiteralPrograms& programs) {
  const json& names = document["names"];
  const json& lines = document["profile"]["lines"];
  Require(std::set<json>(names.begin(), names.end()).size() == names.size(), "names are apart");
  std::map<std::size_t, std::set<std::string>> rows;
  std::size_t count = 0;
  for (std::size_t row = 0; row < lines["program"].size(); ++row) {
    const auto program = lines["program"][row].get<std::size_t>();
    Require(program < names.size(), "a row has a program");
    Require(rows[program].insert(TextOf(lines["line"][row])).second, "a line has one row");
    ++count;
  }
  std::size_t want = 0;
  for (const LiteralPrograms::value_type& program : programs) {
    want += program.second.size();
    const bool is_there = std::ranges::any_of(rows, [&](const auto& of_program) {
      return of_program.second.size() == program.second.size() &&
             IsTextOf(names[of_program.first].template get<std::string>(), program.first) &&
             std::ranges::all_of(program.second, [&](const std::string& line) {
               return std::ranges::any_of(of_program.second, [&](const std::string& shown) {
                 return IsTextOf(shown, line);
               });
             });
    });
    Require(is_there, "a program has all its lines");
  }
  Require(count == want && rows.size() == programs.size(), "no other line is there");
}

void CheckTexts(const json& profile, const ProfileTables& tables) {
  const json& commands = profile["commands"];
  Require(commands.size() == tables.Performs.RecordCount(), "commands are complete");
  for (std::size_t n = 0; n < commands.size(); ++n) {
    Require(IsTextOf(commands[n]["command"].get<std::string>(),
                     std::string(tables.Performs[n].Command())),
            "a command is the command");
  }
  const json& inputs = profile["inputs"];
  Require(inputs.size() == tables.Inputs.Count(), "inputs are complete");
  for (std::size_t n = 0; n < inputs.size(); ++n) {
    const json& text = inputs[n]["text"];
    Require(
        (text.is_null() ? "" : text.get<std::string>()) == companion::ToUtf8(tables.Inputs.Text(n)),
        "an input is what was typed");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::FuzzInput input(data, size);
  const std::string old_profile = input.TakeUpTo('\xFE');
  const std::string profile = input.TakeUpTo('\xFE');
  const testing::Parsed old_run = testing::Parse(old_profile);
  const testing::Parsed run = testing::Parse(profile);
  MemoryPlatform platform;
  platform.files["src"]["A"].text = input.TakeRest();
  const std::vector<std::string> folders = {"src"};
  const companion::SourceFolders sources(folders, platform);
  const std::string text = Document(*run.tables, *old_run.tables, sources);
  CheckInert(text);
  const json document = json::parse(text, nullptr, false);
  Require(!document.is_discarded(), "the document is JSON");
  CheckLines(document, ProgramsOf(*run.tables));
  CheckTexts(document["profile"], *run.tables);
  Require(text == Document(*run.tables, *old_run.tables, sources), "the same bytes again");
  return 0;
}
