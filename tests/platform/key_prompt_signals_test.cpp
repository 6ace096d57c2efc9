#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <string>
#include <vector>

#include "support/forked.h"
#include "support/key_scene.h"
#include "support/terminal_session.h"

namespace ptick {

namespace {

using testing::AwaitEnd;
using testing::Describe;
using testing::EndWithKey;
using testing::kAsked;
using testing::kCleared;
using testing::kPrompt;
using testing::PlayOnTerminal;
using testing::TerminalSession;

// Waits until the program is stopped by a signal, and tells which; 0 when it ended instead.
int AwaitStop(pid_t program) {
  int status = 0;
  ::waitpid(program, &status, WUNTRACED);
  return WIFSTOPPED(status) ? WSTOPSIG(status) : 0;
}

TEST(KeyPromptSignals, AnEndingSignalFindsTheTerminalRestored) {
  struct Row {
    int signal;
    std::string key;  // pressed to raise it; empty: the signal is sent
  };
  std::vector<Row> rows = {{SIGINT, "\x03"}, {SIGQUIT, "\x1c"}};
  for (const int signal :
       {SIGHUP,  SIGINT,  SIGQUIT, SIGILL,  SIGTRAP, SIGABRT,   SIGBUS,   SIGFPE,
        SIGUSR1, SIGSEGV, SIGUSR2, SIGPIPE, SIGALRM, SIGTERM,   SIGXCPU,  SIGVTALRM,
        SIGPROF, SIGIO,   SIGPWR,  SIGSYS,  SIGXFSZ, SIGSTKFLT, SIGRTMIN, SIGRTMAX}) {
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
      EXPECT_TRUE(session.Shown().ends_with(kCleared));
    })) << row.signal;
  }
}

// As with Ctrl-S. Nothing can be erased then, but nothing may be kept waiting either.
TEST(KeyPromptSignals, OutputThatIsHeldUpDoesNotHoldUpASignal) {
  for (const bool from_the_start : {true, false}) {
    EXPECT_TRUE(PlayOnTerminal([from_the_start](TerminalSession& session) {
      const std::string before = Describe(session.Settings());
      if (from_the_start) {
        session.HoldOutput(true);
      }
      const pid_t program = session.StartProgram(EndWithKey);
      session.AwaitKeyWait();
      session.HoldOutput(true);
      ::kill(program, SIGTERM);
      EXPECT_EQ(AwaitEnd(program), 128 + SIGTERM);
      EXPECT_EQ(Describe(session.Settings()), before);
      session.HoldOutput(false);
    }));
  }
}

TEST(KeyPromptSignals, IgnoredAndHeldBackSignalsStayAsTheyAre) {
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

TEST(KeyPromptSignals, AHandledSignalIsHandledAndTheWaitGoesOn) {
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

TEST(KeyPromptSignals, ThePromptIsGoneAndTheTerminalRestoredWhileTheProcessIsStopped) {
  EXPECT_TRUE(PlayOnTerminal([](TerminalSession& session) {
    const std::string before = Describe(session.Settings());
    const pid_t program = session.StartProgram(EndWithKey);
    for (int stops = 0; stops < 3; ++stops) {
      session.AwaitKeyWait();
      session.Type("\x1a");
      ASSERT_EQ(AwaitStop(program), SIGTSTP);
      EXPECT_EQ(Describe(session.Settings()), before);
      const std::string shown = session.Shown();
      EXPECT_TRUE(shown.ends_with(kCleared)) << shown;
      ::kill(program, SIGCONT);
    }
    session.AwaitKeyWait();
    session.Type("k");
    EXPECT_EQ(AwaitEnd(program), 'k');
    EXPECT_EQ(Describe(session.Settings()), before);
    const std::string shown = session.Shown();
    EXPECT_TRUE(shown.ends_with(std::string(kPrompt) + kCleared)) << shown;
  }));
}

TEST(KeyPromptSignals, ThePromptComesAgainAfterAStopThatCouldNotBeSeen) {
  EXPECT_TRUE(PlayOnTerminal([](TerminalSession& session) {
    const termios before = session.Settings();
    const pid_t program = session.StartProgram(EndWithKey);
    session.AwaitKeyWait();
    ::kill(program, SIGSTOP);
    ASSERT_EQ(AwaitStop(program), SIGSTOP);
    session.Shown();
    session.Set(before);  // as the shell does
    ::kill(program, SIGCONT);
    session.AwaitKeyWait();
    session.Type("k");
    EXPECT_EQ(AwaitEnd(program), 'k');
    EXPECT_EQ(Describe(session.Settings()), Describe(before));
    const std::string shown = session.Shown();
    EXPECT_TRUE(shown.ends_with(kAsked)) << shown;
  }));
}

}  // namespace

}  // namespace ptick
