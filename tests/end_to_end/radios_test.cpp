#include "support/end_to_end_test.h"

namespace TALO::EndToEnd {

namespace {

/// A router model and what each radio command prints there once there is one network.
struct RadioModel {
  const char* name;
  const char* interfaces;
  const char* interfaceMap;
  const char* conversions;
  std::string settings;
  std::string statuses;
  std::string simpleStatuses;
};

void PrintTo(const RadioModel& model, std::ostream* out) { *out << model.name; }

std::string Setting(const std::string& radio, const std::string& channel, const std::string& width) {
  return "\t{\n"
         "\t\t\"channel\" : " +
         channel +
         ",\n"
         "\t\t\"channelWidth\" : " +
         width +
         ",\n"
         "\t\t\"country\" : \"DE\",\n"
         "\t\t\"enable\" : true,\n"
         "\t\t\"radio\" : \"" +
         radio +
         "\",\n"
         "\t\t\"transmitPower\" : 100,\n"
         "\t\t\"wifiGeneration\" : 6\n"
         "\t}";
}

std::string Status(const std::string& radio, int number, const std::string& channel,
                   const std::string& width) {
  const std::string digit = std::to_string(number);
  return "\t{\n"
         "\t\t\"bssid\" : \"02:00:00:00:0" +
         digit +
         ":00\",\n"
         "\t\t\"channel\" : " +
         channel +
         ",\n"
         "\t\t\"channelWidth\" : " +
         width +
         ",\n"
         "\t\t\"interfaces\" : \n"
         "\t\t[\n"
         "\t\t\t\"wlan" +
         digit +
         "_1\"\n"
         "\t\t],\n"
         "\t\t\"radio\" : \"" +
         radio +
         "\",\n"
         "\t\t\"stations\" : 0,\n"
         "\t\t\"up\" : true,\n"
         "\t\t\"utilisation\" : 1\n"
         "\t}";
}

std::string SimpleStatus(const std::string& radio, int number, const std::string& channel) {
  const std::string digit = std::to_string(number);
  return "\t{\n"
         "\t\t\"bssid\" : \"02:00:00:00:0" +
         digit +
         ":00\",\n"
         "\t\t\"channel\" : " +
         channel +
         ",\n"
         "\t\t\"interfaces\" : \n"
         "\t\t[\n"
         "\t\t\t\"wlan" +
         digit +
         "_1\"\n"
         "\t\t],\n"
         "\t\t\"radio\" : \"" +
         radio +
         "\",\n"
         "\t\t\"up\" : true\n"
         "\t}";
}

RadioModel TriBand(const char* name) {
  return {
      .name = name,
      .interfaces =
          "Frequency           Radio Interface     Enabled Wifi Interfaces\n"
          "Band2_4GHz          wlan0               wlan0_1 \n"
          "Band5GHz_1          wlan1               wlan1_1 \n"
          "Band5GHz_2          wlan2               wlan2_1 \n",
      .interfaceMap =
          "Wifi Interface      Radio Frequency     \n"
          "wlan0_1             Band2_4GHz          \n"
          "wlan1_1             Band5GHz_1          \n"
          "wlan2_1             Band5GHz_2          \n"
          "\n",
      .conversions =
          "Radio conversion map:\n"
          "\tBand2_4GHz => Band2_4GHz\n"
          "\tBand5GHz => Band5GHz_1\n"
          "\tBand5GHz_1 => Band5GHz_1\n"
          "\tBand5GHz_2 => Band5GHz_2\n"
          "Backhaul swapped: 0\n",
      .settings = "[\n" + Setting("Band2_4GHz", "6", "20") + ",\n" + Setting("Band5GHz_1", "36", "80") +
                  ",\n" + Setting("Band5GHz_2", "100", "80") + "\n]\n\n",
      .statuses = "[\n" + Status("Band2_4GHz", 0, "6", "20") + ",\n" + Status("Band5GHz_1", 1, "36", "80") +
                  ",\n" + Status("Band5GHz_2", 2, "100", "80") + "\n]\n\n",
      .simpleStatuses = "[\n" + SimpleStatus("Band2_4GHz", 0, "6") + ",\n" +
                        SimpleStatus("Band5GHz_1", 1, "36") + ",\n" + SimpleStatus("Band5GHz_2", 2, "100") +
                        "\n]\n\n",
  };
}

RadioModel DualBand(const char* name) {
  return {
      .name = name,
      .interfaces =
          "Frequency           Radio Interface     Enabled Wifi Interfaces\n"
          "Band2_4GHz          wlan0               wlan0_1 \n"
          "Band5GHz            wlan1               wlan1_1 \n",
      .interfaceMap =
          "Wifi Interface      Radio Frequency     \n"
          "wlan0_1             Band2_4GHz          \n"
          "wlan1_1             Band5GHz            \n"
          "\n",
      .conversions =
          "Radio conversion map:\n"
          "\tBand2_4GHz => Band2_4GHz\n"
          "\tBand5GHz => Band5GHz\n"
          "\tBand5GHz_1 => Band5GHz\n"
          "\tBand5GHz_2 => Band5GHz\n"
          "Backhaul swapped: 0\n",
      .settings =
          "[\n" + Setting("Band2_4GHz", "6", "20") + ",\n" + Setting("Band5GHz", "36", "80") + "\n]\n\n",
      .statuses =
          "[\n" + Status("Band2_4GHz", 0, "6", "20") + ",\n" + Status("Band5GHz", 1, "36", "80") + "\n]\n\n",
      .simpleStatuses =
          "[\n" + SimpleStatus("Band2_4GHz", 0, "6") + ",\n" + SimpleStatus("Band5GHz", 1, "36") + "\n]\n\n",
  };
}

/// The daemon runs at debug level as the model, with one network.
class RadiosOf : public EndToEndTest, public testing::WithParamInterface<RadioModel> {
 protected:
  RadiosOf() {
    StartDaemon({.options = {"--log-level", "Debug", "--model", GetParam().name}});
    CreateNetwork("Home", 1);
  }
};

TEST_P(RadiosOf, AreListedWithTheirSettings) {
  EXPECT_EQ(RunTool({"getRadios"}), Success(GetParam().settings));
}

TEST_P(RadiosOf, AreListedWithWhatTheyDoNow) {
  EXPECT_EQ(RunTool({"getRadioStatuses"}), Success(GetParam().statuses));
  EXPECT_EQ(RunTool({"getRadioStatusesSimple"}), Success(GetParam().simpleStatuses));
}

TEST_P(RadiosOf, AreListedWithTheirInterfaces) {
  EXPECT_EQ(RunTool({"getRadioIfStatuses"}), Success(GetParam().interfaces));
  EXPECT_EQ(RunTool({"getInterfaceRadioMap"}), Success(GetParam().interfaceMap));
}

TEST_P(RadiosOf, ServeTheBandsThatTheyAreAskedFor) {
  EXPECT_EQ(RunTool({"getRadioConversionInfo"}), Success(GetParam().conversions));
}

INSTANTIATE_TEST_SUITE_P(Model, RadiosOf,
                         testing::Values(TriBand("Alder100"), TriBand("Birch200"), DualBand("Cedar300"),
                                         DualBand("Dune40")),
                         [](const auto& test) { return std::string(test.param.name); });

class Radios : public EndToEndTest {};

TEST_F(Radios, CarryNoInterfacesWhileThereAreNoNetworks) {
  StartDaemon({.options = {"--log-level", "Debug", "--model", "Cedar300"}});
  EXPECT_EQ(RunTool({"getRadioIfStatuses"}),
            Success("Frequency           Radio Interface     Enabled Wifi Interfaces\n"
                    "Band2_4GHz          wlan0               \n"
                    "Band5GHz            wlan1               \n"));
  EXPECT_EQ(RunTool({"getInterfaceRadioMap"}), Success("Wifi Interface      Radio Frequency     \n\n"));
}

TEST_F(Radios, CarryTheInterfacesOfAllNetworksAndAreBusierForEach) {
  StartDaemon({.options = {"--log-level", "Debug", "--model", "Cedar300"}});
  CreateNetwork("Home", 1);
  CreateNetwork("Guests", 2);
  EXPECT_EQ(RunTool({"getRadioIfStatuses"}),
            Success("Frequency           Radio Interface     Enabled Wifi Interfaces\n"
                    "Band2_4GHz          wlan0               wlan0_1 wlan0_2 \n"
                    "Band5GHz            wlan1               wlan1_1 wlan1_2 \n"));
  EXPECT_EQ(RunTool({"getInterfaceRadioMap"}), Success("Wifi Interface      Radio Frequency     \n"
                                                       "wlan0_1             Band2_4GHz          \n"
                                                       "wlan0_2             Band2_4GHz          \n"
                                                       "wlan1_1             Band5GHz            \n"
                                                       "wlan1_2             Band5GHz            \n"
                                                       "\n"));
  const std::string statuses = RunTool({"getRadioStatuses"}).output;
  EXPECT_NE(statuses.find("\"utilisation\" : 2\n"), std::string::npos) << statuses;
}

}  // namespace

}  // namespace TALO::EndToEnd
