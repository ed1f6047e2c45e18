#pragma once

#include "client/service_records.h"
#include "client/station_records.h"
#include "daemon/model/capabilities.h"
#include "daemon/model/live.h"
#include "daemon/model/plan.h"
#include "daemon/model/result.h"
#include "daemon/radio/radio_events.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// What applying a plan may leave alone.
enum class ApplyMode {
  WhatDiffers,  ///< the smallest change: what is as planned is not touched, and keeps its stations
  Everything,   ///< every BSS goes down and comes up again; upstream connections stay
};

/// The door to the radios. Every operation returns at once. One that takes time calls `done` later, on the
/// event loop, exactly once and never from inside the call; what a driver cannot do fails with NotSupported
/// and a sentence. Calls on different radios may be under way at once; on one radio the caller waits for
/// `done` before it calls Apply, Scan or Reconnect again, which fail with Busy else. The events of what an
/// operation did come before its `done`. Questions answer from memory.
class RadioDriver {
 public:
  /// Failures are RadioFailed unless said otherwise, with a sentence that names the radio and the reason.
  using Done = std::function<void(Result<void>)>;
  using ScanDone = std::function<void(Result<std::vector<Wifi::ScanResult>>)>;
  using EventSink = std::function<void(const RadioEvent&)>;

  virtual ~RadioDriver() = default;

  /// Where events go from now on. Never called from inside another call of this interface.
  virtual void SetEventSink(EventSink sink) = 0;

  /// Fixed from construction on.
  virtual const Capabilities& GetCapabilities() const = 0;

  /// The bridges that exist now.
  virtual std::set<std::string> GetBridges() const = 0;

  /// The other nodes of the mesh, empty where no mesh is known.
  virtual std::vector<MeshNode> GetMeshNodes() const = 0;

  /// Brings one radio to its plan. On success all BSSs are as planned; stations and the radio's own upstream
  /// connections follow in the background. On failure the radio may be anywhere between, and the caller
  /// applies the plan before; BSSs that both plans have alike were not touched, unless all of the radio had
  /// to go down. A plan that the radio cannot carry out (a channel that it does not have or that the country
  /// does not allow, a bridge that does not exist) fails before anything is touched.
  ///
  /// The smallest change follows from what differs between this plan and what the radio reached last:
  /// - channel, channelWidth, enable: the whole radio goes down and up;
  /// - country: the same where it does not allow the channel in use, or gives it another width; else nobody
  ///   notices;
  /// - transmitPower, broadcastLimit, station, backhaulStation: no station of any BSS notices;
  /// - of a BSS, which its interface identifies, networkId, bssid, ssid, securityMode: it goes down and up;
  /// - its passphrase: it stays up and drops whoever used the old one, and nobody returns by a key that is
  ///   still cached;
  /// - its access: it drops those whom it does not admit any more;
  /// - its hidden or bridge: nobody notices;
  ///   where the hardware's programs cannot do one of these three in place, the BSS goes down and up;
  /// - BSSs that are new or gone come up and go down beside the others.
  /// So no change of one BSS drops a station of another.
  ///
  /// The country may be one for all radios of a machine. Whoever changes it applies every radio's plan, and a
  /// driver sets it before anything else of the first plan that has it, asks anew which channels there are,
  /// and lets the radios whose plan is still to come go on as they are.
  virtual void Apply(const RadioPlan& plan, ApplyMode mode, Done done) = 0;

  /// What is in the air now, one entry a radio in the order of the capabilities.
  virtual std::vector<LiveRadio> GetLive() const = 0;

  /// Listens on one radio, which must be up. Results no older than 10 seconds are given again without
  /// listening. The router's own BSSs are not among them.
  virtual void Scan(RadioFrequency radio, ScanDone done) = 0;

  /// Drops and rejoins the radio's upstream connections; joining goes on in the background after `done`. A
  /// station whose scan type lets it not look rejoins the access point it had. Succeeds where there is none.
  virtual void Reconnect(RadioFrequency radio, Done done) = 0;

  /// Opens WPS push button on a BSS that is up (RadioFailed else). It ends by a WPSFinished event: after an
  /// enrollee, after 120 seconds, when two enrollees overlap, or when cancelled, as by the BSS going down.
  /// NotSupported for a security mode without WPS and
  /// a BSS that is hidden or the backhaul's where the driver cannot open it there, Busy while a session runs.
  virtual void StartWPS(const std::string& interface, Done done) = 0;

  /// Ends the session of an interface. NotAllowed where none runs.
  virtual void CancelWPS(const std::string& interface, Done done) = 0;

  /// Hands SSID, key and mode to the external registrar on an interface. NotSupported for an interface that
  /// has none.
  virtual void ConfigureRegistrar(const Wifi::WPS_ERConfigInput& input, Done done) = 0;
};

}  // namespace TALO::Wifid
