#include "commands/styled_json.h"

#include "client/json_serializer.h"

#include <gtest/gtest.h>
#include <json/value.h>

#include <sstream>

namespace TALO::Tool {

namespace {

using Wifi::Daemon::JsonSerializer;

std::string Written(Printable what) {
  std::ostringstream output;
  writeStyledJSON(what, output);
  return output.str();
}

Wifi::NetworkSetting Network() {
  Wifi::NetworkSetting network;
  network.id = 7;
  network.ssid = "Caf\xe9 \"\\\n\xe2\x82\xac";
  network.interfaces = {"wlan0_1", "wlan1_1"};
  network.radios.resize(2);
  network.radios[0].keyManagement = {"SAE", "WPA-PSK"};
  return network;
}

TEST(WriteStyledJSON, WritesAListAsTheLibraryStylesItsArray) {
  for (const std::size_t count : {0U, 1U, 3U}) {
    const std::vector<Wifi::NetworkSetting> networks(count, Network());
    Json::Value array(Json::arrayValue);
    for (const Wifi::NetworkSetting& network : networks) {
      array.append(JsonSerializer::Serialize<Wifi::NetworkSetting>(network));
    }
    EXPECT_EQ(Written(&networks), array.toStyledString());
  }
}

TEST(WriteStyledJSON, WritesARecordAsTheLibraryStylesItsObject) {
  const Wifi::BackhaulSetting setting;
  EXPECT_EQ(Written(&setting), JsonSerializer::Serialize<Wifi::BackhaulSetting>(setting).toStyledString());
}

}  // namespace

}  // namespace TALO::Tool
