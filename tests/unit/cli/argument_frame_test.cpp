#include "cli/argument_frame.h"

#include <boost/any.hpp>
#include <boost/program_options/errors.hpp>
#include <boost/program_options/options_description.hpp>
#include <boost/program_options/value_semantic.hpp>
#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace TALO::Tool {

namespace po = boost::program_options;

namespace {

using Words = std::vector<std::string>;
using Wifi::MACFilterDevice;
using Wifi::Util::MACAddress;

std::string textOf(const Usage& usage) {
  std::ostringstream text;
  text << *usage;
  return text.str();
}

TEST(PublishUsage, LeavesInTheSlotWhatItReturns) {
  Usage usage;
  const po::options_description& options = publishUsage(usage, "Usage: getNetworks");
  EXPECT_EQ(&options, usage.get());
}

TEST(PublishUsage, MakesTheCaptionALineOfItsOwn) {
  Usage usage;
  publishUsage(usage, "Usage: getNetworks");
  EXPECT_EQ(textOf(usage), "Usage: getNetworks:\n");
}

TEST(PublishUsage, DoesNotBreakALongCaption) {
  Usage usage;
  const std::string caption = "Usage: " + std::string(200, 'c');
  publishUsage(usage, caption.c_str());
  EXPECT_EQ(textOf(usage), caption + ":\n");
}

TEST(PublishUsage, ShowsTheOptionsThatAreDeclaredLater) {
  Usage usage;
  publishUsage(usage, "Usage: rename --id id --name name")
      .add_options()("id", po::value<int>(), "network id")("name", po::value<std::string>(), "name");
  EXPECT_EQ(textOf(usage),
            "Usage: rename --id id --name name:\n"
            "  --id arg              network id\n"
            "  --name arg            name\n");
}

TEST(PublishUsage, LetsTheLongestOptionSetTheColumnOfTheDescriptions) {
  Usage usage;
  publishUsage(usage, "Usage: x")
      .add_options()("enablePreventBroadcast", po::value<bool>(), "flag")("id", po::value<int>(), "id");
  EXPECT_EQ(textOf(usage),
            "Usage: x:\n"
            "  --enablePreventBroadcast arg flag\n"
            "  --id arg                     id\n");
}

TEST(PublishUsage, KeepsHalfOfEightyColumnsForDescriptions) {
  Usage usage;
  const std::string name(40, 'n');
  publishUsage(usage, "Usage: x")
      .add_options()(name.c_str(), po::value<int>(), "aaaa bbbb cccc dddd eeee ffff gggg hhhh iiii jjjj");
  EXPECT_EQ(textOf(usage), "Usage: x:\n  --" + name + " arg\n" + std::string(40, ' ') +
                               "aaaa bbbb cccc dddd eeee ffff gggg hhhh\n" + std::string(40, ' ') +
                               "iiii jjjj\n");
}

class ParseArguments : public testing::Test {
 protected:
  ParseArguments() {
    options_.add_options()("enable", po::value<bool>(), "enable")("id", po::value<int>(), "id")(
        "name", po::value<std::string>(), "name")(
        "devices", po::value<Words>()->multitoken()->implicit_value(Words{}, ""), "devices");
  }

  po::variables_map parse(const Words& subargs) const { return parseArguments(subargs, options_); }

  std::string refusalOf(const Words& subargs) const {
    try {
      parse(subargs);
    } catch (const po::error& error) {
      return error.what();
    }
    return "no failure";
  }

  po::options_description options_;
};

TEST_F(ParseArguments, ReadsABooleanWord) {
  const std::vector<std::pair<std::string, bool>> words = {
      {"1", true},  {"true", true},   {"yes", true}, {"on", true},   {"TRUE", true}, {"Yes", true},
      {"0", false}, {"false", false}, {"no", false}, {"off", false}, {"Off", false}, {"FALSE", false}};
  for (const auto& [word, value] : words) {
    SCOPED_TRACE(word);
    EXPECT_EQ(parse({"--enable", word})["enable"].as<bool>(), value);
  }
}

TEST_F(ParseArguments, RefusesAnyOtherWordAsABoolean) {
  for (const std::string word : {"2", "-1", "maybe", "10", "t", " 1"}) {
    EXPECT_EQ(refusalOf({"--enable", word}),
              "the argument ('" + word +
                  "') for option '--enable' is invalid. Valid choices are 'on|off', 'yes|no', '1|0' and "
                  "'true|false'");
  }
}

TEST_F(ParseArguments, ReadsAnIntegerOfThirtyTwoBits) {
  const std::vector<std::pair<std::string, int>> words = {{"0", 0},
                                                          {"7", 7},
                                                          {"-1", -1},
                                                          {"007", 7},
                                                          {"2147483647", 2147483647},
                                                          {"-2147483648", -2147483647 - 1}};
  for (const auto& [word, value] : words) {
    SCOPED_TRACE(word);
    EXPECT_EQ(parse({"--id", word})["id"].as<int>(), value);
  }
}

TEST_F(ParseArguments, RefusesAnyOtherWordAsAnInteger) {
  for (const std::string word : {"x", "7x", "0x7", "1.5", " 7", "7 ", "2147483648", "-2147483649"}) {
    EXPECT_EQ(refusalOf({"--id", word}), "the argument ('" + word + "') for option '--id' is invalid");
  }
}

TEST_F(ParseArguments, ReadsTextAsItIs) {
  for (const std::string word : {"Home", "", " ", "a b", "-x", "--id", "\xFF\x80", "=", "%s"}) {
    EXPECT_EQ(parse({"--name", word})["name"].as<std::string>(), word);
  }
}

TEST_F(ParseArguments, ReadsAValueBehindAnEqualSign) {
  const auto arguments = parse({"--id=7", "--name=a=b"});
  EXPECT_EQ(arguments["id"].as<int>(), 7);
  EXPECT_EQ(arguments["name"].as<std::string>(), "a=b");
}

TEST_F(ParseArguments, ReadsAllWordsOfAList) {
  const auto arguments = parse({"--devices", "b", "2", "a", "1", "--id", "7"});
  EXPECT_EQ(arguments["devices"].as<Words>(), (Words{"b", "2", "a", "1"}));
  EXPECT_EQ(arguments["id"].as<int>(), 7);
}

TEST_F(ParseArguments, ReadsAListWithoutWordsAsEmpty) {
  EXPECT_EQ(parse({"--devices"})["devices"].as<Words>(), Words{});
  EXPECT_EQ(parse({"--devices", "--id", "7"})["devices"].as<Words>(), Words{});
}

TEST_F(ParseArguments, TakesTheOptionsInAnyOrder) {
  const auto arguments = parse({"--name", "Home", "--id", "7", "--enable", "1"});
  EXPECT_EQ(arguments["name"].as<std::string>(), "Home");
  EXPECT_EQ(arguments["id"].as<int>(), 7);
  EXPECT_TRUE(arguments["enable"].as<bool>());
}

TEST_F(ParseArguments, FailsOnlyAtReadingAnOptionThatWasNotGiven) {
  const auto arguments = parse({});
  EXPECT_THROW(arguments["enable"].as<bool>(), boost::bad_any_cast);
  EXPECT_THROW(arguments["id"].as<int>(), boost::bad_any_cast);
  EXPECT_THROW(arguments["name"].as<std::string>(), boost::bad_any_cast);
  EXPECT_THROW(arguments["devices"].as<Words>(), boost::bad_any_cast);
}

TEST_F(ParseArguments, FailsAtReadingAValueAsAnotherKind) {
  const auto arguments = parse({"--id", "7"});
  EXPECT_THROW(arguments["id"].as<std::string>(), boost::bad_any_cast);
  EXPECT_THROW(arguments["id"].as<bool>(), boost::bad_any_cast);
}

TEST_F(ParseArguments, DoesNotEnforceAnOptionAsRequired) {
  po::options_description options;
  options.add_options()("id", po::value<int>()->required(), "id");
  EXPECT_EQ(parseArguments({}, options).size(), 0U);
}

TEST_F(ParseArguments, RefusesAnOptionThatIsNotDeclared) {
  EXPECT_EQ(refusalOf({"--colour", "blue"}), "unrecognised option '--colour'");
  EXPECT_EQ(refusalOf({"--id", "7", "--colour=blue"}), "unrecognised option '--colour=blue'");
  EXPECT_EQ(refusalOf({"-i", "7"}), "unrecognised option '-i'");
}

TEST_F(ParseArguments, SaysWhatItRefusesAlsoWhereThatIsAPlaceholderOfTheSentence) {
  EXPECT_EQ(refusalOf({"--id", "%value%"}), "the argument ('%value%') for option '--id' is invalid");
  EXPECT_EQ(refusalOf({"--enable", "%canonical_option%"}),
            "the argument ('%canonical_option%') for option '--enable' is invalid. Valid choices are "
            "'on|off', 'yes|no', '1|0' and 'true|false'");
  EXPECT_EQ(refusalOf({"--%canonical_option%"}), "unrecognised option '--%canonical_option%'");
  EXPECT_EQ(refusalOf({"--%\1option%", "50%", "%"}), "unrecognised option '--%\1option%'");
}

TEST_F(ParseArguments, LeavesPercentSignsInValues) {
  EXPECT_EQ(parse({"--name", "%value%\1%"})["name"].as<std::string>(), "%value%\1%");
}

TEST_F(ParseArguments, TellsTheLetterCaseOfOptionsApart) {
  EXPECT_EQ(refusalOf({"--ID", "7"}), "unrecognised option '--ID'");
}

TEST_F(ParseArguments, RefusesASecondValueForOneOption) {
  EXPECT_EQ(refusalOf({"--id", "7", "--id", "8"}), "option '--id' cannot be specified more than once");
  EXPECT_EQ(refusalOf({"--name", "a", "--name", "a"}), "option '--name' cannot be specified more than once");
}

TEST_F(ParseArguments, RefusesAnOptionWithoutItsWord) {
  EXPECT_EQ(refusalOf({"--id"}), "the required argument for option '--id' is missing");
  EXPECT_EQ(refusalOf({"--id", "7", "--name"}), "the required argument for option '--name' is missing");
}

TEST_F(ParseArguments, PassesOverWordsThatBelongToNoOption) {
  const auto arguments = parse({"stray", "--id", "7", "words"});
  EXPECT_EQ(arguments.size(), 1U);
  EXPECT_EQ(arguments["id"].as<int>(), 7);
}

TEST(ParseDevicesList, MakesADeviceOfEachPairInOrder) {
  EXPECT_EQ(
      parseDevicesList({"TV", "00:11:22:33:44:55", "Phone", "AA-BB-CC-DD-EE-FF", "", "00:00:00:00:00:00"}),
      (std::vector<MACFilterDevice>{{"TV", MACAddress("00:11:22:33:44:55")},
                                    {"Phone", MACAddress("aa:bb:cc:dd:ee:ff")},
                                    {"", MACAddress()}}));
}

TEST(ParseDevicesList, KeepsADeviceThatIsGivenTwice) {
  const MACFilterDevice device{"TV", MACAddress("00:11:22:33:44:55")};
  EXPECT_EQ(parseDevicesList({"TV", "00:11:22:33:44:55", "TV", "00:11:22:33:44:55"}),
            (std::vector<MACFilterDevice>{device, device}));
}

TEST(ParseDevicesList, MakesNoDeviceOfNoWords) {
  EXPECT_EQ(parseDevicesList({}), std::vector<MACFilterDevice>{});
}

std::string refusalOf(const Words& tokens) {
  try {
    parseDevicesList(tokens);
  } catch (const std::invalid_argument& error) {
    return error.what();
  }
  return "no failure";
}

TEST(ParseDevicesList, RefusesAnOddNumberOfWordsBeforeItLooksAtThem) {
  EXPECT_EQ(refusalOf({"a"}), "input of column devices is not correct.");
  EXPECT_EQ(refusalOf({""}), "input of column devices is not correct.");
  EXPECT_EQ(refusalOf({"a", "00:11:22:33:44:55", "b"}), "input of column devices is not correct.");
  EXPECT_EQ(refusalOf({"a", "no address", "b"}), "input of column devices is not correct.");
}

TEST(ParseDevicesList, PassesOnTheFailureOfAnAddress) {
  EXPECT_EQ(refusalOf({"a", "00:11:22:33:44:55", "b", "bad"}), "Invalid MAC address: bad");
  EXPECT_EQ(refusalOf({"a", ""}), "Invalid MAC address: ");
  EXPECT_EQ(refusalOf({"00:11:22:33:44:55", "a"}), "Invalid MAC address: a");
}

}  // namespace

}  // namespace TALO::Tool
