#include "reference/daemon_page.h"

#include "support/source_failure.h"

#include <boost/program_options/value_semantic.hpp>
#include <gtest/gtest.h>

namespace TALO::Reference {

namespace {

namespace po = boost::program_options;

po::options_description SomeOptions() {
  po::options_description options;
  options.add_options()("help", "print this")(
      "bridge", po::value<std::string>()->value_name("NAME")->default_value("br-0"), "bridge of all")(
      "file", po::value<std::string>()->value_name("FILE"), "what is heard");
  return options;
}

TEST(DaemonPage, HoldsTheOptionsWithTheirDefaultsAndProse) {
  EXPECT_EQ(
      DaemonPage(".SH OPTIONS\n@option help\n@option bridge\nIt is there.\n@option file\n.SH FILES\n",
                 SomeOptions()),
      ".SH OPTIONS\n"
      ".TP\n\\fB\\-\\-help\\fR\nPrint this.\n"
      ".TP\n\\fB\\-\\-bridge\\fR \\fINAME\\fR\nBridge of all.\nThe default is \\fBbr\\-0\\fR.\nIt is there.\n"
      ".TP\n\\fB\\-\\-file\\fR \\fIFILE\\fR\nWhat is heard.\n"
      ".SH FILES\n");
}

TEST(DaemonPage, ShowsAKeyAsItStandsInAFile) {
  po::options_description options;
  options.add_options()("file", po::value<std::string>()->value_name("FILE"), "what is heard");
  EXPECT_EQ(DaemonPage("@key file\n", options), ".TP\n\\fBfile\\fR = \\fIFILE\\fR\nWhat is heard.\n");
}

TEST(DaemonPage, HasAllOptionsAndNoOthers) {
  const auto failure = [](const std::string& source) {
    return SourceFailureOf([&] { DaemonPage(source, SomeOptions()); });
  };
  EXPECT_EQ(failure("@option help\n@option bridge\n@option file\n"), "nothing");
  EXPECT_EQ(failure("@option help\n@option bridge\n"), "line 2: file, an option, is missing");
  EXPECT_EQ(failure("@option help\n@option file\n"), "line 2: bridge, an option, comes here, not file");
  EXPECT_EQ(failure("@option help\n@option bridge\n@option file\n@option more\n"),
            "line 4: more is not an option that comes here");
  EXPECT_EQ(failure("@command help\n"), "line 1: @command has no place here");
}

}  // namespace

}  // namespace TALO::Reference
