#include "daemon/model/capabilities.h"

#include "client/bytes.h"

namespace TALO::Wifid {

std::vector<RadioFrequency> RadiosOf(SupportedModel model) {
  switch (model) {
    case SupportedModel::Alder100:
    case SupportedModel::Birch200:
      return {RadioFrequency::Band2_4GHz, RadioFrequency::Band5GHz_1, RadioFrequency::Band5GHz_2};
    case SupportedModel::Cedar300:
    case SupportedModel::Dune40:
      return {RadioFrequency::Band2_4GHz, RadioFrequency::Band5GHz};
    case SupportedModel::Error:
      break;
  }
  return {};
}

std::string BSSInterface(const RadioCapability& radio, int slot) {
  return radio.interface + "_" + std::to_string(slot);
}

Wifi::Util::MACAddress BSSAddress(const RadioCapability& radio, int slot) {
  constexpr std::size_t kMaker = 8;  // as in "02:00:00"
  const std::string& text = radio.address.ToString();
  std::string digits = text.substr(kMaker);
  std::erase(digits, ':');
  const int number = std::stoi(digits, nullptr, 16) + slot;
  std::string address = text.substr(0, kMaker);
  for (const int shift : {16, 8, 0}) {
    address += ":" + Wifi::ToHex(std::string(1, static_cast<char>(number >> shift)));
  }
  return Wifi::Util::MACAddress(address);
}

}  // namespace TALO::Wifid
