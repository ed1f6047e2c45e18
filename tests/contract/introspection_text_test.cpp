// The reader of introspection texts that the comparison with the documents stands on.

#include "support/introspection.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace TALO::EndToEnd {

namespace {

using Interfaces = std::map<std::string, DescribedInterface>;

TEST(AnIntrospectionText, NamesTheMembersOfEachInterface) {
  const Interfaces expected = {
      {"com.example.One",
       {.methods = {{"Ask", {{"question", "a{s(iay)}", "in"}, {"answer", "s", "out"}}}, {"Bare", {}}},
        .signals = {{"Said", {{"word", "s", "out"}}}},
        .properties = {{"Level", {"s", "readwrite"}}}}},
      {"com.example.Two", {}}};
  EXPECT_EQ(
      ReadIntrospection(R"(<!DOCTYPE node PUBLIC "-//freedesktop//DTD D-BUS Object Introspection 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/introspect.dtd">
<node name="/com/example">
 <interface name="com.example.One">
  <method name='Ask'>
   <arg type="a{s(iay)}" name="question"/>
   <arg direction="out" name="answer"
        type="s"></arg>
  </method>
  <method name="Bare"/>
  <signal name="Said"><arg name="word" type="s"/></signal>
  <property name="Level" type="s" access="readwrite"/>
 </interface>
 <interface name="com.example.Two"></interface>
 <node name="below"/>
</node>
)"),
      expected);
}

TEST(AnIntrospectionText, SaysTheSameWithCommentsAnnotationsAndDocumentation) {
  const std::string bare = R"(<node><interface name="a.B"><method name="M">
      <arg name="x" type="i" direction="in"/></method><property name="P" type="b" access="read"/>
      </interface></node>)";
  EXPECT_EQ(ReadIntrospection(R"(<?xml version="1.0"?>
<!-- <node><interface name="c.D"> > -->
<node xmlns:doc="http://example.com/doc">
  <doc:doc><doc:para>Says <arg name="y" type="s"/> of itself.</doc:para></doc:doc>
  <interface name="a.B">
    <!-- <method name="N"/> -->
    <annotation name="org.freedesktop.DBus.Deprecated" value="true"/>
    <method name="M">
      <!-- M: does it. -->
      <doc:doc><method name="O"/></doc:doc>
      <arg name="x" type="i" direction="in"><doc:summary>how often</doc:summary></arg>
      <annotation name="org.freedesktop.DBus.Method.NoReply" value="true"/>
    </method>
    <property name="P" type="b" access="read">
      <annotation name="org.freedesktop.DBus.Property.EmitsChangedSignal" value="const"/>
    </property>
  </interface>
</node>)"),
            ReadIntrospection(bare));
}

TEST(AnIntrospectionText, DiffersFromAnotherInAnyOfItsMembers) {
  const auto withMembers = [](const std::string& members) {
    return ReadIntrospection("<node><interface name=\"a.B\">" + members + "</interface></node>");
  };
  const Interfaces one =
      withMembers("<method name=\"M\"><arg name=\"x\" type=\"i\" direction=\"in\"/></method>");
  ASSERT_EQ(withMembers("<method name=\"M\"><arg name=\"x\" type=\"i\"/></method>"), one);
  for (const char* other : {
           "",
           "<method name=\"M\"/>",
           "<method name=\"N\"><arg name=\"x\" type=\"i\" direction=\"in\"/></method>",
           "<method name=\"M\"><arg name=\"y\" type=\"i\" direction=\"in\"/></method>",
           "<method name=\"M\"><arg name=\"x\" type=\"u\" direction=\"in\"/></method>",
           "<method name=\"M\"><arg name=\"x\" type=\"i\" direction=\"out\"/></method>",
           "<signal name=\"M\"><arg name=\"x\" type=\"i\"/></signal>",
           "<method name=\"M\"><arg name=\"x\" type=\"i\"/></method><signal name=\"S\"/>",
           "<method name=\"M\"><arg name=\"x\" type=\"i\"/></method>"
           "<property name=\"P\" type=\"i\" access=\"read\"/>",
       }) {
    EXPECT_NE(withMembers(other), one) << other;
  }
}

TEST(AnIntrospectionText, IsRefusedWhereItIsBroken) {
  for (const char* text : {
           "",
           "no text of the kind",
           "<interface name=\"a.B\"/>",
           "<node>",
           "<node><interface name=\"a.B\"></node>",
           "<node><interface name=\"a.B\"/><interface name=\"a.B\"/></node>",
           "<node><interface name=\"a.B\"><method name=\"M\"/><method name=\"M\"/></interface></node>",
           "<node><interface/></node>",
           "<node><interface name=\"a.B\"><method name=\"M\"><arg name=\"x\"/></method></interface></node>",
           "<node><interface name=\"a.B\"><property name=\"P\" type=\"i\"/></interface></node>",
           "<node><interface name=a.B/></node>",
           "<node><interface name=\"a.B/></node>",
           "<node><!-- </node>",
       }) {
    EXPECT_THROW(ReadIntrospection(text), std::invalid_argument) << text;
  }
}

}  // namespace

}  // namespace TALO::EndToEnd
