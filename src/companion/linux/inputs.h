// The inputs of a companion as the system has them.
#pragma once

#include <memory>
#include <string>

#include "platform/linux/record_files.h"

namespace ptick::companion {

/// Opens an input for reading, once: a file, a pipe, a device, or "-", which is standard input.
/// Throws Trouble with the system's reason; a directory is no input.
std::unique_ptr<RecordReader> OpenInput(const std::string& name);

}  // namespace ptick::companion
