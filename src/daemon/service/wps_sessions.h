#pragma once

#include "daemon/model/wps.h"
#include "daemon/service/engine.h"

#include <functional>
#include <optional>
#include <string>

namespace TALO::Wifid {

/// Opens and ends WPS sessions; at most one runs. What it asks of a radio waits for the radio's turn, as
/// changes do; what stands in its way by then refuses it.
class WPSSessions {
 public:
  explicit WPSSessions(Engine& engine) : engine_(engine) {}

  Result<Wifi::NetworkRadioPair> DefaultTarget() const;
  Result<bool> IsAvailable(const Wifi::NetworkRadioPair& target) const;

  /// Opens push button.
  void Open(const Wifi::NetworkRadioPair& target, Engine::Done<void> done);

  /// Opens push button on the default target.
  void PushButton(Engine::Done<void> done);

  /// Ends the session of an interface.
  void End(const std::string& interface, Engine::Done<void> done);

  void ConfigureRegistrar(const Wifi::WPS_ERConfigInput& input, Engine::Done<void> done);

  /// The driver's word that a session is over.
  void Finished(const WPSFinished& event);

 private:
  template <typename Ask>
  auto Look(Ask ask) const;
  /// When the turn of the radio has come that a network's interface belongs to.
  void UseRadioOf(const std::string& interface, std::function<void(std::function<void()> leave)> use);

  Engine& engine_;
  std::optional<std::string> session_;  ///< its interface
};

}  // namespace TALO::Wifid
