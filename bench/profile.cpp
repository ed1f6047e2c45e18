#include "bench/profile.h"

#include "support/files.h"
#include "support/temporary_directory.h"

#include <sstream>
#include <stdexcept>
#include <utility>

namespace TALO::Bench {

namespace {

/// Names come as "(7) name" once, as "(7)" from then on.
class Names {
 public:
  const std::string& Resolve(const std::string& text) {
    const auto end = text.find(')');
    if (text.empty() || text.front() != '(' || end == std::string::npos) {
      throw std::runtime_error("the profile has a name that is no name: " + text);
    }
    std::string& name = names_[text.substr(0, end)];
    if (end + 2 < text.size()) {
      name = text.substr(end + 2);
    }
    return name;
  }

 private:
  std::map<std::string, std::string> names_;
};

/// Takes a profile's lines in their order.
class Reader {
 public:
  void Take(const std::string& line) {
    const auto equals = line.find('=');
    if (line.empty()) {
      return;
    }
    if (std::string("+-*0123456789").find(line.front()) != std::string::npos) {
      TakeCost(line);
    } else if (equals != std::string::npos) {
      TakeName(line.substr(0, equals), line.substr(equals + 1));
    } else if (line.starts_with("totals: ")) {
      profile_.total = std::stod(line.substr(line.find(' ')));
    } else if (line.starts_with("positions: ") && line != "positions: line") {
      throw std::runtime_error("the profile does not count by lines");
    }
  }

  /// Everything, once all lines are taken.
  const Profile& Whole() const {
    double sum = 0;
    for (const auto& [object, cost] : profile_.objects) {
      sum += cost;
    }
    if (sum == 0 || sum != profile_.total) {
      throw std::runtime_error("the parts of the profile do not make up its total");
    }
    return profile_;
  }

 private:
  void TakeName(const std::string& key, const std::string& value) {
    if (key == "ob") {
      object_ = objects_.Resolve(value);
    } else if (key == "cob") {
      objects_.Resolve(value);
    } else if (key == "fn") {
      function_ = functions_.Resolve(value);
    } else if (key == "cfn") {
      functions_.Resolve(value);
    } else if (key == "calls") {
      ofCallee_ = true;
    }
  }

  /// "where cost". Behind "calls=" it is that of what is called.
  void TakeCost(const std::string& line) {
    std::istringstream words(line);
    std::string where;
    double cost = 0;
    if (!(words >> where >> cost)) {
      throw std::runtime_error("the profile has a cost that is no cost: " + line);
    }
    profile_.functions[function_] += cost;
    if (!std::exchange(ofCallee_, false)) {
      profile_.objects[object_] += cost;
    }
  }

  Profile profile_;
  Names objects_;
  Names functions_;
  std::string object_;
  std::string function_;
  bool ofCallee_ = false;
};

Profile ReadProfile(const std::string& text) {
  Reader reader;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    reader.Take(line);
  }
  return reader.Whole();
}

}  // namespace

Profile ProfileRun(const Command& command) {
  const TemporaryDirectory directory;
  const std::string file = directory / "profile";
  Command counted = {"valgrind", "--tool=callgrind", "--callgrind-out-file=" + file};
  counted.insert(counted.end(), command.begin(), command.end());
  RunOnBus(counted);
  return ReadProfile(ReadFile(file));
}

double Inclusive(const Profile& profile, const std::string& name) {
  for (const auto& [function, cost] : profile.functions) {
    if (function.starts_with(name + "(") && function.find(" [clone") == std::string::npos) {
      return cost;
    }
  }
  throw std::runtime_error("nothing runs in " + name);
}

}  // namespace TALO::Bench
