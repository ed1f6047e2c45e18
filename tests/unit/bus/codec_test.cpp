#include "bus/codec.h"

#include "bus/operations.h"
#include "support/bus_ends.h"
#include "support/full_values.h"
#include "support/print.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

namespace TALO::Wifi::Bus {

namespace {

/// Makes messages that are read without having been sent.
class MessageTest : public testing::Test {
 protected:
  // Nobody reads at the other end: what was begun there cannot be finished.
  ~MessageTest() override { sd_bus_close(bus_.get()); }

  Message NewMessage() {
    sd_bus_message* message = nullptr;
    MustSucceed(
        sd_bus_message_new_method_call(bus_.get(), &message, "com.example.Peer", "/", nullptr, "Test"));
    return Message(message);
  }

  /// Ends the writing of a message; it is read from its start.
  static void Seal(const Message& message) {
    MustSucceed(sd_bus_message_seal(message.get(), 1, 0));
    MustSucceed(sd_bus_message_rewind(message.get(), 1));
  }

  /// What is left of `value` when a message carried it.
  template <typename Codec, typename T>
  T Carried(const T& value) {
    const Message message = NewMessage();
    Codec::Append(message.get(), value);
    Seal(message);
    EXPECT_STREQ(sd_bus_message_get_signature(message.get(), 1), Codec::signature.text);
    T carried = Codec::Read(message.get());
    EXPECT_EQ(sd_bus_message_at_end(message.get(), 1), 1);
    return carried;
  }

  /// A message that holds `values`.
  template <typename... T>
  Message Holding(const T&... values) {
    Message message = NewMessage();
    (Codec<T>::Append(message.get(), values), ...);
    Seal(message);
    return message;
  }

 private:
  std::pair<Descriptor, Descriptor> sockets_ = ConnectedSockets();
  BusHandle bus_ = StartClient(std::move(sockets_.first));
};

// Every member of a full record differs from its default; in records inside of it as well.

template <typename T>
void ExpectFull(const T&) {}
template <typename T>
void ExpectFull(const std::vector<T>& values);
template <Record T>
void ExpectFull(const T& record) {
  const T empty{};
  ForEachMember(record, [&](auto member, const auto& value) {
    SCOPED_TRACE(member.name);
    ForEachMember(empty, [&](auto other, const auto& before) {
      if constexpr (std::is_same_v<decltype(member), decltype(other)>) {
        EXPECT_FALSE(value == before);
      }
    });
    ExpectFull(value);
  });
}
template <typename T>
void ExpectFull(const std::vector<T>& values) {
  EXPECT_EQ(values.size(), 2U);
  for (const T& value : values) {
    ExpectFull(value);
  }
}

template <typename T>
class RecordOnTheWire : public MessageTest {};

using Records =
    testing::Types<NetworkCreateInfo, NetworkRadioSetting, NetworkSetting, NetworkRadioPair, RadioSetting,
                   RadioStatus, RadioStatusSimple, RadioIfStatus, RadioConversionInfo, ScanResult,
                   StationSetting, StationStatus, BackhaulConfig, BackhaulSetting, BackhaulSTASetting,
                   BackhaulSTAStatus, MeshInfo, MACFilterDevice, MACFilterGlobal, MACFilterProfile,
                   ScheduleStatusEntry, WPS_ERConfigInput, DeviceInfo, CountryCodeCapability, ActivationInfo>;
TYPED_TEST_SUITE(RecordOnTheWire, Records);

TYPED_TEST(RecordOnTheWire, IsCarriedEmpty) {
  EXPECT_EQ((this->template Carried<Codec<TypeParam>>(TypeParam{})), TypeParam{});
}

TYPED_TEST(RecordOnTheWire, IsCarriedWithEveryMemberSet) {
  const auto full = FullValue<TypeParam>();
  ExpectFull(full);
  EXPECT_EQ((this->template Carried<Codec<TypeParam>>(full)), full);
}

template <typename Visit>
void ForEachOperation(Visit visit) {
  General::ForEach(visit);
  Mesh::ForEach(visit);
  Topology::ForEach(visit);
  Tool::ForEach(visit);
}

class OperationOnTheWire : public MessageTest {
 protected:
  template <typename Row>
  void ExpectArgumentsCarried(const typename Row::Arguments& arguments) {
    using Codec = typename Row::ArgumentsCodec;
    const Message message = NewMessage();
    std::apply([&](const auto&... each) { Codec::Append(message.get(), each...); }, arguments);
    Seal(message);
    EXPECT_STREQ(sd_bus_message_get_signature(message.get(), 1), Codec::signature.text);
    EXPECT_TRUE(Codec::Read(message.get()) == arguments);
    EXPECT_EQ(sd_bus_message_at_end(message.get(), 1), 1);
  }
};

TEST_F(OperationOnTheWire, CarriesItsArguments) {
  ForEachOperation([this](auto row) {
    using Row = decltype(row);
    SCOPED_TRACE(Row::name.text);
    ExpectArgumentsCarried<Row>({});
    ExpectArgumentsCarried<Row>(FullValue<typename Row::Arguments>());
  });
}

TEST_F(OperationOnTheWire, CarriesItsResult) {
  ForEachOperation([this](auto row) {
    using Row = decltype(row);
    using Result = typename Row::Result;
    SCOPED_TRACE(Row::name.text);
    if constexpr (std::is_void_v<Result>) {
      EXPECT_EQ(Row::ResultCodec::signature.View(), "");
    } else {
      EXPECT_EQ((Carried<typename Row::ResultCodec>(Result{})), Result{});
      const auto full = FullValue<Result>();
      EXPECT_FALSE(full == Result{});
      EXPECT_EQ((Carried<typename Row::ResultCodec>(full)), full);
    }
  });
}

/// One type that travels: how it is written and read.
struct WireType {
  std::string signature;
  std::function<void(sd_bus_message*)> append;
  std::function<void(sd_bus_message*)> read;
};

template <typename T>
void AddWireType(std::map<std::string, WireType>& types) {
  const std::string signature = Codec<T>::signature.text;
  types.try_emplace(
      signature,
      WireType{signature, [](sd_bus_message* message) { Codec<T>::Append(message, FullValue<T>()); },
               [](sd_bus_message* message) { Codec<T>::Read(message); }});
}

/// The types of all results and arguments, one for each signature.
std::map<std::string, WireType> WireTypes() {
  std::map<std::string, WireType> types;
  ForEachOperation([&types](auto row) {
    using Row = decltype(row);
    if constexpr (!std::is_void_v<typename Row::Result>) {
      AddWireType<typename Row::Result>(types);
    }
    std::apply([&types](const auto&... each) { (AddWireType<std::decay_t<decltype(each)>>(types), ...); },
               typename Row::Arguments{});
  });
  return types;
}

class WrongMessage : public MessageTest {};

TEST_F(WrongMessage, IsRefusedWhereItHoldsAnotherType) {
  const auto types = WireTypes();
  // 25 that are results, and 7 more that are only arguments.
  EXPECT_EQ(types.size(), 34U);
  for (const auto& [expected, reader] : types) {
    for (const auto& [held, writer] : types) {
      if (expected == held) {
        continue;
      }
      SCOPED_TRACE(expected + " read from " + held);
      const Message message = NewMessage();
      writer.append(message.get());
      Seal(message);
      EXPECT_THROW(reader.read(message.get()), CodecError);
    }
  }
}

TEST_F(WrongMessage, IsRefusedWhereItHoldsNothing) {
  for (const auto& [signature, type] : WireTypes()) {
    SCOPED_TRACE(signature);
    const Message message = NewMessage();
    Seal(message);
    EXPECT_THROW(type.read(message.get()), CodecError);
  }
}

TEST_F(WrongMessage, IsRefusedWhereTheLastArgumentIsMissing) {
  ForEachOperation([this](auto row) {
    using Row = decltype(row);
    SCOPED_TRACE(Row::name.text);
    if constexpr (std::tuple_size_v<typename Row::Arguments> == 2) {
      const Message message = Holding(FullValue<std::tuple_element_t<0, typename Row::Arguments>>());
      EXPECT_THROW(Row::ArgumentsCodec::Read(message.get()), CodecError);
    } else {
      EXPECT_LT(std::tuple_size_v<typename Row::Arguments>, 2U);
    }
  });
}

TEST_F(WrongMessage, IsRefusedWhereATextIsNoMACAddress) {
  for (const std::string text : {"", "02:00:00:00:00", "02:00:00:00:00:0g"}) {
    const Message message = Holding(text);
    try {
      Codec<Util::MACAddress>::Read(message.get());
      FAIL() << text;
    } catch (const CodecError& error) {
      EXPECT_EQ(error.what(), "Invalid MAC address: " + text);
    }
  }
}

class ValueOnTheWire : public MessageTest {};

TEST_F(ValueOnTheWire, KeepsNumbersOfAnySize) {
  for (const int number : {0, 1, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ((Carried<Codec<int>>(number)), number);
  }
}

TEST_F(ValueOnTheWire, KeepsBothBooleans) {
  EXPECT_EQ((Carried<Codec<bool>>(true)), true);
  EXPECT_EQ((Carried<Codec<bool>>(false)), false);
}

TEST_F(ValueOnTheWire, KeepsEnumerationValuesWithoutAName) {
  using Util::RadioFrequency;
  for (const int number : {-1, 5, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ((Carried<Codec<RadioFrequency>>(RadioFrequency{number})), RadioFrequency{number});
  }
  EXPECT_EQ((Carried<Codec<CountryCode>>(CountryCode{65535})), CountryCode{65535});
}

TEST_F(ValueOnTheWire, KeepsTheOrderOfAVector) {
  const std::vector<std::string> names = {"wlan2", "", "wlan0", "wlan2"};
  EXPECT_EQ((Carried<Codec<std::vector<std::string>>>(names)), names);
}

TEST_F(ValueOnTheWire, KeepsTenThousandRecords) {
  const std::vector<NetworkSetting> networks(10000, FullValue<NetworkSetting>());
  EXPECT_TRUE((Carried<Codec<std::vector<NetworkSetting>>>(networks)) == networks);
}

TEST_F(ValueOnTheWire, KeepsTheLastOfTwoEntriesWithOneKey) {
  const Message message = NewMessage();
  MustSucceed(sd_bus_message_append(message.get(), "a{is}", 3, 1, "first", 2, "other", 1, "last"));
  Seal(message);
  EXPECT_EQ((Codec<std::map<int, std::string>>::Read(message.get())),
            (std::map<int, std::string>{{1, "last"}, {2, "other"}}));
}

TEST_F(ValueOnTheWire, KeepsOneOfTwoEqualElementsOfASet) {
  const Message message = NewMessage();
  MustSucceed(sd_bus_message_append(message.get(), "ai", 3, 7, 3, 7));
  Seal(message);
  EXPECT_EQ((Codec<std::set<int>>::Read(message.get())), (std::set<int>{3, 7}));
}

TEST_F(ValueOnTheWire, KeepsBytesOfAnyValue) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) {
    bytes += static_cast<char>(byte);
  }
  EXPECT_EQ((Carried<BytesCodec>(bytes)), bytes);
  EXPECT_EQ((Carried<BytesCodec>(std::string())), "");
  EXPECT_EQ((Carried<BytesCodec>(std::string(1, '\0'))), std::string(1, '\0'));
}

TEST_F(ValueOnTheWire, KeepsTextOfEveryLengthOfCharacter) {
  for (const std::string text : {"", "a", "\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF",
                                 "\xEE\x80\x80", "\xEF\xBF\xBD", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBD"}) {
    EXPECT_EQ((Carried<Codec<std::string>>(text)), text);
  }
}

/// Appends a text that cannot travel and returns what is said of it.
std::string RefusalOf(const Message& message, const std::string& text) {
  try {
    Codec<std::string>::Append(message.get(), text);
  } catch (const InvalidText& refusal) {
    return refusal.what();
  } catch (const CodecError& refusal) {
    return std::string("not as invalid text: ") + refusal.what();
  }
  return "not at all";
}

class InvalidTextOnTheWire : public MessageTest {};

TEST_F(InvalidTextOnTheWire, IsRefusedWhereItIsNotUTF8) {
  const std::string replacement = "\xEF\xBF\xBD";
  const std::vector<std::pair<std::string, std::string>> texts = {
      {"\xFF", replacement},
      {"caf\xE9", "caf" + replacement},
      {"\x80", replacement},
      {"\xE2\x82", replacement + replacement},
      {"\xC0\xAF", replacement + replacement},
      {"\xED\xA0\x80", replacement + replacement + replacement},
      {"\xF4\x90\x80\x80", replacement + replacement + replacement + replacement}};
  for (const auto& [text, readable] : texts) {
    SCOPED_TRACE(readable);
    EXPECT_EQ(RefusalOf(NewMessage(), text), "the text \"" + readable + "\" is not UTF-8");
  }
}

TEST_F(InvalidTextOnTheWire, IsRefusedWhereItHoldsNUL) {
  EXPECT_EQ(RefusalOf(NewMessage(), std::string("wlan0\0x", 7)),
            "the text \"wlan0\xEF\xBF\xBDx\" holds a NUL byte");
  EXPECT_EQ(RefusalOf(NewMessage(), std::string(1, '\0')), "the text \"\xEF\xBF\xBD\" holds a NUL byte");
}

TEST_F(InvalidTextOnTheWire, IsRefusedWhereItHoldsANonCharacter) {
  for (const std::string text :
       {"\xEF\xBF\xBE", "\xEF\xBF\xBF", "\xEF\xB7\x90", "\xEF\xB7\xAF", "a\xF4\x8F\xBF\xBF"}) {
    EXPECT_EQ(RefusalOf(NewMessage(), text),
              "the text \"" + text + "\" holds a character that cannot be sent");
  }
}

TEST_F(InvalidTextOnTheWire, IsRefusedInsideOfRecordsAndContainers) {
  const Message message = NewMessage();
  EXPECT_THROW(Codec<ActivationInfo>::Append(message.get(), {7, "\xFF"}), InvalidText);
  EXPECT_THROW((Codec<std::map<int, std::set<std::string>>>::Append(NewMessage().get(), {{1, {"\xFF"}}})),
               InvalidText);
}

static_assert(HoldsSecret<NetworkCreateInfo>::value && HoldsSecret<NetworkRadioSetting>::value &&
              HoldsSecret<NetworkSetting>::value && HoldsSecret<StationSetting>::value &&
              HoldsSecret<BackhaulConfig>::value && HoldsSecret<BackhaulSetting>::value &&
              HoldsSecret<BackhaulSTASetting>::value && HoldsSecret<WPS_ERConfigInput>::value);
static_assert(HoldsSecret<std::vector<NetworkSetting>>::value &&
              HoldsSecret<std::map<int, StationSetting>>::value);
static_assert(!HoldsSecret<DeviceInfo>::value && !HoldsSecret<StationStatus>::value &&
              !HoldsSecret<std::string>::value && !HoldsSecret<ScheduleStatus>::value);

}  // namespace

}  // namespace TALO::Wifi::Bus
