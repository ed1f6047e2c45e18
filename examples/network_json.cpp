// Prints every network of the router as JSON, passphrases included.

#include <client/json_serializer.h>
#include <client/wifi_client.h>
#include <values/errors.h>

#include <cstdlib>
#include <iostream>

int main() {
  try {
    for (const auto& network : TALO::Wifi::WifiClientFactory::GetInstance()->GetNetworkSettings()) {
      std::cout << TALO::Wifi::Daemon::JsonSerializer::Serialize(network).toStyledString();
    }
    return EXIT_SUCCESS;
  } catch (const talo::dbus::DbusError& failure) {
    std::cerr << failure.what() << "\n";
    return EXIT_FAILURE;
  }
}
