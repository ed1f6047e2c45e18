#include "daemon/store/state_upgrade.h"

#include "daemon/json/record_json.h"
#include "daemon/store/state_codec.h"

#include <gtest/gtest.h>

namespace TALO::Wifid {

namespace {

/// Each step wants what the one before made, and says that it was there.
const std::vector<UpgradeStep> kChain = {
    [](Json::Value& root) {
      Json::Value country;
      if (!root.removeMember("land", &country)) {
        throw FormError("land is missing");
      }
      root["country"] = country;
    },
    [](Json::Value& root) { root["countries"].append(root["country"]); },
    [](Json::Value& root) { root.removeMember("country"); },
};

std::string Upgraded(const std::string& text, int from) {
  Json::Value root = ParseJson(text);
  UpgradeState(root, from, kChain);
  return root.toStyledString();
}

TEST(UpgradeState, TakesEveryVersionThroughTheStepsBehindIt) {
  const std::string newest = "{\n\t\"countries\" : \n\t[\n\t\t\"DE\"\n\t]\n}\n";
  EXPECT_EQ(Upgraded(R"({"land": "DE"})", 1), newest);
  EXPECT_EQ(Upgraded(R"({"country": "DE"})", 2), newest);
  EXPECT_EQ(Upgraded(R"({"country": "DE", "countries": ["DE"]})", 3), newest);
  EXPECT_EQ(Upgraded(R"({"countries": ["DE"]})", 4), newest);
}

TEST(UpgradeState, FailsWhereAStepDoes) {
  Json::Value root = ParseJson(R"({"country": "DE"})");
  EXPECT_THROW(UpgradeState(root, 1, kChain), FormError);
}

TEST(UpgradeSteps, LeadToTheVersionThatIsWritten) {
  EXPECT_EQ(UpgradeSteps().size() + 1, static_cast<std::size_t>(kStateVersion));
}

}  // namespace

}  // namespace TALO::Wifid
