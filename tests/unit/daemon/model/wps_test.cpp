#include "daemon/model/wps.h"

#include "support/print_model.h"
#include "support/routers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace TALO::Wifid {
namespace {

using enum RadioFrequency;
using Wifi::NetworkRadioPair;

/// Every BSS of the networks, up.
std::vector<LiveRadio> AllUp(const State& state, const Capabilities& capabilities) {
  std::vector<LiveRadio> live;
  for (const RadioCapability& capability : capabilities.radios) {
    LiveRadio radio;
    radio.radio = capability.radio;
    radio.up = true;
    for (const NetworkState& network : state.networks) {
      radio.bsss.push_back({network.id, BSSInterface(capability, network.slot), {}, true, {}});
    }
    live.push_back(radio);
  }
  return live;
}

/// A router with two networks on which WPS can be opened everywhere.
struct Router {
  Capabilities capabilities = TriBandRouter();
  State state = HomeState(capabilities);
  std::vector<LiveRadio> live = AllUp(state, capabilities);
  std::optional<std::string> session;

  WPSPicture Picture() const { return {state, capabilities, live, session}; }
};

Router DualBand() {
  Router router;
  router.capabilities = DualBandRouter();
  router.state = HomeState(router.capabilities);
  router.live = AllUp(router.state, router.capabilities);
  return router;
}

template <typename T>
void ExpectRefused(const Result<T>& result, ErrorCode code, const std::string& sentence) {
  SCOPED_TRACE(sentence);
  ASSERT_FALSE(result.Succeeded());
  EXPECT_EQ(result.Why(), (Refusal{code, sentence}));
}

template <typename T>
void ExpectValue(const Result<T>& result, const T& value) {
  ASSERT_TRUE(result.Succeeded()) << result.Why().sentence;
  EXPECT_EQ(result.Value(), value);
}

TEST(DefaultWPSTarget, IsTheLowestActivatedNetworkOn2_4GHz) {
  Router router;
  ExpectValue(DefaultWPSTarget(router.state, router.capabilities), NetworkRadioPair{1, Band2_4GHz});
  router.state.networks[0].activated = false;
  ExpectValue(DefaultWPSTarget(router.state, router.capabilities), NetworkRadioPair{2, Band2_4GHz});
}

TEST(DefaultWPSTarget, IsNotFoundWhereNoNetworkIsActivated) {
  Router router;
  router.state.networks[0].activated = false;
  router.state.networks[1].activated = false;
  ExpectRefused(DefaultWPSTarget(router.state, router.capabilities), ErrorCode::NotFound,
                "there is no activated network to open WPS on");
  router.state.networks.clear();
  ExpectRefused(DefaultWPSTarget(router.state, router.capabilities), ErrorCode::NotFound,
                "there is no activated network to open WPS on");
}

TEST(DefaultWPSTarget, IsNotFoundWithoutA2_4GHzRadio) {
  Router router;
  router.capabilities.radios.erase(router.capabilities.radios.begin());
  ExpectRefused(DefaultWPSTarget(router.state, router.capabilities), ErrorCode::NotFound,
                "this router has no radio Band2_4GHz");
}

TEST(WPSInterface, IsThatOfTheNetworkOnTheRadioThatServesTheBand) {
  struct Row {
    Router router;
    NetworkRadioPair target;
    std::string interface;
  };
  Router swapped;
  swapped.state.backhaulSwapped = true;
  Router single;
  single.capabilities.radios.resize(1);
  const std::vector<Row> rows = {
      {{}, {1, Band2_4GHz}, "wlan0_1"},       {{}, {2, Band2_4GHz}, "wlan0_2"},
      {{}, {1, Band5GHz_1}, "wlan1_1"},       {{}, {2, Band5GHz_2}, "wlan2_2"},
      {{}, {1, Band5GHz}, "wlan1_1"},         {swapped, {1, Band5GHz}, "wlan2_1"},
      {DualBand(), {1, Band5GHz}, "wlan1_1"}, {DualBand(), {1, Band5GHz_2}, "wlan1_1"},
      {single, {1, SmartConnect}, "wlan0_1"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.interface);
    ExpectValue(WPSInterface(row.router.Picture(), row.target), row.interface);
  }
}

TEST(WPSInterface, RefusesTargetsThatAreNotOneBSS) {
  const Router router;
  const Router dual = DualBand();
  ExpectRefused(WPSInterface(router.Picture(), {3, Band2_4GHz}), ErrorCode::NotFound,
                "there is no network 3");
  ExpectRefused(WPSInterface(router.Picture(), {-1, Band2_4GHz}), ErrorCode::NotFound,
                "there is no network -1");
  ExpectRefused(WPSInterface(router.Picture(), {1, RadioFrequency::Error}), ErrorCode::InvalidArgument,
                "the radio Error does not exist");
  ExpectRefused(WPSInterface(router.Picture(), {1, static_cast<RadioFrequency>(5)}),
                ErrorCode::InvalidArgument, "the radio 5 does not exist");
  ExpectRefused(WPSInterface(router.Picture(), {1, SmartConnect}), ErrorCode::InvalidArgument,
                "WPS is for one radio, SmartConnect stands for 3");
  ExpectRefused(WPSInterface(dual.Picture(), {1, SmartConnect}), ErrorCode::InvalidArgument,
                "WPS is for one radio, SmartConnect stands for 2");
}

TEST(WPSInterface, IsNotSupportedOnARadioThatTheRouterLacks) {
  Router router;
  router.capabilities.radios.resize(1);
  ExpectRefused(WPSInterface(router.Picture(), {1, Band5GHz}), ErrorCode::NotSupported,
                "no radio of this router serves the band Band5GHz");
}

TEST(WPSInterface, IsBusyWhileASessionRunsAnywhere) {
  Router router;
  for (const std::string session : {"wlan0_1", "wlan2_2"}) {
    router.session = session;
    ExpectRefused(WPSInterface(router.Picture(), {1, Band2_4GHz}), ErrorCode::Busy,
                  "a WPS session runs on the interface \"" + session + "\"");
  }
}

TEST(WPSInterface, IsNotAllowedOnAHiddenNetwork) {
  Router router;
  router.state.networks[1].hidden = true;
  ExpectRefused(WPSInterface(router.Picture(), {2, Band2_4GHz}), ErrorCode::NotAllowed,
                "network 2 is hidden, which excludes WPS");
  ExpectValue(WPSInterface(router.Picture(), {1, Band2_4GHz}), std::string("wlan0_1"));
}

TEST(WPSInterface, NeedsASecurityModeWithWPA2Personal) {
  struct Row {
    SecurityMode mode;
    std::string refusal;  ///< empty where WPS may be opened
  };
  const std::string after = " of network 1 excludes WPS, which needs WPA2 personal";
  const std::vector<Row> rows = {
      {SecurityMode::Error, "the security mode Error" + after},
      {SecurityMode::Disabled, "the security mode Disabled" + after},
      {SecurityMode::OWE, "the security mode OWE" + after},
      {SecurityMode::WEP, "the security mode WEP" + after},
      {SecurityMode::PersonalWPA, "the security mode PersonalWPA" + after},
      {SecurityMode::PersonalWPA2, ""},
      {SecurityMode::PersonalWPA3, "the security mode PersonalWPA3" + after},
      {SecurityMode::PersonalWPAMixed, ""},
      {SecurityMode::PersonalWPA2_3Mixed, ""},
      {SecurityMode::EnterpriseWPA, "the security mode EnterpriseWPA" + after},
      {SecurityMode::EnterpriseWPA2, "the security mode EnterpriseWPA2" + after},
      {SecurityMode::EnterpriseWPA3, "the security mode EnterpriseWPA3" + after},
      {SecurityMode::EnterpriseWPAMixed, "the security mode EnterpriseWPAMixed" + after},
      {static_cast<SecurityMode>(12), "the security mode 12" + after},
  };
  Router router;
  for (const Row& row : rows) {
    SCOPED_TRACE(static_cast<int>(row.mode));
    router.state.networks[0].securityMode = row.mode;
    if (row.refusal.empty()) {
      ExpectValue(WPSInterface(router.Picture(), {1, Band2_4GHz}), std::string("wlan0_1"));
    } else {
      ExpectRefused(WPSInterface(router.Picture(), {1, Band2_4GHz}), ErrorCode::NotAllowed, row.refusal);
    }
  }
}

TEST(WPSInterface, FailsWhereTheBSSIsNotUp) {
  const std::string sentence = "network 1 is not up on the radio Band2_4GHz, WPS cannot be opened there";
  Router down;
  down.live[0].bsss[0].up = false;
  ExpectRefused(WPSInterface(down.Picture(), {1, Band2_4GHz}), ErrorCode::RadioFailed, sentence);
  ExpectValue(WPSInterface(down.Picture(), {1, Band5GHz_1}), std::string("wlan1_1"));
  ExpectValue(WPSInterface(down.Picture(), {2, Band2_4GHz}), std::string("wlan0_2"));

  Router missing;
  missing.live[0].bsss.erase(missing.live[0].bsss.begin());
  ExpectRefused(WPSInterface(missing.Picture(), {1, Band2_4GHz}), ErrorCode::RadioFailed, sentence);
  missing.live.clear();
  ExpectRefused(WPSInterface(missing.Picture(), {1, Band2_4GHz}), ErrorCode::RadioFailed, sentence);
}

TEST(WPSInterface, SaysTheFirstReasonOfSeveral) {
  Router router;
  router.live.clear();
  router.state.networks[0].securityMode = SecurityMode::OWE;
  router.state.networks[0].hidden = true;
  router.session = "wlan0_2";
  ExpectRefused(WPSInterface(router.Picture(), {1, SmartConnect}), ErrorCode::InvalidArgument,
                "WPS is for one radio, SmartConnect stands for 3");
  ExpectRefused(WPSInterface(router.Picture(), {1, Band2_4GHz}), ErrorCode::Busy,
                "a WPS session runs on the interface \"wlan0_2\"");
  router.session.reset();
  ExpectRefused(WPSInterface(router.Picture(), {1, Band2_4GHz}), ErrorCode::NotAllowed,
                "network 1 is hidden, which excludes WPS");
  router.state.networks[0].hidden = false;
  ExpectRefused(WPSInterface(router.Picture(), {1, Band2_4GHz}), ErrorCode::NotAllowed,
                "the security mode OWE of network 1 excludes WPS, which needs WPA2 personal");
}

TEST(CheckWPSConnected, SucceedsOnTheInterfaceOfTheSession) {
  Router router;
  router.session = "wlan2_2";
  const auto check = CheckWPSConnected(router.Picture(), "wlan2_2");
  EXPECT_TRUE(check.Succeeded());
}

TEST(CheckWPSConnected, IsNotAllowedWhereNoSessionRuns) {
  Router router;
  ExpectRefused(CheckWPSConnected(router.Picture(), "wlan0_1"), ErrorCode::NotAllowed,
                "no WPS session runs on the interface \"wlan0_1\"");
  router.session = "wlan0_2";
  ExpectRefused(CheckWPSConnected(router.Picture(), "wlan0_1"), ErrorCode::NotAllowed,
                "no WPS session runs on the interface \"wlan0_1\"");
}

TEST(CheckWPSConnected, IsNotFoundForAnInterfaceOfNoNetwork) {
  Router router;
  struct Row {
    std::string interface;
    std::string quoted;
  };
  // The radio's own, the backhaul's, a slot without a network, letter case, nothing, and a line of its own.
  const std::vector<Row> rows = {
      {"wlan0", "\"wlan0\""},
      {"wlan0_0", "\"wlan0_0\""},
      {"wlan0_3", "\"wlan0_3\""},
      {"wlan3_1", "\"wlan3_1\""},
      {"WLAN0_1", "\"WLAN0_1\""},
      {"", "\"\""},
      {"wlan0_1\n", "\"wlan0_1\\x0a\""},
  };
  for (const Row& row : rows) {
    router.session = row.interface;
    ExpectRefused(CheckWPSConnected(router.Picture(), row.interface), ErrorCode::NotFound,
                  "no network has the interface " + row.quoted);
  }
}

struct RegistrarRow {
  Wifi::WPS_ERConfigInput input;
  ErrorCode code;
  std::string sentence;
};

TEST(CheckRegistrarInput, TakesWhatTheModeNeeds) {
  const std::vector<Wifi::WPS_ERConfigInput> inputs = {
      {"wlan0_1", "Home", "12345678", "PersonalWPA"},
      {"wlan0_2", "Home", "12345678", "PersonalWPA2"},
      {"wlan1_1", "Home", "12345678", "PersonalWPA3"},
      {"wlan2_2", "Home", "12345678", "PersonalWPAMixed"},
      {"wlan2_1", "Home", std::string(63, 'k'), "PersonalWPA2_3Mixed"},
      {"wlan2_1", "Home", std::string(64, 'a'), "PersonalWPA2_3Mixed"},
      {"wlan2_1", "\xFF", "", "Disabled"},
      {"wlan2_1", std::string(32, 's'), "", "OWE"},
  };
  const Router router;
  for (const auto& input : inputs) {
    SCOPED_TRACE(input.mode);
    const auto check = CheckRegistrarInput(router.state, router.capabilities, input);
    EXPECT_TRUE(check.Succeeded()) << check.Why().sentence;
  }
}

TEST(CheckRegistrarInput, RefusesWhatARegistrarCannotHandOut) {
  const std::string length = " characters, it must have 8 to 63, or 64 hexadecimal digits";
  const std::vector<RegistrarRow> rows = {
      {{"wlan0", "Home", "12345678", "PersonalWPA2"},
       ErrorCode::NotFound,
       "no network has the interface \"wlan0\""},
      {{"wlan0_1", "", "12345678", "PersonalWPA2"},
       ErrorCode::InvalidArgument,
       "the SSID \"\" has 0 bytes, it must have 1 to 32"},
      {{"wlan0_1", std::string(33, 's'), "12345678", "PersonalWPA2"},
       ErrorCode::InvalidArgument,
       "the SSID \"" + std::string(33, 's') + "\" has 33 bytes, it must have 1 to 32"},
      {{"wlan0_1", "Home", "", "PersonalWPA2"}, ErrorCode::InvalidArgument, "the passphrase has 0" + length},
      {{"wlan0_1", "Home", "1234567", "PersonalWPA"},
       ErrorCode::InvalidArgument,
       "the passphrase has 7" + length},
      {{"wlan0_1", "Home", std::string(64, 'k'), "PersonalWPA2_3Mixed"},
       ErrorCode::InvalidArgument,
       "a passphrase of 64 characters must be hexadecimal digits, this one is not"},
      {{"wlan0_1", "Home", std::string(65, 'a'), "PersonalWPA3"},
       ErrorCode::InvalidArgument,
       "the passphrase has 65" + length},
      {{"wlan0_1", "Home", "1234567\n", "PersonalWPA3"},
       ErrorCode::InvalidArgument,
       "the passphrase holds a character that is not printable ASCII"},
      {{"wlan0_1", "Home", "12345678", "Disabled"},
       ErrorCode::InvalidArgument,
       "the security mode \"Disabled\" takes no key"},
      {{"wlan0_1", "Home", "k", "OWE"}, ErrorCode::InvalidArgument, "the security mode \"OWE\" takes no key"},
  };
  const Router router;
  for (const RegistrarRow& row : rows) {
    ExpectRefused(CheckRegistrarInput(router.state, router.capabilities, row.input), row.code, row.sentence);
  }
}

TEST(CheckRegistrarInput, RefusesModesThatAreNotForARegistrar) {
  const Router router;
  for (const std::string mode : {"", "Error", "WEP", "EnterpriseWPA", "EnterpriseWPA2", "EnterpriseWPA3",
                                 "EnterpriseWPAMixed", "personalWPA2", "PersonalWPA2 ", "4"}) {
    for (const std::string key : {"", "12345678"}) {
      ExpectRefused(CheckRegistrarInput(router.state, router.capabilities, {"wlan0_1", "Home", key, mode}),
                    ErrorCode::InvalidArgument,
                    "a registrar cannot be given the security mode \"" + mode + "\"");
    }
  }
  ExpectRefused(CheckRegistrarInput(router.state, router.capabilities, {"wlan0_1", "Home", "", "WPA\n2"}),
                ErrorCode::InvalidArgument, "a registrar cannot be given the security mode \"WPA\\x0a2\"");
}

}  // namespace
}  // namespace TALO::Wifid
