#include "bench/table.h"

#include <cmath>
#include <iomanip>
#include <iostream>
#include <sstream>

namespace TALO::Bench {

namespace {

constexpr int kWhatWidth = 46;
constexpr int kAgainstWidth = 30;
constexpr int kFigureWidth = 12;
constexpr int kUnitWidth = 17;

std::size_t missedGoals = 0;

/// Three digits that say something.
std::string Rounded(double figure) {
  const int before = figure == 0 ? 1 : static_cast<int>(std::floor(std::log10(std::fabs(figure)))) + 1;
  std::ostringstream text;
  text << std::fixed << std::setprecision(before >= 3 ? 0 : 3 - std::max(before, 0)) << figure;
  return text.str();
}

/// Text of the goal and of what came of it, which is counted.
std::string Judge(const Goal& goal, double figure) {
  if (goal.kind == Goal::Kind::None) {
    return "";
  }
  const bool atMost = goal.kind == Goal::Kind::AtMost;
  const bool met = atMost ? figure <= goal.limit : figure >= goal.limit;
  missedGoals += met ? 0 : 1;
  return std::string(atMost ? "at most " : "at least ") + Rounded(goal.limit) + (met ? "  met" : "  MISSED");
}

void PrintRow(const std::string& what, const std::string& ours, const std::string& against,
              const std::string& theirs, const std::string& unit, const std::string& ratio,
              const std::string& goal) {
  std::cout << std::left << std::setw(kWhatWidth) << what << std::right << std::setw(kFigureWidth) << ours
            << "  " << std::left << std::setw(kAgainstWidth) << against << std::right
            << std::setw(kFigureWidth) << theirs << "  " << std::left << std::setw(kUnitWidth) << unit
            << std::right << std::setw(7) << ratio << "  " << goal << std::endl;
}

}  // namespace

void PrintHeading(const std::string& title) {
  std::cout << "\n" << title << "\n";
  PrintRow("", "ours", "against", "theirs", "unit", "ratio", "goal");
}

void PrintComparison(const Comparison& row) {
  const double ratio = row.ours / row.theirs;
  PrintRow(row.what, Rounded(row.ours), row.against, Rounded(row.theirs), row.unit, Rounded(ratio),
           Judge(row.goal, ratio));
}

void PrintFigure(const std::string& what, double figure, const std::string& unit, const Goal& goal) {
  PrintRow(what, Rounded(figure), "", "", unit, "", Judge(goal, figure));
}

std::size_t MissedGoals() { return missedGoals; }

}  // namespace TALO::Bench
