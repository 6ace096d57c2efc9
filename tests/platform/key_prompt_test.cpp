#include "platform/linux/key_prompt.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/linux_platform.h"
#include "support/forked.h"
#include "support/key_scene.h"
#include "support/terminal_session.h"

namespace ptick {

namespace {

using testing::AwaitEnd;
using testing::CheckForked;
using testing::Describe;
using testing::EndWithKey;
using testing::kAsked;
using testing::kNoKey;
using testing::kPrompt;
using testing::PlayOnTerminal;
using testing::TerminalSession;

TEST(KeyPromptTest, AKeyComesWithoutReturnAndNothingStaysOnTheScreen) {
  for (const std::string key : {"q", " ", "\n", "\x04", "\xe9"}) {
    EXPECT_TRUE(PlayOnTerminal([&key](TerminalSession& session) {
      const std::string before = Describe(session.Settings());
      const pid_t program = session.StartProgram(EndWithKey);
      session.AwaitKeyWait();
      session.Type(key);
      EXPECT_EQ(AwaitEnd(program), static_cast<unsigned char>(key[0]));
      EXPECT_EQ(session.Shown(), kAsked);
      EXPECT_EQ(Describe(session.Settings()), before);
    })) << key;
  }
}

TEST(KeyPromptTest, ThePlatformAsksTheTerminalItHas) {
  EXPECT_TRUE(PlayOnTerminal([](TerminalSession& session) {
    const pid_t program = session.StartProgram([] {
      LinuxPlatform platform(0, nullptr);
      return platform.HasKeyboard() ? platform.AskForKey(kPrompt, "k").value_or('?') : 0;
    });
    session.AwaitKeyWait();
    session.Type("k");
    EXPECT_EQ(AwaitEnd(program), 'k');
    EXPECT_EQ(session.Shown(), kAsked);
  }));
}

TEST(KeyPromptTest, OtherKeysLeaveThePrompt) {
  const std::vector<std::string> rows = {
      "xyz",
      "KCQ\t\b\x01",
      "\xc3\xa8",
      // Arrows, function keys and the Alt key send sequences, some with keys that are waited for.
      "\x1b[A\x1b[c\x1b[1;5q",
      "\x1bOq\x1bOc",
      "\x1b[[A",
      "\x1b[6~",
      "\x1bq\x1b \x1b\r",
      "\x1b\x1b[c",
      "\x1b\x1bq",
  };
  for (const std::string& others : rows) {
    EXPECT_TRUE(PlayOnTerminal([&others](TerminalSession& session) {
      const pid_t program = session.StartProgram(EndWithKey);
      session.AwaitKeyWait();
      session.Type(others + "k");
      EXPECT_EQ(AwaitEnd(program), 'k');
      EXPECT_EQ(session.Shown(), kAsked);
    })) << ::testing::PrintToString(others);
  }
}

TEST(KeyPromptTest, KeysTypedAheadAreTakenOneByOne) {
  EXPECT_TRUE(PlayOnTerminal([](TerminalSession& session) {
    const std::string before = Describe(session.Settings());
    session.Type("abc");
    EXPECT_EQ(AwaitEnd(session.StartProgram([&session, &before] {
                for (const char want : {'a', 'b', 'c'}) {
                  EXPECT_EQ(AskForKey(kPrompt, "abc"), want);
                  EXPECT_EQ(Describe(session.Settings()), before);
                }
                return 0;
              })),
              0);
    // Whatever was echoed of them is cleared with the first prompt.
    const std::string shown = session.Shown();
    EXPECT_TRUE(shown.ends_with(kAsked + kAsked + kAsked)) << shown;
  }));
}

TEST(KeyPromptTest, AHangUpEndsTheInput) {
  EXPECT_TRUE(PlayOnTerminal([](TerminalSession& session) {
    const pid_t program = session.StartProgram([] {
      ::signal(SIGHUP, SIG_IGN);
      return EndWithKey();
    });
    session.AwaitKeyWait();
    session.HangUp();
    EXPECT_EQ(AwaitEnd(program), kNoKey);
  }));
}

// Makes a pipe that holds `bytes`, and no more to come, standard input.
void TakeInputFromPipe(std::string_view bytes, int flags) {
  std::array<int, 2> ends = {};
  ASSERT_EQ(::pipe(ends.data()), 0);
  ASSERT_EQ(::write(ends[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  ::close(ends[1]);
  ASSERT_EQ(::fcntl(ends[0], F_SETFL, flags), 0);
  ASSERT_EQ(::dup2(ends[0], STDIN_FILENO), STDIN_FILENO);
}

TEST(KeyPromptTest, WhatIsNoTerminalGivesItsBytesThenTheEnd) {
  for (const int flags : {0, O_NONBLOCK}) {
    EXPECT_EQ(CheckForked([flags] {
                const int nowhere = ::open("/dev/null", O_WRONLY);
                ASSERT_EQ(::dup2(nowhere, STDOUT_FILENO), STDOUT_FILENO);
                TakeInputFromPipe("ab\x1b", flags);
                EXPECT_EQ(AskForKey(kPrompt, "ab"), 'a');
                EXPECT_EQ(AskForKey(kPrompt, "ab"), 'b');
                EXPECT_EQ(AskForKey(kPrompt, "ab"), std::nullopt);
              }),
              0);
  }
}

}  // namespace

}  // namespace ptick
