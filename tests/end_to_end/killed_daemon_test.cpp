// A daemon that is killed again and again in the middle of its work.

#include "support/story_test.h"

#include <algorithm>
#include <csignal>
#include <random>
#include <set>
#include <vector>

namespace TALO::EndToEnd {

namespace {

using Wifi::WifiClient;
using Wifi::WifiClientForTopo;

/// What the daemon must hold by the requests that it has carried out.
struct Router {
  struct Network {
    std::string ssid;
    std::string context;
    bool activated = true;
  };

  int nextId = 1;
  std::map<int, Network> networks;
  std::string context = "router";

  bool Create(const std::string& ssid) {
    const bool taken =
        std::ranges::any_of(networks, [&](const auto& network) { return network.second.ssid == ssid; });
    if (!taken) {
      networks[nextId++] = {ssid, context};
    }
    return !taken;
  }
  bool SetActivated(int id, bool activated) {
    const auto network = networks.find(id);
    if (network == networks.end()) {
      return false;
    }
    network->second.activated = activated;
    return true;
  }

  std::string Text() const {
    std::string text = "in " + context;
    for (const auto& [id, network] : networks) {
      text += ", " + std::to_string(id) + " " + network.ssid + " of " + network.context +
              (network.activated ? " up" : " down");
    }
    return text;
  }
};

enum class Answer { None, Success, Refused, Lost };

/// One request: what it does to a router, or false where it is refused; and how it is asked for.
struct Request {
  std::function<bool(Router&)> carryOut;
  std::function<void(sd_bus* bus, Answer& answer)> send;
};

int OnAnswer(sd_bus_message* message, void* answer, sd_bus_error*) {
  const sd_bus_error* error = sd_bus_message_get_error(message);
  *static_cast<Answer*>(answer) = error == nullptr ? Answer::Success
                                  : std::string(error->name).starts_with(Wifi::Bus::kErrorPrefix)
                                      ? Answer::Refused
                                      : Answer::Lost;
  return 0;
}

template <auto Method, typename... Arguments>
void Send(sd_bus* bus, Answer& answer, const Arguments&... arguments) {
  sd_bus_message* message = nullptr;
  Wifi::Bus::CheckMessage(
      sd_bus_message_new_method_call(bus, &message, Wifi::Bus::kBusName, Wifi::Bus::kObjectPath,
                                     Wifi::Bus::InterfaceOf<Method>::name.text, Wifi::Bus::NameOf<Method>()));
  const Wifi::Bus::Message call(message);
  Wifi::Bus::MethodTraits<Method>::ArgumentsCodec::Append(call.get(), arguments...);
  Wifi::Bus::CheckMessage(sd_bus_call_async(bus, nullptr, call.get(), OnAnswer, &answer, 0));
}

class KilledDaemon : public StoryTest {
 protected:
  static constexpr unsigned kSeed = 1;

  int Below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }

  void Start() { StartStory("", {"--model", "Cedar300"}, R"("scanMilliseconds": 1)"); }

  /// Of networks with IDs below `endOfIds`.
  Request AnyRequest(int endOfIds) {
    const int id = Below(endOfIds);
    const std::string ssid = "Net " + std::to_string(Below(8));
    const std::string context = Below(2) == 0 ? "router" : "cellar";
    switch (Below(6)) {
      case 0:
        return {[id](Router& router) { return router.networks.erase(id) == 1; },
                [id](sd_bus* bus, Answer& answer) { Send<&WifiClient::DeleteNetwork>(bus, answer, id); }};
      case 1:
        return {[id](Router& router) { return router.SetActivated(id, true); },
                [id](sd_bus* bus, Answer& answer) {
                  Send<&WifiClientForTopo::Activate>(bus, answer, Wifi::ActivationInfo{id, "br0"});
                }};
      case 2:
        return {[id](Router& router) { return router.SetActivated(id, false); },
                [id](sd_bus* bus, Answer& answer) { Send<&WifiClientForTopo::Deactivate>(bus, answer, id); }};
      case 3:
        return {[context](Router& router) {
                  router.context = context;
                  return true;
                },
                [context](sd_bus* bus, Answer& answer) {
                  Send<&WifiClientForTopo::SetContext>(bus, answer, context);
                }};
      default:
        return {[ssid](Router& router) { return router.Create(ssid); },
                [ssid](sd_bus* bus, Answer& answer) {
                  Send<&WifiClient::CreateNetwork>(bus, answer,
                                                   Wifi::NetworkCreateInfo{ssid, ssid, "correct-horse"});
                }};
    }
  }

  /// Asks for all at once, kills the daemon as soon as some are answered, and returns all answers. Those that
  /// were on their way when it died are among them.
  std::vector<Answer> AskAndKill(const std::vector<Request>& requests, std::size_t answered) {
    std::vector<Answer> answers(requests.size(), Answer::None);
    const Wifi::Bus::BusHandle bus = OpenBus(Address());
    for (std::size_t i = 0; i < requests.size(); ++i) {
      requests[i].send(bus.get(), answers[i]);
    }
    const auto areAnswered = [&](std::size_t count) {
      return [&answers, count] {
        return answers.size() - static_cast<std::size_t>(std::ranges::count(answers, Answer::None)) >= count;
      };
    };
    ProcessBusUntil(bus.get(), -1, "an answer", areAnswered(answered));
    EXPECT_EQ(Daemon().Terminate(SIGKILL), -SIGKILL);
    ProcessBusUntil(bus.get(), -1, "the end of the calls", areAnswered(answers.size()));
    return answers;
  }

  /// What the daemon shows; a failure of the test where settings and radios are at odds.
  std::string Shown() {
    Router router;
    router.context = Call<&WifiClientForTopo::GetContext>();
    std::set<std::string> wanted;
    for (const Wifi::NetworkSetting& network : Call<&WifiClient::GetNetworkSettings>()) {
      router.networks[network.id] = {network.ssid, network.context, network.activated};
      EXPECT_EQ(network.up, network.activated) << network.id;
      EXPECT_EQ(network.radios.size(), 2U);
      for (const Wifi::NetworkRadioSetting& radio : network.radios) {
        EXPECT_EQ(radio.up, network.activated) << radio.interface;
        if (network.activated) {
          wanted.insert(radio.interface);
        }
      }
    }
    std::set<std::string> inTheAir;
    for (const Wifi::RadioIfStatus& radio : Call<&WifiClient::GetRadioIfStatuses>()) {
      inTheAir.insert(radio.enabledInterfaces.begin(), radio.enabledInterfaces.end());
    }
    EXPECT_EQ(inTheAir, wanted);
    return router.Text();
  }

  /// One life of the daemon; `router` is what it starts with and what the next one has to start with.
  void Live(Router& router) {
    std::vector<Request> requests;
    for (int count = 1 + Below(6); count > 0; --count) {
      requests.push_back(AnyRequest(router.nextId + 3));
    }
    const auto answers =
        AskAndKill(requests, static_cast<std::size_t>(Below(static_cast<int>(requests.size()) + 1)));
    std::size_t carriedOut = 0;
    for (; carriedOut < answers.size() && answers[carriedOut] != Answer::Lost; ++carriedOut) {
      EXPECT_EQ(requests[carriedOut].carryOut(router), answers[carriedOut] == Answer::Success);
    }
    EXPECT_EQ(std::find_if(answers.begin() + static_cast<std::ptrdiff_t>(carriedOut), answers.end(),
                           [](Answer answer) { return answer != Answer::Lost; }),
              answers.end());
    Start();
    // Of those that were not answered, the first ones may have been carried out.
    const std::string shown = Shown();
    std::string expected = router.Text();
    for (; router.Text() != shown && carriedOut < requests.size(); ++carriedOut) {
      requests[carriedOut].carryOut(router);
      expected += "\n" + router.Text();
    }
    ASSERT_EQ(router.Text(), shown) << "could be any of\n" << expected;
  }

 private:
  std::mt19937 random_{kSeed};
};

TEST_F(KilledDaemon, LosesNoAnsweredChangeAndLeavesRadiosAsTheStateHasThem) {
  Start();
  Router router;
  for (int life = 1; life <= 100; ++life) {
    SCOPED_TRACE("seed " + std::to_string(kSeed) + ", life " + std::to_string(life));
    Live(router);
    ASSERT_FALSE(HasFailure());
    ASSERT_EQ(Daemon().GetProcess().Errors(), LogOfStart(2));
  }
  EXPECT_GT(router.nextId, 10);
}

}  // namespace

}  // namespace TALO::EndToEnd
