#pragma once

#include "support/process.h"

#include <string>
#include <vector>

namespace TALO::Hwsim {

using Words = std::vector<std::string>;

/// Runs a program to its end and returns what it printed. Throws std::runtime_error with all that it said
/// when it fails.
std::string OutputOf(const Words& words);

/// Whether a program ends with status 0.
bool Succeeds(const Words& words);

/// The path of a log that outlives the machine. Throws std::runtime_error outside the machine.
std::string LogFile(const std::string& name);

/// A program that writes all that it says behind what is in the log of this name.
EndToEnd::ProcessSetup Logged(const std::string& log, const Words& words);

/// The words of a program that is found on the path, and given to a shell script as its arguments.
Words operator+(Words words, const Words& more);

/// The process of this name that was started by another, or -1.
pid_t FindChild(pid_t parent, const std::string& name);

}  // namespace TALO::Hwsim
