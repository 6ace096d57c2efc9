#include "ptick_export/formats/pprof.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <protozero/pbf_writer.hpp>
#include <string>
#include <string_view>
#include <variant>

#include "companion/utf8.h"
#include "ptick_export/facts/line_sums.h"
#include "ptick_export/facts/run_time.h"
#include "ptick_export/formats/gzip_writer.h"
#include "ptick_export/formats/losses.h"
#include "ptick_export/formats/profile_names.h"

namespace ptick::exports {

namespace {

// The fields of profile.proto that are written here.
enum Profile : protozero::pbf_tag_type {
  kSampleType = 1,
  kSample = 2,
  kMapping = 3,
  kLocation = 4,
  kFunction = 5,
  kStringTable = 6,
  kTimeNanos = 9,
  kDurationNanos = 10,
  kComment = 13,
};
namespace value_type {
enum Field : protozero::pbf_tag_type { kType = 1, kUnit = 2 };
}  // namespace value_type
namespace sample {
enum Field : protozero::pbf_tag_type { kLocationId = 1, kValue = 2 };
}  // namespace sample
namespace mapping {
enum Field : protozero::pbf_tag_type {
  kId = 1,
  kFilename = 5,
  kHasFunctions = 7,
  kHasFilenames = 8,
  kHasLineNumbers = 9
};
}  // namespace mapping
namespace location {
enum Field : protozero::pbf_tag_type {
  kId = 1,
  kMappingId = 2,
  kLine = 4,
  kLineFunctionId = 1,
  kLineLine = 2
};
}  // namespace location
namespace function {
enum Field : protozero::pbf_tag_type { kId = 1, kName = 2, kSystemName = 3, kFilename = 4 };
}  // namespace function

constexpr std::uint64_t kTheMapping = 1;

// Repeated fields may come in any order and between each other, so that locations, samples and
// strings are written as they are met.
class PprofWriter {
 public:
  explicit PprofWriter(const ExportJob& job)
      : job_(job),
        sums_(job.tables.Details, {.whole_ticks = true, .numbered_lines = true}),
        gzip_(job.sink),
        names_(job.tables) {}

  void Write() {
    const std::string cut = TellLosses(job_, sums_.Losses());
    AddText("");  // the string of number 0 is to be empty
    WriteSampleType();
    WriteMapping();
    WriteTimes();
    WriteComment(companion::ToUtf8(job_.tables.ProgramCommand));
    WriteComment(cut);
    for (const LineSums::Program& program : sums_.Programs()) {
      WriteProgram(program);
    }
    gzip_.Write(bytes_);
    gzip_.Finish();
  }

 private:
  std::int64_t AddText(std::string_view text) {
    message_.add_string(kStringTable, text.data(), text.size());
    return texts_++;
  }

  void WriteSampleType() {
    const std::int64_t type = AddText("ticks");
    const std::int64_t unit = AddText("count");
    protozero::pbf_writer value(message_, kSampleType);
    value.add_int64(value_type::kType, type);
    value.add_int64(value_type::kUnit, unit);
  }

  // All programs are in one mapping, which says that there is nothing left to be looked up.
  void WriteMapping() {
    const std::int64_t name = AddText(companion::ToUtf8(job_.tables.ProgramName));
    protozero::pbf_writer mapping(message_, kMapping);
    mapping.add_uint64(mapping::kId, kTheMapping);
    mapping.add_int64(mapping::kFilename, name);
    mapping.add_bool(mapping::kHasFunctions, true);
    mapping.add_bool(mapping::kHasFilenames, true);
    mapping.add_bool(mapping::kHasLineNumbers, true);
  }

  void WriteTimes() {
    if (const std::optional<std::int64_t> time = StartNanoseconds(job_.tables)) {
      message_.add_int64(kTimeNanos, *time);
    }
    if (const std::optional<std::int64_t> duration = DurationNanoseconds(job_.tables)) {
      message_.add_int64(kDurationNanos, *duration);
    }
  }

  void WriteComment(std::string_view text) {
    if (!text.empty()) {
      const std::int64_t comment = AddText(text);
      message_.add_int64(kComment, comment);
    }
  }

  void WriteProgram(const LineSums::Program& program) {
    const std::uint64_t function = WriteFunction(job_.tables.Details.Programs()[program.id]);
    sums_.ForEachLine(program, [&](const LineSums::Line& line) {
      WriteLine(function, line);
      FlushWhenFull();
    });
  }

  std::uint64_t WriteFunction(std::string_view name) {
    const std::int64_t text = AddText(names_.Program(name));
    std::int64_t file = text;
    if (const std::optional<std::string> path = job_.source_path(name)) {
      file = AddText(names_.SourcePath(*path));
    }
    ++functions_;
    protozero::pbf_writer function(message_, kFunction);
    function.add_uint64(function::kId, functions_);
    function.add_int64(function::kName, text);
    function.add_int64(function::kSystemName, text);
    function.add_int64(function::kFilename, file);
    return functions_;
  }

  void WriteLine(std::uint64_t function, const LineSums::Line& line) {
    ++locations_;
    {
      protozero::pbf_writer location(message_, kLocation);
      location.add_uint64(location::kId, locations_);
      location.add_uint64(location::kMappingId, kTheMapping);
      protozero::pbf_writer place(location, location::kLine);
      place.add_uint64(location::kLineFunctionId, function);
      place.add_int64(location::kLineLine, line.number.value_or(0));
    }
    protozero::pbf_writer sample(message_, kSample);
    const std::array<std::uint64_t, 1> stack = {locations_};
    sample.add_packed_uint64(sample::kLocationId, stack.begin(), stack.end());
    const std::array<std::int64_t, 1> values = {std::get<std::int64_t>(line.ticks)};
    sample.add_packed_int64(sample::kValue, values.begin(), values.end());
  }

  void FlushWhenFull() {
    constexpr std::size_t kFull = std::size_t{1} << 16U;
    if (bytes_.size() >= kFull) {
      gzip_.Write(bytes_);
      bytes_.clear();
    }
  }

  const ExportJob& job_;
  LineSums sums_;
  GzipWriter gzip_;
  std::string bytes_;
  protozero::pbf_writer message_{bytes_};
  std::int64_t texts_ = 0;
  std::uint64_t functions_ = 0;
  std::uint64_t locations_ = 0;
  ProfileNames names_;
};

}  // namespace

void WritePprof(const ExportJob& job) { PprofWriter(job).Write(); }

}  // namespace ptick::exports
