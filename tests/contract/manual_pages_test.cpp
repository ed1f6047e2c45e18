// The manual pages as readers see them.

#include "support/command_rows.h"
#include "support/files.h"
#include "support/process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace TALO::EndToEnd {

namespace {

using testing::HasSubstr;

std::string PathOf(const std::string& page) { return TALOWIFI_DOCUMENTS "/" + page; }

/// The page as man shows it in a terminal so wide that every paragraph is a line.
std::string Render(const std::string& page) {
  Process man({.words = {"man", "--warnings", "--nh", "--nj", "-E", "UTF-8", "--local-file", PathOf(page)},
               .environment = {{"MANWIDTH", "2000"}, {"LC_ALL", "C.UTF-8"}, {"PAGER", "cat"}}});
  EXPECT_EQ(man.Wait(), 0) << page;
  EXPECT_EQ(man.Errors(), "") << page;
  std::string text;
  std::istringstream lines(man.Output());
  for (std::string line; std::getline(lines, line);) {
    text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
  }
  return text;
}

const std::vector<std::string> kPages = {"talowifitool.1", "talowifid.8", "talowifid.conf.5",
                                         "com.talo.Wifi1.7"};

TEST(EveryManualPage, IsFreeOfWarnings) {
  for (const std::string& page : kPages) {
    Process mandoc({.words = {"mandoc", "-T", "lint", "-W", "warning", PathOf(page)}});
    EXPECT_EQ(mandoc.Wait(), 0) << page;
    EXPECT_EQ(mandoc.Output(), "") << page;
    Render(page);
  }
}

TEST(EveryManualPage, ShowsNothingOfItsMaking) {
  for (const std::string& page : kPages) {
    const std::string text = Render(page);
    EXPECT_GT(text.size(), 1000U);
    // Escapes, fonts, macros and places to fill that were not read as such.
    for (const char* trace : {"\\f", "\\-", "\\(", "\\&", "\n.", "\n@"}) {
      EXPECT_EQ(text.find(trace), std::string::npos) << page << ": " << trace;
    }
  }
}

// Some terminals show a bare dash as a hyphen, which no option begins with.
TEST(EveryManualPage, HasItsDashesFromTheKeyboard) {
  for (const std::string& page : kPages) {
    EXPECT_EQ(ReadFile(PathOf(page)).find("--"), std::string::npos) << page;
  }
}

TEST(TheToolsPage, HasASectionForEveryCommand) {
  const std::string text = Render("talowifitool.1");
  std::size_t at = 0;
  for (const Tool::CommandRow& row : Tool::commandRows()) {
    const std::size_t found = text.find("\n   " + row.name + "\n       talowifitool " + row.name, at);
    ASSERT_NE(found, std::string::npos) << row.name;
    at = found;
  }
}

TEST(TheToolsPage, TellsHowACommandIsUsed) {
  EXPECT_THAT(Render("talowifitool.1"), HasSubstr(R"(
   createNetwork
       talowifitool createNetwork --ssid ssid --password password

       Makes a network on all radios.  It is WPA2/WPA3 personal mixed, in the current context, and activated on the bridge that the daemon's configuration names.  Runs only while the daemon logs at debug level.

       --ssid ssid
              Its name, 1 to 32 bytes of any kind.

       --password password
              Its passphrase, 8 to 63 printable ASCII characters or 64 hexadecimal digits.

       Prints the ID of the network.  IDs count up from 1 and are never used again.

       Refused
              InvalidArgument for an SSID or passphrase of another form, AlreadyExists for an SSID that a network or the backhaul uses, LimitReached when a radio carries all the networks that it can.

           $ talowifitool createNetwork --ssid Guest --password welcome-guest
           Create Network ID: 2
)"));
}

TEST(TheToolsPage, TellsWhichWordsAnOptionTakes) {
  const std::string text = Render("talowifitool.1");
  EXPECT_THAT(text, HasSubstr(R"(
       talowifitool rotatePassword --id id --radio radio

       Gives a network a new random passphrase of 20 characters.  Stations that used the old one are dropped; to see the new one, use getNetworks.

       --id id
              The network.  A whole number.

       --radio radio
              The radio on which the passphrase changes.  One of SmartConnect, Band2_4GHz, Band5GHz, Band5GHz_1, Band5GHz_2.
)"));
  EXPECT_THAT(text, HasSubstr(R"(
       talowifitool modifyMeshInfo [--models models ...] --isRepeater 0|1
)"));
  EXPECT_THAT(text, HasSubstr(R"(
       --models models ...
              The models in the mesh.  Any of Alder100, Birch200, Cedar300, Dune40.  May be left out.  Words up to the next option; none without this option.
)"));
}

TEST(TheToolsPage, MarksTheCommandsForDebugging) {
  const std::string text = Render("talowifitool.1");
  const auto& rows = Tool::commandRows();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const std::size_t start = text.find("\n   " + rows[i].name + "\n");
    const std::size_t end =
        i + 1 == rows.size() ? text.find("\nDIAGNOSTICS\n") : text.find("\n   " + rows[i + 1].name + "\n");
    const std::string section = text.substr(start, end - start);
    EXPECT_EQ(section.find("Runs only while the daemon logs at debug level.") != std::string::npos,
              rows[i].debugOnly)
        << rows[i].name;
  }
}

TEST(TheDaemonsPages, HoldItsOptions) {
  EXPECT_THAT(Render("talowifid.8"), HasSubstr(R"(
       --state-dir DIR
              Where the state is kept.  The default is /var/lib/talowifi.  Where systemd has made a directory, that takes the default's place.
)"));
  EXPECT_THAT(Render("talowifid.conf.5"), HasSubstr(R"(
       country = CODE
              Country code of a router that was never set up.  The default is DE.)"));
}

TEST(TheBusPage, HoldsMethodsSignalsEnumerationsAndErrors) {
  const std::string text = Render("com.talo.Wifi1.7");
  EXPECT_THAT(text, HasSubstr(R"(
   DeleteNetwork
       DeleteNetwork(networkId)

       Takes a network from the air and forgets it. NotFound for an unknown ID.

       networkId
              The ID.
              Argument of type i: int32.
)"));
  EXPECT_THAT(text, HasSubstr(R"(
   GetNetworkInterfaces
       GetNetworkInterfaces() → interfaces

       The interfaces of all networks' BSSs, up or not.

       interfaces
              Network ID to the names.
              Result of type a{ias}: map of int32 to list of string.
)"));
  EXPECT_THAT(text, HasSubstr(R"(
       signal RadioStateChanged(radio, up)

       A radio came up or went down.
)"));
  EXPECT_THAT(text, HasSubstr(R"(
       ScheduleMode
              ValidFor 0, Customized 1.
)"));
  EXPECT_THAT(text, HasSubstr(R"(
       com.talo.Wifi1.Error.Busy (Busy)
              Something else is going on: a WPS session runs, or the daemon is about to end.
)"));
}

}  // namespace

}  // namespace TALO::EndToEnd
