#include "daemon/model/stations.h"

#include "support/routers.h"

#include <gtest/gtest.h>

#include <vector>

namespace TALO::Wifid {

namespace {

using enum SecurityMode;
using Wifi::StationSetting;
using Wifi::Util::MACAddress;

StationSetting Upstream(SecurityMode mode = PersonalWPA2, const std::string& user = "",
                        const std::string& password = "upstream password") {
  return {true, "Upstream", user, password, MACAddress(), mode, RadioFrequency::Band5GHz_1};
}

StationSetting With(void (*change)(StationSetting&)) {
  StationSetting setting = Upstream();
  change(setting);
  return setting;
}

State FirstState() { return StateWithNetworks(TriBandRouter(), 1); }

TEST(StationOfARadio, HasInterfacesOfItsOwn) {
  EXPECT_EQ(StationInterface(TriBandRouter().radios[1]), "wlan1sta");
  EXPECT_EQ(BackhaulStationInterface(TriBandRouter().radios[2]), "wlan2bhs");
}

TEST(ModifyStation, ReplacesTheSettingOfItsRadio) {
  State expected = FirstState();
  expected.stations[1] = Upstream();
  EXPECT_EQ(StateAfter(ModifyStation(FirstState(), TriBandRouter(), Upstream())), expected);
}

TEST(ModifyStation, TakesEverySettingWithinTheLimits) {
  const std::string key = "0123456789abcdefABCDEF0123456789abcdef0123456789abcdef0123456789";
  const std::vector<StationSetting> settings = {
      Upstream(Disabled, "", ""),
      Upstream(OWE, "", ""),
      Upstream(PersonalWPA),
      Upstream(PersonalWPA2),
      Upstream(PersonalWPA3),
      Upstream(PersonalWPAMixed),
      Upstream(PersonalWPA2_3Mixed),
      Upstream(EnterpriseWPA, "u", "p"),
      Upstream(EnterpriseWPA2, std::string(253, 'u'), std::string(253, 'p')),
      Upstream(EnterpriseWPA3, "user", "short"),
      Upstream(EnterpriseWPAMixed, "user", std::string("any\0byte\xFF", 9)),
      Upstream(PersonalWPA2, "", "eight888"),
      Upstream(PersonalWPA2, "", std::string(63, ' ')),
      Upstream(PersonalWPA2, "", key),
      With([](StationSetting& s) { s.essid = "x"; }),
      With([](StationSetting& s) { s.essid = std::string(32, '\0'); }),
      With([](StationSetting& s) { s.essid = "ssid1"; }),  // as a repeater that spreads its parent's network
      With([](StationSetting& s) { s.bssid = MACAddress("fe:ff:ff:ff:ff:ff"); }),
      With([](StationSetting& s) { s.enable = false; }),
      With([](StationSetting& s) {
        s.enable = false;
        s.essid = "";
      }),
  };
  for (const StationSetting& setting : settings) {
    State expected = FirstState();
    expected.stations[1] = setting;
    EXPECT_EQ(StateAfter(ModifyStation(FirstState(), TriBandRouter(), setting)), expected);
  }
}

struct BadSetting {
  StationSetting setting;
  std::string sentence;
};

const std::string kPassphraseSize = " characters, it must have 8 to 63, or 64 hexadecimal digits";

std::vector<BadSetting> BadRadiosAndNames() {
  return {
      {With([](StationSetting& s) { s.radio = RadioFrequency::SmartConnect; }),
       "this router has no radio SmartConnect for a station"},
      {With([](StationSetting& s) { s.radio = RadioFrequency::Error; }),
       "this router has no radio Error for a station"},
      {With([](StationSetting& s) { s.radio = RadioFrequency::Band5GHz; }),
       "this router has no radio Band5GHz for a station"},
      {With([](StationSetting& s) { s.radio = RadioFrequency{5}; }),
       "this router has no radio 5 for a station"},
      {With([](StationSetting& s) { s.essid = ""; }), "the essid \"\" has 0 bytes, it must have 1 to 32"},
      {With([](StationSetting& s) { s.essid = std::string(33, 'e'); }),
       "the essid \"" + std::string(33, 'e') + "\" has 33 bytes, it must have 1 to 32"},
      {With([](StationSetting& s) {
         s.enable = false;
         s.essid = std::string(33, 'e');
       }),
       "the essid \"" + std::string(33, 'e') + "\" has 33 bytes, it must have 1 to 32"},
      {With([](StationSetting& s) { s.bssid = MACAddress("ff:ff:ff:ff:ff:ff"); }),
       "the BSSID ff:ff:ff:ff:ff:ff is a group address"},
      {With([](StationSetting& s) { s.bssid = MACAddress("01:00:5E:00:00:01"); }),
       "the BSSID 01:00:5e:00:00:01 is a group address"},
      {With([](StationSetting& s) {
         s.enable = false;
         s.bssid = MACAddress("ff:ff:ff:ff:ff:ff");
       }),
       "the BSSID ff:ff:ff:ff:ff:ff is a group address"},
  };
}

std::vector<BadSetting> BadCredentials() {
  const std::string tooLong(254, 'x');
  return {
      {Upstream(SecurityMode::Error), "a station cannot use the security mode Error"},
      {Upstream(WEP), "a station cannot use the security mode WEP"},
      {Upstream(SecurityMode{12}), "a station cannot use the security mode 12"},
      {Upstream(Disabled), "the security mode Disabled takes no password"},
      {Upstream(OWE), "the security mode OWE takes no password"},
      {Upstream(Disabled, "bob", ""), "the user \"bob\" is for enterprise modes, not for Disabled"},
      {Upstream(PersonalWPA2, "bob\n"),
       "the user \"bob\\x0a\" is for enterprise modes, not for PersonalWPA2"},
      {Upstream(PersonalWPA2, "", ""), "the passphrase has 0" + kPassphraseSize},
      {Upstream(PersonalWPA2, "", "seven77"), "the passphrase has 7" + kPassphraseSize},
      {Upstream(PersonalWPA3, "", std::string(65, 'a')), "the passphrase has 65" + kPassphraseSize},
      {Upstream(PersonalWPAMixed, "", std::string(64, 'g')),
       "a passphrase of 64 characters must be hexadecimal digits, this one is not"},
      {Upstream(PersonalWPA2, "", "tab\tulator"),
       "the passphrase holds a character that is not printable ASCII"},
      {Upstream(EnterpriseWPA, "", "password"),
       "the security mode EnterpriseWPA needs a user and a password"},
      {Upstream(EnterpriseWPA3, "bob", ""), "the security mode EnterpriseWPA3 needs a user and a password"},
      {Upstream(EnterpriseWPA2, tooLong, "p"),
       "the user has 254 bytes and the password 1, neither may have more than 253"},
      {Upstream(EnterpriseWPA2, "u", tooLong),
       "the user has 1 bytes and the password 254, neither may have more than 253"},
  };
}

TEST(ModifyStation, RefusesRadiosNamesAndAddressesThatCannotBe) {
  for (const auto& [setting, sentence] : BadRadiosAndNames()) {
    EXPECT_EQ(WhyNot(ModifyStation(FirstState(), TriBandRouter(), setting)),
              (Refusal{ErrorCode::InvalidArgument, sentence}));
  }
}

TEST(ModifyStation, RefusesToEnableOneOnARadioThatHasNoChannel) {
  Capabilities router = TriBandRouter();
  router.radios[2].findsRadars = false;
  Wifi::StationSetting setting = Upstream();
  setting.radio = RadioFrequency::Band5GHz_2;
  EXPECT_EQ(WhyNot(ModifyStation(FirstState(), router, setting)),
            (Refusal{ErrorCode::NotSupported,
                     "the radio Band5GHz_2 cannot look out for radars (DFS), which all of its channels take "
                     "in the country DE"}));
  setting.enable = false;
  EXPECT_TRUE(ModifyStation(FirstState(), router, setting).Succeeded());
}

TEST(ModifyStation, RefusesCredentialsThatDoNotFitTheSecurityMode) {
  for (const auto& [setting, sentence] : BadCredentials()) {
    EXPECT_EQ(WhyNot(ModifyStation(FirstState(), TriBandRouter(), setting)),
              (Refusal{ErrorCode::InvalidArgument, sentence}));
  }
}

TEST(ModifyStation, ChecksTheCredentialsOfOneThatIsNotEnabledToo) {
  for (auto [setting, sentence] : BadCredentials()) {
    setting.enable = false;
    EXPECT_EQ(WhyNot(ModifyStation(FirstState(), TriBandRouter(), setting)),
              (Refusal{ErrorCode::InvalidArgument, sentence}));
  }
}

}  // namespace

}  // namespace TALO::Wifid
