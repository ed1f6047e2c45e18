#pragma once

namespace TALO::Tool {

/// Runs the one command that the process arguments name and prints its answer, or the reason why there is
/// none, on standard output. Returns the exit status: 0 when the command's handler returned normally and all
/// that it printed was written, 1 otherwise.
int dispatch(int argc, const char* const* argv);

}  // namespace TALO::Tool
