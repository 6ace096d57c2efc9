// How inputs are opened.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/record_file.h"

namespace ptick::companion {

/// Opens an input by the name that its user typed; throws Trouble. OpenInput in
/// companion/linux/inputs.h is one.
using InputOpener = std::function<std::unique_ptr<RecordReader>(const std::string& name)>;

}  // namespace ptick::companion
