#include "ptick_export/formats/json_profile.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "companion/json_writer.h"
#include "figures/subroutine_order.h"
#include "profile/ticks/ordered_ticks.h"
#include "ptick_export/facts/reported_line.h"
#include "ptick_export/facts/reported_names.h"
#include "ptick_export/formats/json_parts.h"
#include "ptick_export/formats/json_values.h"
#include "ptick_export/formats/profile_names.h"

namespace ptick::exports {

namespace {

using companion::JsonWriter;
constexpr auto kLines = JsonWriter::Elements::kOnLinesOfTheirOwn;

class JsonProfileWriter {
 public:
  explicit JsonProfileWriter(const ExportJob& job)
      : tables_(job.tables),
        json_(job.sink),
        names_(job.tables),
        parts_(tables_, json_, names_, BigNumbers::kAsTheyAre) {}

  void Write() {
    json_.BeginObject();
    parts_.WriteHead();
    parts_.WriteCounters();
    WriteLines();
    WriteCommands();
    WriteSubroutines();
    WriteObjects();
    WriteInputs();
    json_.EndObject().Finish();
  }

 private:
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
      parts_.WriteCommand(n);
    }
    json_.EndArray();
  }

  void WriteSubroutines() {
    json_.Key("subroutines").BeginArray(kLines);
    for (const std::size_t n : SubroutineOrder(tables_.Subroutines)) {
      parts_.WriteSubroutine(n);
    }
    json_.EndArray();
  }

  void WriteObjects() {
    json_.Key("objects").BeginArray(kLines);
    for (const std::string_view name : SortedObjects(tables_)) {
      parts_.WriteObject(name);
    }
    json_.EndArray();
  }

  void WriteInputs() {
    json_.Key("inputs").BeginArray(kLines);
    for (std::size_t n = 0; n < tables_.Inputs.Count(); ++n) {
      parts_.WriteInput(n);
    }
    json_.EndArray();
  }

  ProfileTables& tables_;
  JsonWriter json_;
  ProfileNames names_;
  JsonParts parts_;
};

}  // namespace

void WriteJsonProfile(const ExportJob& job) { JsonProfileWriter(job).Write(); }

}  // namespace ptick::exports
