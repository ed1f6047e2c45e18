#include "daemon/model/country.h"
#include "daemon/model/mesh.h"
#include "daemon/model/topology.h"
#include "daemon/service/handlers.h"
#include "daemon/service/service.h"

namespace TALO::Wifid {

using Wifi::WifiClientForMesh;
using Wifi::WifiClientForTopo;

void Service::HandleMesh() {
  Engine& engine = parts_.engine;
  // Stations stay wherever the change allows it, asked for or not: an unchanged BSS is not touched.
  mesh_.Handle<&WifiClientForMesh::ModifyBackhaul>(
      [&engine](const Wifi::BackhaulConfig& config, bool, auto respond) {
        engine.Make<void>([config](const State& state) { return ModifyBackhaul(state, config); }, respond);
      });
  mesh_.Handle<&WifiClientForMesh::GetBackhaulSetting>(AnswerWith(engine, BackhaulSettingOf));
  mesh_.Handle<&WifiClientForMesh::GetBackhaulInterfaces>(AnswerWith(engine, BackhaulInterfaces));
  mesh_.Handle<&WifiClientForMesh::ModifyBackhaulSTA>(MakeWith(engine, ModifyBackhaulSTA));
  mesh_.Handle<&WifiClientForMesh::GetBackhaulSTASetting>(AnswerWith(engine, BackhaulSTASettingOf));
  mesh_.Handle<&WifiClientForMesh::GetBackhaulSTAInterfaces>(AnswerWith(engine, BackhaulSTAInterfaces));
  mesh_.Handle<&WifiClientForMesh::GetBackhaulSTAStatuses>(AnswerWith(engine, BackhaulSTAStatuses));
  mesh_.Handle<&WifiClientForMesh::EnableScan>(MakeWith(engine, EnableScan));
  mesh_.Handle<&WifiClientForMesh::ModifyMeshInfo>(MakeWith(engine, ModifyMeshInfo));
  mesh_.Handle<&WifiClientForMesh::SwapBackhaulBand>(
      MakeWith(engine, [&engine](const State& state, bool swap) {
        return SwapBackhaulBand(state, engine.GetCapabilities(), swap);
      }));
  mesh_.Handle<&WifiClientForMesh::IsBackhaulBandSwapped>(AnswerWithState(engine, &State::backhaulSwapped));
  mesh_.Handle<&WifiClientForMesh::IsWifiAdjustNeeded>(AnswerWith(engine, [](const Picture& picture) {
    return IsWifiAdjustNeeded(picture.state, picture.capabilities, picture.live);
  }));
  mesh_.Handle<&WifiClientForMesh::GetRemoteCountryCodeCapability>(
      [&engine](const std::string& serial, SupportedModel model, auto respond) {
        respond(RemoteCountryCapability(engine.GetDoors().driver.GetMeshNodes(), serial, model));
      });
}

void Service::HandleTopology() {
  Engine& engine = parts_.engine;
  topology_.Handle<&WifiClientForTopo::GetContext>(AnswerWithState(engine, &State::context));
  topology_.Handle<&WifiClientForTopo::SetContext>(MakeWith(engine, SetContext));
  topology_.Handle<&WifiClientForTopo::GetIdsForTopo>([&engine](const std::string& context, auto respond) {
    respond(IdsForTopo(engine.GetState(), context));
  });
  topology_.Handle<&WifiClientForTopo::GetActivatedIdsForTopo>(
      [&engine](auto respond) { respond(ActivatedIds(engine.GetState())); });
  topology_.Handle<&WifiClientForTopo::GetInterfacesForTopo>(AnswerWith(engine, NetworkInterfaces));
  topology_.Handle<&WifiClientForTopo::Activate>(
      MakeWith(engine, [&engine](const State& state, const Wifi::ActivationInfo& activation) {
        return Activate(state, activation, engine.GetDoors().driver.GetBridges());
      }));
  topology_.Handle<&WifiClientForTopo::Deactivate>(MakeWith(engine, Deactivate));
}

}  // namespace TALO::Wifid
