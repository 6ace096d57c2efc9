#pragma once

#include <cstdint>
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
  std::int64_t PageLength() override;
  std::optional<char> ReadKey() override;
};

}  // namespace ptick
