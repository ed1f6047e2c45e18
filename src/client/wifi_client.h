#pragma once

#include "client/records.h"
#include "values/export.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace TALO::Wifi {

/// The general client: networks, radios, stations, MAC filters, schedules, WPS, devices, country codes.
///
/// Every operation of this and the other clients blocks until the daemon has answered, at most 30 seconds. A
/// request that the daemon refuses throws WifiException and has changed nothing; a daemon that cannot be
/// reached or understood throws talo::dbus::DbusError. A change is stored durably and in effect on the radios
/// when the operation returns. Clients are not thread-safe: those of one process share one connection.
class TALO_WIFI_API WifiClient {
 public:
  virtual ~WifiClient() = default;

  /// Network ID to the interfaces of its BSSs.
  virtual std::map<int, std::set<std::string>> GetNetworkInterfaces() = 0;

  /// All networks in the order of their IDs, passphrases included.
  virtual std::vector<NetworkSetting> GetNetworkSettings() = 0;

  /// Makes a network on all radios and returns its ID. InvalidArgument for an SSID or passphrase outside its
  /// limits, AlreadyExists for an SSID in use, LimitReached when a radio has no BSS left.
  virtual int CreateNetwork(const NetworkCreateInfo& info) = 0;

  /// NotFound for an unknown ID.
  virtual void DeleteNetwork(int networkId) = 0;

  /// The schedules of all networks that have one.
  virtual ScheduleStatus GetScheduleStatus() = 0;

  /// True when no BSS of any network is in the air.
  virtual bool IsAllNetworkAPDisabled() = 0;

  virtual std::vector<RadioStatus> GetRadioStatuses() = 0;
  virtual std::vector<RadioStatusSimple> GetRadioStatusesSimple() = 0;
  virtual std::vector<RadioIfStatus> GetRadioIfStatuses() = 0;
  virtual std::vector<RadioSetting> GetRadioSettings() = 0;

  /// Interface name of every network's BSS to the radio it belongs to.
  virtual std::map<std::string, Util::RadioFrequency> GetNetworkInterfaceRadioMap() = 0;

  virtual RadioConversionInfo GetRadioConversionInfo() = 0;

  virtual std::vector<MACFilterProfile> GetMACFilterProfiles() = 0;

  /// Makes a profile (its ID is ignored) and returns the new ID; with `applyToAll` every network uses it from
  /// now on.
  virtual int CreateMACFilterProfile(const MACFilterProfile& profile, bool applyToAll) = 0;

  /// Replaces the profile of the same ID, in effect at once on connected stations.
  virtual void ModifyMACFilterProfile(const MACFilterProfile& profile) = 0;

  /// Deletes all of them or none; networks that used one are no longer filtered.
  virtual void DeleteMACFilterProfiles(const std::set<int>& profileIds) = 0;

  virtual MACFilterGlobal GetMACFilterGlobal() = 0;
  virtual void SetMACFilterGlobal(const MACFilterGlobal& global) = 0;

  /// What is in the air now, heard by one radio or, for `SmartConnect`, by all.
  virtual std::vector<ScanResult> GetScanResults(Util::RadioFrequency radio) = 0;

  virtual std::vector<StationSetting> GetStationSettings() = 0;
  virtual std::vector<StationStatus> GetStationStatuses() = 0;

  /// The station interface of every radio that has one.
  virtual std::map<Util::RadioFrequency, std::string> GetStationInterfaces() = 0;

  /// Replaces the station setting of the record's radio; joining goes on in the background.
  virtual void ModifyStation(const StationSetting& setting) = 0;

  /// Drops and rejoins every upstream access point.
  virtual void ReconnectAllSTA() = 0;

  /// The stations connected to this router's networks.
  virtual std::vector<DeviceInfo> GetDevices() = 0;

  /// Where the hardware button starts WPS.
  virtual NetworkRadioPair GetDefaultWPSTarget() = 0;

  /// Opens WPS push button for 120 seconds.
  virtual void TriggerWPS_PBC(const NetworkRadioPair& target) = 0;

  virtual bool IsWPS_PBCAvailable(const NetworkRadioPair& target) = 0;

  /// Ends the WPS session of an interface.
  virtual void TriggerWPSConnected(const std::string& interface) = 0;

  /// As if the button on the case had been pushed.
  virtual void TriggerHWButton() = 0;

  virtual CountryCodeCapability ListCountryCode() = 0;

  /// Moves every BSS to channels that the country allows.
  virtual void SetCountryCode(CountryCode country) = 0;

  virtual CountryCode GetCountryCode() = 0;

  /// One network; NotFound for an unknown ID.
  virtual NetworkSetting GetNetworkSetting(int networkId) = 0;

  /// Gives a network a schedule in place of those it had on the same radios.
  virtual void SetSchedule(const NetworkSchedule& schedule) = 0;

  /// Makes a network use a MAC filter profile, or none for -1; in effect at once on connected stations.
  virtual void AssignMACFilterProfile(int networkId, int profileId) = 0;
};

/// Hands out the general client.
class TALO_WIFI_API WifiClientFactory {
 public:
  /// A client on this process's connection to the bus. Throws talo::dbus::DbusError when there is no bus.
  static std::shared_ptr<WifiClient> GetInstance();
};

}  // namespace TALO::Wifi
