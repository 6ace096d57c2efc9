// A source and a profile of any bytes as a listing: it is UTF-8, safe on a terminal, and tells
// every tick once.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "companion/byte_sink.h"
#include "companion/utf8.h"
#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "profile/profile_loader.h"
#include "ptick_annotate/annotation.h"
#include "support/memory_platform.h"
#include "support/text_record.h"
#include "value/arithmetic.h"

namespace {

using ptick::fuzz::Require;

/// The ticks after a text at the start of a line; 0 where there is no such line.
ptick::Value AmountAfter(const std::string& listing, const std::string& start) {
  const std::size_t at = listing.rfind("\n" + start);
  if (at == std::string::npos) {
    return 0;
  }
  const std::size_t begin = at + 1 + start.size();
  return {listing.substr(begin, listing.find(' ', begin) - begin)};
}

// Sums beyond these are no whole numbers, or not exact.
bool IsExact(const ptick::Value& ticks) {
  const std::string text = ticks.Text();
  return text.size() < 15 && text.find('.') == std::string::npos;
}

void RequireSum(const std::string& listing, const ptick::TickTable& entries) {
  bool is_exact = true;
  entries.ForEach([&](const ptick::TickEntry& entry) {
    is_exact =
        is_exact && (!entry.HasExactText() || IsExact(ptick::Value(entries.ExactTicks(entry))));
  });
  if (!is_exact) {
    return;
  }
  ptick::Value sum = AmountAfter(listing, "Annotated: ");
  for (const char* start :
       {"Without source: ", "On lines that their source does not have: ", "Not asked for: "}) {
    sum = ptick::Add(sum, AmountAfter(listing, start));
  }
  const std::string annotated = AmountAfter(listing, "Annotated: ").Text();
  ptick::fuzz::RequireEqual(AmountAfter(listing, "Annotated: " + annotated + " of ").Text(),
                            sum.Text(), "every tick is told once");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ptick::companion;
  ptick::fuzz::FuzzInput input(data, size);
  AnnotationOptions options;
  options.excerpt.context = input.TakeByte();
  options.excerpt.is_whole = input.TakeFlag();
  if (input.TakeFlag()) {
    options.programs = {"A"};
  }
  const TextForm form = {.to_terminal = input.TakeFlag(), .columns = input.TakeByte() + 1U};
  ptick::MemoryPlatform platform;
  const std::string source = input.TakeUpTo('\0');
  platform.files["src"]["A"].text = source;
  platform.files["src"]["B"].text = source.substr(std::min(source.size(), size % 7));
  const std::string profile = input.TakeRest();

  ptick::ProfileTables tables;
  if (ptick::ReadProfile(std::make_unique<ptick::testing::TextRecord>(profile), "run", {},
                         tables)) {
    return 0;
  }
  ptick::ProfileTables again;
  Require(
      !ptick::ReadProfile(std::make_unique<ptick::testing::TextRecord>(profile), "run", {}, again),
      "a profile can be read twice");
  const SourceFolders folders(std::vector<std::string>{"src"}, platform);
  StringSink sink;
  TextWriter writer(sink, form.to_terminal ? form : TextForm());
  Annotation(tables, folders, options, writer).Print();
  const std::string& listing = sink.Text();
  Require(IsUtf8(listing), "a listing is UTF-8");
  if (form.to_terminal) {
    Require(std::ranges::none_of(listing, [](char c) { return c >= 0 && c < ' ' && c != '\n'; }),
            "no control byte reaches a terminal");
  } else {
    RequireSum(listing, again.Details);
  }
  return 0;
}
