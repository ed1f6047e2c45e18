#pragma once

#include "daemon/service/announcer.h"
#include "daemon/service/engine.h"

#include <cstddef>
#include <string>

namespace TALO::Wifid {

/// "2 networks on 3 radios"
std::string StatusText(std::size_t networks, std::size_t radios);

/// Tells the service manager, where one started the daemon, that the daemon serves and what. Passes
/// everything on that is announced.
class ServiceManager final : public Announcer {
 public:
  explicit ServiceManager(Announcer& next) : next_(next) {}

  /// The daemon serves from now on.
  void Ready(const Engine& engine);

  void NetworksChanged() override;
  void Happened(const RadioEvent& event) override { next_.Happened(event); }

 private:
  Announcer& next_;
  const Engine* engine_ = nullptr;
};

}  // namespace TALO::Wifid
