#include "daemon/service/bus_credentials.h"

#include "support/bus_pair.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

namespace Bus = Wifi::Bus;

/// The other end answers as the bus would.
class BusCredentialsTest : public testing::Test {
 protected:
  using Append = std::function<void(sd_bus_message* answer)>;

  BusCredentialsTest() {
    sd_bus_slot* slot = nullptr;
    Bus::CheckMessage(sd_bus_add_filter(pair_.Client(), &slot, OnQuestion, this));
    filter_.reset(slot);
  }

  /// Whom the bus's answer makes of a caller; "nobody" where it makes nobody.
  std::string IdentityFrom(const Append& append) {
    append_ = append;
    std::optional<Identity> found;
    int answers = 0;
    credentials_(":1.7", [&](const std::optional<Identity>& identity) {
      found = identity;
      ++answers;
    });
    EXPECT_EQ(answers, 0);
    pair_.RunUntilQuiet();
    EXPECT_EQ(answers, 1);
    if (!found) {
      return "nobody";
    }
    std::string text = "user " + std::to_string(found->user) + " groups";
    for (const gid_t group : found->groups) {
      text += " " + std::to_string(group);
    }
    return text;
  }

  static int OnQuestion(sd_bus_message* message, void* self, sd_bus_error*) {
    auto& test = *static_cast<BusCredentialsTest*>(self);
    if (sd_bus_message_is_method_call(message, "org.freedesktop.DBus", "GetConnectionCredentials") == 0) {
      return 0;
    }
    const char* name = nullptr;
    Bus::CheckMessage(sd_bus_message_read(message, "s", &name));
    test.asked_.emplace_back(name);
    sd_bus_message* made = nullptr;
    Bus::CheckMessage(sd_bus_message_new_method_return(message, &made));
    const Bus::Message answer(made);
    test.append_(made);
    if (sd_bus_message_is_empty(made) > 0) {
      return sd_bus_reply_method_errorf(message, "org.freedesktop.DBus.Error.NameHasNoOwner", "gone");
    }
    return sd_bus_send(nullptr, made, nullptr);
  }

  BusPair pair_;
  BusCredentials credentials_{pair_.Server(), [](uid_t user) { return std::set<gid_t>{user + 1, user + 2}; }};
  Append append_;
  std::vector<std::string> asked_;
  Bus::Slot filter_;
};

TEST_F(BusCredentialsTest, AreUserAndGroups) {
  EXPECT_EQ(IdentityFrom([](sd_bus_message* answer) {
              Bus::CheckMessage(sd_bus_message_append(answer, "a{sv}", 4, "ProcessID", "u", 99, "UnixUserID",
                                                      "u", 1000, "LinuxSecurityLabel", "ay", 2, 'x', 0,
                                                      "UnixGroupIDs", "au", 3, 50, 7, 1000));
            }),
            "user 1000 groups 7 50 1000");
  EXPECT_EQ(asked_, std::vector<std::string>{":1.7"});
}

TEST_F(BusCredentialsTest, AreCompletedByTheMachinesGroups) {
  EXPECT_EQ(IdentityFrom([](sd_bus_message* answer) {
              Bus::CheckMessage(sd_bus_message_append(answer, "a{sv}", 1, "UnixUserID", "u", 1000));
            }),
            "user 1000 groups 1001 1002");
}

TEST_F(BusCredentialsTest, OfNoGroupAtAllStaySo) {
  EXPECT_EQ(IdentityFrom([](sd_bus_message* answer) {
              Bus::CheckMessage(sd_bus_message_append(answer, "a{sv}", 2, "UnixGroupIDs", "au", 0,
                                                      "UnixUserID", "u", 1000));
            }),
            "user 1000 groups");
}

TEST_F(BusCredentialsTest, WithoutAUserAreNobodys) {
  EXPECT_EQ(IdentityFrom([](sd_bus_message* answer) {
              Bus::CheckMessage(sd_bus_message_append(answer, "a{sv}", 1, "UnixGroupIDs", "au", 1, 0));
            }),
            "nobody");
}

TEST_F(BusCredentialsTest, OfAnotherTypeAreNobodys) {
  EXPECT_EQ(IdentityFrom([](sd_bus_message* answer) {
              Bus::CheckMessage(sd_bus_message_append(answer, "a{sv}", 1, "UnixUserID", "s", "0"));
            }),
            "nobody");
  EXPECT_EQ(
      IdentityFrom([](sd_bus_message* answer) { Bus::CheckMessage(sd_bus_message_append(answer, "u", 0)); }),
      "nobody");
}

TEST_F(BusCredentialsTest, OfACallerWhoHasGoneAreNobodys) {
  EXPECT_EQ(IdentityFrom([](sd_bus_message*) {}), "nobody");
}

}  // namespace

}  // namespace TALO::Wifid
