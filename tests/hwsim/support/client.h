#pragma once

#include "hwsim/support/control_socket.h"
#include "hwsim/support/network_namespace.h"
#include "support/process.h"

#include <memory>
#include <string>

namespace TALO::Hwsim {

/// Channels in MHz: those of a router that was never set up.
inline constexpr int k2_4GHz = 2437;
inline constexpr int k5GHz = 5180;

/// What a client knows of a network.
struct KnownNetwork {
  std::string ssid = "Home";  ///< raw bytes
  std::string passphrase = "correct-horse";
  int frequency = k2_4GHz;                ///< the only one that it looks at
  std::string keyManagement = "WPA-PSK";  ///< SAE, or both with a blank between
};

/// A phone or laptop: a plain wpa_supplicant on a machine of its own. What it waits for and does not get is a
/// std::runtime_error.
class Client {
 public:
  /// On the radio of this number, which nobody else may have. With a bridge, which is made beside it, it is
  /// in 4-address mode, and what is on the bridge is connected with it.
  Client(const std::string& name, int radio, const std::string& bridge = "");

  /// Forgets what it knew and joins this network.
  void Join(const KnownNetwork& network);
  /// The same without the outcome.
  void BeginToJoin(const KnownNetwork& network);
  /// Waits until it is connected.
  void ExpectConnected();
  /// Waits until it is connected, whatever happened before. Throws with its status when it is not.
  void ExpectConnectedInTheEnd();
  /// Waits until it is turned away, and returns what it said about that.
  std::string ExpectRefused();
  /// Waits until it has lost its connection.
  void ExpectDisconnected();

  /// Parts, and joins again with what it knows, secrets kept from the last time included.
  void Leave();
  void BeginToRejoin();

  /// Pushes its button. The credentials that it then gets are its own.
  void PushButton();

  bool IsConnected();
  /// A line of its status, empty where there is none.
  std::string Status(const std::string& key);
  std::string SSID() { return Status("ssid"); }
  /// Whether it keeps a secret that lets it in without the passphrase.
  bool KeepsSecret();
  /// Since when it has been connected without a break, as the kernel has it. Throws std::runtime_error where
  /// it is not connected.
  std::string ConnectedSince() const;
  /// Listens once and tells whether this SSID was in the air.
  bool Hears(const std::string& ssid, int frequency);

  std::string Address() { return Status("address"); }
  const std::string& Interface() const { return interface_; }
  const NetworkNamespace& Host() const { return host_; }
  ControlSocket& Control() { return *control_; }

 private:
  NetworkNamespace host_;
  std::string interface_;
  TemporaryDirectory directory_;
  std::unique_ptr<EndToEnd::Process> supplicant_;
  std::unique_ptr<ControlSocket> control_;
};

/// The digits of raw bytes.
std::string Hexadecimal(const std::string& bytes);

}  // namespace TALO::Hwsim
