#pragma once

#include "hwsim/support/control_socket.h"
#include "hwsim/support/network_namespace.h"
#include "support/process.h"

#include <memory>
#include <string>

namespace TALO::Hwsim {

struct ForeignAPSetup {
  std::string ssid;  ///< raw bytes
  std::string passphrase;
  int channel = 6;          ///< 20 MHz of it
  std::string more = {};    ///< further lines of its configuration
  std::string bridge = {};  ///< of its own machine, which must be there
};

/// Somebody else's access point: a plain hostapd. It is in the air until its end.
class ForeignAP {
 public:
  ForeignAP(const NetworkNamespace& host, const std::string& interface, const ForeignAPSetup& setup);

  std::string Address();
  /// Whether a station of this address is connected.
  bool Has(const std::string& station);
  ControlSocket& Control() { return *control_; }

 private:
  TemporaryDirectory directory_;
  std::unique_ptr<EndToEnd::Process> hostapd_;
  std::unique_ptr<ControlSocket> control_;
};

}  // namespace TALO::Hwsim
