// Standard output that cannot be written to: the status tells, whatever the daemon did.

#include "support/end_to_end_test.h"
#include "support/network_json.h"

#include <fcntl.h>

namespace TALO::EndToEnd {

namespace {

enum class Sink { Full, ReaderGone, Closed, AllClosed };

const char* NameOf(Sink sink) {
  switch (sink) {
    case Sink::Full:
      return "Full";
    case Sink::ReaderGone:
      return "ReaderGone";
    case Sink::Closed:
      return "Closed";
    case Sink::AllClosed:
      return "AllClosed";
  }
  return "";
}

void PrintTo(Sink sink, std::ostream* out) { *out << NameOf(sink); }

/// The daemon runs at debug level with one network.
class UnwritableOutput : public EndToEndTest, public testing::WithParamInterface<Sink> {
 protected:
  UnwritableOutput() {
    StartDaemon();
    CreateNetwork("Home", 1);
  }

  ToolRun RunInto(Sink sink, const Words& words) {
    ProcessSetup setup = ToolProcess(Address(), words);
    Descriptor output;
    setup.output = ProcessSetup::Output::Closed;
    if (sink == Sink::Full || sink == Sink::ReaderGone) {
      output = sink == Sink::Full ? Opened(open("/dev/full", O_WRONLY | O_CLOEXEC), "/dev/full")
                                  : OpenPipe().writer;
      setup.output = ProcessSetup::Output::Given;
      setup.givenOutput = output.Get();
    }
    setup.closeOtherStreams = sink == Sink::AllClosed;
    Process tool(setup);
    output = Descriptor();
    return Finish(tool);
  }
};

TEST_P(UnwritableOutput, FailsACommandThatPrints) {
  const std::vector<Words> commands = {{"help"},
                                       {"getNetworks"},
                                       {"getRadioIfStatuses"},
                                       {"getNetworkInterfaces"},
                                       {"isAllNetworkAPDisabled"}};
  for (const Words& words : commands) {
    SCOPED_TRACE(words.at(0));
    EXPECT_EQ(RunInto(GetParam(), words), Failure(""));
  }
}

TEST_P(UnwritableOutput, FailsACommandWhoseFailureCannotBeToldToo) {
  EXPECT_EQ(RunInto(GetParam(), {"deleteNetwork", "--id", "7"}), Failure(""));
  EXPECT_EQ(RunInto(GetParam(), {"deleteNetwork"}), Failure(""));
  EXPECT_EQ(RunInto(GetParam(), {"unknown"}), Failure(""));
}

TEST_P(UnwritableOutput, LetsACommandThatPrintsNothingSucceed) {
  EXPECT_EQ(RunInto(GetParam(), {"deleteNetwork", "--id", "1"}), Success());
  EXPECT_EQ(RunTool({"getNetworks"}), Success("[]\n\n"));
}

// The network is there, but whoever asked for it does not know its ID.
TEST_P(UnwritableOutput, FailsACommandThatChangedSomethingButCannotSayWhat) {
  EXPECT_EQ(RunInto(GetParam(), {"createNetwork", "--ssid", "Guests", "--password", "correct-horse"}),
            Failure(""));
  EXPECT_EQ(WithoutTimes(RunTool({"getNetworks"}).output),
            PrintedNetworks({{}, {.id = 2, .slot = 2, .ssid = "Guests", .ssidHex = "477565737473"}}));
}

INSTANTIATE_TEST_SUITE_P(Sink, UnwritableOutput,
                         testing::Values(Sink::Full, Sink::ReaderGone, Sink::Closed, Sink::AllClosed),
                         [](const auto& test) { return NameOf(test.param); });

}  // namespace

}  // namespace TALO::EndToEnd
