#pragma once

#include <string>
#include <vector>

namespace TALO::EndToEnd {

/// What getNetworks prints of a network that createNetwork made: of the SSID "Home" and the first one where a
/// case does not say otherwise.
struct PrintedNetwork {
  int id = 1;
  int slot = 1;  ///< the number in its interfaces and BSSIDs, at most 9
  std::string ssid = "Home";
  std::string ssidHex = "486f6d65";
  std::string passphrase = "correct-horse";
  std::string bridge = "br0";
  std::vector<std::string> radios = {"Band2_4GHz", "Band5GHz_1", "Band5GHz_2"};
};

/// The whole output of getNetworks, with TIME for each time.
std::string PrintedNetworks(const std::vector<PrintedNetwork>& networks);

/// Puts TIME in place of each time of the form YYYY-MM-DDThh:mm:ssZ behind "passphraseChangedAt".
std::string WithoutTimes(const std::string& output);

}  // namespace TALO::EndToEnd
