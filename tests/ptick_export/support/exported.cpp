#include "ptick_export/support/exported.h"

#include <algorithm>

#include "companion/byte_sink.h"
#include "support/profiles.h"

namespace ptick::exports::testing {

namespace {

class Told final : public companion::Messages {
 public:
  explicit Told(std::vector<std::string>& reasons) : reasons_(reasons) {}

  void Tell(const companion::Problem& problem) override {
    reasons_.push_back(problem.file.value_or("?") + ": " + problem.reason);
  }

 private:
  std::vector<std::string>& reasons_;
};

}  // namespace

std::string RecordsOf(const std::vector<std::string_view>& records) {
  std::string text;
  for (const std::string_view record : records) {
    text += ptick::testing::Records({record});
  }
  return text;
}

Exported Export(Writer write, std::string_view profile, const std::vector<std::string>& sources) {
  const ptick::testing::Parsed parsed = ptick::testing::Parse(profile);
  parsed.tables->ProfileName = "run1";
  Exported exported;
  companion::StringSink sink;
  Told messages(exported.told);
  write({.tables = *parsed.tables,
         .source_path = [&sources](std::string_view program) -> std::optional<std::string> {
           if (std::ranges::find(sources, program) == sources.end()) {
             return std::nullopt;
           }
           return "src/" + std::string(program);
         },
         .sink = sink,
         .messages = messages});
  exported.text = sink.Text();
  return exported;
}

Exported Export(Writer write, std::initializer_list<std::string_view> records,
                const std::vector<std::string>& sources) {
  return Export(write, ptick::testing::Records(records), sources);
}

}  // namespace ptick::exports::testing
