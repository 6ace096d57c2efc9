#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "profile/merge/merge_values.h"

namespace ptick {

namespace {

constexpr MergeKeys::Id kKeys = 4;

std::string TextsOf(const MergeValues& values) {
  std::string text;
  for (MergeKeys::Id key = 0; key < kKeys; ++key) {
    values.AppendText(key, text);
    text += ']';
  }
  return text;
}

// Whatever becomes of a value, it becomes the same of one that is the first of its key.
TEST(MergeFirstValues, AreLikeValuesThatWereSet) {
  const std::vector<std::string> texts = {
      "5", "abc", "", "007", "1.50", "-3", "5x", "-9223372036854775808", "99999999999999999999"};
  for (const std::string& first : texts) {
    for (const std::string& second : texts) {
      MergeValues set;
      MergeValues set_first;
      for (MergeKeys::Id key = 0; key < kKeys; ++key) {
        const std::string head = "key" + std::to_string(key);
        set.Set(set.Keys().Intern(MergeKey{.head = head}), first);
        set_first.SetFirst(set_first.Keys().Intern(MergeKey{.head = head}), first);
      }
      EXPECT_EQ(TextsOf(set_first), TextsOf(set)) << first;
      EXPECT_EQ(set_first.Compare(0, second), set.Compare(0, second)) << first << " and " << second;
      for (MergeValues* values : {&set, &set_first}) {
        values->AddTo(0, second);
        values->Set(1, second);
        values->AddTo(2, 7U);
        values->AddTo(2, second);
        values->Set(2, first);
      }
      EXPECT_EQ(TextsOf(set_first), TextsOf(set)) << first << " and " << second;
    }
  }
}

}  // namespace

}  // namespace ptick
