// List operations on any text at any place: they do what splitting, changing and joining does, and
// undo each other where they should.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/fuzz_input.h"
#include "fuzz/literal_lists.h"
#include "fuzz/require.h"
#include "model/model_list.h"
#include "value/dynamic_array.h"
#include "value/list_operations.h"

namespace {

using namespace ptick;
using ptick::fuzz::Require;
using ptick::fuzz::RequireEqual;

constexpr std::string_view kMarks = "\xFE\xFD\xFC";

std::size_t LevelOf(Place place) { return place.value == 0 ? 0U : place.sub_value == 0 ? 1U : 2U; }

// The list that holds the element at `place`, and where in it.
std::string ParentOf(const std::string& array, Place place) {
  switch (LevelOf(place)) {
    case 0:
      return array;
    case 1:
      return Extract(array, {place.field});
    default:
      return Extract(array, {place.field, place.value});
  }
}

std::int64_t PositionOf(Place place) {
  switch (LevelOf(place)) {
    case 0:
      return place.field;
    case 1:
      return place.value;
    default:
      return place.sub_value;
  }
}

void CheckAgainstLiteral(const std::string& list, Place place, const std::string& x) {
  RequireEqual(fuzz::LiteralExtract(list, place), Extract(list, place), "extract finds");
  RequireEqual(fuzz::LiteralAssign(list, place, x), Assign(list, place, x), "assign replaces");
  RequireEqual(fuzz::LiteralInsert(list, place, x), Insert(list, place, x), "insert adds");
  RequireEqual(fuzz::LiteralDelete(list, place), DeleteAt(list, place), "delete removes");
}

void CheckUndone(const std::string& list, Place place, const std::string& x) {
  const bool names = place.field > 0 && place.value >= 0 && place.sub_value >= 0;
  const char mark = kMarks[LevelOf(place)];
  if (!names || x.find_first_of(kMarks.substr(0, LevelOf(place) + 1)) != std::string::npos) {
    return;
  }
  RequireEqual(x, Extract(Assign(list, place, x), place), "what was assigned is there");
  RequireEqual(x, Extract(Insert(list, place, x), place), "what was inserted is there");
  const std::string parent = ParentOf(list, place);
  if (!parent.empty() && PositionOf(place) <= DCount(parent, mark) + 1) {
    const std::string longer = Insert(list, place, x);
    Require(DCount(ParentOf(longer, place), mark) == DCount(parent, mark) + 1,
            "an insert adds one element");
    RequireEqual(list, DeleteAt(longer, place), "deleting undoes an insert");
  }
}

void CheckAppend(const std::string& list, const std::string& x) {
  if (x.find(kFieldMark) == std::string::npos && !list.empty()) {
    const std::string longer = Insert(list, {-1}, x);
    Require(DCount(longer, kFieldMark) == DCount(list, kFieldMark) + 1, "an append adds one field");
    RequireEqual(longer, Assign(list, {-1}, x), "assigning at -1 appends");
    RequireEqual(list, DeleteAt(longer, {DCount(longer, kFieldMark)}), "an append is undone");
  }
}

model::ValueList ElementsOf(const std::string& list, char mark) {
  model::ValueList elements;
  for (const std::string& element : fuzz::SplitAt(list, mark)) {
    elements.emplace_back(element);
  }
  return list.empty() ? model::ValueList() : elements;
}

void CheckLocate(const std::string& x, const std::string& list, Place level, LocateOrder order) {
  const bool fields = level.field == 0;
  const char mark = kMarks[fields ? 0U : level.value == 0 ? 1U : 2U];
  const std::string searched = fields ? list : Extract(list, {level.field, level.value});
  const Located want = model::LocateIn(x, ElementsOf(searched, mark), order);
  const Located got = Locate(x, list, level, order);
  Require(want.found == got.found && want.position == got.position, "locate finds the first");
}

// Fields inserted one after the other where Locate says are in order.
void CheckOrder(const std::string& list, LocateOrder order) {
  std::string ordered;
  for (const std::string& field : fuzz::SplitAt(list, kFieldMark)) {
    ordered = Insert(ordered, {Locate(field, ordered, {}, order).position}, field);
  }
  const std::vector<std::string> fields = fuzz::SplitAt(ordered, kFieldMark);
  for (std::size_t i = 1; i < fields.size(); ++i) {
    const int step = CompareNumbers(Value(fields[i - 1]).AsNumber(), Value(fields[i]).AsNumber());
    Require(order == LocateOrder::kAscending ? step <= 0 : step >= 0, "sorted inserts keep order");
  }
}

void CheckSort(const std::string& list) {
  const std::vector<std::string> fields = fuzz::SplitAt(list, kFieldMark);
  const std::vector<std::string> sorted = fuzz::SplitAt(Sort(list), kFieldMark);
  Require(std::ranges::is_permutation(fields, sorted), "sorting loses and adds nothing");
  Require(std::ranges::is_sorted(sorted), "sorted fields are in order");
}

void CheckField(const std::string& text, char delimiter, std::int64_t n, std::int64_t count) {
  const FieldResult field = Field(text, delimiter, n, count);
  const std::vector<std::string> elements = fuzz::SplitAt(text, delimiter);
  const auto first = static_cast<std::size_t>(std::max<std::int64_t>(n, 1) - 1);
  if (first >= elements.size()) {
    Require(field.text.empty() && field.col1 == text.size() + 1 && field.col2 == text.size() + 1,
            "there is nothing after the last field");
    return;
  }
  const auto most = static_cast<std::size_t>(std::max<std::int64_t>(count, 1));
  const std::size_t last = std::min(elements.size(), first + most);
  const std::vector<std::string> taken(elements.begin() + static_cast<std::ptrdiff_t>(first),
                                       elements.begin() + static_cast<std::ptrdiff_t>(last));
  RequireEqual(fuzz::JoinWith(taken, delimiter), field.text, "fields are taken as they are");
  RequireEqual(field.text, text.substr(field.col1, field.col2 - field.col1 - 1),
               "the columns are around the text");
  Require(field.col1 == 0 || text[field.col1 - 1] == delimiter, "a delimiter is in front");
  Require(field.col2 == text.size() + 1 || text[field.col2 - 1] == delimiter,
          "a delimiter follows");
}

void CheckCount(const std::string& text, char delimiter) {
  const std::int64_t count = DCount(text, delimiter);
  const auto elements = static_cast<std::int64_t>(fuzz::SplitAt(text, delimiter).size());
  Require(count == (text.empty() ? 0 : elements), "elements are counted");
  Require(DCount(text + delimiter, delimiter) == elements + 1, "a delimiter adds an element");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ptick::fuzz::FuzzInput input(data, size);
  const Place place = {.field = input.TakeBetween(-2, 9),
                       .value = input.TakeBetween(-2, 5),
                       .sub_value = input.TakeBetween(-2, 5)};
  const std::int64_t n = input.TakeBetween(-1, 9);
  const std::int64_t count = input.TakeBetween(-1, 5);
  const auto delimiter = static_cast<char>(input.TakeByte());
  const std::string x = input.TakeUpTo('\n');
  const std::string list = input.TakeRest();

  CheckAgainstLiteral(list, place, x);
  CheckUndone(list, place, x);
  CheckAppend(list, x);
  for (const LocateOrder order :
       {LocateOrder::kNone, LocateOrder::kAscending, LocateOrder::kDescending}) {
    CheckLocate(x, list, {}, order);
    CheckLocate(x, list, {1}, order);
    CheckLocate(x, list, {1, 1}, order);
  }
  CheckOrder(list, LocateOrder::kAscending);
  CheckOrder(list, LocateOrder::kDescending);
  CheckSort(list);
  CheckField(list, delimiter, n, count);
  CheckCount(list, delimiter);
  Require(Sum(list).IsNumber(), "a sum is a number");
  return 0;
}
