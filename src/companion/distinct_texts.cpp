#include "companion/distinct_texts.h"

#include <utility>

#include "companion/utf8.h"

namespace ptick::companion {

std::string_view DistinctTexts::Of(std::string_view name) {
  // An ASCII name is its own text, and nothing else becomes ASCII.
  if (AsciiPrefix(name) == name.size()) {
    return name;
  }
  const auto known = texts_.find(name);
  if (known != texts_.end()) {
    return known->second;
  }
  std::string text = ToUtf8(name);
  while (!taken_.insert(text).second) {
    text += " (Latin-1)";
  }
  return texts_.emplace(name, std::move(text)).first->second;
}

}  // namespace ptick::companion
