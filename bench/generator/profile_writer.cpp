#include "generator/profile_writer.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "generator/other_records.h"
#include "generator/program_names.h"
#include "generator/random.h"
#include "generator/text_file.h"
#include "generator/trace_keys.h"

namespace ptick::bench {

namespace {

// One line in this many is of another type, on average.
constexpr std::uint32_t kSprinkle = 200;

constexpr std::array<std::string_view, 8> kSourceLines = {
    "",
    "   IF QTY > ONHAND THEN",
    "      CALL PRICE.LINES(ORDER, ",
    "      ORDER<4, -1> = ",
    "   END ELSE",
    "\t\tQTY  =  QTY - ",
    "   READ CUST FROM F.CUST, ID ELSE CUST = ''  ;* customer may be gone since, see ",
    "* ---- ",
};

// Returns the sum of the ticks.
std::uint64_t PutTraces(const GenerateOptions& options, const TraceKeyChoice& keys,
                        const std::vector<std::string>& programs, Random& random,
                        OtherRecords& others, TextFile& text) {
  std::uint64_t sum = 0;
  for (std::uint32_t i = 0; i < options.lines; ++i) {
    const TraceKey key = keys.At(i, random);
    const std::uint32_t ticks = random.Zipf();
    sum += ticks;
    text.Put("PROFILE:trace\t").Put(programs[key.program]).Put("\t").Put(key.line);
    text.Put("\t").Put(ticks).Put("\n");
    if (random.Below(kSprinkle) == 0) {
      others.PutAny();
    }
  }
  return sum;
}

void PutOthers(const GenerateOptions& options, OtherRecords& others) {
  for (std::uint32_t i = 0; i < options.lines; ++i) {
    if (options.kind == Records::kPerform) {
      others.PutPerform();
    } else if (options.kind == Records::kSubroutineCall) {
      others.PutSubroutineCall();
    } else if (options.kind == Records::kSharedObject) {
      others.PutSharedObject();
    } else {
      others.PutInput();
    }
  }
}

}  // namespace

void WriteProfile(const GenerateOptions& options, std::uint32_t file,
                  const std::filesystem::path& path) {
  const TraceKeyChoice keys(options, file);
  const std::vector<std::string> programs = ProgramNames(options.programs);
  Random random(Random::Mix(options.seed) + file);
  TextFile text(path);
  OtherRecords others(programs, random, text);
  others.PutHead();
  std::uint64_t ticks = 0;
  if (options.kind == Records::kTrace) {
    ticks = PutTraces(options, keys, programs, random, others, text);
  } else {
    PutOthers(options, others);
  }
  others.PutTail(ticks);
  text.Close();
}

void WriteSources(const GenerateOptions& options, const std::filesystem::path& directory) {
  std::filesystem::create_directories(directory);
  Random random(options.seed);
  for (const std::string& program : ProgramNames(options.programs)) {
    TextFile text(directory / program);
    for (std::uint32_t line = 1; line <= options.last_line; ++line) {
      text.Put(kSourceLines.at(random.Below(kSourceLines.size()))).Put(line).Put("\n");
    }
    text.Close();
  }
}

}  // namespace ptick::bench
