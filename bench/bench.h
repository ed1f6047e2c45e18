#pragma once

#include "support/daemon_process.h"
#include "support/private_bus.h"
#include "support/temporary_directory.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

/// One function a subject; each prints its part of the table.
namespace TALO::Bench {

/// How long to measure: long enough for figures to stand on, or just so that all of it runs once.
struct Effort {
  bool quick = false;

  std::size_t Or(std::size_t quickly, std::size_t thoroughly) const { return quick ? quickly : thoroughly; }
};

/// The programs that are measured and those that they are held against.
struct Programs {
  std::string tool;
  std::string cClient;
  std::string measuredRun;
  std::string nullService;
  std::string listingService;
};
const Programs& BuiltPrograms();

/// A bus that every program started from here on finds as the system bus.
class Bus {
 public:
  Bus();
  EndToEnd::PrivateBus& Private() { return bus_; }

 private:
  EndToEnd::PrivateBus bus_;
};

/// The daemon with a bus and a state of its own.
class Router {
 public:
  explicit Router(const std::vector<std::string>& options = {"--log-level", "Debug"});

  EndToEnd::Process& Daemon() { return daemon_.GetProcess(); }

 private:
  Bus bus_;
  TemporaryDirectory state_;
  EndToEnd::DaemonOnBus daemon_;
};

/// A process on the bus that owns `name` once this is made.
std::unique_ptr<EndToEnd::Process> StartService(const EndToEnd::ProcessSetup& setup, const std::string& name);

/// Whole runs of the tool.
void MeasureRuns(const Effort& effort);
/// Listings of many records.
void MeasureListings(const Effort& effort);
/// Calls that the daemon answers, with many callers and while it has other work.
void MeasureCalls(const Effort& effort);
/// Memory and wake-ups of the daemon.
void MeasureDaemon(const Effort& effort);
/// What one change costs the disk.
void MeasureChange(const Effort& effort);

}  // namespace TALO::Bench
