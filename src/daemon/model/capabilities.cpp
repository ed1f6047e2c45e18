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
  const std::string& text = radio.address.ToString();
  const std::size_t lastGroup = text.size() - 2;
  const int last = std::stoi(text.substr(lastGroup), nullptr, 16) + slot;
  return Wifi::Util::MACAddress(text.substr(0, lastGroup) +
                                Wifi::ToHex(std::string(1, static_cast<char>(last))));
}

}  // namespace TALO::Wifid
