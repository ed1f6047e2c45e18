#pragma once

#include "support/process.h"

/// What the kernel tells about a process that runs.
namespace TALO::Bench {

/// In KiB.
struct Memory {
  double resident = 0;
  double own = 0;  ///< of it, pages that are shared with nobody and with no file
};

/// Counted page by page, which the kernel does for root alone; else by its running counts, which may be some
/// dozens of pages behind.
Memory ReadMemory(const EndToEnd::Process& process);

/// How often its threads, all together, waited for something so far.
double Waits(const EndToEnd::Process& process);

}  // namespace TALO::Bench
