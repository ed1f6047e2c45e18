#include "bench/run_cost.h"

#include "bench/bench.h"
#include "bench/figures.h"
#include "bench/processor_times.h"

#include <cstdlib>
#include <iterator>
#include <memory>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace TALO::Bench {

namespace {

struct Figures {
  std::vector<double> milliseconds, processor, faults, resident;
  ProcessorTimes times;
};

void Measure(const Command& command, Figures& figures) {
  Command measured = {BuiltPrograms().measuredRun};
  measured.insert(measured.end(), command.begin(), command.end());
  const std::string output = RunOnBus(measured)->Output();
  std::istringstream told(output);
  double microseconds = 0;
  double user = 0;
  double kernel = 0;
  double faults = 0;
  double resident = 0;
  if (!(told >> microseconds >> user >> kernel >> faults >> resident)) {
    throw std::runtime_error("what a run of " + command.front() + " costs cannot be read: " + output);
  }
  figures.milliseconds.push_back(microseconds / 1e3);
  figures.processor.push_back((user + kernel) / 1e3);
  figures.times.user.push_back(user / 1e3);
  figures.times.kernel.push_back(kernel / 1e3);
  figures.faults.push_back(faults);
  figures.resident.push_back(resident);
}

double NumberBehind(const std::string& text, const std::string& label) {
  std::smatch found;
  if (!std::regex_search(text, found, std::regex(label + " *: *([0-9]+)"))) {
    throw std::runtime_error("nothing tells the " + label);
  }
  return std::stod(found[1]);
}

}  // namespace

std::unique_ptr<EndToEnd::Process> RunOnBus(const Command& command, EndToEnd::Environment environment) {
  environment.emplace("DBUS_SYSTEM_BUS_ADDRESS", std::getenv("DBUS_SYSTEM_BUS_ADDRESS"));
  auto process = std::make_unique<EndToEnd::Process>(
      EndToEnd::ProcessSetup{.words = command, .environment = std::move(environment)});
  if (process->Wait() != 0) {
    throw std::runtime_error(command.front() + " fails: " + process->Output() + process->Errors());
  }
  return process;
}

std::vector<RunCost> MeasureInTurn(const std::vector<Command>& commands, std::size_t rounds) {
  std::vector<Figures> figures(commands.size());
  for (std::size_t round = 0; round <= rounds; ++round) {
    for (std::size_t i = 0; i < commands.size(); ++i) {
      Figures unused;
      Measure(commands[i], round == 0 ? unused : figures[i]);
    }
  }
  std::vector<RunCost> costs;
  for (const Figures& of : figures) {
    const double processor = Median(of.processor);
    costs.push_back({Median(of.milliseconds), processor, processor * KernelShare(of.times), Median(of.faults),
                     Median(of.resident)});
  }
  return costs;
}

LoaderWork MeasureLoader(const Command& command) {
  const std::string told = RunOnBus(command, {{"LD_DEBUG", "statistics,files"}})->Errors();
  LoaderWork work;
  const std::regex load("calling init: (?!.*/ld-linux)");
  work.libraries = static_cast<double>(
      std::distance(std::sregex_iterator(told.begin(), told.end(), load), std::sregex_iterator()));
  work.symbolRelocations = NumberBehind(told, "final number of relocations");
  work.plainRelocations = NumberBehind(told, "number of relative relocations");
  return work;
}

}  // namespace TALO::Bench
