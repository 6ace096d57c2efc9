#include "ptick_export/formats/trace_events.h"

#include <cstdint>
#include <string>
#include <string_view>

#include "companion/json_writer.h"
#include "ptick_export/facts/perform_fields.h"
#include "ptick_export/facts/time_line.h"
#include "ptick_export/formats/json_values.h"
#include "ptick_export/formats/losses.h"
#include "ptick_export/formats/profile_names.h"

namespace ptick::exports {

namespace {

using companion::JsonWriter;

// A run is one process; its tracks are threads, those of commands first.
constexpr int kProcess = 1;

bool IsCost(PerformNumber number) {
  return number == PerformNumber::kTicks || number == PerformNumber::kUsrCpu ||
         number == PerformNumber::kSysCpu;
}

class TraceEventWriter {
 public:
  TraceEventWriter(const ExportJob& job, const TimeLine& time_line)
      : job_(job), time_line_(time_line), json_(job.sink), names_(job.tables) {}

  void Write() {
    json_.BeginObject();
    json_.Key("displayTimeUnit").Text("ms");
    WriteOtherData();
    json_.Key("traceEvents").BeginArray(JsonWriter::Elements::kOnLinesOfTheirOwn);
    WriteName("process_name", 0, job_.tables.ProgramName);
    WriteTrackNames();
    for (const TimeSpan& span : time_line_.commands.spans) {
      WriteCommand(span);
    }
    for (const TimeSpan& span : time_line_.inputs.spans) {
      WriteInput(span);
    }
    json_.EndArray().EndObject().Finish();
  }

 private:
  void WriteOtherData() {
    json_.Key("otherData").BeginObject();
    json_.Key("exporter").Text("ptick-export@" PTICK_VERSION);
    json_.Key("profile").Text(job_.tables.ProfileName);
    json_.Key("command").Text(job_.tables.ProgramCommand);
    WriteNumber(json_.Key("hertz"), job_.tables.Hertz);
    WriteNumber(json_.Key("ticks"), job_.tables.TotalTicks);
    json_.Key("units").Text(
        "ticks: profiling samples; usrcpu, syscpu: clock ticks, hertz a second");
    json_.EndObject();
  }

  void WriteTrackNames() {
    const std::uint32_t commands = time_line_.commands.tracks;
    for (std::uint32_t track = 0; track < commands + time_line_.inputs.tracks; ++track) {
      const bool is_input = track >= commands;
      const std::uint32_t number = is_input ? track - commands : track;
      std::string name = is_input ? "Inputs" : "Commands";
      if (number > 0) {
        name += ", track " + std::to_string(number + 1);
      }
      WriteName("thread_name", track + 1, name);
      BeginEvent("thread_sort_index", "M", track + 1);
      json_.Key("args").BeginObject().Key("sort_index").Number(track + 1).EndObject().EndObject();
    }
  }

  void BeginEvent(std::string_view name, std::string_view phase, std::uint32_t thread) {
    json_.BeginObject().Key("name").Text(name).Key("ph").Text(phase);
    json_.Key("pid").Number(kProcess).Key("tid").Number(thread);
  }

  void WriteName(std::string_view what, std::uint32_t thread, std::string_view name) {
    BeginEvent(what, "M", thread);
    json_.Key("args").BeginObject().Key("name").Text(name).EndObject().EndObject();
  }

  void BeginSpan(std::string_view name, std::string_view category, const TimeSpan& span,
                 std::uint32_t thread) {
    constexpr unsigned kDecimals = 3;  // of a microsecond
    BeginEvent(name, "X", thread);
    json_.Key("cat").Text(category);
    json_.Key("ts").NumberText(DecimalDigits(span.begin, kDecimals));
    json_.Key("dur").NumberText(DecimalDigits(span.end - span.begin, kDecimals));
    json_.Key("args").BeginObject();
  }

  void WriteCommand(const TimeSpan& span) {
    const PerformTable::Record perform = job_.tables.Performs[span.index];
    BeginSpan(names_.Command(perform.Command()), "command", span, span.track + 1);
    WriteTextOrNull(json_.Key("type"), perform.Type());
    for (const auto& [name, number] : kPerformFields) {
      if (IsCost(number)) {
        WriteNumber(json_.Key(name), FieldOf(perform, number));
      }
    }
    json_.EndObject().EndObject();
  }

  void WriteInput(const TimeSpan& span) {
    const KeyboardInput input = job_.tables.Inputs[span.index];
    BeginSpan(input.text, "input", span, time_line_.commands.tracks + span.track + 1);
    WriteNumber(json_.Key("code"), Value(input.code));
    WriteNumber(json_.Key("characters"), Value(input.characters));
    json_.EndObject().EndObject();
  }

  const ExportJob& job_;
  const TimeLine& time_line_;
  JsonWriter json_;
  ProfileNames names_;
};

}  // namespace

void WriteTraceEvents(const ExportJob& job) {
  const TimeLine time_line = MakeTimeLine(job.tables, {.commands = true, .inputs = true});
  if (!time_line.has_hertz &&
      (job.tables.Performs.RecordCount() > 0 || job.tables.Inputs.Count() > 0)) {
    TellNoTimeLine(job);
  }
  TellLosses(job, time_line.commands, "command");
  TellLosses(job, time_line.inputs, "input");
  TraceEventWriter(job, time_line).Write();
}

}  // namespace ptick::exports
