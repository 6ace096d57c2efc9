#include "support/memory_console.h"

namespace ptick {

int MemoryConsole::Write(Stream stream, std::string_view bytes) {
  const bool to_output = stream == Stream::kOutput;
  if (const int error = to_output ? output_error : diagnostics_error; error != 0) {
    return error;
  }
  (to_output ? printed : on_terminal) += bytes;
  if (transcript.empty() || transcript.back().first != stream) {
    transcript.emplace_back(stream, "");
  }
  transcript.back().second += bytes;
  return 0;
}

bool MemoryConsole::IsTerminal(Stream stream) {
  return stream == Stream::kOutput ? output_is_terminal : diagnostics_are_on_terminal;
}

std::optional<char> MemoryConsole::AskForKey(std::string_view prompt,
                                             std::string_view keys_wanted) {
  prompts.emplace_back(prompt, printed.size());
  if (!later_sizes.empty()) {
    size = later_sizes.front();
    later_sizes.pop_front();
  }
  while (!keys.empty()) {
    const char key = keys.front();
    keys.pop_front();
    if (keys_wanted.find(key) != std::string_view::npos) {
      return key;
    }
  }
  return std::nullopt;
}

}  // namespace ptick
