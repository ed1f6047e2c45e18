// What the tool says where there is no bus to reach the daemon by.

#include "support/command_rows.h"
#include "support/end_to_end_test.h"
#include "support/unix_listener.h"

#include <gmock/gmock.h>

#include <array>
#include <chrono>

namespace TALO::EndToEnd {

namespace {

ToolRun RunToolAt(const std::string& address, const Words& words) {
  Process tool(ToolProcess(address, words));
  return Finish(tool);
}

void ExpectUnreachable(const std::string& address, const std::string& reason) {
  const std::string message = "the system bus cannot be reached (" + reason + "): Bus unavailable\n";
  EXPECT_EQ(RunToolAt(address, kPlain), Failure(message));
  EXPECT_EQ(RunToolAt(address, kDebugOnly), Failure(message + Tool::helpListing(false)));
  EXPECT_EQ(RunToolAt(address, kHelp), Success(Tool::helpListing(false)));
}

TEST(ABusWhoseSocketDoesNotExist, CannotBeReached) {
  const TemporaryDirectory directory;
  ExpectUnreachable("unix:path=" + (directory / "bus"), "No such file or directory");
}

TEST(ABusWhoseSocketNobodyListensOn, CannotBeReached) {
  UnixListener listener;
  listener.Close();
  ExpectUnreachable(listener.Address(), "Connection refused");
}

TEST(ABusThatLetsNobodyIn, CannotBeReached) {
  const PrivateBus bus({.policy = "<deny user=\"*\"/>"});
  ExpectUnreachable(bus.Address(), "Connection reset by peer");
}

/// Runs the tool against a listener that treats each of its callers the same.
template <typename Treat>
ToolRun RunToolAgainst(const UnixListener& listener, const Words& words, int callers, Treat treat) {
  Process tool(ToolProcess(listener.Address(), words));
  for (int caller = 0; caller < callers; ++caller) {
    treat(listener.Accept());
  }
  return Finish(tool);
}

// The refused command asks for the log level a second time, for the listing.
TEST(ABusThatGoesAwayAtTheGreeting, CannotBeReached) {
  const std::string message =
      "the system bus cannot be reached (Connection reset by peer): Bus unavailable\n";
  const auto treat = [](const Descriptor& caller) { ReadGreeting(caller.Get()); };
  const UnixListener listener;
  EXPECT_EQ(RunToolAgainst(listener, kPlain, 1, treat), Failure(message));
  EXPECT_EQ(RunToolAgainst(listener, kDebugOnly, 2, treat), Failure(message + Tool::helpListing(false)));
  EXPECT_EQ(RunToolAgainst(listener, kHelp, 1, treat), Success(Tool::helpListing(false)));
}

// Whether the tool has spoken by then is up to the two processes' luck, and with it the reason.
TEST(ABusThatGoesAwayAtOnce, CannotBeReached) {
  const std::string before = "the system bus cannot be reached (Broken pipe): Bus unavailable\n";
  const std::string after = "the system bus cannot be reached (Connection reset by peer): Bus unavailable\n";
  const auto treat = [](const Descriptor&) {};
  const UnixListener listener;
  EXPECT_THAT(RunToolAgainst(listener, kPlain, 1, treat), testing::AnyOf(Failure(before), Failure(after)));
  EXPECT_THAT(
      RunToolAgainst(listener, kDebugOnly, 2, treat),
      testing::AnyOf(Failure(before + Tool::helpListing(false)), Failure(after + Tool::helpListing(false))));
  EXPECT_EQ(RunToolAgainst(listener, kHelp, 1, treat), Success(Tool::helpListing(false)));
}

TEST(ABusThatAcceptsAndSaysNothing, IsGivenUpAfter30Seconds) {
  const auto start = std::chrono::steady_clock::now();
  const UnixListener listener;
  Process plain(ToolProcess(listener.Address(), kPlain));
  Process help(ToolProcess(listener.Address(), kHelp));
  const std::array<Descriptor, 2> callers = {listener.Accept(), listener.Accept()};
  EXPECT_EQ(Finish(plain),
            Failure("the system bus cannot be reached (Connection timed out): Bus unavailable\n"));
  EXPECT_EQ(Finish(help), Success(Tool::helpListing(false)));
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

}  // namespace

}  // namespace TALO::EndToEnd
