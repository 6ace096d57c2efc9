#include "value/dynamic_array.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace ptick {

namespace {

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

/// Arrays are written with '^' for field, ']' for value and '~' for sub-value marks.
std::string Marked(std::string text) {
  for (char& c : text) {
    c = c == '^' ? kFieldMark : c == ']' ? kValueMark : c == '~' ? kSubValueMark : c;
  }
  return text;
}

std::string Shown(std::string text) {
  for (char& c : text) {
    c = c == kFieldMark ? '^' : c == kValueMark ? ']' : c == kSubValueMark ? '~' : c;
  }
  return text;
}

std::string Shown(Place place) {
  return " <" + std::to_string(place.field) + "," + std::to_string(place.value) + "," +
         std::to_string(place.sub_value) + ">";
}

struct Row {
  std::string array;
  Place at;
  std::string want;
};

/// Places that name no element of any array.
const std::vector<Place> kNowhere = {{0, 0, 0},  {0, 1, 1},    {-2, 0, 0}, {kMin, 0, 0},
                                     {1, -2, 0}, {1, kMin, 1}, {1, 1, -2}, {1, 1, kMin}};

const std::vector<std::string> kArrays = {"",    "a",    "^",       "]",    "~",
                                          "a^b", "a^^c", "a]b~c^d", "^]~^", "a]b]c^d~e~f^g"};

TEST(DynamicArray, MarksAreTheHighestBytes) {
  EXPECT_EQ(std::string({kFieldMark, kValueMark, kSubValueMark}), "\xFE\xFD\xFC");
}

TEST(DynamicArray, ExtractGivesTheElementOrNothing) {
  const std::vector<Row> rows = {
      {"", {1}, ""},
      {"", {2}, ""},
      {"", {1, 1, 1}, ""},
      {"a", {1}, "a"},
      {"a", {1, 1}, "a"},
      {"a", {1, 1, 1}, "a"},
      {"a", {2}, ""},
      {"a", {1, 2}, ""},
      {"a", {1, 1, 2}, ""},
      {"a^b^c", {1}, "a"},
      {"a^b^c", {2}, "b"},
      {"a^b^c", {3}, "c"},
      {"a^b^c", {4}, ""},
      {"a^b^c", {kMax}, ""},
      {"^b^", {1}, ""},
      {"^b^", {2}, "b"},
      {"^b^", {3}, ""},
      {"a^b]c~d]e^f", {2}, "b]c~d]e"},
      {"a^b]c~d]e^f", {2, 0, 2}, "b]c~d]e"},
      {"a^b]c~d]e^f", {2, 0, -5}, "b]c~d]e"},
      {"a^b]c~d]e^f", {2, 1}, "b"},
      {"a^b]c~d]e^f", {2, 2}, "c~d"},
      {"a^b]c~d]e^f", {2, 3}, "e"},
      {"a^b]c~d]e^f", {2, 4}, ""},
      {"a^b]c~d]e^f", {2, 2, 1}, "c"},
      {"a^b]c~d]e^f", {2, 2, 2}, "d"},
      {"a^b]c~d]e^f", {2, 2, 3}, ""},
      {"a^b]c~d]e^f", {2, 3, 2}, ""},
      {"a^b]c~d]e^f", {1, 2}, ""},
      {"a]b", {1, 2}, "b"},
      {"a~b", {1, 1, 2}, "b"},
      {"a^b", {-1}, ""},
      {"", {-1}, ""},
      {"", {1, -1}, ""},
      {"a^b", {1, -1}, ""},
      {"a^b", {1, 1, -1}, ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Shown(Extract(Marked(row.array), row.at)), row.want) << row.array << Shown(row.at);
  }
}

TEST(DynamicArray, AssignReplacesAndFillsUp) {
  const std::vector<Row> rows = {
      {"", {1}, "x"},
      {"", {3}, "^^x"},
      {"", {1, 3}, "]]x"},
      {"", {1, 1, 3}, "~~x"},
      {"", {2, 3, 4}, "^]]~~~x"},
      {"", {-1}, "x"},
      {"", {1, -1}, "x"},
      {"", {1, 1, -1}, "x"},
      {"", {-1, -1, -1}, "x"},
      {"", {-1, 2, 0}, "]x"},
      {"a^b", {5}, "a^b^^^x"},
      {"a^b", {1}, "x^b"},
      {"a^b", {2}, "a^x"},
      {"a^b", {3}, "a^b^x"},
      {"a^b", {-1}, "a^b^x"},
      {"a^", {-1}, "a^^x"},
      {"^", {-1}, "^^x"},
      {"a^b", {-1, 2, 2}, "a^b^]~x"},
      {"a^b", {-1, -1, -1}, "a^b^x"},
      {"a]b^c", {1}, "x^c"},
      {"a]b^c", {1, 0, 7}, "x^c"},
      {"a]b^c", {1, 2}, "a]x^c"},
      {"a]b^c", {1, 4}, "a]b]]x^c"},
      {"a]b^c", {1, -1}, "a]b]x^c"},
      {"a]b^c", {2, 1}, "a]b^x"},
      {"a]b^c", {2, 2}, "a]b^c]x"},
      {"a]b^c", {3, 2}, "a]b^c^]x"},
      {"a^^c", {2, -1}, "a^x^c"},
      {"a^^c", {2, 2}, "a^]x^c"},
      {"a]b~c^d", {1, 2}, "a]x^d"},
      {"a]b~c^d", {1, 2, 1}, "a]x~c^d"},
      {"a]b~c^d", {1, 2, 2}, "a]b~x^d"},
      {"a]b~c^d", {1, 2, 4}, "a]b~c~~x^d"},
      {"a]b~c^d", {1, 2, -1}, "a]b~c~x^d"},
      {"a]b~c^d", {1, 1, 2}, "a~x]b~c^d"},
      {"a]b~c^d", {1, -1, 3}, "a]b~c]~~x^d"},
      {"a]b~c^d", {1, 3, -1}, "a]b~c]x^d"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Shown(Assign(Marked(row.array), row.at, "x")), row.want)
        << row.array << Shown(row.at);
  }
}

TEST(DynamicArray, InsertPutsAnElementBefore) {
  const std::vector<Row> rows = {
      {"", {1}, "x"},
      {"", {-1}, "x"},
      {"", {1, 1}, "x"},
      {"", {1, -1}, "x"},
      {"", {1, 1, 1}, "x"},
      {"", {1, 1, -1}, "x"},
      {"", {3}, "^^x"},
      {"a^b", {1}, "x^a^b"},
      {"a^b", {2}, "a^x^b"},
      {"a^b", {3}, "a^b^x"},
      {"a^b", {5}, "a^b^^^x"},
      {"a^b", {-1}, "a^b^x"},
      {"^", {1}, "x^^"},
      {"^", {2}, "^x^"},
      {"^", {-1}, "^^x"},
      {"a]b^c", {1}, "x^a]b^c"},
      {"a]b^c", {1, 0, 7}, "x^a]b^c"},
      {"a]b^c", {1, 1}, "x]a]b^c"},
      {"a]b^c", {1, 2}, "a]x]b^c"},
      {"a]b^c", {1, 3}, "a]b]x^c"},
      {"a]b^c", {1, -1}, "a]b]x^c"},
      {"a]b^c", {2, 1}, "a]b^x]c"},
      {"a]b^c", {3, 2}, "a]b^c^]x"},
      {"a^^c", {2, 1}, "a^x^c"},
      {"a^^c", {2, -1}, "a^x^c"},
      {"a^^c", {2, 1, 1}, "a^x^c"},
      {"a^^c", {2}, "a^x^^c"},
      {"a]b~c^d", {1, 2, 1}, "a]x~b~c^d"},
      {"a]b~c^d", {1, 2, 2}, "a]b~x~c^d"},
      {"a]b~c^d", {1, 2, 3}, "a]b~c~x^d"},
      {"a]b~c^d", {1, 2, 5}, "a]b~c~~~x^d"},
      {"a]b~c^d", {1, 2, -1}, "a]b~c~x^d"},
      {"a]b~c^d", {1, -1, 1}, "a]b~c]x^d"},
      {"a]b~c^d", {-1, 1, 1}, "a]b~c^d^x"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Shown(Insert(Marked(row.array), row.at, "x")), row.want)
        << row.array << Shown(row.at);
  }
}

TEST(DynamicArray, DeleteAtTakesOneMarkAlong) {
  const std::vector<Row> rows = {
      {"", {1}, ""},
      {"", {2}, ""},
      {"", {1, 1, 1}, ""},
      {"a", {1}, ""},
      {"a", {1, 1}, ""},
      {"a", {2}, "a"},
      {"a^b^c", {1}, "b^c"},
      {"a^b^c", {2}, "a^c"},
      {"a^b^c", {3}, "a^b"},
      {"a^b^c", {4}, "a^b^c"},
      {"a^b^c", {kMax}, "a^b^c"},
      {"a^b^c", {-1}, "a^b^c"},
      {"^", {1}, ""},
      {"^", {2}, ""},
      {"a]b^c", {1}, "c"},
      {"a]b^c", {1, 0, 7}, "c"},
      {"a]b^c", {1, 1}, "b^c"},
      {"a]b^c", {1, 2}, "a^c"},
      {"a]b^c", {1, 3}, "a]b^c"},
      {"a]b^c", {1, -1}, "a]b^c"},
      {"a]b^c", {2, 1}, "a]b^"},
      {"a]b~c~d^e", {1, 2}, "a^e"},
      {"a]b~c~d^e", {1, 2, 1}, "a]c~d^e"},
      {"a]b~c~d^e", {1, 2, 2}, "a]b~d^e"},
      {"a]b~c~d^e", {1, 2, 3}, "a]b~c^e"},
      {"a]b~c~d^e", {1, 2, 4}, "a]b~c~d^e"},
      {"a]b~c~d^e", {1, 1, 1}, "]b~c~d^e"},
      {"a]b~c~d^e", {1, 2, -1}, "a]b~c~d^e"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Shown(DeleteAt(Marked(row.array), row.at)), row.want) << row.array << Shown(row.at);
  }
}

TEST(DynamicArray, PlacesThatNameNothingChangeNothing) {
  for (const auto& text : kArrays) {
    const std::string array = Marked(text);
    for (const auto& place : kNowhere) {
      const std::vector<std::string> results = {Extract(array, place), Assign(array, place, "x"),
                                                Insert(array, place, "x"), DeleteAt(array, place)};
      const std::vector<std::string> want = {"", array, array, array};
      EXPECT_EQ(results, want) << text << Shown(place);
    }
  }
}

TEST(DynamicArray, HoldsAnyBytesAndAnyFormOfValue) {
  using namespace std::string_literals;
  const std::string array = Assign("a\xFE\xFF", {2}, "\0b"s);
  EXPECT_EQ(array, "a\xFE\0b"s);
  EXPECT_EQ(Extract(array, {2}), "\0b"s);
  EXPECT_EQ(Assign("", {2}, 2.50),
            "\xFE"
            "2.5");
  EXPECT_EQ(Insert("7", {1}, 007),
            "7\xFE"
            "7");
  EXPECT_EQ(Assign("a\xFE"
                   "b",
                   {1}, "\xFE"),
            "\xFE\xFE"
            "b");
  EXPECT_EQ(Assign("a\xFE"
                   "b",
                   {1}, ""),
            "\xFE"
            "b");
}

/// Every place with positions 1 to `most`, at each depth.
std::vector<Place> PlacesUpTo(std::int64_t most) {
  std::vector<Place> places;
  for (std::int64_t field = 1; field <= most; ++field) {
    for (std::int64_t value = 0; value <= most; ++value) {
      for (std::int64_t sub_value = 0; sub_value <= (value == 0 ? 0 : most); ++sub_value) {
        places.push_back({field, value, sub_value});
      }
    }
  }
  return places;
}

TEST(DynamicArray, WhatIsAssignedOrInsertedIsThere) {
  for (const auto& text : kArrays) {
    for (const auto& place : PlacesUpTo(5)) {
      EXPECT_EQ(Extract(Assign(Marked(text), place, "x"), place), "x") << text << Shown(place);
      EXPECT_EQ(Extract(Insert(Marked(text), place, "x"), place), "x") << text << Shown(place);
    }
  }
}

TEST(DynamicArray, DeletingWhatWasInsertedGivesTheArrayBack) {
  const std::string array = Marked("a]b~c]d^e^f]g");
  for (const Place place : {Place{1}, Place{2}, Place{3}, Place{4}, Place{1, 1}, Place{1, 3},
                            Place{1, 4}, Place{3, 2}, Place{1, 2, 1}, Place{1, 2, 3}}) {
    EXPECT_EQ(DeleteAt(Insert(array, place, "x"), place), array) << Shown(place);
  }
}

TEST(DynamicArray, AssigningWhatIsThereChangesNothing) {
  for (const auto& text : kArrays) {
    const std::string array = Marked(text);
    for (const Place place : {Place{1}, Place{1, 1}, Place{1, 1, 1}}) {
      EXPECT_EQ(Assign(array, place, Extract(array, place)), array) << text << Shown(place);
    }
  }
}

}  // namespace

}  // namespace ptick
