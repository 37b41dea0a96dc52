#include "core/Words.h"

#include <gtest/gtest.h>

namespace keyrow {
namespace {

TEST(WordsTest, ASwitchHasManyWords) {
  for (const char* word : {"on", "ON", "true", "Yes", "1"}) EXPECT_EQ(switchFromWord(word), true);
  for (const char* word : {"off", "False", "no", "0"}) EXPECT_EQ(switchFromWord(word), false);
  for (const char* word : {"", "2", "onn", "standard"}) {
    EXPECT_EQ(switchFromWord(word), std::nullopt) << word;
  }
}

TEST(WordsTest, AnUnknownWordIsToldWithTheNearestOne) {
  const std::vector<std::string> known{"status", "settings", "watch"};
  EXPECT_EQ(unknownWord("command", "Statsu", known),
            "There is no command \"Statsu\". Did you mean status?");
  EXPECT_EQ(unknownWord("command", "brew coffee", known),
            "There is no command \"brew coffee\". There is: status, settings, watch.");
  EXPECT_EQ(unknownWord("command", "x", {}), "There is no command \"x\".");
  EXPECT_EQ(unknownWord("command", "a\nb", {}), "There is no command \"a\\nb\".");
}

}  // namespace
}  // namespace keyrow
