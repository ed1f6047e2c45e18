#pragma once

#include "bench/run_cost.h"

#include <string>

/// What makes a run of the tool take longer than one of another program.
namespace TALO::Bench {

/// Time of the processor outside the kernel and in it, and time in which others work, the daemon first of
/// all.
void CompareTimes(const std::string& what, const std::string& against, const RunCost& ours,
                  const RunCost& theirs);

/// Instructions outside the kernel, by the program or library that they belong to. For the tool, which must
/// be `ours` and ask for getRadioIfStatuses, by what they are for, too; this with all that is called for it.
/// Runs both under valgrind.
void CompareProfiles(const std::string& what, const std::string& against, const Command& ours,
                     const Command& theirs);

}  // namespace TALO::Bench
