#pragma once

#include "bench/run_cost.h"

#include <map>
#include <string>

namespace TALO::Bench {

/// Where the instructions of one run are spent outside the kernel, as valgrind's callgrind counts them.
struct Profile {
  double total = 0;
  std::map<std::string, double> objects;    ///< path of a program or library to what runs in it
  std::map<std::string, double> functions;  ///< name to what runs in it and in whatever it calls
};

/// Throws std::runtime_error where what callgrind writes is not understood: its parts have to make up its
/// total.
Profile ProfileRun(const Command& command);

/// What a function and whatever it calls takes; `name` is what stands before its arguments.
/// std::runtime_error where there is none of that name.
double Inclusive(const Profile& profile, const std::string& name);

}  // namespace TALO::Bench
