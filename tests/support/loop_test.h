#pragma once

#include "daemon/main/event_loop.h"
#include "support/environment.h"
#include "support/private_bus.h"

#include <gtest/gtest.h>

#include <csignal>

namespace TALO::Wifid {

/// With the daemon's event loop on a bus of the test's own.
class LoopTest : public testing::Test {
 protected:
  /// The loop blocks the signals that end it for the whole thread.
  LoopTest() : loop_(Options::Bus::System, log_) {}
  ~LoopTest() override { pthread_sigmask(SIG_SETMASK, &mask_, nullptr); }

  /// Makes Run() return.
  void EndLoop() { sd_event_exit(loop_.GetEvent(), 0); }

  static sigset_t CurrentMask() {
    sigset_t mask;
    pthread_sigmask(SIG_SETMASK, nullptr, &mask);
    return mask;
  }

  const sigset_t mask_ = CurrentMask();
  EndToEnd::PrivateBus bus_;
  EnvironmentVariable address_{"DBUS_SYSTEM_BUS_ADDRESS", bus_.Address()};
  EnvironmentVariable noServiceManager_{"NOTIFY_SOCKET", std::nullopt};
  Log log_{Severity::Emergency};
  EventLoop loop_;
};

}  // namespace TALO::Wifid
