// What a new network may be called and protected with.

#include "support/end_to_end_test.h"
#include "support/network_json.h"

namespace TALO::EndToEnd {

namespace {

class NewNetwork : public EndToEndTest {
 protected:
  NewNetwork() { StartDaemon(); }

  void ExpectRefused(const std::string& ssid, const std::string& password, const std::string& sentence) {
    EXPECT_EQ(RunTool({"createNetwork", "--ssid=" + ssid, "--password=" + password}),
              Failure("Create Network ID: Failed to execute command: " + sentence + "\n"));
    EXPECT_EQ(RunTool({"isAllNetworkAPDisabled"}), Success("1\n"));
  }
};

TEST_F(NewNetwork, HasAnSSIDOf1To32Bytes) {
  const std::string name = "0123456789abcdefghijklmnopqrstuv";
  CreateNetwork("a", 1);
  CreateNetwork(name, 2);
  Do({"deleteNetwork", "--id", "1"});
  Do({"deleteNetwork", "--id", "2"});
  ExpectRefused(name + "w", "correct-horse",
                "the SSID \"0123456789abcdefghijklmnopqrstuvw\" has 33 bytes, it must have 1 to 32: "
                "Invalid argument");
  EXPECT_EQ(RunTool({"createNetwork", "--ssid", "", "--password", "correct-horse"}),
            Failure("Create Network ID: Failed to execute command: the SSID \"\" has 0 bytes, it must "
                    "have 1 to 32: Invalid argument\n"));
}

TEST_F(NewNetwork, CountsTheBytesOfItsSSIDNotTheCharacters) {
  std::string sixteen;
  for (int i = 0; i < 16; ++i) {
    sixteen += "\xc3\xa9";
  }
  CreateNetwork(sixteen, 1);
  Do({"deleteNetwork", "--id", "1"});
  ExpectRefused(sixteen + "!", "correct-horse",
                "the SSID \"" + sixteen + "!\" has 33 bytes, it must have 1 to 32: Invalid argument");
}

TEST_F(NewNetwork, TakesAnSSIDOfAnyBytesAsTyped) {
  // A line end, bytes that are no UTF-8, an accented letter, quotes and a control character; 32 bytes in all.
  CreateNetwork(
      "A\n\xff\xc3\xa9\"\\\x01"
      "0123456789abcdefghijklmn",
      1);
  const ToolRun run = RunTool({"getNetworks"});
  EXPECT_EQ(
      WithoutTimes(run.output),
      PrintedNetworks({{.ssid = R"(A\n\ufffd\u00e9\"\\\u00010123456789abcdefghijklmn)",
                        .ssidHex = "410affc3a9225c01303132333435363738396162636465666768696a6b6c6d6e"}}));
  EXPECT_EQ(run.status, 0);
}

TEST_F(NewNetwork, NeedsAnSSIDThatNoOtherHas) {
  CreateNetwork("Home", 1);
  const auto again = [this](const std::string& ssid) {
    return RunTool({"createNetwork", "--ssid", ssid, "--password", "battery-staple"});
  };
  EXPECT_EQ(again("Home"),
            Failure("Create Network ID: Failed to execute command: the SSID \"Home\" is in use "
                    "by network 1: Already exists\n"));
  // SSIDs are bytes: case counts.
  EXPECT_EQ(again("home"), Success("Create Network ID: 2\n"));
  EXPECT_EQ(again("\xff\""), Success("Create Network ID: 3\n"));
  EXPECT_EQ(again("\xff\""),
            Failure("Create Network ID: Failed to execute command: the SSID \"\\xff\\\"\" is in "
                    "use by network 3: Already exists\n"));
  Do({"deleteNetwork", "--id", "1"});
  EXPECT_EQ(again("Home"), Success("Create Network ID: 4\n"));
}

TEST_F(NewNetwork, TakesAPassphraseOf8To63CharactersOrAKeyOf64Digits) {
  const std::string digits = "0123456789abcdefABCDEF0123456789abcdefABCDEF0123456789abcdefABCD";
  ASSERT_EQ(digits.size(), 64U);
  int id = 0;
  for (const std::string& passphrase :
       {std::string("12345678"), std::string(63, '~'), std::string(" blanks "), digits}) {
    ++id;
    CreateNetwork("Network " + std::to_string(id), id, passphrase);
    const std::string output = RunTool({"getNetworks"}).output;
    EXPECT_NE(output.find("\"passphrase\" : \"" + passphrase + "\","), std::string::npos) << passphrase;
  }
}

struct BadPassphrase {
  const char* what;
  std::string text;
  const char* sentence;
};

TEST_F(NewNetwork, RefusesAnyOtherPassphraseWithoutRepeatingIt) {
  const char* kNotPrintable =
      "the passphrase holds a character that is not printable ASCII: Invalid argument";
  const char* kNotDigits =
      "a passphrase of 64 characters must be hexadecimal digits, this one is not: Invalid argument";
  const std::vector<BadPassphrase> table = {
      {"7 characters", "1234567",
       "the passphrase has 7 characters, it must have 8 to 63, or 64 hexadecimal digits: Invalid argument"},
      {"1 character", "1",
       "the passphrase has 1 characters, it must have 8 to 63, or 64 hexadecimal digits: Invalid argument"},
      {"65 digits", std::string(65, 'a'),
       "the passphrase has 65 characters, it must have 8 to 63, or 64 hexadecimal digits: Invalid argument"},
      {"64 letters, one no digit", std::string(63, 'a') + "g", kNotDigits},
      {"64 blanks", std::string(64, ' '), kNotDigits},
      {"a control character", "1234567\n", kNotPrintable},
      {"a delete character", "1234567\x7f", kNotPrintable},
      {"an accented letter", "caf\xc3\xa9 au lait", kNotPrintable},
  };
  for (const BadPassphrase& bad : table) {
    SCOPED_TRACE(bad.what);
    ExpectRefused("Home", bad.text, bad.sentence);
  }
  EXPECT_EQ(RunTool({"createNetwork", "--ssid", "Home", "--password", ""}),
            Failure("Create Network ID: Failed to execute command: the passphrase has 0 characters, it must "
                    "have 8 to 63, or 64 hexadecimal digits: Invalid argument\n"));
}

}  // namespace

}  // namespace TALO::EndToEnd
