#include "output/diagnostics.h"

#include <system_error>

#include "output/terminal_text.h"

namespace ptick {

bool Diagnostics::PrintLine(std::string_view line) {
  std::string shown;
  shown.reserve(line.size() + 1);  // a malformed line may be as long as a file
  shown += line;
  if (console_.IsTerminal(Stream::kDiagnostics)) {
    MakeHarmless(shown);
  }
  shown += '\n';
  const int error = console_.Write(Stream::kDiagnostics, shown);
  return error == 0 || error == static_cast<int>(std::errc::broken_pipe);
}

void Diagnostics::PrintMessage(std::string_view text) {
  PrintLine(std::string(program_).append(": ").append(text));
}

}  // namespace ptick
