#include "ptick_export/formats/json_parts.h"

#include <optional>

#include "figures/resource_figures.h"
#include "ptick_export/facts/counters.h"
#include "ptick_export/facts/perform_fields.h"
#include "ptick_export/facts/reported_names.h"
#include "value/value.h"

namespace ptick::exports {

void JsonParts::WriteHead() {
  json_.Key("format").Text("ptick-profile").Key("version").Number(1);
  json_.Key("profile").Text(tables_.ProfileName);
  if (HasProgram(tables_)) {
    json_.Key("program").Text(names_.Program(tables_.ProgramName));
    WriteTextOrNull(json_.Key("command"), tables_.ProgramCommand);
  } else {
    json_.Key("program").Null().Key("command").Null();
  }
  Write("ticks", tables_.TotalTicks);
  Write("hertz", tables_.Hertz);
}

void JsonParts::WriteCounters() {
  json_.Key("counters").BeginObject();
  for (const Counter& counter : CountersOf(tables_)) {
    Write(counter.name, *counter.value);
  }
  json_.EndObject();
  json_.Key("user_ticks").BeginArray();
  for (const Value& ticks : tables_.UserTicks) {
    WriteNumber(json_, ticks, big_numbers_);
  }
  json_.EndArray();
  WriteResource();
  WriteTypeRate();
}

void JsonParts::WriteResource() {
  json_.Key("resource");
  if (tables_.Resource.empty()) {
    json_.Null();
    return;
  }
  json_.BeginArray();
  for (const std::string_view figure : ResourceFigures(tables_.Resource)) {
    WriteNumber(json_, Value(figure), big_numbers_);
  }
  json_.EndArray();
}

void JsonParts::WriteTypeRate() {
  json_.Key("typerate");
  if (!tables_.TypeRate) {
    json_.Null();
    return;
  }
  json_.BeginObject();
  Write("characters", Value(tables_.TypeRate->characters));
  Write("clock", Value(tables_.TypeRate->ticks));
  json_.EndObject();
}

void JsonParts::WriteCommand(std::size_t n) {
  const PerformTable::Record perform = tables_.Performs[n];
  json_.BeginObject().Key("command").Text(names_.Command(perform.Command()));
  WriteTextOrNull(json_.Key("type"), perform.Type());
  for (const auto& [name, number] : kPerformFields) {
    WriteNumber(json_.Key(name), FieldOf(perform, number), big_numbers_);
  }
  json_.EndObject();
}

void JsonParts::WriteSubroutine(std::size_t n) {
  const SubroutineTable& subroutines = tables_.Subroutines;
  json_.BeginObject();
  json_.Key("caller").Text(names_.Program(subroutines.Caller(n)));
  json_.Key("subroutine").Text(names_.Program(subroutines.Called(n)));
  WriteNumber(json_.Key("times"), subroutines.Times(n), big_numbers_);
  json_.EndObject();
}

void JsonParts::WriteObject(std::string_view name) { json_.Text(names_.Object(name)); }

void JsonParts::WriteInput(std::size_t n) {
  const KeyboardInput input = tables_.Inputs[n];
  json_.BeginObject();
  Write("code", Value(input.code));
  Write("characters", Value(input.characters));
  Write("startclock", Value(input.start_clock));
  Write("endclock", Value(input.end_clock));
  json_.Key("text").Text(input.text).EndObject();
}

void JsonParts::Write(std::string_view key, const Value& value) {
  WriteNumber(json_.Key(key), value, big_numbers_);
}

}  // namespace ptick::exports
