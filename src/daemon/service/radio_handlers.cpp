#include "daemon/model/country.h"
#include "daemon/model/stations.h"
#include "daemon/service/handlers.h"
#include "daemon/service/scanner.h"
#include "daemon/service/service.h"

namespace TALO::Wifid {

using Wifi::WifiClient;
using Wifi::WifiClientForTool;

void Service::HandleRadios() {
  Engine& engine = parts_.engine;
  general_.Handle<&WifiClient::GetRadioSettings>(AnswerWith(engine, RadioSettings));
  general_.Handle<&WifiClient::GetRadioStatuses>(AnswerWith(engine, RadioStatuses));
  general_.Handle<&WifiClient::GetRadioStatusesSimple>(AnswerWith(engine, RadioStatusesSimple));
  general_.Handle<&WifiClient::GetRadioIfStatuses>(AnswerWith(engine, RadioIfStatuses));
  general_.Handle<&WifiClient::GetNetworkInterfaceRadioMap>(AnswerWith(engine, InterfaceRadioMap));
  general_.Handle<&WifiClient::GetRadioConversionInfo>(AnswerWith(engine, ConversionInfo));
}

void Service::HandleStations() {
  Engine& engine = parts_.engine;
  general_.Handle<&WifiClient::GetScanResults>(
      [&engine](RadioFrequency radio, auto respond) { Scan(engine, radio, respond); });
  general_.Handle<&WifiClient::GetStationSettings>(AnswerWithState(engine, &State::stations));
  general_.Handle<&WifiClient::GetStationStatuses>(AnswerWith(engine, StationStatuses));
  general_.Handle<&WifiClient::GetStationInterfaces>(AnswerWith(engine, StationInterfaces));
  general_.Handle<&WifiClient::ModifyStation>([&engine](const Wifi::StationSetting& setting, auto respond) {
    engine.Make<void>(
        Engine::Radios{setting.radio},
        [&engine, setting](const State& state) {
          return ModifyStation(state, engine.GetCapabilities(), setting);
        },
        respond);
  });
  general_.Handle<&WifiClient::ReconnectAllSTA>([&engine](auto respond) { ReconnectAll(engine, respond); });
}

void Service::HandleWPS() {
  WPSSessions& wps = parts_.wps;
  general_.Handle<&WifiClient::GetDefaultWPSTarget>([&wps](auto respond) { respond(wps.DefaultTarget()); });
  general_.Handle<&WifiClient::IsWPS_PBCAvailable>(
      [&wps](const Wifi::NetworkRadioPair& target, auto respond) { respond(wps.IsAvailable(target)); });
  general_.Handle<&WifiClient::TriggerWPS_PBC>(
      [&wps](const Wifi::NetworkRadioPair& target, auto respond) { wps.Open(target, respond); });
  general_.Handle<&WifiClient::TriggerHWButton>([&wps](auto respond) { wps.PushButton(respond); });
  general_.Handle<&WifiClient::TriggerWPSConnected>(
      [&wps](const std::string& interface, auto respond) { wps.End(interface, respond); });
  tool_.Handle<&WifiClientForTool::WPSERConfig>(
      [&wps](const Wifi::WPS_ERConfigInput& input, auto respond) { wps.ConfigureRegistrar(input, respond); });
}

void Service::HandleCountry() {
  Engine& engine = parts_.engine;
  general_.Handle<&WifiClient::ListCountryCode>(
      [&engine](auto respond) { respond(CountryCapability(engine.GetCapabilities().model)); });
  general_.Handle<&WifiClient::GetCountryCode>(AnswerWithState(engine, &State::country));
  general_.Handle<&WifiClient::SetCountryCode>(
      MakeWith(engine, [&engine](const State& state, CountryCode country) {
        return SetCountryCode(state, engine.GetCapabilities(), country);
      }));
}

}  // namespace TALO::Wifid
