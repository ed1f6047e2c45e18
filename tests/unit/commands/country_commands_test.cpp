#include "support/fake_daemon.h"
#include "support/tool_run.h"
#include "values/errors.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace TALO::Tool {

using Wifi::CountryCode;
using Wifi::FakeDaemon;
using Calls = std::vector<std::string>;

namespace {

class CountryCommand : public testing::Test {
 protected:
  CountryCommand() { FakeDaemon::Reset(); }
  FakeDaemon& daemon_ = FakeDaemon::Get();
};

/// The two commands that print a capability, which they do alike.
class CapabilityListing : public CountryCommand {
 protected:
  static std::vector<std::vector<std::string>> Commands() {
    return {{"listCountryCode"},
            {"getRemoteCountryCodeCapability", "--serial", "SN0042", "--model", "Dune40"}};
  }

  void ExpectForBoth(const Wifi::CountryCodeCapability& capability, int status, const std::string& output) {
    for (const auto& words : Commands()) {
      SCOPED_TRACE(words.front());
      FakeDaemon::Reset();
      daemon_.listCountryCode = capability;
      daemon_.remoteCountryCodeCapability = capability;
      const ToolRun run = runTool(words);
      EXPECT_EQ(run.output, output);
      EXPECT_EQ(run.status, status);
    }
  }
};

TEST_F(CapabilityListing, PrintsOnlyTheFirstLineWhenNoCodeIsAllowed) {
  ExpectForBoth({.immutable = true, .codes = {}}, 0, "Immutable: 1\n");
  ExpectForBoth({.immutable = false, .codes = {}}, 0, "Immutable: 0\n");
}

TEST_F(CapabilityListing, PrintsTheCodesInTheOrderOfTheirNumbers) {
  ExpectForBoth({.immutable = false,
                 .codes = {{CountryCode::ZW, "z"}, {CountryCode::AD, "1,6,11"}, {CountryCode::AE, "36"}}},
                0,
                "Immutable: 0\n"
                "Country code #0: AD, 1,6,11\n"
                "Country code #1: AE, 36\n"
                "Country code #196: ZW, z\n");
}

TEST_F(CapabilityListing, PrintsTheTextBesideACodeAsItComes) {
  ExpectForBoth(
      {.immutable = true, .codes = {{CountryCode::AD, ""}, {CountryCode::MaxCountryCode, " 100%\t\xFF\n"}}},
      0,
      "Immutable: 1\n"
      "Country code #0: AD, \n"
      "Country code #197: MaxCountryCode,  100%\t\xFF\n\n");
}

TEST_F(CapabilityListing, KeepsWhatItPrintedWhenACodeHasNoName) {
  ExpectForBoth({.immutable = true, .codes = {{CountryCode::AE, "36"}, {CountryCode{198}, "40"}}}, 1,
                "Immutable: 1\n"
                "Country code #1: AE, 36\n"
                "Country code #198: Failed to execute command: Failed to Convert enum class "
                "[N4TALO4Wifi11CountryCodeE] to string: 198: Runtime error\n");
}

TEST_F(CapabilityListing, PrintsTheNumberOfANamelessCodeWithoutASign) {
  ExpectForBoth({.immutable = false, .codes = {{CountryCode{65535}, ""}}}, 1,
                "Immutable: 0\n"
                "Country code #65535: Failed to execute command: Failed to Convert enum class "
                "[N4TALO4Wifi11CountryCodeE] to string: 65535: Runtime error\n");
}

class GetRemoteCountryCodeCapability : public CountryCommand {};

TEST_F(GetRemoteCountryCodeCapability, AcceptsEveryModelAndErrorWithThem) {
  for (const std::string model : {"Error", "Alder100", "Birch200", "Cedar300", "Dune40"}) {
    SCOPED_TRACE(model);
    FakeDaemon::Reset();
    const ToolRun run = runTool({"getRemoteCountryCodeCapability", "--serial", "S", "--model", model});
    EXPECT_EQ(run.output, "Immutable: 0\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(daemon_.calls, (Calls{"IsDebugLogLevel()", "WifiClientFactoryForMesh::GetInstance()",
                                    R"(GetRemoteCountryCodeCapability("S", )" + model + ")"}));
  }
}

TEST_F(GetRemoteCountryCodeCapability, SendsMinusOneForTheModelError) {
  const ToolRun run = runTool({"getRemoteCountryCodeCapability", "--serial", "any", "--model", "Error"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{"IsDebugLogLevel()", "WifiClientFactoryForMesh::GetInstance()",
                                  R"(GetRemoteCountryCodeCapability("any", Error))"}));
  EXPECT_EQ(static_cast<int>(Wifi::Util::SupportedModel::Error), -1);
}

TEST_F(GetRemoteCountryCodeCapability, PrintsTheUsageWithoutASerialBeforeItConvertsTheModel) {
  const ToolRun run = runTool({"getRemoteCountryCodeCapability", "--model", "bad"});
  EXPECT_EQ(run.output,
            "Usage: getRemoteCountryCodeCapability --serial serial --model "
            "[Alder100|Birch200|Cedar300|Dune40]:\n"
            "  --serial arg          serial\n"
            "  --model arg           model\n"
            "\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Calls{"IsDebugLogLevel()"});
}

TEST_F(GetRemoteCountryCodeCapability, PassesAnEmptySerialOn) {
  const ToolRun run = runTool({"getRemoteCountryCodeCapability", "--serial", "", "--model", "Alder100"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{"IsDebugLogLevel()", "WifiClientFactoryForMesh::GetInstance()",
                                  R"(GetRemoteCountryCodeCapability("", Alder100))"}));
}

TEST_F(GetRemoteCountryCodeCapability, RefusesAModelThatIsNotExactlyANameBeforeItObtainsTheClient) {
  for (const std::string model : {"", "alder100", "DUNE40", "Dune40 ", "Dune", "3"}) {
    SCOPED_TRACE(model);
    FakeDaemon::Reset();
    daemon_.Fail("WifiClientFactoryForMesh", std::runtime_error("no client"));
    const ToolRun run = runTool({"getRemoteCountryCodeCapability", "--serial", "S", "--model", model});
    EXPECT_EQ(run.output,
              "Failed to execute command: Failed to convert string to enum class "
              "[N4TALO4Wifi4Util14SupportedModelE]: " +
                  model + ": Runtime error\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(daemon_.calls, Calls{"IsDebugLogLevel()"});
  }
}

class SetCountryCode : public CountryCommand {};

TEST_F(SetCountryCode, AcceptsDEInCapitals) {
  const ToolRun run = runTool({"setCountryCode", "--country", "DE"});
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls,
            (Calls{"IsDebugLogLevel()", "WifiClientFactory::GetInstance()", "SetCountryCode(DE)"}));
}

TEST_F(SetCountryCode, RefusesTheLowerCaseWordDe) {
  const ToolRun run = runTool({"setCountryCode", "--country", "de"});
  EXPECT_EQ(run.output,
            "Failed to execute command: Failed to convert string to enum class "
            "[N4TALO4Wifi11CountryCodeE]: de: Runtime error\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, (Calls{"IsDebugLogLevel()", "WifiClientFactory::GetInstance()"}));
}

TEST_F(SetCountryCode, SendsTheCountOfCodesForTheWordMaxCountryCode) {
  const ToolRun run = runTool({"setCountryCode", "--country", "MaxCountryCode"});
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{"IsDebugLogLevel()", "WifiClientFactory::GetInstance()",
                                  "SetCountryCode(MaxCountryCode)"}));
  EXPECT_EQ(static_cast<int>(CountryCode::MaxCountryCode), 197);
}

TEST_F(SetCountryCode, RefusesWhatIsNotExactlyACode) {
  // AO and KP are countries, but not in the list; there is no sentinel either.
  for (const std::string country :
       {"", "D", "DE ", " DE", "DEU", "AO", "KP", "Error", "45", "maxCountryCode"}) {
    SCOPED_TRACE(country);
    FakeDaemon::Reset();
    const ToolRun run = runTool({"setCountryCode", "--country", country});
    EXPECT_EQ(run.output,
              "Failed to execute command: Failed to convert string to enum class "
              "[N4TALO4Wifi11CountryCodeE]: " +
                  country + ": Runtime error\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(daemon_.calls, (Calls{"IsDebugLogLevel()", "WifiClientFactory::GetInstance()"}));
  }
}

TEST_F(SetCountryCode, ObtainsTheClientBeforeItConvertsTheCountry) {
  daemon_.Fail("WifiClientFactory", std::runtime_error("no client"));
  const ToolRun run = runTool({"setCountryCode", "--country", "bad"});
  EXPECT_EQ(run.output, "no client\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, (Calls{"IsDebugLogLevel()", "WifiClientFactory::GetInstance()"}));
}

class GetCountryCode : public CountryCommand {};

TEST_F(GetCountryCode, PrintsTheNameOfTheCode) {
  for (const auto& [code, output] : std::vector<std::pair<CountryCode, std::string>>{
           {CountryCode::DE, "DE\n"}, {CountryCode::ZW, "ZW\n"}, {CountryCode{197}, "MaxCountryCode\n"}}) {
    daemon_.countryCode = code;
    const ToolRun run = runTool({"getCountryCode"});
    EXPECT_EQ(run.output, output);
    EXPECT_EQ(run.status, 0);
  }
}

TEST_F(GetCountryCode, RefusesACodeWithoutAName) {
  daemon_.countryCode = CountryCode{198};
  const ToolRun run = runTool({"getCountryCode"});
  EXPECT_EQ(run.output,
            "Failed to execute command: Failed to Convert enum class [N4TALO4Wifi11CountryCodeE] to string: "
            "198: Runtime error\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls,
            (Calls{"IsDebugLogLevel()", "WifiClientFactory::GetInstance()", "GetCountryCode()"}));
}

}  // namespace

}  // namespace TALO::Tool
