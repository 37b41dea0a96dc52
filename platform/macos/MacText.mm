#import <Foundation/Foundation.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/macos/Conversions.h"
#include "platform/macos/MacPorts.h"

namespace keyrow::macos {

namespace {

/// Whether the text at this place goes on with the character before it although Foundation
/// may begin another one: a line feed after a carriage return, and a joiner.
bool continuesCharacter(NSString* string, NSUInteger location) {
  constexpr unichar zeroWidthJoiner = 0x200D;
  if (location == 0) return false;
  const unichar here = [string characterAtIndex:location];
  const unichar before = [string characterAtIndex:location - 1];
  if (here == '\n') return before == '\r';
  return here == zeroWidthJoiner && before != '\n' && before != '\r';
}

/// Where each character starts, and at last where the string ends. Where a character
/// starts may depend on all that precedes it, so this reads from the start.
std::vector<NSUInteger> characterBoundaries(NSString* string) {
  __block std::vector<NSUInteger> boundaries;
  [string enumerateSubstringsInRange:NSMakeRange(0, string.length)
                             options:NSStringEnumerationByComposedCharacterSequences |
                                     NSStringEnumerationSubstringNotRequired
                          usingBlock:^(NSString*, NSRange range, NSRange, BOOL*) {
                            if (continuesCharacter(string, range.location)) return;
                            boundaries.push_back(range.location);
                          }];
  boundaries.push_back(string.length);
  return boundaries;
}

class MacText final : public Text {
 public:
  std::size_t characterCount(std::string_view text) override {
    return characterBoundaries(nsString(text)).size() - 1;
  }

  std::string lastCharacters(std::string_view text, std::size_t count) override {
    NSString* const string = nsString(text);
    const auto boundaries = characterBoundaries(string);
    if (boundaries.size() - 1 <= count) return std::string{text};
    return utf8Text([string substringFromIndex:boundaries[boundaries.size() - 1 - count]]);
  }

  std::optional<char32_t> firstScalar(std::string_view text) override {
    NSString* const string = nsString(text);
    char32_t scalar = 0;
    NSUInteger size = 0;
    [string getBytes:&scalar
             maxLength:sizeof scalar
            usedLength:&size
              encoding:NSUTF32LittleEndianStringEncoding
               options:0
                 range:NSMakeRange(0, string.length)
        remainingRange:nullptr];
    return size == sizeof scalar ? std::optional{scalar} : std::nullopt;
  }

  bool isLetter(char32_t scalar) override {
    return [NSCharacterSet.letterCharacterSet longCharacterIsMember:scalar];
  }

  bool isControl(char32_t scalar) override {
    return [NSCharacterSet.controlCharacterSet longCharacterIsMember:scalar];
  }

  std::string uppercased(std::string_view text) override {
    return utf8Text(nsString(text).uppercaseString);
  }

  std::string lowercased(std::string_view text) override {
    return utf8Text(nsString(text).lowercaseString);
  }

  bool localizedCaseInsensitiveContains(std::string_view text, std::string_view part) override {
    return [nsString(text) localizedCaseInsensitiveContainsString:nsString(part)];
  }
};

}  // namespace

std::unique_ptr<Text> makeText() { return std::make_unique<MacText>(); }

}  // namespace keyrow::macos
