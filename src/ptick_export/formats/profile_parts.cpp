#include "ptick_export/formats/profile_parts.h"

namespace ptick::exports {

ReadOptions OptionsFor(std::uint32_t parts) {
  ReadOptions options;
  options.keep_performs = (parts & kCommands) != 0;
  options.keep_callers = (parts & kSubroutines) != 0;
  options.keep_inputs = (parts & kInputs) != 0;
  return options;
}

}  // namespace ptick::exports
