#include "records/record_place.h"

namespace ptick {

RecordPlace SplitProfileName(std::string_view name) {
  const std::string_view::size_type slash = name.rfind('/');
  if (slash == std::string_view::npos) {
    return {".", std::string(name)};
  }
  const std::string_view directory = slash == 0 ? "/" : name.substr(0, slash);
  return {std::string(directory), std::string(name.substr(slash + 1))};
}

}  // namespace ptick
