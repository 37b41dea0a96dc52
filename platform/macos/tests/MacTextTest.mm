#include "platform/macos/MacPorts.h"

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "tests/TextCases.h"

namespace keyrow::macos {
namespace {

class MacTextTest : public ::testing::Test {
 protected:
  const std::unique_ptr<Text> text = makeText();
};

TEST_F(MacTextTest, CountsWhatAReaderSeesAsOne) {
  for (const auto& [whole, characters] : textCases::characterCounts) {
    EXPECT_EQ(text->characterCount(whole), characters) << ::testing::PrintToString(whole);
  }
  for (const auto& [whole, characters] : textCases::characterCountsOfOtherBytes) {
    EXPECT_EQ(text->characterCount(whole), characters) << ::testing::PrintToString(whole);
  }
}

TEST_F(MacTextTest, KeepsWholeCharactersFromTheEnd) {
  for (const auto& [whole, count, last] : textCases::lastCharacters) {
    EXPECT_EQ(text->lastCharacters(whole, count), last)
        << count << " of " << ::testing::PrintToString(whole);
  }
}

TEST_F(MacTextTest, TakesTheFirstScalar) {
  for (const auto& [whole, scalar] : textCases::firstScalars) {
    EXPECT_EQ(text->firstScalar(whole), scalar) << whole;
  }
}

TEST_F(MacTextTest, KnowsLettersAndMarks) {
  for (const char32_t letter : textCases::letters) {
    EXPECT_TRUE(text->isLetter(letter)) << std::hex << static_cast<unsigned>(letter);
  }
  for (const char32_t other : textCases::noLetters) {
    EXPECT_FALSE(text->isLetter(other)) << std::hex << static_cast<unsigned>(other);
  }
}

TEST_F(MacTextTest, KnowsControlCharacters) {
  for (const char32_t control : textCases::controls) {
    EXPECT_TRUE(text->isControl(control)) << std::hex << static_cast<unsigned>(control);
  }
  for (const char32_t other : textCases::noControls) {
    EXPECT_FALSE(text->isControl(other)) << std::hex << static_cast<unsigned>(other);
  }
}

TEST_F(MacTextTest, ChangesCaseByUnicode) {
  for (const auto& [whole, mapped] : textCases::uppercased) {
    EXPECT_EQ(text->uppercased(whole), mapped) << whole;
  }
  for (const auto& [whole, mapped] : textCases::lowercased) {
    EXPECT_EQ(text->lowercased(whole), mapped) << whole;
  }
}

TEST_F(MacTextTest, FindsIgnoringCaseOnly) {
  if ([@[ @"az", @"tr" ] containsObject:NSLocale.currentLocale.languageCode]) {
    GTEST_SKIP() << "This user's language has a dotless i.";
  }
  for (const auto& [whole, part, contains] : textCases::caseInsensitiveContains) {
    EXPECT_EQ(text->localizedCaseInsensitiveContains(whole, part), contains)
        << whole << " / " << part;
  }
}

}  // namespace
}  // namespace keyrow::macos
