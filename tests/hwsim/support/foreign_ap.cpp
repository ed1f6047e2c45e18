#include "hwsim/support/foreign_ap.h"

#include "hwsim/support/client.h"
#include "hwsim/support/waiting.h"
#include "support/files.h"

namespace TALO::Hwsim {

ForeignAP::ForeignAP(const NetworkNamespace& host, const std::string& interface,
                     const ForeignAPSetup& setup) {
  const std::string config = directory_ / "hostapd.conf";
  WriteFile(config, "interface=" + interface + "\nctrl_interface=" + directory_ / "control" +
                        (setup.channel > 14 ? "\nhw_mode=a" : "\nhw_mode=g") +
                        "\nchannel=" + std::to_string(setup.channel) + "\nssid2=" + Hexadecimal(setup.ssid) +
                        "\nwpa=2\nrsn_pairwise=CCMP\nwpa_passphrase=" + setup.passphrase +
                        "\nwpa_key_mgmt=WPA-PSK\n" +
                        (setup.bridge.empty() ? "" : "bridge=" + setup.bridge + "\n") + setup.more);
  hostapd_ = std::make_unique<EndToEnd::Process>(
      Logged(host.Name() + "-hostapd", host.Inside({"hostapd", "-t", config})));
  control_ = std::make_unique<ControlSocket>(directory_ / "control/" + interface);
  WaitUntil("the access point " + setup.ssid + " is in the air",
            [&] { return control_->Ask("STATUS").starts_with("state=ENABLED\n"); });
}

std::string ForeignAP::Address() {
  const std::string config = control_->Ask("GET_CONFIG");
  const std::string key = "bssid=";
  const std::size_t begin = config.find(key) + key.size();
  return config.substr(begin, config.find('\n', begin) - begin);
}

bool ForeignAP::Has(const std::string& station) {
  return control_->Ask("STA " + station).find("[AUTHORIZED]") != std::string::npos;
}

}  // namespace TALO::Hwsim
