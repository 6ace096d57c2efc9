#include "ptick_export/formats/json_profile.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "companion/json_writer.h"
#include "figures/resource_figures.h"
#include "figures/subroutine_order.h"
#include "profile/ticks/ordered_ticks.h"
#include "ptick_export/facts/counters.h"
#include "ptick_export/facts/perform_fields.h"
#include "ptick_export/facts/reported_line.h"
#include "ptick_export/facts/reported_names.h"
#include "ptick_export/formats/json_values.h"
#include "ptick_export/formats/profile_names.h"

namespace ptick::exports {
namespace {

using companion::JsonWriter;
constexpr auto kLines = JsonWriter::Elements::kOnLinesOfTheirOwn;

class JsonProfileWriter {
 public:
  explicit JsonProfileWriter(const ExportJob& job)
      : tables_(job.tables), json_(job.sink), names_(job.tables) {}

  void Write() {
    json_.BeginObject();
    WriteHead();
    WriteCounters();
    WriteLines();
    WriteCommands();
    WriteSubroutines();
    WriteObjects();
    WriteInputs();
    json_.EndObject().Finish();
  }

 private:
  void WriteHead() {
    json_.Key("format").Text("ptick-profile").Key("version").Number(1);
    json_.Key("profile").Text(tables_.ProfileName);
    if (HasProgram(tables_)) {
      json_.Key("program").Text(names_.Program(tables_.ProgramName));
      WriteTextOrNull(json_.Key("command"), tables_.ProgramCommand);
    } else {
      json_.Key("program").Null().Key("command").Null();
    }
    WriteNumber(json_.Key("ticks"), tables_.TotalTicks);
    WriteNumber(json_.Key("hertz"), tables_.Hertz);
  }

  void WriteCounters() {
    json_.Key("counters").BeginObject();
    for (const Counter& counter : CountersOf(tables_)) {
      WriteNumber(json_.Key(counter.name), *counter.value);
    }
    json_.EndObject();
    json_.Key("user_ticks").BeginArray();
    for (const Value& ticks : tables_.UserTicks) {
      WriteNumber(json_, ticks);
    }
    json_.EndArray();
    WriteResource();
    WriteTypeRate();
  }

  void WriteResource() {
    json_.Key("resource");
    if (tables_.Resource.empty()) {
      json_.Null();
      return;
    }
    json_.BeginArray();
    for (const std::string_view figure : ResourceFigures(tables_.Resource)) {
      WriteNumber(json_, Value(figure));
    }
    json_.EndArray();
  }

  void WriteTypeRate() {
    json_.Key("typerate");
    if (!tables_.TypeRate) {
      json_.Null();
      return;
    }
    json_.BeginObject();
    WriteNumber(json_.Key("characters"), Value(tables_.TypeRate->characters));
    WriteNumber(json_.Key("clock"), Value(tables_.TypeRate->ticks));
    json_.EndObject();
  }

  // Takes the entries out of the tables: their order needs room.
  void WriteLines() {
    const OrderedTicks ticks(std::move(tables_.Details), SortOrder::kDescending, false);
    json_.Key("lines").BeginArray(kLines);
    ticks.ForEach(0, [&](const TickEntry& entry) {
      const ReportedLine line = ReportedLineOf(ticks, entry);
      json_.BeginObject();
      json_.Key("program").Text(names_.Program(ticks.Programs()[entry.program]));
      json_.Key("line");
      if (line.number) {
        json_.Number(*line.number);
      } else {
        json_.Text(line.text);
      }
      WriteNumber(json_.Key("ticks"), line.ticks);
      json_.EndObject();
    });
    json_.EndArray();
  }

  void WriteCommands() {
    json_.Key("commands").BeginArray(kLines);
    for (std::size_t n = 0; n < tables_.Performs.RecordCount(); ++n) {
      const PerformTable::Record perform = tables_.Performs[n];
      json_.BeginObject().Key("command").Text(names_.Command(perform.Command()));
      WriteTextOrNull(json_.Key("type"), perform.Type());
      for (const auto& [name, number] : kPerformFields) {
        WriteNumber(json_.Key(name), FieldOf(perform, number));
      }
      json_.EndObject();
    }
    json_.EndArray();
  }

  void WriteSubroutines() {
    const SubroutineTable& subroutines = tables_.Subroutines;
    json_.Key("subroutines").BeginArray(kLines);
    for (const std::size_t n : SubroutineOrder(subroutines)) {
      json_.BeginObject();
      json_.Key("caller").Text(names_.Program(subroutines.Caller(n)));
      json_.Key("subroutine").Text(names_.Program(subroutines.Called(n)));
      WriteNumber(json_.Key("times"), subroutines.Times(n));
      json_.EndObject();
    }
    json_.EndArray();
  }

  void WriteObjects() {
    json_.Key("objects").BeginArray(kLines);
    for (const std::string_view name : SortedObjects(tables_)) {
      json_.Text(names_.Object(name));
    }
    json_.EndArray();
  }

  void WriteInputs() {
    json_.Key("inputs").BeginArray(kLines);
    for (std::size_t n = 0; n < tables_.Inputs.Count(); ++n) {
      const KeyboardInput input = tables_.Inputs[n];
      json_.BeginObject();
      WriteNumber(json_.Key("code"), Value(input.code));
      WriteNumber(json_.Key("characters"), Value(input.characters));
      WriteNumber(json_.Key("startclock"), Value(input.start_clock));
      WriteNumber(json_.Key("endclock"), Value(input.end_clock));
      json_.Key("text").Text(input.text).EndObject();
    }
    json_.EndArray();
  }

  ProfileTables& tables_;
  JsonWriter json_;
  ProfileNames names_;
};

}  // namespace

void WriteJsonProfile(const ExportJob& job) { JsonProfileWriter(job).Write(); }

}  // namespace ptick::exports
