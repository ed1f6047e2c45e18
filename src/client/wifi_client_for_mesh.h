#pragma once

#include "client/records.h"
#include "values/export.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace TALO::Wifi {

/// The mesh client: backhaul access point and station, scan mode, mesh information, remote country codes. The
/// rules of WifiClient hold for its operations too.
class TALO_WIFI_API WifiClientForMesh {
 public:
  virtual ~WifiClientForMesh() = default;

  /// Sets the backhaul access point. With `keepStations` nodes that are connected stay so where the change
  /// allows it.
  virtual void ModifyBackhaul(const BackhaulConfig& config, bool keepStations) = 0;

  virtual BackhaulSetting GetBackhaulSetting() = 0;

  /// The backhaul access point's interface on every radio that carries it.
  virtual std::map<Util::RadioFrequency, std::string> GetBackhaulInterfaces() = 0;

  /// Sets the backhaul station; joining goes on in the background.
  virtual void ModifyBackhaulSTA(const BackhaulConfig& config) = 0;

  virtual BackhaulSTASetting GetBackhaulSTASetting() = 0;

  /// The backhaul station's interface on every radio that carries it.
  virtual std::map<Util::RadioFrequency, std::string> GetBackhaulSTAInterfaces() = 0;

  virtual std::vector<BackhaulSTAStatus> GetBackhaulSTAStatuses() = 0;

  /// Sets when the backhaul station looks for a parent.
  virtual void EnableScan(Util::ScanType type) = 0;

  /// Sets the models in the mesh and whether this node is a repeater; both decide the radio conversion map.
  virtual void ModifyMeshInfo(const MeshInfo& info) = 0;

  /// Exchanges the roles of the two 5 GHz radios, or puts them back. NotSupported on a router with only one.
  virtual void SwapBackhaulBand(bool swap) = 0;

  virtual bool IsBackhaulBandSwapped() = 0;

  /// What another node of the mesh may use; NotFound for a serial number that the mesh does not know.
  virtual CountryCodeCapability GetRemoteCountryCodeCapability(const std::string& serial,
                                                               Util::SupportedModel model) = 0;

  /// True when the live channels or bands differ from what the mesh asks for.
  virtual bool IsWifiAdjustNeeded() = 0;
};

/// Hands out the mesh client.
class TALO_WIFI_API WifiClientFactoryForMesh {
 public:
  /// A client on this process's connection to the bus. Throws talo::dbus::DbusError when there is no bus.
  static std::shared_ptr<WifiClientForMesh> GetInstance();
};

}  // namespace TALO::Wifi
