#include "daemon/system/child_processes.h"

#include "support/descriptors.h"
#include "support/files.h"
#include "support/loop_run.h"
#include "support/temporary_directory.h"
#include "support/tracer.h"
#include "support/unix_listener.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <csignal>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace TALO::Wifid {

namespace {

using Lines = std::vector<std::string>;

Children::Program Shell(const std::string& script) { return {"/bin/sh", {"-c", script}}; }

class ChildProcessesTest : public testing::Test {
 protected:
  void SetUp() override {
    if (EndToEnd::Descriptor(static_cast<int>(syscall(SYS_pidfd_open, getpid(), 0))).Get() < 0) {
      GTEST_SKIP() << "There are no descriptors of processes here: valgrind has them since its release 3.21.";
    }
  }

  std::unique_ptr<Child> Start(const Children::Program& program) {
    auto started = children_.Start(
        program, [this](const std::string& line) { lines_.push_back(line); },
        [this](const std::string& how) { ended_.push_back(how); });
    return started.Succeeded() ? std::move(started.Value()) : nullptr;
  }

  /// Lets it come to its end by itself.
  Lines LinesOf(const Children::Program& program) {
    const auto child = Start(program);
    EXPECT_NE(child, nullptr);
    run_.Until("the end", [this] { return !ended_.empty(); });
    run_.TurnWhileReady();
    EXPECT_EQ(ended_.size(), 1U);
    return lines_;
  }

  void UntilLines(std::size_t count) {
    run_.Until("a line", [this, count] { return lines_.size() >= count; });
  }

  /// Why it is not started.
  Refusal RefusalOf(const Children::Program& program) {
    const auto started = children_.Start(program, {}, {});
    EXPECT_FALSE(started.Succeeded());
    return started.Why();
  }

  LoopRun run_;
  ChildProcesses children_{run_.Get()};
  Lines lines_;
  Lines ended_;
};

/// Whether a process of that number is there, be it dead and not reaped.
bool IsThere(const std::string& id) { return kill(std::stoi(id), 0) == 0; }

TEST_F(ChildProcessesTest, PassOnWhatIsPrintedLineByLineThenTheEnd) {
  EXPECT_EQ(LinesOf(Shell("echo one; echo two >&2; echo; printf 'th'; printf 'ree\\n'; exit 3")),
            (Lines{"one", "two", "", "three"}));
  EXPECT_EQ(ended_, Lines{"exit status 3"});
}

TEST_F(ChildProcessesTest, CallNothingFromInsideTheStart) {
  const auto child = Start(Shell("echo early"));
  // Left for who started it.
  ASSERT_EQ(waitid(P_ALL, 0, nullptr, WEXITED | WNOWAIT), 0);
  EXPECT_EQ(lines_, Lines{});
  EXPECT_EQ(ended_, Lines{});
  run_.Until("the end", [this] { return !ended_.empty(); });
  EXPECT_EQ(lines_, Lines{"early"});
}

TEST_F(ChildProcessesTest, PassOnTheLastLineWithoutItsEnd) {
  EXPECT_EQ(LinesOf(Shell("printf 'first\\nlast words'")), (Lines{"first", "last words"}));
}

TEST_F(ChildProcessesTest, SayWhichSignalKilledAProgram) {
  LinesOf(Shell("kill -9 $$"));
  EXPECT_EQ(ended_, Lines{"killed by signal 9"});
}

TEST_F(ChildProcessesTest, CutLongLines) {
  const Lines lines = LinesOf(Shell("head -c 1000000 /dev/zero | tr '\\0' x; echo; echo next"));
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0], std::string(4096, 'x'));
  EXPECT_EQ(lines[1], "next");
}

TEST_F(ChildProcessesTest, PassOnEverythingThatWasPrintedBeforeTheEnd) {
  const Lines lines = LinesOf(Shell("seq 20000"));
  ASSERT_EQ(lines.size(), 20000U);
  EXPECT_EQ(lines.front(), "1");
  EXPECT_EQ(lines.back(), "20000");
}

TEST_F(ChildProcessesTest, GiveArgumentsAsTheyAre) {
  EXPECT_EQ(LinesOf({"/usr/bin/printf", {"%s|", "a b", "", "$HOME *"}}), Lines{"a b||$HOME *|"});
}

TEST_F(ChildProcessesTest, SayWhyAProgramCannotBeStarted) {
  const TemporaryDirectory directory;
  const std::string file = directory / "file";
  WriteFile(file, "not a program");
  EXPECT_EQ(RefusalOf({directory / "missing", {}}),
            (Refusal{ErrorCode::RadioFailed, "the program " + (directory / "missing") +
                                                 " cannot be started: No such file or directory"}));
  EXPECT_EQ(
      RefusalOf({file, {}}),
      (Refusal{ErrorCode::RadioFailed, "the program " + file + " cannot be started: Permission denied"}));
  // Nothing of them is left to be reaped.
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

TEST_F(ChildProcessesTest, EndWithTheirObject) {
  auto child = Start(Shell("trap '' TERM HUP INT; echo $$; while :; do sleep 1000; done"));
  UntilLines(1);
  EXPECT_TRUE(IsThere(lines_[0]));
  child.reset();
  run_.Until("its end", [this] { return !IsThere(lines_[0]); });
  run_.TurnWhileReady();
  EXPECT_EQ(ended_, Lines{});
}

TEST_F(ChildProcessesTest, EndWithTheirObjectAlsoWhenTheyAreStopped) {
  auto child = Start(Shell("echo $$; kill -STOP $$"));
  UntilLines(1);
  int status = 0;
  ASSERT_EQ(waitpid(std::stoi(lines_[0]), &status, WUNTRACED), std::stoi(lines_[0]));
  ASSERT_TRUE(WIFSTOPPED(status));
  child.reset();
  run_.Until("its end", [this] { return !IsThere(lines_[0]); });
}

TEST_F(ChildProcessesTest, AreNotWaitedForAndNotStartedAgainBeforeTheyAreGone) {
  const Children::Program program = Shell("echo $$; sleep 1000");
  auto child = Start(program);
  UntilLines(1);
  {
    const Tracer tracer(std::stoi(lines_[0]));
    child.reset();
    EXPECT_TRUE(IsThere(lines_[0]));
    run_.TurnWhileReady();
    EXPECT_EQ(RefusalOf(program), (Refusal{ErrorCode::RadioFailed,
                                           "the program /bin/sh cannot be started: the one before was killed "
                                           "and is not gone yet"}));
    EXPECT_NE(Start(Shell("echo another")), nullptr);
  }
  run_.Until("another start", [&] { return (child = Start(program)) != nullptr; });
  EXPECT_FALSE(IsThere(lines_[0]));
}

TEST_F(ChildProcessesTest, AreGoneWithTheirDoor) {
  std::string id;
  {
    ChildProcesses others(run_.Get());
    const auto child = others.Start(
        Shell("echo $$; sleep 1000"), [&id](const std::string& line) { id = line; },
        [](const std::string&) {});
    run_.Until("a line", [&id] { return !id.empty(); });
  }
  EXPECT_FALSE(IsThere(id));
}

TEST_F(ChildProcessesTest, ThatEndThoughNobodyCanSayHowAreSaidToHaveEnded) {
  const auto child = Start(Shell("echo $$; exec sleep 1000"));
  UntilLines(1);
  const Tracer tracer(std::stoi(lines_[0]));
  kill(std::stoi(lines_[0]), SIGKILL);
  run_.Until("the end", [this] { return !ended_.empty(); });
  EXPECT_EQ(ended_, Lines{"nobody knows how yet"});
}

TEST_F(ChildProcessesTest, TakeWhatTheyStartedWithThem) {
  prctl(PR_SET_CHILD_SUBREAPER, 1);
  for (const bool byItself : {false, true}) {
    lines_.clear();
    auto child = Start(Shell(std::string("sleep 1000 & echo $!; ") + (byItself ? "exit 0" : "wait")));
    UntilLines(1);
    const EndToEnd::Descriptor end(static_cast<int>(syscall(SYS_pidfd_open, std::stoi(lines_[0]), 0)));
    if (byItself) {
      run_.Until("the end", [this] { return !ended_.empty(); });
    } else {
      child.reset();
    }
    EndToEnd::WaitUntilReadable(end.Get(), "the end of what was started");
    // It is this process's own only once who started it is gone.
    run_.Until("the orphan", [this] { return waitpid(std::stoi(lines_[0]), nullptr, WNOHANG) > 0; });
  }
  prctl(PR_SET_CHILD_SUBREAPER, 0);
}

TEST_F(ChildProcessesTest, EndWithWhoStartedThem) {
  std::unique_ptr<Child> child;
  std::thread([&] { child = Start(Shell("echo here; sleep 1000")); }).join();
  run_.Until("the end", [this] { return !ended_.empty(); });
  EXPECT_EQ(ended_, Lines{"killed by signal 9"});
}

TEST_F(ChildProcessesTest, ThatPrintWithoutEndLeaveRoomForOthers) {
  const auto loud = children_.Start(
      Shell("yes"), [](const std::string&) {}, [](const std::string&) {});
  ASSERT_TRUE(loud.Succeeded());
  const auto child = Start(Shell("echo heard"));
  run_.Until("the end", [this] { return !ended_.empty(); });
  EXPECT_EQ(lines_, Lines{"heard"});
}

TEST_F(ChildProcessesTest, MayBeDestroyedFromTheirLines) {
  std::unique_ptr<Child> child;
  auto started = children_.Start(
      Shell("echo one; echo two; echo three; sleep 1000"),
      [&, kept = std::string("kept as long as it runs")](const std::string& line) {
        child.reset();
        lines_.push_back(line + " " + kept);
      },
      [this](const std::string& how) { ended_.push_back(how); });
  ASSERT_TRUE(started.Succeeded());
  child = std::move(started.Value());
  UntilLines(1);
  run_.TurnWhileReady();
  EXPECT_EQ(lines_, Lines{"one kept as long as it runs"});
  EXPECT_EQ(ended_, Lines{});
}

TEST_F(ChildProcessesTest, MayBeDestroyedAndStartedAnewFromTheirEnd) {
  std::unique_ptr<Child> child;
  auto started = children_.Start(
      Shell("echo first"), [](const std::string&) {},
      [&, next = Shell("echo second")](const std::string&) {
        child.reset();
        child = Start(next);
      });
  ASSERT_TRUE(started.Succeeded());
  child = std::move(started.Value());
  run_.Until("the end", [this] { return !ended_.empty(); });
  EXPECT_EQ(lines_, Lines{"second"});
}

TEST_F(ChildProcessesTest, HaveNoInput) { EXPECT_EQ(LinesOf(Shell("cat; echo over")), Lines{"over"}); }

TEST_F(ChildProcessesTest, HaveNoDescriptorsOfTheDaemon) {
  const EndToEnd::Descriptor inherited(open("/dev/null", O_RDONLY));
  ASSERT_TRUE(inherited.IsOpen());
  // The last is that of the listed directory.
  EXPECT_EQ(LinesOf({"/bin/ls", {"/proc/self/fd"}}), (Lines{"0", "1", "2", "3"}));
}

TEST_F(ChildProcessesTest, HaveTheirStreamsThoughTheDaemonHasNone) {
  const EndToEnd::Descriptor input(fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 10));
  close(STDIN_FILENO);
  EXPECT_EQ(LinesOf(Shell("cat; echo over")), Lines{"over"});
  dup2(input.Get(), STDIN_FILENO);
}

TEST_F(ChildProcessesTest, HaveAPathAsTheirEnvironment) {
  EXPECT_EQ(LinesOf({"/usr/bin/env", {}}), Lines{"PATH=/usr/sbin:/usr/bin:/sbin:/bin"});
}

TEST_F(ChildProcessesTest, HaveSignalsAsAtAProgramsStart) {
  sigset_t blocked;
  sigset_t before;
  sigemptyset(&blocked);
  sigaddset(&blocked, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &blocked, &before);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const Lines lines = LinesOf({"/bin/grep", {"-E", "Sig(Blk|Ign)", "/proc/self/status"}});
  std::signal(SIGXFSZ, handler);
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  EXPECT_EQ(lines, (Lines{"SigBlk:\t0000000000000000", "SigIgn:\t0000000000000000"}));
}

}  // namespace

}  // namespace TALO::Wifid
