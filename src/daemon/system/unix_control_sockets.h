#pragma once

#include "daemon/radio/linux/control_sockets.h"
#include "daemon/radio/timers.h"
#include "daemon/system/event_watch.h"

#include <memory>
#include <string>

namespace TALO::Wifid {

/// Control sockets as datagrams between this process and a program of this machine, in the same network
/// namespace: their own names are abstract ones, which the kernel chooses and takes back.
class UnixControlSockets final : public ControlSockets {
 public:
  /// Both must outlive the connections.
  UnixControlSockets(const Loop& loop, Timers& timers) : loop_(loop), timers_(timers) {}

  Result<std::unique_ptr<ControlSocket>> Connect(const std::string& path, MessageSink sink) override;

 private:
  const Loop& loop_;
  Timers& timers_;
};

}  // namespace TALO::Wifid
