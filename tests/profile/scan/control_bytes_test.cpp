#include "profile/scan/control_bytes.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace ptick {
namespace {

TEST(ControlBytes, MarksEachByteBelowElevenAtEveryPlace) {
  for (int byte = 0; byte < 256; ++byte) {
    for (unsigned at = 0; at < 64; ++at) {
      std::string text(64, 'x');
      text[at] = static_cast<char>(byte);
      const std::uint64_t want = byte < 11 ? std::uint64_t{1} << at : 0;
      ASSERT_EQ(ControlBytes(text.data()), want) << byte << " at " << at;
      ASSERT_EQ(ControlBytesPortable(text.data()), want) << byte << " at " << at;
    }
  }
}

// Neighbours must not disturb each other: every byte next to every other.
TEST(ControlBytes, MarksBytesBesideAnyOther) {
  for (int left = 0; left < 256; ++left) {
    for (int right = 0; right < 256; ++right) {
      std::string text;
      while (text.size() < 64) {
        text += static_cast<char>(left);
        text += static_cast<char>(right);
      }
      const std::uint64_t want =
          (left < 11 ? 0x5555555555555555U : 0) | (right < 11 ? 0xAAAAAAAAAAAAAAAAU : 0);
      ASSERT_EQ(ControlBytes(text.data()), want) << left << " beside " << right;
      ASSERT_EQ(ControlBytesPortable(text.data()), want) << left << " beside " << right;
    }
  }
}

}  // namespace
}  // namespace ptick
