#include "profile/tables/keyboard_inputs.h"

#include <gtest/gtest.h>

#include <string>

namespace ptick {

namespace {

TEST(KeyboardInputs, AreKeptAsTheyWereRead) {
  KeyboardInputs inputs;
  inputs.Add({{"13", "02", "", "1.5"}, "a\tb"});
  inputs.Add({{"", "", "", ""}, ""});
  ASSERT_EQ(inputs.Count(), 2U);
  EXPECT_EQ(inputs[0].code, "13");
  EXPECT_EQ(inputs[0].characters, "02");
  EXPECT_EQ(inputs[0].start_clock, "");
  EXPECT_EQ(inputs[0].end_clock, "1.5");
  EXPECT_EQ(inputs[0].text, "a\tb");
  EXPECT_EQ(inputs[1].text, "");
}

// However many settings there are, those that no input goes by take no memory.
TEST(KeyboardInputs, KeepTheLastSettingOfAKindBetweenTwoInputs) {
  KeyboardInputs inputs;
  for (int i = 0; i < 1000; ++i) {
    inputs.Add(ClockSetting::Kind::kHertz, std::to_string(i));
    inputs.Add(ClockSetting::Kind::kStartClock, std::to_string(-i));
  }
  ASSERT_EQ(inputs.ClockSettings().size(), 2U);
  EXPECT_EQ(inputs.ClockSettings()[0].value, "999");
  EXPECT_EQ(inputs.ClockSettings()[1].value, "-999");
  inputs.Add({{"13", "1", "1", "2"}, "a"});
  inputs.Add(ClockSetting::Kind::kHertz, "50");
  ASSERT_EQ(inputs.ClockSettings().size(), 3U);
  EXPECT_EQ(inputs.ClockSettings()[2].inputs_before, 1U);
  EXPECT_EQ(inputs.ClockSettings()[2].value, "50");
}

}  // namespace

}  // namespace ptick
