#pragma once

#include "daemon/radio/linux/country_keeper.h"
#include "daemon/radio/linux/doors.h"
#include "daemon/radio/linux/linux_radio.h"
#include "daemon/radio/linux/program.h"
#include "daemon/radio/linux/push_button.h"
#include "daemon/radio/linux/secrets.h"
#include "daemon/radio/own_timers.h"
#include "daemon/radio/radio_driver.h"

#include <memory>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

namespace TALO::Wifid {

/// How the driver for real radios is set up.
struct LinuxSetup {
  SupportedModel model = SupportedModel::Error;
  std::string radios = {};                              ///< see ReadRadioMap()
  std::string bridge = "br0";                           ///< of the backhaul
  std::string hostapd = "/usr/sbin/hostapd";            ///< the program
  std::string supplicant = "/usr/sbin/wpa_supplicant";  ///< likewise
};

/// Real radios: hostapd and wpa_supplicant, which it starts and keeps running, and the kernel. Access points
/// are hostapd's, stations wpa_supplicant's; each radio's own interface holds the radio and never sends, so
/// that BSSs come and go without one another. It knows no mesh, has no external registrar and does not limit
/// broadcasts.
class LinuxDriver final : public RadioDriver {
 public:
  /// Takes away what a daemon before has left on the radios. Throws std::runtime_error with a sentence when
  /// the hardware does not carry the model's radios.
  LinuxDriver(const LinuxSetup& setup, const LinuxDoors& doors);
  LinuxDriver(const LinuxDriver&) = delete;
  LinuxDriver& operator=(const LinuxDriver&) = delete;
  /// Nothing of it stays on the radios.
  ~LinuxDriver() override;

  void SetEventSink(EventSink sink) override { sink_ = std::move(sink); }
  const Capabilities& GetCapabilities() const override { return capabilities_; }
  std::set<std::string> GetBridges() const override;
  std::vector<MeshNode> GetMeshNodes() const override { return {}; }
  void Apply(const RadioPlan& plan, ApplyMode mode, Done done) override;
  std::vector<LiveRadio> GetLive() const override;
  void Scan(RadioFrequency radio, ScanDone done) override;
  void Reconnect(RadioFrequency radio, Done done) override;
  void StartWPS(const std::string& interface, Done done) override;
  void CancelWPS(const std::string& interface, Done done) override;
  void ConfigureRegistrar(const Wifi::WPS_ERConfigInput& input, Done done) override;

 private:
  void TakeHardware(const LinuxSetup& setup);
  void CleanUp();
  void Tell(const RadioEvent& event);
  template <typename... Arguments>
  void ToRadios(void (LinuxRadio::*call)(Arguments...), std::type_identity_t<Arguments>... arguments);
  Program::Sinks HostapdSinks();
  Program::Sinks SupplicantSinks();
  void Later(std::function<void()> action) { timers_.After(Timers::Duration(0), std::move(action)); }
  LinuxRadio* FindRadio(RadioFrequency radio);
  /// Wraps an answer so that it comes later, after the events of what it answers.
  Done Answering(Done done);
  /// The radio, busy until the wrapped answer comes; nothing where it is not there or is busy already.
  LinuxRadio* Occupy(RadioFrequency radio, const std::function<void(Refusal)>& refuse);
  void Release(RadioFrequency radio) { busy_.erase(radio); }
  const BSSPlan* FindBSS(const std::string& interface) const;

  LinuxDoors doors_;
  Capabilities capabilities_;
  std::set<std::string> made_;  ///< the radios' own interfaces that are none of the machine's
  EventSink sink_;
  Secrets secrets_;
  std::set<RadioFrequency> busy_;
  // In the order of their making: each uses those before it.
  OwnTimers timers_;
  Program hostapd_;
  Program supplicant_;
  CountryKeeper country_;
  PushButton wps_;
  std::vector<std::unique_ptr<LinuxRadio>> radios_;
};

}  // namespace TALO::Wifid
