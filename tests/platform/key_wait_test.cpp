#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <functional>
#include <string>
#include <vector>

#include "platform/linux/linux_platform.h"
#include "platform/linux/terminal.h"
#include "support/forked.h"
#include "support/terminal_session.h"

namespace ptick {
namespace {

using testing::AwaitEnd;
using testing::CheckForked;
using testing::Describe;
using testing::TerminalSession;

constexpr int kNoKey = 77;

// What a program under test does: waits for a key and ends with it as its status.
int EndWithKey() {
  const std::optional<char> key = WaitForKey();
  return key ? static_cast<unsigned char>(*key) : kNoKey;
}

// Runs `scene` on a terminal of its own; true when its expectations hold.
bool PlayOnTerminal(const std::function<void(TerminalSession&)>& scene) {
  return CheckForked([&scene] {
           TerminalSession session;
           scene(session);
         }) == 0;
}

// Waits until the program is stopped by a signal, and tells which; 0 when it ended instead.
int AwaitStop(pid_t program) {
  int status = 0;
  ::waitpid(program, &status, WUNTRACED);
  return WIFSTOPPED(status) ? WSTOPSIG(status) : 0;
}

TEST(KeyWaitTest, AKeyComesWithoutReturnAndIsNotShown) {
  for (const std::string key : {"q", " ", "\n", "\x04", "\xe9"}) {
    EXPECT_TRUE(PlayOnTerminal([&key](TerminalSession& session) {
      const std::string before = Describe(session.Settings());
      const pid_t program = session.StartProgram(EndWithKey);
      session.AwaitKeyWait();
      session.Type(key);
      EXPECT_EQ(AwaitEnd(program), static_cast<unsigned char>(key[0]));
      EXPECT_EQ(session.Shown(), "");
      EXPECT_EQ(Describe(session.Settings()), before);
    })) << key;
  }
}

TEST(KeyWaitTest, ThePlatformAsksTheTerminalItHas) {
  EXPECT_TRUE(PlayOnTerminal([](TerminalSession& session) {
    const pid_t program = session.StartProgram([] {
      LinuxPlatform platform(0, nullptr);
      return platform.HasKeyboard() ? platform.ReadKey().value_or('?') : 0;
    });
    session.AwaitKeyWait();
    session.Type("k");
    EXPECT_EQ(AwaitEnd(program), 'k');
  }));
}

TEST(KeyWaitTest, KeysTypedAheadAreTakenOneByOne) {
  EXPECT_TRUE(PlayOnTerminal([](TerminalSession& session) {
    const std::string before = Describe(session.Settings());
    session.Type("abc");
    EXPECT_EQ(AwaitEnd(session.StartProgram([&session, &before] {
                for (const char want : {'a', 'b', 'c'}) {
                  EXPECT_EQ(WaitForKey(), want);
                  EXPECT_EQ(Describe(session.Settings()), before);
                }
                return 0;
              })),
              0);
  }));
}

TEST(KeyWaitTest, AnEndingSignalFindsTheTerminalRestored) {
  struct Row {
    int signal;
    std::string key;  // pressed to raise it; empty: the signal is sent
  };
  std::vector<Row> rows = {{SIGINT, "\x03"}, {SIGQUIT, "\x1c"}};
  for (const int signal :
       {SIGHUP,  SIGINT,  SIGQUIT, SIGILL,    SIGTRAP,  SIGABRT, SIGBUS,    SIGFPE,  SIGUSR1,
        SIGSEGV, SIGUSR2, SIGPIPE, SIGALRM,   SIGTERM,  SIGXCPU, SIGVTALRM, SIGPROF, SIGIO,
        SIGPWR,  SIGSYS,  SIGXFSZ, SIGSTKFLT, SIGRTMIN, SIGRTMAX}) {
    rows.push_back({signal, ""});
  }
  for (const Row& row : rows) {
    EXPECT_TRUE(PlayOnTerminal([&row](TerminalSession& session) {
      const rlimit no_core = {.rlim_cur = 0, .rlim_max = 0};
      ::setrlimit(RLIMIT_CORE, &no_core);
      const std::string before = Describe(session.Settings());
      const pid_t program = session.StartProgram([&row] {
        ::signal(row.signal, SIG_DFL);  // sanitizers handle some of them
        return EndWithKey();
      });
      session.AwaitKeyWait();
      EXPECT_NE(Describe(session.Settings()), before);
      if (row.key.empty()) {
        ::kill(program, row.signal);
      } else {
        session.Type(row.key);
      }
      EXPECT_EQ(AwaitEnd(program), 128 + row.signal);
      EXPECT_EQ(Describe(session.Settings()), before);
    })) << row.signal;
  }
}

TEST(KeyWaitTest, IgnoredAndHeldBackSignalsStayAsTheyAre) {
  EXPECT_TRUE(PlayOnTerminal([](TerminalSession& session) {
    const pid_t program = session.StartProgram([] {
      ::signal(SIGINT, SIG_IGN);
      sigset_t held = {};
      ::sigemptyset(&held);
      ::sigaddset(&held, SIGTERM);
      ::sigprocmask(SIG_BLOCK, &held, nullptr);
      const int key = EndWithKey();
      sigset_t mask = {};
      ::sigprocmask(SIG_SETMASK, nullptr, &mask);
      EXPECT_EQ(::sigismember(&mask, SIGTERM), 1);
      EXPECT_EQ(::sigismember(&mask, SIGHUP), 0);
      return key;
    });
    session.AwaitKeyWait();
    session.Type("\x03");
    ::kill(program, SIGTERM);
    session.Type("k");
    EXPECT_EQ(AwaitEnd(program), 'k');
  }));
}

TEST(KeyWaitTest, AHandledSignalIsHandledAndTheWaitGoesOn) {
  EXPECT_TRUE(PlayOnTerminal([](TerminalSession& session) {
    std::array<int, 2> handled = {};
    ASSERT_EQ(::pipe(handled.data()), 0);
    const pid_t program = session.StartProgram([&handled] {
      static int handled_end = 0;
      handled_end = handled[1];
      ::signal(SIGUSR2,
               [](int) { [[maybe_unused]] const ssize_t told = ::write(handled_end, "h", 1); });
      return EndWithKey();
    });
    session.AwaitKeyWait();
    ::kill(program, SIGUSR2);
    char told = 0;
    EXPECT_EQ(::read(handled[0], &told, 1), 1);
    session.AwaitKeyWait();
    session.Type("k");
    EXPECT_EQ(AwaitEnd(program), 'k');
  }));
}

TEST(KeyWaitTest, TheTerminalIsRestoredWhileTheProcessIsStopped) {
  EXPECT_TRUE(PlayOnTerminal([](TerminalSession& session) {
    const std::string before = Describe(session.Settings());
    const pid_t program = session.StartProgram(EndWithKey);
    for (int stops = 0; stops < 3; ++stops) {
      session.AwaitKeyWait();
      session.Type("\x1a");
      ASSERT_EQ(AwaitStop(program), SIGTSTP);
      EXPECT_EQ(Describe(session.Settings()), before);
      ::kill(program, SIGCONT);
    }
    session.AwaitKeyWait();
    session.Type("k");
    EXPECT_EQ(AwaitEnd(program), 'k');
    EXPECT_EQ(Describe(session.Settings()), before);
  }));
}

TEST(KeyWaitTest, KeysComeAgainAfterAStopThatCouldNotBeSeen) {
  EXPECT_TRUE(PlayOnTerminal([](TerminalSession& session) {
    const termios before = session.Settings();
    const pid_t program = session.StartProgram(EndWithKey);
    session.AwaitKeyWait();
    ::kill(program, SIGSTOP);
    ASSERT_EQ(AwaitStop(program), SIGSTOP);
    session.Set(before);  // as the shell does
    ::kill(program, SIGCONT);
    session.AwaitKeyWait();
    session.Type("k");
    EXPECT_EQ(AwaitEnd(program), 'k');
    EXPECT_EQ(Describe(session.Settings()), Describe(before));
  }));
}

TEST(KeyWaitTest, AHangUpEndsTheInput) {
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

TEST(KeyWaitTest, WhatIsNoTerminalGivesItsBytesThenTheEnd) {
  for (const int flags : {0, O_NONBLOCK}) {
    EXPECT_EQ(CheckForked([flags] {
                TakeInputFromPipe("ab", flags);
                EXPECT_EQ(WaitForKey(), 'a');
                EXPECT_EQ(WaitForKey(), 'b');
                EXPECT_EQ(WaitForKey(), std::nullopt);
              }),
              0);
  }
}

}  // namespace
}  // namespace ptick
