#pragma once

#include "daemon/model/capabilities.h"
#include "daemon/model/result.h"
#include "daemon/radio/linux/wiphy.h"

#include <map>
#include <string>
#include <vector>

/// From the machine's wifi hardware to the radios of a model.
namespace TALO::Wifid {

/// A radio of the model on the hardware that carries it.
struct RadioHardware {
  RadioCapability capability;
  int wiphy = 0;                ///< Wiphy::index
  std::string phy;              ///< Wiphy::name
  int maximumAccessPoints = 0;  ///< at once, the one that holds the radio included
  int maximumStations = 0;      ///< at once, beside access points
  int maximumChannels = 1;      ///< at once, where a station is beside access points
  bool fourAddress = false;
  bool makesInterface = false;        ///< the radio's own interface is the driver's, and not the machine's
  Wifi::Util::MACAddress ownAddress;  ///< of the radio's own interface
  // Of the interfaces that the driver makes beside the BSSs'.
  Wifi::Util::MACAddress stationAddress;
  Wifi::Util::MACAddress backhaulStationAddress;
  Wifi::Util::MACAddress listenerAddress;

  bool operator==(const RadioHardware&) const = default;

  /// Whether an access point that never sends holds the radio, so that the others come and go beside one
  /// another. Hardware with a single one is held by that.
  bool HasHolder() const { return maximumAccessPoints > 1; }
};

/// Which phy carries which radio, as in "phy0=Band2_4GHz,phy1=Band5GHz"; by band where it is empty.
using RadioMap = std::map<std::string, RadioFrequency>;

/// InvalidArgument for text that is no such map, for a radio that the model does not have and for a phy or a
/// radio named twice.
Result<RadioMap> ReadRadioMap(const std::string& text, SupportedModel model);

/// The hardware of each radio of the model. A radio that the map does not name gets the first phy that has
/// its band and leaves one for each of the others. RadioFailed where a radio finds none, or the phy carries
/// no access points.
Result<std::vector<RadioHardware>> AssignHardware(SupportedModel model, const std::vector<Wiphy>& wiphys,
                                                  const std::vector<WirelessInterface>& interfaces,
                                                  const RadioMap& map);

const WiphyBand* BandOf(const Wiphy& wiphy, RadioFrequency radio);

bool IsOf5GHz(RadioFrequency radio);

}  // namespace TALO::Wifid
