#include "daemon/model/country.h"
#include "support/service_test.h"

#include <set>
#include <string>

namespace TALO::Wifid {

namespace {

using Wifi::WifiClient;
using Wifi::WifiClientForMesh;
using Wifi::WifiClientForTopo;

class MeshServices : public ServiceTest {
 protected:
  Picture Now() const { return {engine_->GetState(), driver_.GetCapabilities(), live_}; }

  std::vector<LiveRadio> live_;
};

TEST_F(MeshServices, SetUpTheBackhaul) {
  const Wifi::BackhaulConfig config{true, "Mesh", "mesh-passphrase"};
  EXPECT_EQ(ErrorOfCall<&WifiClientForMesh::ModifyBackhaul>(config, true), "none");
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2", "apply Band5GHz_2: 0 1 2"}));
  EXPECT_EQ(engine_->GetState().backhaul, config);
  EXPECT_EQ(Value<&WifiClientForMesh::GetBackhaulSetting>(), BackhaulSettingOf(Now()));
  EXPECT_EQ(Value<&WifiClientForMesh::GetBackhaulInterfaces>(), BackhaulInterfaces(Now()));

  const Wifi::BackhaulConfig station{true, "Parent", "mesh-passphrase"};
  EXPECT_EQ(ErrorOfCall<&WifiClientForMesh::ModifyBackhaulSTA>(station), "none");
  EXPECT_EQ(engine_->GetState().backhaulSTA, station);
  EXPECT_EQ(Value<&WifiClientForMesh::GetBackhaulSTASetting>(), BackhaulSTASettingOf(Now()));
  EXPECT_EQ(Value<&WifiClientForMesh::GetBackhaulSTAInterfaces>(), BackhaulSTAInterfaces(Now()));
  EXPECT_EQ(ErrorOfCall<&WifiClientForMesh::EnableScan>(ScanType::BestAP), "none");
  EXPECT_EQ(engine_->GetState().scanType, ScanType::BestAP);
  live_ = LiveNow();
  EXPECT_EQ(Value<&WifiClientForMesh::GetBackhaulSTAStatuses>(), BackhaulSTAStatuses(Now()));
}

TEST_F(MeshServices, SwapTheBackhaul) {
  const Wifi::BackhaulConfig config{true, "Mesh", "mesh-passphrase"};
  EXPECT_EQ(ErrorOfCall<&WifiClientForMesh::ModifyBackhaul>(config, false), "none");
  TakeJournal();
  EXPECT_EQ(Value<&WifiClientForMesh::IsBackhaulBandSwapped>(), false);
  EXPECT_EQ(ErrorOfCall<&WifiClientForMesh::SwapBackhaulBand>(true), "none");
  EXPECT_EQ(Value<&WifiClientForMesh::IsBackhaulBandSwapped>(), true);
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2", "apply Band5GHz_1: 0 1 2", "apply Band5GHz_2: 1 2"}));
}

TEST_F(MeshServices, LearnOfTheMesh) {
  const Wifi::MeshInfo mesh{{SupportedModel::Dune40}, true};
  EXPECT_EQ(ErrorOfCall<&WifiClientForMesh::ModifyMeshInfo>(mesh), "none");
  EXPECT_EQ(engine_->GetState().mesh, mesh);
  EXPECT_EQ(Value<&WifiClientForMesh::IsWifiAdjustNeeded>(), false);
  driver_.FailNext(Band2_4GHz, "wlan0 does not come up");
  Restart(ApplyMode::Everything);
  driver_.FinishAll();
  EXPECT_EQ(Value<&WifiClientForMesh::IsWifiAdjustNeeded>(), true);
}

TEST_F(MeshServices, TellTheCountryCodesOfAnotherNode) {
  driver_.nodes = {{"SN1", SupportedModel::Dune40}};
  EXPECT_EQ(
      Value<&WifiClientForMesh::GetRemoteCountryCodeCapability>(std::string("SN1"), SupportedModel::Dune40),
      CountryCapability(SupportedModel::Dune40));
  const std::string unknown = ErrorOfCall<&WifiClientForMesh::GetRemoteCountryCodeCapability>(
      std::string("SN2"), SupportedModel::Dune40);
  EXPECT_TRUE(unknown.starts_with("com.talo.Wifi1.Error.NotFound: ")) << unknown;
}

TEST_F(MeshServices, SetTheCountry) {
  EXPECT_EQ(Value<&WifiClient::ListCountryCode>(), CountryCapability(SupportedModel::Alder100));
  EXPECT_EQ(Value<&WifiClient::GetCountryCode>(), CountryCode::DE);
  const std::string refused = ErrorOfCall<&WifiClient::SetCountryCode>(CountryCode::MaxCountryCode);
  EXPECT_TRUE(refused.starts_with("com.talo.Wifi1.Error.InvalidArgument: ")) << refused;
  EXPECT_EQ(ErrorOfCall<&WifiClient::SetCountryCode>(CountryCode::FR), "none");
  EXPECT_EQ(Value<&WifiClient::GetCountryCode>(), CountryCode::FR);
}

TEST_F(MeshServices, MoveNetworksBetweenTopologies) {
  EXPECT_EQ(Value<&WifiClientForTopo::GetContext>(), "router");
  EXPECT_EQ(Value<&WifiClientForTopo::GetIdsForTopo>(std::string("router")), (std::set<int>{1, 2}));
  const std::string unknown = ErrorOfCall<&WifiClientForTopo::GetIdsForTopo>(std::string("guest"));
  EXPECT_TRUE(unknown.starts_with("com.talo.Wifi1.Error.NotFound: ")) << unknown;
  EXPECT_EQ(ErrorOfCall<&WifiClientForTopo::SetContext>(std::string("bridge")), "none");
  EXPECT_EQ(Value<&WifiClientForTopo::GetContext>(), "bridge");
  EXPECT_EQ(Value<&WifiClientForTopo::GetInterfacesForTopo>(), NetworkInterfaces(Now()));
  TakeJournal();
  EXPECT_EQ(ErrorOfCall<&WifiClientForTopo::Deactivate>(2), "none");
  EXPECT_EQ(TakeJournal(), Join(Journal{"save 1 2"}, AppliedOnAll("1"), Journal{"announce networks"}));
  EXPECT_EQ(Value<&WifiClientForTopo::GetActivatedIdsForTopo>(), (std::set<int>{1}));
  EXPECT_EQ(ErrorOfCall<&WifiClientForTopo::Activate>(Wifi::ActivationInfo{2, "br-lan"}), "none");
  EXPECT_EQ(TakeJournal(), Join(Journal{"save 1 2"}, AppliedOnAll("1 2"), Journal{"announce networks"}));
  EXPECT_EQ(engine_->GetState().networks[1].bridge, "br-lan");
  const std::string refused = ErrorOfCall<&WifiClientForTopo::Activate>(Wifi::ActivationInfo{2, "br-none"});
  EXPECT_TRUE(refused.starts_with("com.talo.Wifi1.Error.NotFound: ")) << refused;
}

}  // namespace

}  // namespace TALO::Wifid
