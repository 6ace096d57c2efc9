#pragma once

#include <optional>
#include <string_view>

#include "companion/progress.h"

namespace ptick::companion::testing {

/// A status line that nobody sees.
class NoStatusLine final : public StatusLine {
 public:
  bool IsSeen() const override { return false; }
  void Show(std::string_view /*text*/) override {}
  void Erase() override {}
};

/// Progress that nobody sees.
class NoProgress {
 public:
  Progress& Get() { return progress_; }

 private:
  NoStatusLine line_;
  Progress progress_{line_, [] { return std::nullopt; }};
};

}  // namespace ptick::companion::testing
