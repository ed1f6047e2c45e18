#include "daemon/system/line_cutter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

using Lines = std::vector<std::string>;

TEST(LineCutter, MakesLinesHoweverThePiecesFall) {
  LineCutter cutter;
  EXPECT_EQ(cutter.Take("one\ntw"), Lines{"one"});
  EXPECT_EQ(cutter.Take("o"), Lines{});
  EXPECT_EQ(cutter.Take("\n\nthree\n"), (Lines{"two", "", "three"}));
  EXPECT_EQ(cutter.TakeRest(), Lines{});
}

TEST(LineCutter, GivesTheRestOnce) {
  LineCutter cutter;
  EXPECT_EQ(cutter.Take("one\nrest"), Lines{"one"});
  EXPECT_EQ(cutter.TakeRest(), Lines{"rest"});
  EXPECT_EQ(cutter.TakeRest(), Lines{});
}

TEST(LineCutter, LeavesOutWhatALineHasBeyond4KiB) {
  LineCutter cutter;
  EXPECT_EQ(cutter.Take(std::string(4095, 'a')), Lines{});
  EXPECT_EQ(cutter.Take("bc"), Lines{});
  EXPECT_EQ(cutter.Take("de\nnext\n"), (Lines{std::string(4095, 'a') + "b", "next"}));
  EXPECT_EQ(cutter.Take(std::string(4096, 'f') + "\n"), Lines{std::string(4096, 'f')});
}

}  // namespace

}  // namespace TALO::Wifid
