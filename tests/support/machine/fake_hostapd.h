#pragma once

#include "support/machine/fake_bss.h"
#include "support/machine/fake_files.h"
#include "support/machine/fake_kernel.h"
#include "support/machine/fake_program.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// hostapd as far as its global control socket goes: radios and BSSs come by ADD and go by REMOVE, the first
/// of a phy is the radio. Devices join its BSSs a moment after they can.
class FakeHostapd final : public FakeProgram {
 public:
  static constexpr Timers::Duration kTimeToJoin{300};

  FakeHostapd(Timers& timers, FakeSockets& sockets, FakeKernel& kernel, const FakeFiles& files)
      : FakeProgram(timers, sockets), kernel_(kernel), files_(files) {}

  /// Those of a phy, the radio's own first; empty where it has none.
  std::vector<std::string> GetBSSs(const std::string& phy) const;
  bool HasBSS(const std::string& interface) const { return FindBSS(interface) != nullptr; }
  /// One that is there.
  FakeBSS& BSSOf(const std::string& interface) { return *FindBSS(interface); }

  /// A device presses its button at an open push button session, or two do.
  void PressButton(const std::string& interface);
  void PressTwoButtons(const std::string& interface);
  /// The hardware takes an interface away.
  void LoseInterface(const std::string& interface);
  void TellOf(const std::string& interface, const std::string& message);
  /// A device comes near.
  FakeDevice& Bring(FakeDevice device);
  void Leave(FakeDevice& device);

  std::vector<std::unique_ptr<FakeDevice>> devices;
  int addedBSSs = 0;  ///< since the start, the radios' own included

 private:
  struct Entry {
    std::string interface;
    std::unique_ptr<FakeBSS> bss;
  };
  /// The BSSs of a phy, the radio's own first.
  using Radio = std::vector<Entry>;

  std::string Obey(const std::string& request) override;
  void Forget() override;
  std::string Add(const std::string& phy, const std::string& path);
  std::string AddRadio(const Wiphy& wiphy, const FakeBSSFile& file);
  std::string AddTo(const Wiphy& wiphy, Radio& radio, const FakeBSSFile& file);
  std::string Refuse(const std::string& why);
  std::string Remove(const std::string& interface);
  void Take(Radio& radio, const FakeBSSFile& file);
  void Clear(const std::string& interface);
  void Drop(const std::string& interface, const Wifi::Util::MACAddress& station);
  void LetDevicesJoin();
  void EndPushButtonLater(const std::string& interface);
  FakeBSS* FindBSS(const std::string& interface) const;
  std::set<Wifi::Util::MACAddress> ReadList(const std::string& path) const;

  FakeKernel& kernel_;
  const FakeFiles& files_;
  std::map<std::string, Radio> radios_;
};

}  // namespace TALO::Wifid
