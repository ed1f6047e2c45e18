// What the daemon offers on the bus, what its clients call and what the documents say are one.

#include "support/introspection.h"

#include "bus/operations.h"
#include "bus/signals.h"
#include "daemon/service/access.h"
#include "support/end_to_end_test.h"
#include "support/files.h"
#include "support/test_connection.h"

#include <filesystem>
#include <sstream>
#include <tuple>
#include <type_traits>

namespace TALO::EndToEnd {

namespace {

using Interfaces = std::map<std::string, DescribedInterface>;

/// Appends an argument for each of the types, named by the words of `names` in order.
template <typename... Types>
void Describe(std::vector<DescribedArgument>& arguments, const std::string& names,
              [[maybe_unused]] const char* direction, const std::tuple<Types...>*) {
  std::istringstream words(names);
  [[maybe_unused]] const auto nextName = [&words] {
    std::string name;
    words >> name;
    return name;
  };
  (arguments.push_back({nextName(), Wifi::Bus::Codec<Types>::signature.text, direction}), ...);
}

template <typename Rows>
void AddCalledInterface(Interfaces& interfaces) {
  auto& methods = interfaces[Rows::name.text].methods;
  Rows::ForEach([&methods](auto row) {
    using Row = decltype(row);
    auto& arguments = methods[Row::name.text];
    Describe(arguments, Row::argumentNames.text, "in", static_cast<const typename Row::Arguments*>(nullptr));
    if constexpr (!std::is_void_v<typename Row::Result>) {
      Describe(arguments, Row::resultName.text, "out",
               static_cast<const std::tuple<typename Row::Result>*>(nullptr));
    }
  });
}

template <Wifi::Bus::FixedString Name, Wifi::Bus::FixedString ValueNames, typename... Values>
void AddSignal(DescribedInterface& interface, Wifi::Bus::Signal<Name, ValueNames, Values...>) {
  Describe(interface.signals[Name.text], ValueNames.text, "out",
           static_cast<const std::tuple<Values...>*>(nullptr));
}

/// What the client library calls, and what the daemon sends.
Interfaces CalledInterfaces() {
  Interfaces interfaces;
  AddCalledInterface<Wifi::Bus::General>(interfaces);
  AddCalledInterface<Wifi::Bus::Mesh>(interfaces);
  AddCalledInterface<Wifi::Bus::Topology>(interfaces);
  AddCalledInterface<Wifi::Bus::Tool>(interfaces);
  auto& general = interfaces[Wifi::Bus::General::name.text];
  Wifi::Bus::ForEachSignal([&general](auto row) { AddSignal(general, row); });
  return interfaces;
}

/// What the files of the folder say: one interface each, which names the file.
Interfaces DocumentedInterfaces() {
  Interfaces interfaces;
  for (const auto& file : std::filesystem::directory_iterator(TALOWIFI_API_DIRECTORY)) {
    if (file.path().extension() == ".xml") {
      const Interfaces documented = ReadIntrospection(ReadFile(file.path()));
      EXPECT_EQ(documented.size(), 1U) << file.path();
      EXPECT_TRUE(documented.contains(file.path().stem())) << file.path();
      interfaces.insert(documented.begin(), documented.end());
    }
  }
  return interfaces;
}

class TheDaemonsIntrospection : public EndToEndTest {
 protected:
  TheDaemonsIntrospection() { StartDaemon(); }

  /// What the daemon says of one of its objects, without what every object has.
  Interfaces OfferedInterfaces(const char* path) {
    Interfaces offered = ReadIntrospection(TestConnection(Address()).Introspect(path));
    for (const char* standard : {"org.freedesktop.DBus.Peer", "org.freedesktop.DBus.Introspectable",
                                 "org.freedesktop.DBus.Properties"}) {
      EXPECT_EQ(offered.erase(standard), 1U) << standard;
    }
    return offered;
  }
};

TEST_F(TheDaemonsIntrospection, HoldsWhatClientsCallAndTheSignalsThatAreSent) {
  EXPECT_EQ(OfferedInterfaces("/com/talo/Wifi1"), CalledInterfaces());
}

TEST_F(TheDaemonsIntrospection, IsWhatTheDocumentsSay) {
  EXPECT_EQ(OfferedInterfaces("/com/talo/Wifi1"), DocumentedInterfaces());
}

TEST_F(TheDaemonsIntrospection, HoldsWhatTheTableOfAccessOpens) {
  std::vector<Interfaces> objects;
  for (const char* path : {"/com/talo/Wifi1", "/org/freedesktop/LogControl1"}) {
    objects.push_back(ReadIntrospection(TestConnection(Address()).Introspect(path)));
    for (const auto& [interface, described] : objects.back()) {
      for (const auto& [method, arguments] : described.methods) {
        EXPECT_TRUE(Wifid::IsOpen({interface, method})) << interface << "." << method << " has no row";
      }
    }
  }
  // Nor is anything open that is not there.
  for (const Wifid::OpenMethod& row : Wifid::OpenMethods()) {
    const auto interface = objects.front().find(std::string(row.interface));
    ASSERT_NE(interface, objects.front().end()) << row.interface;
    EXPECT_TRUE(interface->second.methods.contains(std::string(row.member))) << row.member;
  }
}

TEST_F(TheDaemonsIntrospection, OffersTheStandardLogControl) {
  EXPECT_EQ(OfferedInterfaces("/org/freedesktop/LogControl1"),
            (Interfaces{{"org.freedesktop.LogControl1",
                         {.methods = {},
                          .signals = {},
                          .properties = {{"LogLevel", {"s", "readwrite"}},
                                         {"LogTarget", {"s", "readwrite"}},
                                         {"SyslogIdentifier", {"s", "read"}}}}}}));
}

}  // namespace

}  // namespace TALO::EndToEnd
