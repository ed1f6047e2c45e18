#include "attack/attack.h"

#include "attack/attacker.h"
#include "attack/random_values.h"
#include "client/wifi_client.h"
#include "support/daemon_process.h"
#include "support/deadline.h"
#include "support/files.h"
#include "support/introspection.h"
#include "support/operation_call.h"
#include "support/test_connection.h"

#include <iostream>
#include <memory>
#include <set>
#include <vector>

namespace TALO::Attack {

namespace {

using EndToEnd::CallOperation;
using Wifi::WifiClient;
using Wifi::Bus::CheckMessage;

/// What is freed goes back to the C library, and not all of that to the kernel.
constexpr double kSlackKiB = 1024;
#ifdef TALOWIFI_INSTRUMENTED
constexpr bool kMemoryTells = false;  // instruments have memory of their own, and keep what was freed
#else
constexpr bool kMemoryTells = true;
#endif

struct Method {
  Target target;
  std::string signature;
};

/// Every method that the daemon says it has.
std::vector<Method> MethodsOf(const std::string& address) {
  std::vector<Method> methods;
  EndToEnd::TestConnection connection(address);
  for (const char* path : {"/com/talo/Wifi1", "/org/freedesktop/LogControl1"}) {
    for (const auto& [interface, described] : EndToEnd::ReadIntrospection(connection.Introspect(path))) {
      for (const auto& [member, arguments] : described.methods) {
        std::string signature;
        for (const EndToEnd::DescribedArgument& argument : arguments) {
          signature += argument.direction == "in" ? argument.type : "";
        }
        methods.push_back({{path, interface, member}, signature});
      }
    }
  }
  return methods;
}

class Battle {
 public:
  explicit Battle(unsigned seed)
      : daemon_(bus_, {.options = {"--log-level", "Warning", "--state-dir", state_ / "state", "--model",
                                   "Alder100"}}),
        methods_(MethodsOf(bus_.Address())),
        random_(seed) {}

  void Round() {
    SendWrongSignatures();
    SendStrangeValues();
    SendHugeValues();
    SendNestedValues();
    CallWhatIsNotThere();
    Flood();
    LeaveInTheMiddle();
    TakeAndLoseNames();
    CleanUp();
  }

  double OwnMemory() const {
    const std::string text = ReadFile("/proc/" + std::to_string(daemon_.GetProcess().Id()) + "/status");
    return std::stod(text.substr(text.find("\nRssAnon:") + 9));
  }

  const Answers& Got() const { return answers_; }

 private:
  /// Sends and waits with one connection, a few calls at a time: more would be refused for their number
  /// alone.
  template <typename Prepare>
  void AttackEveryMethod(int times, Prepare prepare) {
    Attacker attacker(bus_.Address());
    constexpr int kAtOnce = 10;
    int sent = 0;
    for (int i = 0; i < times; ++i) {
      for (const Method& method : methods_) {
        attacker.Send(method.target, prepare(method));
        if (++sent % kAtOnce == 0) {
          attacker.Flush();
          CheckOthersAreServed();
          attacker.WaitForAnswers();
        }
      }
    }
    End(attacker);
  }

  void End(Attacker& attacker) {
    attacker.WaitForAnswers();
    for (const auto& [name, count] : attacker.Got()) {
      answers_[name] += count;
    }
    CheckOthersAreServed();
  }

  /// Throws std::runtime_error where a proper call of somebody else is not answered, whatever is on its way.
  /// Who meets a crowd of new callers may be told so, and is served when he comes again.
  void CheckOthersAreServed() {
    const EndToEnd::Deadline deadline;
    for (;;) {
      try {
        CallOperation<&WifiClient::GetCountryCode>(bus_.Address());
        return;
      } catch (const EndToEnd::CallError& refusal) {
        if (refusal.Name() != std::string(Wifi::Bus::kErrorPrefix) + "LimitReached" || deadline.HasPassed()) {
          throw;
        }
      }
    }
  }

  void SendWrongSignatures() {
    AttackEveryMethod(5, [this](const Method&) {
      return [this](sd_bus_message* call) { AppendRandom(call, RandomSignature(random_), random_); };
    });
  }

  void SendStrangeValues() {
    AttackEveryMethod(10, [this](const Method& method) {
      return [this, &method](sd_bus_message* call) { AppendRandom(call, method.signature, random_); };
    });
  }

  void SendHugeValues() {
    AttackEveryMethod(1, [this](const Method& method) {
      return [this, &method](sd_bus_message* call) {
        AppendRandom(call, method.signature, random_, Size::Huge);
      };
    });
  }

  void SendNestedValues() {
    AttackEveryMethod(1, [](const Method&) { return [](sd_bus_message* call) { AppendNested(call); }; });
  }

  void CallWhatIsNotThere() {
    Attacker attacker(bus_.Address());
    const Target& real = methods_.front().target;
    for (const Target& target : std::vector<Target>{{"/", real.interface, real.member},
                                                    {"/com/talo/Wifi1/none", real.interface, real.member},
                                                    {real.path, "com.talo.Wifi1.None", real.member},
                                                    {real.path, real.interface, "None"},
                                                    {"/", "org.freedesktop.DBus.Peer", "None"}}) {
      attacker.Send(target, [](sd_bus_message*) {});
    }
    End(attacker);
  }

  void Flood() {
    std::vector<std::unique_ptr<Attacker>> all;
    for (int i = 0; i < kConnections; ++i) {
      all.push_back(std::make_unique<Attacker>(bus_.Address()));
    }
    for (int call = 0; call < 100; ++call) {
      for (const auto& attacker : all) {
        SendAnything(*attacker);
      }
    }
    for (const auto& attacker : all) {
      attacker->Flush();
    }
    CheckOthersAreServed();
    for (const auto& attacker : all) {
      attacker->WaitForAnswers();
    }
    for (const auto& attacker : all) {
      End(*attacker);
    }
  }

  void LeaveInTheMiddle() {
    for (int i = 0; i < kConnections; ++i) {
      Attacker attacker(bus_.Address());
      for (int call = Pick(random_, 20); call >= 0; --call) {
        SendAnything(attacker);
      }
      attacker.Flush();
    }
    CheckOthersAreServed();
  }

  void TakeAndLoseNames() {
    Attacker attacker(bus_.Address());
    for (int i = 0; i < kConnections; ++i) {
      const std::string name = "com.talo.Attacker" + std::to_string(i % 3);
      CheckMessage(sd_bus_request_name(attacker.Bus(), name.c_str(), 0));
      SendAnything(attacker);
      // The daemon's own cannot be taken.
      if (sd_bus_request_name(attacker.Bus(), Wifi::Bus::kBusName, SD_BUS_NAME_REPLACE_EXISTING) >= 0) {
        throw std::runtime_error("the daemon's name can be taken");
      }
      SendAnything(attacker);
      CheckMessage(sd_bus_release_name(attacker.Bus(), name.c_str()));
    }
    End(attacker);
  }

  void SendAnything(Attacker& attacker) {
    const Method& method =
        methods_[static_cast<std::size_t>(Pick(random_, static_cast<int>(methods_.size())))];
    const bool right = Pick(random_, 2) == 0;
    attacker.Send(method.target, [&](sd_bus_message* call) {
      AppendRandom(call, right ? method.signature : RandomSignature(random_), random_);
    });
  }

  /// Takes away what calls happened to make, so that memory can be compared.
  void CleanUp() {
    for (const auto& network : CallOperation<&WifiClient::GetNetworkSettings>(bus_.Address())) {
      CallOperation<&WifiClient::DeleteNetwork>(bus_.Address(), network.id);
    }
    std::set<int> profiles;
    for (const auto& profile : CallOperation<&WifiClient::GetMACFilterProfiles>(bus_.Address())) {
      profiles.insert(profile.id);
    }
    if (!profiles.empty()) {
      CallOperation<&WifiClient::DeleteMACFilterProfiles>(bus_.Address(), profiles);
    }
  }

  static constexpr int kConnections = 50;

  EndToEnd::PrivateBus bus_;
  TemporaryDirectory state_;
  EndToEnd::DaemonOnBus daemon_;
  std::vector<Method> methods_;
  Random random_;
  Answers answers_;
};

bool IsNamed(const std::string& answer) {
  return answer == "result" || answer.starts_with(Wifi::Bus::kErrorPrefix) ||
         (answer.starts_with("org.freedesktop.DBus.Error.") &&
          answer != "org.freedesktop.DBus.Error.NoReply" && answer != "org.freedesktop.DBus.Error.Failed");
}

}  // namespace

bool Attack(int rounds, unsigned seed) {
  Battle battle(seed);
  const double before = battle.OwnMemory();
  for (int round = 0; round < rounds; ++round) {
    battle.Round();
  }
  const double after = battle.OwnMemory();

  bool isRight = true;
  for (const auto& [name, count] : battle.Got()) {
    std::cout << count << " " << name << (IsNamed(name) ? "" : "  WRONG") << "\n";
    isRight = isRight && IsNamed(name);
  }
  const bool isSmall = !kMemoryTells || after <= before + kSlackKiB;
  std::cout << "memory of its own: " << before << " KiB before, " << after << " KiB after " << rounds
            << " rounds" << (isSmall ? "" : "  WRONG") << "\n";
  return isRight && isSmall;
}

}  // namespace TALO::Attack
