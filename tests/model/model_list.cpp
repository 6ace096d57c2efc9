#include "model/model_list.h"

#include <array>
#include <cstddef>

#include "value/list_operations.h"
#include "value/pattern.h"

namespace ptick::model {

namespace {

bool StopsAt(const Value& x, const Value& element, LocateOrder order) {
  switch (order) {
    case LocateOrder::kAscending:
      return CompareNumbers(x.AsNumber(), element.AsNumber()) <= 0;
    case LocateOrder::kDescending:
      return CompareNumbers(x.AsNumber(), element.AsNumber()) >= 0;
    case LocateOrder::kNone:
      break;
  }
  return x.Text() == element.Text();
}

bool Matches(const Value& x, const Value& element, LocateOrder order) {
  return order == LocateOrder::kNone || CompareNumbers(x.AsNumber(), element.AsNumber()) == 0;
}

}  // namespace

Located LocateIn(const Value& x, const ValueList& list, LocateOrder order) {
  Located located;
  for (const Value& element : list) {
    if (StopsAt(x, element, order)) {
      located.found = Matches(x, element, order);
      break;
    }
    ++located.position;
  }
  return located;
}

void InsertAt(ValueList& list, std::int64_t position, const Value& x) {
  list.insert(list.begin() + static_cast<std::ptrdiff_t>(position - 1), x);
}

std::vector<std::string> LinesOf(std::string_view text) {
  std::vector<std::string> lines;
  std::string line;
  for (const char c : text) {
    if (c == '\n' || c == kFieldMark) {
      lines.push_back(line);
      line.clear();
    } else {
      line += c;
    }
  }
  if (!line.empty()) {
    lines.push_back(line);
  }
  return lines;
}

std::string Shown(std::string_view text) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  std::string shown;
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (code >= 32 && code <= 126 && c != '\\') {
      shown += c;
    } else if (c == '\t') {
      shown += "\\t";
    } else {
      shown.append("\\x").append(1, kHex[code / 16]).append(1, kHex[code % 16]);
    }
  }
  return shown;
}

}  // namespace ptick::model
