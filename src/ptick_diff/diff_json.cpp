#include <algorithm>
#include <cstddef>
#include <string>
#include <variant>

#include "companion/json_writer.h"
#include "ptick_diff/diff_writers.h"
#include "ptick_diff/fields.h"

namespace ptick::compare {

namespace {

using companion::JsonWriter;

void Write(const Number& number, JsonWriter& json) {
  std::visit([&](auto form) { json.Number(form); }, number);
}

struct WriteField {
  JsonWriter& json;

  void operator()(std::monostate /*nothing*/) const { json.Null(); }
  void operator()(const Number& number) const { Write(number, json); }
  void operator()(const std::string& text) const { json.Text(text); }
  void operator()(bool value) const { json.Bool(value); }
};

void WriteSide(const Side& side, std::span<const std::string> profiles, JsonWriter& json) {
  json.Key("profiles").BeginArray();
  for (const std::string& profile : profiles) {
    json.Text(profile);
  }
  json.EndArray().Key("runs").Number(side.Runs()).Key("ticks");
  Write(side.Total().Sum(0), json);
}

}  // namespace

void WriteDiffJson(const Diff& diff, std::uint64_t top, companion::ByteSink& sink) {
  JsonWriter json(sink);
  json.BeginObject().Key("format").Text("ptick-diff").Key("version").Number(1);
  json.Key("by").Text(KindName(diff.By())).Key("old").BeginObject();
  WriteSide(diff.comparison.OldSide(), diff.old_profiles, json);
  json.EndObject().Key("new").BeginObject();
  WriteSide(diff.comparison.NewSide(), diff.new_profiles, json);
  if (diff.is_normalized) {
    json.Key("scale").Number(diff.comparison.Scale());
  }
  json.EndObject();
  const std::vector<Field> fields = FieldsOf(diff);
  const std::size_t count = std::min<std::uint64_t>(top, diff.order.size());
  json.Key("rows").BeginArray(JsonWriter::Elements::kOnLinesOfTheirOwn);
  for (const std::uint32_t place : std::span(diff.order).first(count)) {
    json.BeginObject();
    for (const Field& field : fields) {
      json.Key(field.name);
      std::visit(WriteField{json}, field.value(diff.comparison, diff.RowAt(place)));
    }
    json.EndObject();
  }
  json.EndArray();
  if (count < diff.order.size()) {
    json.Key("rows_left_out").Number(diff.order.size() - count);
  }
  json.EndObject().Finish();
}

}  // namespace ptick::compare
