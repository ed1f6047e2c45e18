#pragma once

// What stands behind the client factories in unit tests: a daemon made of plain values. It answers what it
// was given, fails where it was told to, and keeps a list of what was asked. Linked in place of the bus.

#include "client/records.h"
#include "support/print.h"

#include <exception>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace TALO::Wifi {

class FakeDaemon {
 public:
  /// The one of this process; Reset() makes it new.
  static FakeDaemon& Get();
  static void Reset() { Get() = FakeDaemon(); }

  /// Every call in order: an operation with its arguments as in `CreateNetwork({ssid="Home"})`, a client
  /// obtained as in `WifiClientFactory::GetInstance()`, the log level asked as `IsDebugLogLevel()`.
  std::vector<std::string> calls;

  /// By the name of an operation, of a factory, or "IsDebugLogLevel": thrown when that is called, after it
  /// was listed.
  std::map<std::string, std::exception_ptr> failures;

  /// Makes a call fail with a copy of `exception`.
  template <typename Exception>
  void Fail(const std::string& name, const Exception& exception) {
    failures[name] = std::make_exception_ptr(exception);
  }

  bool isDebugLogLevel = true;

  // Answers of WifiClient.
  std::map<int, std::set<std::string>> networkInterfaces;
  std::vector<NetworkSetting> networkSettings;
  int newNetworkId = 0;
  ScheduleStatus scheduleStatus;
  bool isAllNetworkAPDisabled = false;
  std::vector<RadioStatus> radioStatuses;
  std::vector<RadioStatusSimple> radioStatusesSimple;
  std::vector<RadioIfStatus> radioIfStatuses;
  std::vector<RadioSetting> radioSettings;
  std::map<std::string, Util::RadioFrequency> networkInterfaceRadioMap;
  RadioConversionInfo radioConversionInfo;
  std::vector<MACFilterProfile> macFilterProfiles;
  int newMACFilterProfileId = 0;
  MACFilterGlobal macFilterGlobal;
  std::vector<ScanResult> scanResults;
  std::vector<StationSetting> stationSettings;
  std::vector<StationStatus> stationStatuses;
  std::map<Util::RadioFrequency, std::string> stationInterfaces;
  std::vector<DeviceInfo> devices;
  NetworkRadioPair defaultWPSTarget;
  bool isWPS_PBCAvailable = false;
  CountryCodeCapability listCountryCode;
  CountryCode countryCode = CountryCode::AD;
  NetworkSetting networkSetting;
  // Answers of WifiClientForMesh.
  BackhaulSetting backhaulSetting;
  std::map<Util::RadioFrequency, std::string> backhaulInterfaces;
  BackhaulSTASetting backhaulSTASetting;
  std::map<Util::RadioFrequency, std::string> backhaulSTAInterfaces;
  std::vector<BackhaulSTAStatus> backhaulSTAStatuses;
  bool isBackhaulBandSwapped = false;
  CountryCodeCapability remoteCountryCodeCapability;
  bool isWifiAdjustNeeded = false;
  // Answers of WifiClientForTopo.
  std::string context;
  std::set<int> idsForTopo;
  std::set<int> activatedIdsForTopo;
  std::map<int, std::set<std::string>> interfacesForTopo;

  /// Lists a call and fails it where that was asked for.
  template <typename... Arguments>
  void Called(const std::string& name, const Arguments&... arguments) {
    std::ostringstream call;
    call << name << "(";
    [[maybe_unused]] const char* separator = "";
    ((call << separator, Printing::Print(call, arguments), separator = ", "), ...);
    call << ")";
    calls.push_back(call.str());
    FailIfAsked(name);
  }

  /// Lists that a client was obtained, and fails it where that was asked for.
  void Obtained(const std::string& factory);

 private:
  void FailIfAsked(const std::string& name) const;
};

}  // namespace TALO::Wifi
