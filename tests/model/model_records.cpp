#include "model/model_records.h"

#include <map>

#include "value/arithmetic.h"
#include "value/mask.h"

namespace ptick::model {

namespace {

struct Input {
  Value code;
  Value typed;
  Value start;
  Value end;
  std::string text;
};

void AppendPause(const Input& input, ModelTables& tables) {
  const Value& hertz = tables.headers.at("hertz");
  const Value pause = Divide(Subtract(input.start, tables.LastClock), hertz);
  if (tables.LastClock != "0" && pause > 0) {
    tables.KeyScript.emplace_back("SLEEP " + pause.Text());
  }
  tables.LastClock = input.end;
}

void AppendTypingDelay(const Input& input, ModelTables& tables) {
  const Value keys = input.code != "0" ? Increment(input.typed) : input.typed;
  if (keys > 0) {
    const Value seconds = Divide(Subtract(input.end, input.start), tables.headers.at("hertz"));
    tables.KeyScript.emplace_back("TYPEDELAY " + Divide(seconds, keys).Text());
  }
}

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (std::int64_t i = 1; i <= Len(text); ++i) {
    const std::string c(Substring(text, i, 1));
    if (c == "\"" || c == "~") {
      escaped += "~" + c;
    } else if (Seq(c) >= 32 && Seq(c) <= 126) {
      escaped += c;
    } else {
      escaped += "~" + Fmt(Seq(c), "R%3");
    }
  }
  return escaped;
}

std::string InputLine(const Input& input) {
  std::string text = input.text;
  std::string suffix = " NOCR";
  if (input.code == 10 || input.code == 13) {
    suffix = "";
  } else if (input.code != "0" && !input.code.Empty()) {
    text += Char(input.code);
  }
  return "INPUT " + Quote(Escaped(text), '"') + suffix;
}

// A command for the shell is marked by its first byte; two bytes are dropped then.
std::string CommandOf(std::string command) {
  if (Seq(command) == 255) {
    command = Substring(command, 3, Len(command));
  }
  return Extract(command, {1, 1});
}

}  // namespace

void ParseInput(const Record& record, const RunOptions& options, ModelTables& tables) {
  Value& count = tables.headers.at("input_count");
  count = Increment(count);
  if (options.KeyScriptFile.empty()) {
    return;
  }
  const Input input{record.Field(2), record.Field(3), record.Field(4), record.Field(5),
                    record.After(5)};
  if (!tables.headers.at("hertz").Empty()) {
    AppendPause(input, tables);
    if (options.TypeRateOption) {
      AppendTypingDelay(input, tables);
    }
  }
  tables.KeyScript.emplace_back(InputLine(input));
}

void ParsePerform(const Record& record, ModelTables& tables) {
  static const std::map<std::string, std::int64_t> keys = {
      {"startclock", 1}, {"endclock", 2}, {"starttime", 3}, {"endtime", 4},
      {"ticks", 5},      {"usrcpu", 6},   {"syscpu", 7},    {"type", 8}};
  std::string entry;
  for (std::int64_t field = 2; field <= 1000; field += 2) {
    const std::string key = record.Field(field);
    if (key == "cmd") {
      entry = Assign(entry, {1, 9}, CommandOf(record.After(field)));
    }
    if (key == "cmd" || key.empty()) {
      break;
    }
    if (const auto known = keys.find(key); known != keys.end()) {
      entry = Assign(entry, {1, known->second}, record.Field(field + 1));
    }
  }
  if (!Extract(entry, {1, 9}).empty()) {
    tables.Performs.emplace_back(entry);
  }
}

}  // namespace ptick::model
