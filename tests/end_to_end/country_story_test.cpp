// Country codes and the channels that follow.

#include "support/story_test.h"

namespace TALO::EndToEnd {

namespace {

class CountryStory : public StoryTest {
 protected:
  /// The channels in use, in the order of the radios.
  std::vector<int> Channels() {
    std::vector<int> channels;
    for (const auto& radio : Call<&Wifi::WifiClient::GetRadioStatusesSimple>()) {
      channels.push_back(radio.up ? radio.channel : -1);
    }
    return channels;
  }
};

TEST_F(CountryStory, AnotherCountryIsInForceAtOnceAndAfterARestart) {
  StartStory("");
  CreateNetwork("Home", 1);
  ExpectNow({"getCountryCode"}, "DE\n");
  Do({"setCountryCode", "--country", "US"});
  ExpectNow({"getCountryCode"}, "US\n");
  // Both channels are allowed there, too.
  EXPECT_EQ(Channels(), (std::vector<int>{6, 36}));
  const std::string radios = RunTool({"getRadios"}).output;
  EXPECT_NE(radios.find("\"country\" : \"US\""), std::string::npos) << radios;
  EXPECT_EQ(radios.find("\"country\" : \"DE\""), std::string::npos) << radios;
  RestartDaemon({.options = {"--log-level", "Debug", "--model", "Cedar300", "--country", "FR"}});
  ExpectNow({"getCountryCode"}, "US\n");
}

TEST_F(CountryStory, ACountryWithoutTheChannelsOfAnEnabledRadioIsRefused) {
  StartStory("", {"--model", "Alder100"});
  EXPECT_EQ(Channels(), (std::vector<int>{6, 36, 100}));
  EXPECT_EQ(RunTool({"setCountryCode", "--country", "CN"}),
            Refusal("the country code CN is not among those of the model Alder100: Invalid argument"));
  ExpectNow({"getCountryCode"}, "DE\n");
  EXPECT_EQ(Channels(), (std::vector<int>{6, 36, 100}));
}

// Nothing but the state file sets a channel yet.
TEST_F(CountryStory, ARadioMovesToTheLowestChannelThatTheCountryAllows) {
  StartStory("");
  CreateNetwork("Home", 1);
  EditState({{"\"channel\" : 6,", "\"channel\" : 13,"}, {"\"channel\" : 36,", "\"channel\" : 120,"}});
  StartStory("");
  EXPECT_EQ(Channels(), (std::vector<int>{13, 120}));
  Do({"setCountryCode", "--country", "CA"});
  EXPECT_EQ(Channels(), (std::vector<int>{1, 36}));
  ExpectNow({"isAllNetworkAPDisabled"}, "0\n");
}

TEST_F(CountryStory, CodesThatDoNotExistAreRefused) {
  StartStory("");
  EXPECT_EQ(RunTool({"setCountryCode", "--country", "MaxCountryCode"}),
            Refusal("the country code MaxCountryCode does not exist: Invalid argument"));
  EXPECT_EQ(RunTool({"setCountryCode", "--country", "XX"}),
            Refusal("Failed to convert string to enum class [N4TALO4Wifi11CountryCodeE]: XX: Runtime error"));
  EXPECT_EQ(RunTool({"setCountryCode", "--country", "AD"}),
            Refusal("the country code AD is not among those of the model Cedar300: Invalid argument"));
  ExpectNow({"getCountryCode"}, "DE\n");
}

// The numbers are the codes' places in the list of all, from 0.
TEST_F(CountryStory, ACodeThatIsSetForLifeCannotBeChanged) {
  StartStory("", {"--model", "Dune40"});
  ExpectNow({"listCountryCode"},
            "Immutable: 1\n"
            "Country code #45: DE, 2.4 GHz: 1-13; 5 GHz: 36-64, 100-140\n"
            "Country code #181: US, 2.4 GHz: 1-11; 5 GHz: 36-64, 100-144, 149-165\n");
  EXPECT_EQ(
      RunTool({"setCountryCode", "--country", "US"}),
      Refusal(
          "the country code of the model Dune40 is set for life to DE, it cannot become US: Not allowed"));
  Do({"setCountryCode", "--country", "DE"});
  ExpectNow({"getCountryCode"}, "DE\n");
}

TEST_F(CountryStory, ARouterWhoseCodeCanBeChangedListsAllThatItIsCertifiedFor) {
  const char* kEurope = "2.4 GHz: 1-13; 5 GHz: 36-64, 100-140";
  const char* kPacific = "2.4 GHz: 1-13; 5 GHz: 36-64, 100-140, 149-165";
  struct Line {
    int number;
    const char* code;
    const char* channels;
  };
  const std::vector<Line> lines = {
      {10, "AT", kEurope},
      {11, "AU", "2.4 GHz: 1-13; 5 GHz: 36-64, 100-116, 132-140, 149-165"},
      {18, "BE", kEurope},
      {20, "BG", kEurope},
      {31, "CA", "2.4 GHz: 1-11; 5 GHz: 36-64, 100-116, 132-144, 149-165"},
      {33, "CH", kEurope},
      {38, "CN", "2.4 GHz: 1-13; 5 GHz: 36-64, 149-165"},
      {43, "CY", kEurope},
      {44, "CZ", kEurope},
      {45, "DE", kEurope},
      {46, "DK", kEurope},
      {51, "EE", kEurope},
      {53, "ES", kEurope},
      {55, "FI", kEurope},
      {59, "FR", kEurope},
      {60, "GB", kEurope},
      {69, "GR", kEurope},
      {76, "HR", kEurope},
      {78, "HU", kEurope},
      {80, "IE", kEurope},
      {85, "IS", kEurope},
      {86, "IT", kEurope},
      {90, "JP", "2.4 GHz: 1-13; 5 GHz: 36-64, 100-144"},
      {94, "KR", kPacific},
      {100, "LI", kEurope},
      {103, "LT", kEurope},
      {104, "LU", kEurope},
      {105, "LV", kEurope},
      {120, "MT", kEurope},
      {131, "NL", kEurope},
      {132, "NO", kEurope},
      {135, "NZ", kPacific},
      {143, "PL", kEurope},
      {146, "PT", kEurope},
      {151, "RO", kEurope},
      {156, "SE", kEurope},
      {157, "SG", kPacific},
      {159, "SI", kEurope},
      {161, "SK", kEurope},
      {181, "US", "2.4 GHz: 1-11; 5 GHz: 36-64, 100-144, 149-165"},
  };
  std::string all = "Immutable: 0\n";
  std::string allButChina = all;
  for (const Line& line : lines) {
    const std::string text =
        "Country code #" + std::to_string(line.number) + ": " + line.code + ", " + line.channels + "\n";
    all += text;
    allButChina += std::string(line.code) != "CN" ? text : "";
  }
  StartStory("");
  ExpectNow({"listCountryCode"}, all);
  StartStory("", {"--model", "Alder100"});
  ExpectNow({"listCountryCode"}, allButChina);
}

TEST_F(CountryStory, ARouterWithOneCodeListsThatAlone) {
  StartStory("", {"--model", "Birch200"});
  ExpectNow({"listCountryCode"},
            "Immutable: 1\n"
            "Country code #45: DE, 2.4 GHz: 1-13; 5 GHz: 36-64, 100-140\n");
  EXPECT_EQ(
      RunTool({"setCountryCode", "--country", "FR"}),
      Refusal(
          "the country code of the model Birch200 is set for life to DE, it cannot become FR: Not allowed"));
  ExpectNow({"getCountryCode"}, "DE\n");
}

TEST_F(CountryStory, NodesOfTheMeshTellTheirCodes) {
  StartStory(R"("meshNodes": [{"serial": "SN-1", "model": "Birch200"}])");
  const auto ask = [this](const std::string& serial, const std::string& model) {
    return RunTool({"getRemoteCountryCodeCapability", "--serial", serial, "--model", model});
  };
  EXPECT_EQ(ask("SN-1", "Birch200"), Success("Immutable: 1\n"
                                             "Country code #45: DE, 2.4 GHz: 1-13; 5 GHz: 36-64, 100-140\n"));
  EXPECT_EQ(ask("SN-2", "Birch200"), Refusal("there is no node \"SN-2\" in the mesh: Not found"));
  EXPECT_EQ(ask("SN-1", "Dune40"),
            Refusal("the node \"SN-1\" is of model Birch200, not Dune40: Invalid argument"));
  EXPECT_EQ(ask("SN-1", "Error"), Refusal("the model Error does not exist: Invalid argument"));
}

}  // namespace

}  // namespace TALO::EndToEnd
