#include "profile/trace_keys.h"

namespace ptick {

// The name in a head that is "trace", a TAB and a name; empty where there is none.
std::string_view TraceKeys::NameIn(std::string_view head) {
  constexpr std::string_view kStart = "trace\t";
  const std::string_view name = head.starts_with(kStart) ? head.substr(kStart.size()) : "";
  return name.find('\t') == std::string_view::npos ? name : "";
}

}  // namespace ptick
