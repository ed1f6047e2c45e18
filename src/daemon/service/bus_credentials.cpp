#include "daemon/service/bus_credentials.h"

#include "bus/codec.h"

#include <cstdint>
#include <exception>
#include <memory>
#include <string_view>
#include <utility>

namespace TALO::Wifid {

namespace Bus = Wifi::Bus;

namespace {

struct Credentials {
  std::optional<std::uint32_t> user;
  std::optional<std::set<gid_t>> groups;
};

std::uint32_t ReadNumber(sd_bus_message* answer) {
  std::uint32_t number = 0;
  Bus::CheckMessage(sd_bus_message_read_basic(answer, SD_BUS_TYPE_UINT32, &number));
  return number;
}

std::set<gid_t> ReadNumbers(sd_bus_message* answer) {
  std::set<gid_t> numbers;
  Bus::EnterContainer(answer, SD_BUS_TYPE_ARRAY, "u");
  while (Bus::CheckMessage(sd_bus_message_at_end(answer, 0)) == 0) {
    numbers.insert(ReadNumber(answer));
  }
  Bus::ExitContainer(answer);
  return numbers;
}

Credentials Read(sd_bus_message* answer) {
  Credentials credentials;
  Bus::EnterContainer(answer, SD_BUS_TYPE_ARRAY, "{sv}");
  while (Bus::EnterContainer(answer, SD_BUS_TYPE_DICT_ENTRY, "sv")) {
    const std::string key = Bus::Codec<std::string>::Read(answer);
    if (key == "UnixUserID") {
      Bus::EnterContainer(answer, SD_BUS_TYPE_VARIANT, "u");
      credentials.user = ReadNumber(answer);
      Bus::ExitContainer(answer);
    } else if (key == "UnixGroupIDs") {
      Bus::EnterContainer(answer, SD_BUS_TYPE_VARIANT, "au");
      credentials.groups = ReadNumbers(answer);
      Bus::ExitContainer(answer);
    } else {
      Bus::CheckMessage(sd_bus_message_skip(answer, "v"));
    }
    Bus::ExitContainer(answer);
  }
  return credentials;
}

}  // namespace

struct BusCredentials::Question {
  GroupsOf groupsOf;
  Callers::Identified identified;
};

void BusCredentials::operator()(const std::string& caller, Callers::Identified identified) const {
  auto question = std::make_unique<Question>(Question{groupsOf_, std::move(identified)});
  sd_bus_slot* made = nullptr;
  Bus::CheckMessage(sd_bus_call_method_async(bus_, &made, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                             "org.freedesktop.DBus", "GetConnectionCredentials", OnAnswer,
                                             question.get(), "s", caller.c_str()));
  const Bus::Slot slot(made);
  // From here on the slot owns the question, and the bus the slot.
  sd_bus_slot_set_destroy_callback(made, [](void* asked) { delete static_cast<Question*>(asked); });
  static_cast<void>(question.release());
  Bus::CheckMessage(sd_bus_slot_set_floating(made, 1));
}

int BusCredentials::OnAnswer(sd_bus_message* answer, void* question, sd_bus_error*) {
  const auto& asked = *static_cast<const Question*>(question);
  std::optional<Identity> identity;
  try {
    if (sd_bus_message_is_method_error(answer, nullptr) == 0) {
      const Credentials credentials = Read(answer);
      if (credentials.user) {
        identity = Identity{*credentials.user,
                            credentials.groups ? *credentials.groups : asked.groupsOf(*credentials.user)};
      }
    }
  } catch (const std::exception&) {
    // Said nothing that can be understood, and so nothing.
  }
  asked.identified(identity);
  return 1;
}

}  // namespace TALO::Wifid
