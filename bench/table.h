#pragma once

#include <cstddef>
#include <string>

namespace TALO::Bench {

/// What a ratio, or a figure that stands alone, is to be.
struct Goal {
  enum class Kind { None, AtMost, AtLeast };

  Kind kind = Kind::None;
  double limit = 0;
};

constexpr Goal AtMost(double limit) { return {Goal::Kind::AtMost, limit}; }
constexpr Goal AtLeast(double limit) { return {Goal::Kind::AtLeast, limit}; }

/// Two figures measured in turn, ours and the one that it is held against.
struct Comparison {
  std::string what;
  std::string against;
  double ours = 0;
  double theirs = 0;
  std::string unit;
  Goal goal = {};
};

/// Prints a line as soon as its figures are there; every figure raw, and each pair's ratio.
void PrintHeading(const std::string& title);
void PrintComparison(const Comparison& row);
/// A figure that stands alone.
void PrintFigure(const std::string& what, double figure, const std::string& unit, const Goal& goal = {});

/// How many goals of what was printed so far are missed.
std::size_t MissedGoals();

}  // namespace TALO::Bench
