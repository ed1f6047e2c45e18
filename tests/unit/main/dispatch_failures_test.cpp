#include "support/captured_output.h"
#include "support/command_rows.h"
#include "support/fake_daemon.h"
#include "support/tool_run.h"
#include "values/errors.h"

#include <boost/any.hpp>
#include <boost/program_options/errors.hpp>
#include <gtest/gtest.h>

#include <cstddef>
#include <exception>
#include <functional>
#include <iostream>
#include <new>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

// What a run prints and ends with when something fails.

namespace TALO::Tool {

namespace {

using talo::dbus::DbusError;
using Wifi::ErrorCode;
using Wifi::FakeDaemon;
using Wifi::RuntimeError;
using Wifi::WifiException;
using Calls = std::vector<std::string>;

const std::string kUnexpected = "Unexpected error occurred, should be fixed.\n";

/// A failure that a newer library may know.
class SpecialRefusal : public WifiException {
 public:
  using WifiException::WifiException;
};

struct Failure {
  std::exception_ptr exception;
  std::string what;
};

/// Refusals of the daemon.
std::vector<Failure> refusals() {
  return {
      {std::make_exception_ptr(WifiException(ErrorCode::NotFound, "Network 7")), "Network 7: Not found"},
      {std::make_exception_ptr(SpecialRefusal(ErrorCode::Busy, "Radio")), "Radio: Busy"},
      {std::make_exception_ptr(RuntimeError("bad %d", 7)), "bad 7: Runtime error"},
  };
}

/// Everything else that has a text.
std::vector<Failure> otherExceptions() {
  return {
      {std::make_exception_ptr(DbusError(ErrorCode::DaemonNotRunning, "GetNetworks")),
       "GetNetworks: Daemon not running"},
      {std::make_exception_ptr(std::system_error(std::make_error_code(std::errc::timed_out), "poll")),
       "poll: Connection timed out"},
      {std::make_exception_ptr(std::invalid_argument("bad word")), "bad word"},
      {std::make_exception_ptr(std::out_of_range("too far")), "too far"},
      {std::make_exception_ptr(std::runtime_error("")), ""},
      {std::make_exception_ptr(std::bad_function_call()), "bad_function_call"},
      {std::make_exception_ptr(std::bad_alloc()), "std::bad_alloc"},
      {std::make_exception_ptr(std::bad_cast()), "std::bad_cast"},
      {std::make_exception_ptr(boost::program_options::error("bad option")), "bad option"},
  };
}

std::vector<std::exception_ptr> nonExceptions() {
  return {std::make_exception_ptr(42), std::make_exception_ptr(std::string("text")),
          std::make_exception_ptr("text")};
}

class DispatchFailures : public testing::Test {
 protected:
  DispatchFailures() { FakeDaemon::Reset(); }

  static ToolRun runFailing(const std::string& what, const std::exception_ptr& failure,
                            const std::vector<std::string>& words) {
    FakeDaemon::Reset();
    FakeDaemon::Get().failures[what] = failure;
    return runTool(words);
  }

  FakeDaemon& daemon_ = FakeDaemon::Get();
};

TEST_F(DispatchFailures, PrintARefusalOfTheDaemonBehindAPrefix) {
  for (const Failure& failure : refusals()) {
    for (const std::string step : {"WifiClientFactory", "GetNetworkSettings"}) {
      SCOPED_TRACE(step + ": " + failure.what);
      const ToolRun run = runFailing(step, failure.exception, {"getNetworks"});
      EXPECT_EQ(run.output, "Failed to execute command: " + failure.what + "\n");
      EXPECT_EQ(run.status, 1);
    }
  }
}

TEST_F(DispatchFailures, PrintAnyOtherExceptionByItsTextAlone) {
  for (const Failure& failure : otherExceptions()) {
    for (const std::string step : {"WifiClientFactory", "GetNetworkSettings"}) {
      SCOPED_TRACE(step + ": " + failure.what);
      const ToolRun run = runFailing(step, failure.exception, {"getNetworks"});
      EXPECT_EQ(run.output, failure.what + "\n");
      EXPECT_EQ(run.status, 1);
    }
  }
}

TEST_F(DispatchFailures, PrintTheUsageForABadRead) {
  const ToolRun run =
      runFailing("GetNetworkSettings", std::make_exception_ptr(boost::bad_any_cast()), {"getNetworks"});
  EXPECT_EQ(run.output, "Usage: getNetworks:\n\n");
  EXPECT_EQ(run.status, 1);
}

TEST_F(DispatchFailures, AreUnexpectedWhereWhatWasThrownHasNoText) {
  for (const std::exception_ptr& failure : nonExceptions()) {
    for (const std::string step : {"WifiClientFactory", "GetNetworkSettings"}) {
      const ToolRun run = runFailing(step, failure, {"getNetworks"});
      EXPECT_EQ(run.output, kUnexpected);
      EXPECT_EQ(run.status, 1);
    }
  }
}

TEST_F(DispatchFailures, PrintARuntimeErrorOfTheHandlersOwnConversionBehindThePrefix) {
  const ToolRun run = runTool({"modifyLogLevel", "--level", "debug"});
  EXPECT_EQ(run.output,
            "Failed to execute command: Failed to convert string to enum class [N4TALO4Wifi4Util8LogLevelE]: "
            "debug: Runtime error\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Calls{});
}

TEST_F(DispatchFailures, PrintAnInvalidArgumentOfTheHandlersOwnWithoutAPrefix) {
  const ToolRun run = runTool({"setMACFilterGlobal", "--enablePreventBroadcast", "1", "--maximumBroadcast",
                               "100", "--devices", "odd"});
  EXPECT_EQ(run.output, "input of column devices is not correct.\n");
  EXPECT_EQ(run.status, 1);
}

TEST_F(DispatchFailures, LeaveWhatWasPrintedBefore) {
  const std::vector<std::string> words = {"createNetwork", "--ssid", "Home", "--password", "correct-horse"};
  ToolRun run = runFailing(
      "CreateNetwork", std::make_exception_ptr(WifiException(ErrorCode::LimitReached, "Networks")), words);
  EXPECT_EQ(run.output, "Create Network ID: Failed to execute command: Networks: Limit reached\n");
  EXPECT_EQ(run.status, 1);
  run = runFailing("CreateNetwork", std::make_exception_ptr(42), words);
  EXPECT_EQ(run.output, "Create Network ID: " + kUnexpected);
  EXPECT_EQ(run.status, 1);
}

TEST_F(DispatchFailures, EndTheRunWithoutAnotherTry) {
  runFailing("GetNetworkSettings", std::make_exception_ptr(DbusError(ErrorCode::NoAnswer, "GetNetworks")),
             {"getNetworks"});
  EXPECT_EQ(daemon_.calls, (Calls{"WifiClientFactory::GetInstance()", "GetNetworkSettings()"}));
}

TEST_F(DispatchFailures, ToLearnTheLogLevelPrintTheirTextAndTheListing) {
  std::vector<Failure> failures = otherExceptions();
  for (const Failure& refusal : refusals()) {
    failures.push_back(refusal);
  }
  for (const Failure& failure : failures) {
    SCOPED_TRACE(failure.what);
    const ToolRun run = runFailing("IsDebugLogLevel", failure.exception, {"getRadios"});
    EXPECT_EQ(run.output, failure.what + "\n" + helpListing(false));
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(daemon_.calls, (Calls{"IsDebugLogLevel()", "IsDebugLogLevel()"}));
  }
}

TEST_F(DispatchFailures, ToLearnTheLogLevelAreUnexpectedWhereWhatWasThrownHasNoText) {
  for (const std::exception_ptr& failure : nonExceptions()) {
    const ToolRun run = runFailing("IsDebugLogLevel", failure, {"getRadios"});
    EXPECT_EQ(run.output, kUnexpected);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(daemon_.calls, Calls{"IsDebugLogLevel()"});
  }
}

TEST_F(DispatchFailures, ToLearnTheLogLevelDoNotConcernTheOtherCommands) {
  const ToolRun run = runFailing("IsDebugLogLevel", std::make_exception_ptr(42), {"getNetworks"});
  EXPECT_EQ(run.output, "[]\n\n");
  EXPECT_EQ(run.status, 0);
}

TEST_F(DispatchFailures, ToFindACommandKeepTheirMessageWhenTheLogLevelCannotBeLearned) {
  std::vector<std::exception_ptr> failures = nonExceptions();
  failures.push_back(std::make_exception_ptr(DbusError(ErrorCode::BusUnavailable, "IsDebugLogLevel")));
  for (const std::exception_ptr& failure : failures) {
    const ToolRun run = runFailing("IsDebugLogLevel", failure, {"getNetwork"});
    EXPECT_EQ(run.output, "Failed to find command: getNetwork\n" + helpListing(false));
    EXPECT_EQ(run.status, 1);
  }
}

TEST_F(DispatchFailures, PrintNothingOnStandardError) {
  std::stringbuf errors;
  const RedirectedStream redirectedErrors(std::cerr, errors);
  const RedirectedStream redirectedLog(std::clog, errors);
  for (const Failure& failure : refusals()) {
    runFailing("GetNetworkSettings", failure.exception, {"getNetworks"});
  }
  for (const Failure& failure : otherExceptions()) {
    runFailing("GetNetworkSettings", failure.exception, {"getNetworks"});
    runFailing("IsDebugLogLevel", failure.exception, {"getRadios"});
  }
  runFailing("GetNetworkSettings", std::make_exception_ptr(42), {"getNetworks"});
  FakeDaemon::Reset();
  runTool({});
  runTool({"getNetwork"});
  runTool({"--command"});
  runTool({"deleteNetwork"});
  runTool({"deleteNetwork", "--colour"});
  EXPECT_EQ(errors.str(), "");
}

/// Takes so many characters and refuses the next one.
class BoundedBuffer : public std::streambuf {
 public:
  explicit BoundedBuffer(std::size_t room) : room_(room) {}

 protected:
  int_type overflow(int_type c) override {
    if (room_ == 0) {
      return traits_type::eof();
    }
    --room_;
    return traits_type::not_eof(c);
  }

 private:
  std::size_t room_;
};

/// Takes everything but cannot pass it on.
class StuckBuffer : public BoundedBuffer {
 public:
  StuckBuffer() : BoundedBuffer(1000000) {}

 protected:
  int sync() override { return -1; }
};

/// Throws for every character.
class ThrowingBuffer : public std::streambuf {
 protected:
  int_type overflow(int_type) override { throw std::runtime_error("no room"); }
};

class UnwritableOutput : public DispatchFailures {};

TEST_F(UnwritableOutput, MakesTheStatusOneAfterTheDaemonWasAsked) {
  BoundedBuffer nothing(0);
  EXPECT_EQ(runToolInto(nothing, {"getNetworks"}), 1);
  EXPECT_EQ(daemon_.calls, (Calls{"WifiClientFactory::GetInstance()", "GetNetworkSettings()"}));
}

TEST_F(UnwritableOutput, MakesTheStatusOneWhereverItEnds) {
  const std::size_t length = helpListing(true).size();
  for (std::size_t room = 0; room < length; room += room < 100 ? 1 : 97) {
    BoundedBuffer output(room);
    EXPECT_EQ(runToolInto(output, {"help"}), 1) << room;
  }
  BoundedBuffer allButOne(length - 1);
  EXPECT_EQ(runToolInto(allButOne, {"help"}), 1);
  BoundedBuffer enough(length);
  EXPECT_EQ(runToolInto(enough, {"help"}), 0);
}

TEST_F(UnwritableOutput, MakesTheStatusOneWhenItShowsOnlyInTheEnd) {
  StuckBuffer output;
  EXPECT_EQ(runToolInto(output, {"getNetworks"}), 1);
}

TEST_F(UnwritableOutput, MakesTheStatusOneWhenItThrows) {
  ThrowingBuffer output;
  EXPECT_EQ(runToolInto(output, {"getNetworks"}), 1);
  EXPECT_EQ(runToolInto(output, {"help"}), 1);
}

TEST_F(UnwritableOutput, KeepsTheStatusOfAFailure) {
  BoundedBuffer nothing(0);
  EXPECT_EQ(runToolInto(nothing, {"getNetwork"}), 1);
  EXPECT_EQ(runToolInto(nothing, {}), 1);
}

TEST_F(UnwritableOutput, DoesNotConcernACommandThatPrintsNothing) {
  BoundedBuffer nothing(0);
  EXPECT_EQ(runToolInto(nothing, {"deleteNetwork", "--id", "7"}), 0);
  EXPECT_EQ(daemon_.calls,
            (Calls{"IsDebugLogLevel()", "WifiClientFactory::GetInstance()", "DeleteNetwork(7)"}));
}

TEST_F(UnwritableOutput, IsForgottenByTheNextRun) {
  BoundedBuffer nothing(0);
  runToolInto(nothing, {"getNetworks"});
  const ToolRun run = runTool({"getNetworks"});
  EXPECT_EQ(run.output, "[]\n\n");
  EXPECT_EQ(run.status, 0);
}

}  // namespace

}  // namespace TALO::Tool
