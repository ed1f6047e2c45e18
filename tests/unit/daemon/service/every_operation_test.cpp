#include "support/full_values.h"
#include "support/service_test.h"

#include <cstdint>
#include <string>
#include <tuple>

namespace TALO::Wifid {

namespace {

namespace Bus = Wifi::Bus;

class EveryOperation : public ServiceTest {
 protected:
  /// Calls every operation of an interface with arguments of the kind that `make` gives, and expects one
  /// answer of each: a result of the right type, or a refusal that is no excuse.
  template <typename Rows, typename Make>
  void CallAll(Make make) {
    Rows::ForEach([&](auto row) {
      using Row = decltype(row);
      SCOPED_TRACE(Row::name.text);
      const Bus::Message call = pair_.NewCall(Rows::name.text, Row::name.text);
      std::apply([&call](const auto&... values) { Row::ArgumentsCodec::Append(call.get(), values...); },
                 make(static_cast<typename Row::Arguments*>(nullptr)));
      const std::uint64_t cookie = pair_.Send(call.get());
      sd_bus_message* answer = Settle(cookie);
      const std::string error = ErrorOf(answer);
      if (error == "none") {
        EXPECT_EQ(SignatureOf(answer), Row::ResultCodec::signature.text);
        ++succeeded_;
      } else {
        EXPECT_TRUE(error.starts_with("com.talo.Wifi1.Error.")) << error;
        EXPECT_EQ(error.find("does not support"), std::string::npos) << error;
      }
      EXPECT_EQ(pair_.CountAnswers(cookie), 1U);
      ++called_;
    });
  }
  template <typename Make>
  void CallAllInterfaces(Make make) {
    CallAll<Bus::General>(make);
    CallAll<Bus::Mesh>(make);
    CallAll<Bus::Topology>(make);
    CallAll<Bus::Tool>(make);
  }

  int called_ = 0;
  int succeeded_ = 0;
};

TEST_F(EveryOperation, IsAnsweredWhenEverythingIsSet) {
  CallAllInterfaces([]<typename Arguments>(Arguments*) {
    Arguments arguments{};
    Wifi::Filler().Fill(arguments);
    return arguments;
  });
  EXPECT_EQ(called_, 61);
  EXPECT_GE(succeeded_, 25);
}

TEST_F(EveryOperation, IsAnsweredWhenNothingIsSet) {
  CallAllInterfaces([]<typename Arguments>(Arguments*) { return Arguments{}; });
  EXPECT_EQ(called_, 61);
  EXPECT_GE(succeeded_, 25);
}

TEST_F(EveryOperation, IsAnsweredWhileStoreAndRadiosFail) {
  for (int i = 0; i < 100; ++i) {
    store_.FailNext("the disk is full");
    for (const RadioFrequency radio : engine_->AllRadios()) {
      driver_.FailNext(radio, "the radio is gone");
    }
  }
  const State before = engine_->GetState();
  CallAllInterfaces([]<typename Arguments>(Arguments*) { return Arguments{}; });
  EXPECT_EQ(called_, 61);
  EXPECT_EQ(engine_->GetState(), before);
}

}  // namespace

}  // namespace TALO::Wifid
