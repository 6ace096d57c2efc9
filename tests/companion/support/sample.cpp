#include "companion/support/sample.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "companion/csv_writer.h"
#include "companion/json_writer.h"
#include "companion/linux/program.h"
#include "companion/number_text.h"
#include "companion/table.h"
#include "platform/linux/unique_fd.h"

namespace ptick::companion {

namespace {

struct Count {
  std::string input;
  std::uint64_t bytes = 0;
};

void Describe(CommandLine& line, SampleOptions& options) {
  line.Usage("[OPTION]... [FILE]...")
      .Summary("Counts the bytes of each FILE, or of standard input.")
      .Choice<SampleForm>("--form", "FORM", "the form of the result: text, json, csv or bytes",
                          {{"text", SampleForm::kText},
                           {"json", SampleForm::kJson},
                           {"csv", SampleForm::kCsv},
                           {"bytes", SampleForm::kBytes}},
                          options.form)
      .WholeNumber("-r,--repeat", "N", "show each row N times", {.least = 1}, options.repeat)
      .Flag("--tell", "end with status 1", options.is_status_told)
      .Operands(options.inputs);
}

std::uint64_t CountBytes(const std::string& input, Progress& progress) {
  UniqueFd file;
  if (input != "-") {
    file = UniqueFd(::open(input.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.IsOpen()) {
      throw Trouble(InputName(input), errno);
    }
  }
  std::vector<char> block(std::size_t{1} << 16);
  std::uint64_t bytes = 0;
  while (true) {
    const ssize_t got =
        ::read(input == "-" ? STDIN_FILENO : file.Get(), block.data(), block.size());
    if (got < 0) {
      throw Trouble(InputName(input), errno);
    }
    if (got == 0) {
      return bytes;
    }
    bytes += static_cast<std::uint64_t>(got);
    progress.Add(static_cast<std::uint64_t>(got));
  }
}

void PrintText(ResultFile& result, const TextForm& form, const std::vector<Count>& counts) {
  const std::array<Column, 2> columns = {
      {{.heading = "Bytes", .align = Align::kRight}, {.heading = "File", .gives_way = true}}};
  TextWriter writer(result, form);
  PrintTable(writer, columns, counts.size(), [&](std::size_t row, std::span<Cell> cells) {
    cells[0] = {.text = GroupedCount(counts[row].bytes), .style = Style::kHot};
    cells[1] = {.text = counts[row].input};
  });
}

void PrintJson(ResultFile& result, const std::vector<Count>& counts) {
  JsonWriter json(result);
  json.BeginArray(JsonWriter::Elements::kOnLinesOfTheirOwn);
  for (const Count& count : counts) {
    json.BeginObject().Key("file").Text(count.input).Key("bytes").Number(count.bytes).EndObject();
  }
  json.EndArray().Finish();
}

void PrintCsv(ResultFile& result, const std::vector<Count>& counts) {
  CsvWriter csv(result);
  csv.Text("file").Text("bytes").EndRow();
  for (const Count& count : counts) {
    csv.Text(count.input).Number(count.bytes).EndRow();
  }
}

ExitStatus CountInputs(SampleOptions& options, Session& session) {
  ResultFile& result = session.OpenResult(options.form == SampleForm::kBytes ? ResultKind::kBytes
                                                                             : ResultKind::kText);
  if (options.inputs.empty()) {
    options.inputs.emplace_back("-");
  }
  std::vector<Count> counts;
  {
    Progress progress(session.GetStatusLine(), [&] { return BytesOfAll(options.inputs); });
    for (const std::string& input : options.inputs) {
      const Count count = {.input = input, .bytes = CountBytes(input, progress)};
      counts.insert(counts.end(), options.repeat, count);
    }
  }
  switch (options.form) {
    case SampleForm::kText:
      PrintText(result, session.Form(), counts);
      break;
    case SampleForm::kJson:
      PrintJson(result, counts);
      break;
    case SampleForm::kCsv:
      PrintCsv(result, counts);
      break;
    case SampleForm::kBytes:
      for (const Count& count : counts) {
        result.Write(count.input + '\0');
      }
      break;
  }
  if (options.is_status_told) {
    session.GetMessages().Tell({.file = options.inputs[0], .line = 1, .reason = "told"});
    return ExitStatus::kTold;
  }
  return ExitStatus::kDone;
}

}  // namespace

Program SampleProgram(SampleOptions& options) {
  return {.name = "ptick-sample",
          .describe = [&options](CommandLine& line) { Describe(line, options); },
          .run = [&options](Session& session) { return CountInputs(options, session); }};
}

}  // namespace ptick::companion
