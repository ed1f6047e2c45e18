#pragma once

#include "client/records.h"
#include "values/export.h"

#include <map>
#include <memory>
#include <set>
#include <string>

namespace TALO::Wifi {

/// The topology client: the context the router is in, and which networks are activated on which bridge. The
/// rules of WifiClient hold for its operations too.
class TALO_WIFI_API WifiClientForTopo {
 public:
  virtual ~WifiClientForTopo() = default;

  /// The current context: "router", "bridge", "repeater" or any other that was set.
  virtual std::string GetContext() = 0;

  /// Networks made from now on belong to this context.
  virtual void SetContext(const std::string& context) = 0;

  /// The networks of a context; NotFound for one that no network was given.
  virtual std::set<int> GetIdsForTopo(const std::string& context) = 0;

  /// The networks whose BSSs are wanted in the air.
  virtual std::set<int> GetActivatedIdsForTopo() = 0;

  /// Network ID to the interfaces of its BSSs.
  virtual std::map<int, std::set<std::string>> GetInterfacesForTopo() = 0;

  /// Brings a network's BSSs up on a bridge that exists.
  virtual void Activate(const ActivationInfo& activation) = 0;

  /// Takes a network's BSSs down.
  virtual void Deactivate(int networkId) = 0;
};

/// Hands out the topology client.
class TALO_WIFI_API WifiClientFactoryForTopo {
 public:
  /// A client on this process's connection to the bus. Throws talo::dbus::DbusError when there is no bus.
  static std::shared_ptr<WifiClientForTopo> GetInstance();
};

}  // namespace TALO::Wifi
