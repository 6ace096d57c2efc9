#include "ptick_view/document.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "companion/json_writer.h"
#include "ptick_view/baseline_part.h"
#include "ptick_view/document_writer.h"
#include "ptick_view/inert_sink.h"
#include "ptick_view/line_table.h"
#include "ptick_view/profile_part.h"

namespace ptick::view {

namespace {

constexpr auto kRows = companion::JsonWriter::Elements::kOnLinesOfTheirOwn;

std::size_t BytesOf(const RecordText& text) {
  std::size_t bytes = 0;
  for (std::size_t n = 1; n <= text.FieldCount(); ++n) {
    bytes += text.ReadField(n)->size() + 1;
  }
  return bytes;
}

void WriteSource(std::string_view program, const companion::SourceText& source,
                 DocumentWriter& writer) {
  companion::JsonWriter& json = writer.json;
  json.BeginObject().Key("program").Number(writer.programs.NumberOf(program));
  json.Key("file").Text(source.path).Key("lines").BeginArray();
  for (std::size_t n = 1; n <= source.text.FieldCount(); ++n) {
    json.Text(*source.text.ReadField(n));
  }
  json.EndArray().EndObject();
}

// Those of the programs with lines, hungriest first.
void WriteSources(const companion::SourceFolders& folders, const LineTable& lines,
                  DocumentWriter& writer) {
  writer.json.Key("sources").BeginArray(kRows);
  std::size_t room = writer.limits.source_bytes;
  std::size_t found = 0;
  std::size_t kept = 0;
  for (const LineTable::Program& program : lines.Programs()) {
    const std::string_view name = lines.Names().Names()[program.name];
    const std::optional<companion::SourceText> source = folders.Read(name);
    if (!source) {
      continue;
    }
    ++found;
    if (const std::size_t bytes = BytesOf(source->text); bytes <= room) {
      room -= bytes;
      ++kept;
      WriteSource(name, *source, writer);
    }
  }
  writer.json.EndArray();
  writer.LeaveOut("sources", kept, found);
}

void WriteLeftOut(DocumentWriter& writer) {
  writer.json.Key("left_out").BeginArray();
  for (const LeftOut& part : writer.left_out) {
    writer.json.BeginObject().Key("what").Text(part.what);
    writer.json.Key("count").Number(part.count).Key("of").Number(part.of).Key("ticks");
    writer.Count(part.ticks);
    writer.json.EndObject();
  }
  writer.json.EndArray();
}

// After all that names programs by number.
void WriteNames(DocumentWriter& writer) {
  const NameTable& programs = writer.programs.All();
  writer.Column("names", programs.size(), [&](std::size_t number) {
    writer.json.Text(writer.names.Program(programs[static_cast<NameTable::Id>(number)]));
  });
}

}  // namespace

void WriteDocument(const DocumentFacts& facts, companion::ByteSink& sink) {
  InertSink inert(sink);
  companion::JsonWriter json(inert);
  DocumentWriter writer{
      .json = json, .limits = facts.limits, .names = exports::ProfileNames(facts.profile.tables)};
  const LineTable lines(facts.profile.tables);
  json.BeginObject().Key("format").Text("ptick-view").Key("version").Number(1);
  json.Key("producer").Text(facts.producer).Key("profile");
  WriteProfile(facts.profile.tables, lines, Lines::kWithLines, writer);
  json.Key("runs").Number(facts.profile.runs).Key("baseline");
  if (facts.baseline != nullptr) {
    WriteBaseline(*facts.baseline, writer);
  } else {
    json.Null();
  }
  json.Key("sources_wanted").Bool(!facts.sources.Files().empty());
  WriteSources(facts.sources, lines, writer);
  WriteLeftOut(writer);
  WriteNames(writer);
  json.EndObject().Finish();
}

}  // namespace ptick::view
