#include "daemon/service/bus_interface.h"

#include "bus/names.h"
#include "support/admit_all.h"
#include "support/bus_pair.h"
#include "support/print_model.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

namespace Bus = Wifi::Bus;
using Wifi::WifiClient;
using Wifi::WifiClientForTool;

constexpr const char* kGeneral = "com.talo.Wifi1.General";
constexpr const char* kTool = "com.talo.Wifi1.Tool";

std::string IntrospectionOf(BusPair& pair) {
  const Bus::Message call = pair.NewCall("org.freedesktop.DBus.Introspectable", "Introspect");
  sd_bus_message* answer = pair.WaitForAnswer(pair.Send(call.get()));
  return SignatureOf(answer) == "s" ? Bus::Codec<std::string>::Read(answer) : ErrorOf(answer);
}

class BusInterfaces : public testing::Test {
 protected:
  BusInterfaces() {
    general_.Handle<&WifiClient::DeleteNetwork>([this](int id, const auto& respond) {
      asked_.push_back("DeleteNetwork " + std::to_string(id));
      respond({});
    });
    tool_.Handle<&WifiClientForTool::RestartNetworks>([this](bool force, const auto& respond) {
      asked_.emplace_back(force ? "RestartNetworks true" : "RestartNetworks false");
      respond({});
    });
    general_.Attach(pair_.Server());
    tool_.Attach(pair_.Server());
  }

  std::string ErrorOfCall(const char* path, const char* interface, const char* member) {
    return ErrorOf(pair_.WaitForAnswer(pair_.Send(pair_.NewCall(path, interface, member).get())));
  }

  std::vector<std::string> asked_;
  BusInterface<Bus::General> general_{AdmitAll};
  BusInterface<Bus::Tool> tool_{AdmitAll};
  BusPair pair_;
};

TEST_F(BusInterfaces, TakeEachCallToItsOwnHandler) {
  const Bus::Message restart = pair_.NewCall(kTool, "RestartNetworks");
  Bus::Codec<bool>::Append(restart.get(), true);
  EXPECT_EQ(ErrorOf(pair_.WaitForAnswer(pair_.Send(restart.get()))), "none");
  const Bus::Message remove = pair_.NewCall(kGeneral, "DeleteNetwork");
  Bus::Codec<int>::Append(remove.get(), -3);
  EXPECT_EQ(ErrorOf(pair_.WaitForAnswer(pair_.Send(remove.get()))), "none");
  EXPECT_EQ(asked_, (std::vector<std::string>{"RestartNetworks true", "DeleteNetwork -3"}));
}

TEST_F(BusInterfaces, RefuseArgumentsOfAnotherType) {
  const Bus::Message text = pair_.NewCall(kGeneral, "DeleteNetwork");
  Bus::Codec<std::string>::Append(text.get(), "7");
  EXPECT_EQ(ErrorOf(pair_.WaitForAnswer(pair_.Send(text.get()))),
            "org.freedesktop.DBus.Error.InvalidArgs: Invalid arguments 's' to call "
            "com.talo.Wifi1.General.DeleteNetwork(), expecting 'i'.");
  const Bus::Message none = pair_.NewCall(kGeneral, "DeleteNetwork");
  EXPECT_EQ(ErrorOf(pair_.WaitForAnswer(pair_.Send(none.get()))),
            "org.freedesktop.DBus.Error.InvalidArgs: Invalid arguments '' to call "
            "com.talo.Wifi1.General.DeleteNetwork(), expecting 'i'.");
  const Bus::Message more = pair_.NewCall(kGeneral, "DeleteNetwork");
  Bus::Codec<int>::Append(more.get(), 7);
  Bus::Codec<int>::Append(more.get(), 8);
  EXPECT_EQ(ErrorOf(pair_.WaitForAnswer(pair_.Send(more.get()))),
            "org.freedesktop.DBus.Error.InvalidArgs: Invalid arguments 'ii' to call "
            "com.talo.Wifi1.General.DeleteNetwork(), expecting 'i'.");
  EXPECT_EQ(asked_, std::vector<std::string>{});
}

TEST_F(BusInterfaces, KnowNoOtherObjectInterfaceOrOperation) {
  EXPECT_TRUE(ErrorOfCall("/com/talo/Wifi2", kGeneral, "TriggerHWButton")
                  .starts_with("org.freedesktop.DBus.Error.UnknownObject: "));
  EXPECT_TRUE(ErrorOfCall(Bus::kObjectPath, "com.talo.Wifi1.Topology", "GetContext")
                  .starts_with("org.freedesktop.DBus.Error.UnknownMethod: "));
  EXPECT_TRUE(ErrorOfCall(Bus::kObjectPath, kGeneral, "GetContext")
                  .starts_with("org.freedesktop.DBus.Error.UnknownMethod: "));
}

TEST_F(BusInterfaces, NameArgumentsAndResultsInTheIntrospection) {
  const std::string xml = IntrospectionOf(pair_);
  for (const char* part : {
           "  <method name=\"CreateNetwork\">\n"
           "   <arg type=\"(ayayay)\" name=\"info\" direction=\"in\"/>\n"
           "   <arg type=\"i\" name=\"networkId\" direction=\"out\"/>\n",
           "  <method name=\"DeleteNetwork\">\n"
           "   <arg type=\"i\" name=\"networkId\" direction=\"in\"/>\n"
           "  </method>\n",
           "  <method name=\"CreateMACFilterProfile\">\n"
           "   <arg type=\"(isia(ss))\" name=\"profile\" direction=\"in\"/>\n"
           "   <arg type=\"b\" name=\"applyToAll\" direction=\"in\"/>\n"
           "   <arg type=\"i\" name=\"profileId\" direction=\"out\"/>\n"
           "  </method>\n",
           "  <method name=\"GetNetworkInterfaces\">\n"
           "   <arg type=\"a{ias}\" name=\"interfaces\" direction=\"out\"/>\n"
           "  </method>\n",
           "  <method name=\"ReconnectAllSTA\">\n"
           "  </method>\n",
           "  <method name=\"SetLogLevel\">\n"
           "   <arg type=\"i\" name=\"level\" direction=\"in\"/>\n"
           "  </method>\n",
       }) {
    EXPECT_NE(xml.find(part), std::string::npos) << part << "\nis not in\n" << xml;
  }
}

TEST_F(BusInterfaces, MayBeCalledWithoutPrivileges) {
  // Who may call is for the bus to say: nothing is marked as for the privileged only.
  EXPECT_EQ(IntrospectionOf(pair_).find("Privileged"), std::string::npos);
}

TEST_F(BusInterfaces, OfferEveryOperationOnce) {
  const std::string xml = IntrospectionOf(pair_);
  std::size_t methods = 0;
  Bus::General::ForEach([&](auto row) {
    const std::string start = std::string("<method name=\"") + row.name.text + "\">";
    EXPECT_NE(xml.find(start), std::string::npos) << row.name.text;
    EXPECT_EQ(xml.find(start), xml.rfind(start)) << row.name.text;
    ++methods;
  });
  EXPECT_EQ(methods, 36U);
}

TEST(BusInterface, IsGoneFromTheBusWithItsObject) {
  BusPair pair;
  {
    BusInterface<Bus::Tool> tool{AdmitAll};
    tool.Attach(pair.Server());
    EXPECT_NE(IntrospectionOf(pair).find("RestartNetworks"), std::string::npos);
  }
  EXPECT_EQ(IntrospectionOf(pair).find("RestartNetworks"), std::string::npos);
}

TEST(BusInterface, CannotBeOfferedTwiceOnOneBus) {
  BusPair pair;
  BusInterface<Bus::Tool> first{AdmitAll};
  BusInterface<Bus::Tool> second{AdmitAll};
  first.Attach(pair.Server());
  EXPECT_THROW(second.Attach(pair.Server()), Bus::CodecError);
}

}  // namespace

}  // namespace TALO::Wifid
