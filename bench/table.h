#pragma once

#include <string>

namespace TALO::Bench {

/// What a ratio is to be.
struct Goal {
  enum class Kind { None, AtMost, AtLeast };

  Kind kind = Kind::None;
  double ratio = 0;
};

constexpr Goal AtMost(double ratio) { return {Goal::Kind::AtMost, ratio}; }
constexpr Goal AtLeast(double ratio) { return {Goal::Kind::AtLeast, ratio}; }

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
/// A figure that stands alone; `goal` is text, as in "at most 8".
void PrintFigure(const std::string& what, double figure, const std::string& unit,
                 const std::string& goal = "");

}  // namespace TALO::Bench
