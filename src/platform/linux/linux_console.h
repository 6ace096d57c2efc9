#pragma once

#include <optional>
#include <string_view>

#include "platform/console.h"

namespace ptick {

/// The console as the descriptors 0, 1 and 2 of this process.
class LinuxConsole : public virtual Console {
 public:
  int Write(Stream stream, std::string_view bytes) override;
  bool IsTerminal(Stream stream) override;
  bool HasKeyboard() override;
  TerminalSize Size() override;
  std::optional<char> AskForKey(std::string_view prompt, std::string_view keys) override;
};

}  // namespace ptick
