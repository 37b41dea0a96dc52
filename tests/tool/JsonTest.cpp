#include "tool/Json.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace keyrow::tool {
namespace {

TEST(JsonTest, TextsComeBackFromALibraryAsTheyWere) {
  for (const std::string text :
       {"", "plain", "\"quoted\" and \\ back", "two\nlines\tand\x01\x1F\x7F",
        "\u00e4\u2028\U0001F600", "\u009B2J \u202Eback"}) {
    EXPECT_EQ(nlohmann::json::parse(json::text(text)), text);
  }
}

TEST(JsonTest, TextsCannotMoveTheCursorOfATerminal) {
  EXPECT_EQ(json::text("\x1B[2J \u009B2J \u202Eback"), R"("\u001b[2J \u009b2J \u202eback")");
}

TEST(JsonTest, ObjectsAndArraysHoldTheirMembersInOrder) {
  const auto object = json::object(
      {{"b", json::number(-5)}, {"a", json::array({json::flag(true), json::nothing()})}});
  EXPECT_EQ(object, R"({"b":-5,"a":[true,null]})");
  EXPECT_EQ(json::object({}), "{}");
  EXPECT_EQ(json::array({}), "[]");
}

}  // namespace
}  // namespace keyrow::tool
