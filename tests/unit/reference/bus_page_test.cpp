#include "reference/bus_page.h"

#include "support/source_failure.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace TALO::Reference {

namespace {

constexpr const char* kXml = R"(<!DOCTYPE node PUBLIC "-//freedesktop//DTD D-BUS Object Introspection 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/introspect.dtd">
<node>
  <!--
    What it is for,
    in two lines.

    Rules:
    - The first
      goes on.
    - The second.
  -->
  <interface name="a.B">

    <!--
      Find: looks for it. note: not an argument.
      key: what to look
      for.
      found: -1 where it is not there.
    -->
    <method name="Find">
      <arg name="key" type="s" direction="in"/>
      <arg name="found" type="a{ias}" direction="out"/>
    </method>

    <!--
      Went: it left.
    -->
    <signal name="Went">
      <arg name="who" type="i"/>
    </signal>
  </interface>
</node>
)";

std::string With(const std::string& part, const std::string& instead) {
  std::string xml = kXml;
  return xml.replace(xml.find(part), part.size(), instead);
}

const std::string kWhole = With("it left.", "it left.\n      who: who it was.");

TEST(BusDocument, HoldsTheMembersWithTheirProse) {
  const BusInterfaceDocument expected = {
      "a.B",
      {"What it is for, in two lines.", "Rules:", "- The first goes on.", "- The second."},
      {{"Find",
        false,
        "looks for it. note: not an argument.",
        {{"key", "s", false, "what to look for."}, {"found", "a{ias}", true, "-1 where it is not there."}}},
       {"Went", true, "it left.", {{"who", "i", false, "who it was."}}}}};
  EXPECT_EQ(ReadBusDocument(kWhole), expected);
}

TEST(BusDocument, IsRefusedWithoutProse) {
  const auto failure = [](const std::string& xml) -> std::string {
    try {
      ReadBusDocument(xml);
    } catch (const std::invalid_argument& error) {
      return error.what();
    }
    return "nothing";
  };
  EXPECT_EQ(failure(kWhole), "nothing");
  EXPECT_EQ(failure(kXml), "the argument who of Went has no prose");
  EXPECT_EQ(failure(With("Find: looks", "Seek: looks")), "Find has no prose");
  EXPECT_EQ(failure(With("Went: it left.", "")), "Went has no prose");
}

TEST(BusPage, HoldsInterfacesAndErrorsWithTheirProse) {
  EXPECT_EQ(BusPage(".TH B 7\n@interface a.B\n.SH ERRORS\n@error a.Gone\nIt went.\n",
                    {ReadBusDocument(kWhole)}, {{"a.Gone", "Is gone"}}),
            ".TH B 7\n"
            ".SH \"INTERFACE a.B\"\n"
            "What it is for, in two lines.\n"
            ".PP\nRules:\n"
            ".IP \\(bu 2\nThe first goes on.\n"
            ".IP \\(bu 2\nThe second.\n"
            ".SS \"Find\"\n"
            "\\fBFind\\fR(\\fIkey\\fR) \\(-> \\fIfound\\fR\n.PP\nLooks for it. note: not an argument.\n"
            ".TP\n\\fIkey\\fR\nWhat to look for.\n.br\nArgument of type \\fBs\\fR: string.\n"
            ".TP\n\\fIfound\\fR\n\\-1 where it is not there.\n.br\n"
            "Result of type \\fBa{ias}\\fR: map of int32 to list of string.\n"
            ".SS \"Went\"\n"
            "signal \\fBWent\\fR(\\fIwho\\fR)\n.PP\nIt left.\n"
            ".TP\n\\fIwho\\fR\nWho it was.\n.br\nValue of type \\fBi\\fR: int32.\n"
            ".SH ERRORS\n"
            ".TP\n\\fBa.Gone\\fR (Is gone)\nIt went.\n");
}

TEST(BusPage, HasAllInterfacesAndErrorsAndNoOthers) {
  const auto failure = [](const std::string& source) {
    return SourceFailureOf([&] { BusPage(source, {ReadBusDocument(kWhole)}, {{"a.Gone", "Is gone"}}); });
  };
  EXPECT_EQ(failure("@interface a.B\n@error a.Gone\n"), "nothing");
  EXPECT_EQ(failure("@interface a.B\n"), "line 1: a.Gone, an error, is missing");
  EXPECT_EQ(failure("@error a.Gone\n"), "line 1: a.B, an interface, is missing");
  EXPECT_EQ(failure("@interface a.C\n"), "line 1: a.B, an interface, comes here, not a.C");
  EXPECT_EQ(failure("@interface a.B\n@error a.Gone\n@error a.Late\n"),
            "line 3: a.Late is not an error that comes here");
  EXPECT_EQ(failure("@option id\n"), "line 1: @option has no place here");
}

TEST(BusErrors, AreTheRefusalsOfTheDaemon) {
  std::vector<std::string> lines;
  for (const BusError& error : ReadBusErrors()) {
    lines.push_back(error.name + ": " + error.text);
  }
  EXPECT_EQ(
      lines,
      (std::vector<std::string>{
          "com.talo.Wifi1.Error.InvalidArgument: Invalid argument",
          "com.talo.Wifi1.Error.NotFound: Not found", "com.talo.Wifi1.Error.AlreadyExists: Already exists",
          "com.talo.Wifi1.Error.NotSupported: Not supported", "com.talo.Wifi1.Error.NotAllowed: Not allowed",
          "com.talo.Wifi1.Error.Busy: Busy", "com.talo.Wifi1.Error.LimitReached: Limit reached",
          "com.talo.Wifi1.Error.RadioFailed: Radio failed",
          "com.talo.Wifi1.Error.StorageFailed: Storage failed"}));
}

}  // namespace

}  // namespace TALO::Reference
