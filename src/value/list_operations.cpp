#include "value/list_operations.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "value/arithmetic.h"
#include "value/number_text.h"

namespace ptick {

namespace {

/// The mark between the elements of a list that Locate searches.
char MarkOf(Place level) {
  if (level.field == 0) {
    return kFieldMark;
  }
  return level.value == 0 ? kValueMark : kSubValueMark;
}

Number KeyOf(std::string_view element) { return ParseNumber(element).value_or(std::int64_t{0}); }

/// What an element is to the search: x itself, or the one x must precede, or to be passed.
enum class Meeting { kPass, kEqual, kPrecedes };

Meeting MeetingInOrder(const Number& x, std::string_view element, LocateOrder order) {
  const int difference = CompareNumbers(x, KeyOf(element));
  if (difference == 0) {
    return Meeting::kEqual;
  }
  const bool precedes = order == LocateOrder::kAscending ? difference < 0 : difference > 0;
  return precedes ? Meeting::kPrecedes : Meeting::kPass;
}

}  // namespace

LocateOrder ParseLocateOrder(std::string_view code) {
  if (code == "AR") {
    return LocateOrder::kAscending;
  }
  return code == "DR" ? LocateOrder::kDescending : LocateOrder::kNone;
}

Located Locate(const Value& x, std::string_view array, Place level, LocateOrder order) {
  const std::string inner = level.field == 0 ? "" : Extract(array, {level.field, level.value, 0});
  const std::string_view list = level.field == 0 ? array : inner;
  if (list.empty()) {
    return {};
  }
  const std::string text = x.Text();
  const Number key = x.AsNumber();
  const char mark = MarkOf(level);
  std::size_t begin = 0;
  for (std::int64_t position = 1;; ++position) {
    const std::size_t end = std::min(list.find(mark, begin), list.size());
    const std::string_view element = list.substr(begin, end - begin);
    Meeting meeting = element == text ? Meeting::kEqual : Meeting::kPass;
    if (order != LocateOrder::kNone) {
      meeting = MeetingInOrder(key, element, order);
    }
    if (meeting != Meeting::kPass) {
      return {meeting == Meeting::kEqual, position};
    }
    if (end == list.size()) {
      return {false, position + 1};
    }
    begin = end + 1;
  }
}

std::int64_t DCount(std::string_view x, char delimiter) {
  return x.empty() ? 0 : std::count(x.begin(), x.end(), delimiter) + 1;
}

FieldResult Field(std::string_view x, char delimiter, std::int64_t n, std::int64_t count) {
  std::size_t begin = 0;
  for (std::int64_t at = 1; at < n; ++at) {
    const std::size_t end = x.find(delimiter, begin);
    if (end == std::string_view::npos) {
      return {"", x.size() + 1, x.size() + 1};
    }
    begin = end + 1;
  }
  std::size_t end = std::min(x.find(delimiter, begin), x.size());
  for (std::int64_t taken = 1; taken < count && end < x.size(); ++taken) {
    end = std::min(x.find(delimiter, end + 1), x.size());
  }
  return {std::string(x.substr(begin, end - begin)), begin, end + 1};
}

std::string Sort(std::string_view array) {
  std::vector<std::string_view> fields;
  std::size_t begin = 0;
  for (std::size_t end = array.find(kFieldMark); end != std::string_view::npos;
       end = array.find(kFieldMark, begin)) {
    fields.push_back(array.substr(begin, end - begin));
    begin = end + 1;
  }
  fields.push_back(array.substr(begin));
  std::sort(fields.begin(), fields.end());

  std::string sorted;
  sorted.reserve(array.size());
  for (const std::string_view field : fields) {
    sorted.append(field).push_back(kFieldMark);
  }
  sorted.pop_back();
  return sorted;
}

Value Sum(std::string_view array) {
  constexpr std::string_view kAnyMark = "\xFE\xFD\xFC";
  Value sum = 0;
  std::size_t begin = 0;
  while (begin <= array.size()) {
    const std::size_t end = std::min(array.find_first_of(kAnyMark, begin), array.size());
    sum = Add(sum, KeyOf(array.substr(begin, end - begin)));
    begin = end + 1;
  }
  return sum;
}

}  // namespace ptick
