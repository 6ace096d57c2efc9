#include "ptick_export/formats/speedscope.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "companion/json_writer.h"
#include "ptick_export/facts/line_sums.h"
#include "ptick_export/facts/time_line.h"
#include "ptick_export/formats/json_values.h"
#include "ptick_export/formats/losses.h"
#include "ptick_export/formats/profile_names.h"

namespace ptick::exports {

namespace {

using companion::JsonWriter;
constexpr auto kLines = JsonWriter::Elements::kOnLinesOfTheirOwn;

// Frames are numbered as they are written: for each program one of its own and one for each of its
// lines, then one for each distinct command.
class SpeedscopeWriter {
 public:
  SpeedscopeWriter(const ExportJob& job, LineSums sums, TimeLine time_line)
      : job_(job),
        sums_(std::move(sums)),
        time_line_(std::move(time_line)),
        json_(job.sink),
        names_(job.tables) {}

  void Write() {
    json_.BeginObject();
    json_.Key("$schema").Text("https://www.speedscope.app/file-format-schema.json");
    json_.Key("exporter").Text("ptick-export@" PTICK_VERSION);
    json_.Key("name").Text(job_.tables.ProfileName);
    json_.Key("activeProfileIndex").Number(0);
    json_.Key("shared").BeginObject().Key("frames");
    WriteFrames();
    json_.EndObject();
    json_.Key("profiles").BeginArray(kLines);
    WriteTicks();
    WriteCommands();
    json_.EndArray().EndObject().Finish();
  }

 private:
  const NameTable& Programs() const { return job_.tables.Details.Programs(); }

  void WriteFrames() {
    json_.BeginArray(kLines);
    for (const LineSums::Program& program : sums_.Programs()) {
      WriteProgramFrames(program);
    }
    const NameTable& commands = job_.tables.Performs.Commands();
    for (NameTable::Id id = 0; time_line_.commands.tracks > 0 && id < commands.size(); ++id) {
      json_.BeginObject().Key("name").Text(names_.Command(commands[id])).EndObject();
    }
    json_.EndArray();
  }

  void WriteProgramFrames(const LineSums::Program& program) {
    const std::string name(names_.Program(Programs()[program.id]));
    std::string file = name;
    if (const std::optional<std::string> path = job_.source_path(Programs()[program.id])) {
      file = names_.SourcePath(*path);
    }
    json_.BeginObject().Key("name").Text(name).Key("file").Text(file).EndObject();
    ++line_frames_;
    sums_.ForEachLine(program, [&](const LineSums::Line& line) {
      json_.BeginObject().Key("name");
      if (line.number) {
        json_.Text(std::to_string(*line.number));
      } else {
        json_.Text(names_.Line(line.text));
      }
      json_.Key("file").Text(file);
      if (line.number) {
        json_.Key("line").Number(*line.number);
      }
      json_.EndObject();
      ++line_frames_;
    });
  }

  void BeginProfile(std::string_view type, std::string_view name, std::string_view unit) {
    json_.BeginObject();
    json_.Key("type").Text(type).Key("name").Text(name).Key("unit").Text(unit);
  }

  // The samples are of a line each, with all its ticks for a weight.
  void WriteTicks() {
    BeginProfile("sampled", "Ticks", "none");
    json_.Key("startValue").Number(0);
    WriteNumber(json_.Key("endValue"), sums_.Total());
    json_.Key("samples").BeginArray(kLines);
    std::size_t frame = 0;
    for (const LineSums::Program& program : sums_.Programs()) {
      const std::size_t program_frame = frame++;
      sums_.ForEachLine(program, [&](const LineSums::Line& /*line*/) {
        json_.BeginArray().Number(program_frame).Number(frame++).EndArray();
      });
    }
    json_.EndArray();
    json_.Key("weights").BeginArray(kLines);
    for (const LineSums::Program& program : sums_.Programs()) {
      sums_.ForEachLine(program,
                        [this](const LineSums::Line& line) { WriteNumber(json_, line.ticks); });
    }
    json_.EndArray().EndObject();
  }

  void WriteCommands() {
    const std::vector<TimeSpan>& spans = time_line_.commands.spans;
    for (std::size_t begin = 0; begin < spans.size();) {
      std::size_t end = begin;
      while (end < spans.size() && spans[end].track == spans[begin].track) {
        ++end;
      }
      WriteTrack({spans.begin() + static_cast<std::ptrdiff_t>(begin),
                  spans.begin() + static_cast<std::ptrdiff_t>(end)});
      begin = end;
    }
  }

  void WriteTrack(std::span<const TimeSpan> spans) {
    std::string name = "Commands";
    if (spans.front().track > 0) {
      name += ", track " + std::to_string(spans.front().track + 1);
    }
    BeginProfile("evented", name, "seconds");
    std::int64_t last = 0;
    for (const TimeSpan& span : spans) {
      last = std::max(last, span.end);
    }
    WriteSeconds("startValue", std::min<std::int64_t>(0, spans.front().begin));
    WriteSeconds("endValue", last);
    json_.Key("events").BeginArray(kLines);
    std::vector<const TimeSpan*> open;
    for (const TimeSpan& span : spans) {
      CloseUntil(open, span.begin);
      WriteEvent("O", span.begin, span);
      open.push_back(&span);
    }
    CloseUntil(open, last);
    json_.EndArray().EndObject();
  }

  void CloseUntil(std::vector<const TimeSpan*>& open, std::int64_t now) {
    for (; !open.empty() && open.back()->end <= now; open.pop_back()) {
      WriteEvent("C", open.back()->end, *open.back());
    }
  }

  void WriteEvent(std::string_view type, std::int64_t at, const TimeSpan& span) {
    json_.BeginObject().Key("type").Text(type);
    json_.Key("frame").Number(line_frames_ + job_.tables.Performs[span.index].CommandId());
    WriteSeconds("at", at);
    json_.EndObject();
  }

  void WriteSeconds(std::string_view key, std::int64_t nanoseconds) {
    constexpr unsigned kDecimals = 9;
    json_.Key(key).NumberText(DecimalDigits(nanoseconds, kDecimals));
  }

  const ExportJob& job_;
  LineSums sums_;
  TimeLine time_line_;
  JsonWriter json_;
  std::size_t line_frames_ = 0;
  ProfileNames names_;
};

}  // namespace

void WriteSpeedscope(const ExportJob& job) {
  LineSums sums(job.tables.Details, {});
  TellLosses(job, sums.Losses());
  TimeLine time_line = MakeTimeLine(job.tables, {.commands = true, .inputs = false});
  if (!time_line.has_hertz && job.tables.Performs.RecordCount() > 0) {
    TellNoTimeLine(job);
  }
  TellLosses(job, time_line.commands, "command");
  SpeedscopeWriter(job, std::move(sums), std::move(time_line)).Write();
}

}  // namespace ptick::exports
