#pragma once

#include "support/process.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

/// What whole runs of programs cost, measured from outside.
namespace TALO::Bench {

using Command = std::vector<std::string>;

/// Medians over the runs of one command.
struct RunCost {
  double milliseconds = 0;           ///< from start to end, by the wall clock
  double processorMilliseconds = 0;  ///< of this process, by the kernel's count
  double kernelMilliseconds = 0;     ///< of it in the kernel, see ProcessorTimes
  double pageFaults = 0;             ///< those without a disk
  double residentKiB = 0;            ///< at the most
};

/// Runs the commands in turn, so that what disturbs one disturbs all, `rounds` times after one that does not
/// count. What they print is thrown away. Throws std::runtime_error when one ends with anything but 0.
std::vector<RunCost> MeasureInTurn(const std::vector<Command>& commands, std::size_t rounds);

/// A run that succeeded, on the bus of now, and what it printed.
std::unique_ptr<EndToEnd::Process> RunOnBus(const Command& command, EndToEnd::Environment environment = {});

/// What the dynamic loader does for one run.
struct LoaderWork {
  double libraries = 0;          ///< loaded, at the start and later
  double symbolRelocations = 0;  ///< places for which a name had to be looked up
  double plainRelocations = 0;   ///< places that only had to be moved
};

LoaderWork MeasureLoader(const Command& command);

}  // namespace TALO::Bench
