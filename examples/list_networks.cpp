// Prints the ID, SSID and state of every network of the router.

#include <client/bytes.h>
#include <client/wifi_client.h>
#include <values/errors.h>

#include <cstdlib>
#include <iostream>

int main() {
  try {
    const auto client = TALO::Wifi::WifiClientFactory::GetInstance();
    for (const TALO::Wifi::NetworkSetting& network : client->GetNetworkSettings()) {
      std::cout << network.id << ": " << TALO::Wifi::ToReadableText(network.ssid)
                << (network.up ? " is up" : " is down") << "\n";
    }
    return EXIT_SUCCESS;
  } catch (const talo::dbus::DbusError& failure) {
    // No daemon, no access, or the daemon's refusal: the sentence says which.
    std::cerr << failure.what() << "\n";
    return EXIT_FAILURE;
  }
}
