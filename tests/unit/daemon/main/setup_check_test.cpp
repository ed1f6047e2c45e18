#include "daemon/main/setup_check.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace TALO::Wifid {

namespace {

using Wifi::CountryCode;
using Wifi::Util::SupportedModel;

/// What `check` throws, "none" when it does not.
template <typename Check>
std::string FailureOf(Check check) {
  try {
    check();
  } catch (const std::invalid_argument& failure) {
    return failure.what();
  }
  return "none";
}

std::string FailureOfCountry(SupportedModel model, CountryCode country) {
  Options options;
  options.model = model;
  options.country = country;
  return FailureOf([&] { CheckCountry(options); });
}

std::string FailureOfBridge(const std::string& bridge, const std::set<std::string>& bridges) {
  Options options;
  options.bridge = bridge;
  return FailureOf([&] { CheckBridge(options, bridges); });
}

TEST(CheckCountry, LetsAModelIntoTheCountriesThatItIsMadeFor) {
  EXPECT_EQ(FailureOfCountry(SupportedModel::Alder100, CountryCode::DE), "none");
  EXPECT_EQ(FailureOfCountry(SupportedModel::Alder100, CountryCode::US), "none");
  EXPECT_EQ(FailureOfCountry(SupportedModel::Birch200, CountryCode::DE), "none");
  EXPECT_EQ(FailureOfCountry(SupportedModel::Cedar300, CountryCode::CN), "none");
  EXPECT_EQ(FailureOfCountry(SupportedModel::Dune40, CountryCode::DE), "none");
  EXPECT_EQ(FailureOfCountry(SupportedModel::Dune40, CountryCode::US), "none");
}

TEST(CheckCountry, KeepsAModelOutOfOthers) {
  EXPECT_EQ(FailureOfCountry(SupportedModel::Alder100, CountryCode::CN),
            "the option country cannot be \"CN\": the model Alder100 may not be used in that country");
  EXPECT_EQ(FailureOfCountry(SupportedModel::Birch200, CountryCode::US),
            "the option country cannot be \"US\": the model Birch200 may not be used in that country");
  EXPECT_EQ(FailureOfCountry(SupportedModel::Dune40, CountryCode::FR),
            "the option country cannot be \"FR\": the model Dune40 may not be used in that country");
}

TEST(CheckCountry, LetsEveryModelStartWithTheDefaultCountry) {
  for (const SupportedModel model : {SupportedModel::Alder100, SupportedModel::Birch200,
                                     SupportedModel::Cedar300, SupportedModel::Dune40}) {
    EXPECT_EQ(FailureOfCountry(model, Options().country), "none");
  }
}

TEST(CheckBridge, LetsNetworksOntoABridgeOfTheRouter) {
  EXPECT_EQ(FailureOfBridge("br0", {"br0"}), "none");
  EXPECT_EQ(FailureOfBridge("br-guest", {"br0", "br-guest"}), "none");
}

TEST(CheckBridge, RefusesOneThatTheRouterDoesNotHave) {
  EXPECT_EQ(FailureOfBridge("br7", {"br0", "br-guest"}),
            "the option bridge cannot be \"br7\": the router has only these bridges: \"br-guest\", \"br0\"");
  EXPECT_EQ(FailureOfBridge("br7", {"br0"}),
            "the option bridge cannot be \"br7\": the router has only these bridges: \"br0\"");
  EXPECT_EQ(FailureOfBridge("BR0", {"br0"}),
            "the option bridge cannot be \"BR0\": the router has only these bridges: \"br0\"");
  EXPECT_EQ(FailureOfBridge("", {"br0"}),
            "the option bridge cannot be \"\": the router has only these bridges: \"br0\"");
  EXPECT_EQ(FailureOfBridge("br0", {}), "the option bridge cannot be \"br0\": the router has no bridge");
}

}  // namespace

}  // namespace TALO::Wifid
