#pragma once

#include <string_view>

namespace ptick {

/// Walks over the TAB-separated fields of a line, from the first on. Past the end, fields are
/// empty.
class TabFields {
 public:
  explicit TabFields(std::string_view line) : rest_(line) {}

  std::string_view Next() {
    const std::string_view::size_type tab = rest_.find('\t');
    const std::string_view field = rest_.substr(0, tab);
    rest_.remove_prefix(tab == std::string_view::npos ? rest_.size() : tab + 1);
    return field;
  }

  /// Everything after the TAB that ended the last field, TABs included.
  std::string_view Rest() const { return rest_; }

 private:
  std::string_view rest_;
};

}  // namespace ptick
