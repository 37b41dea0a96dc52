#import <Carbon/Carbon.h>

#include <gtest/gtest.h>

#include <memory>

#include "platform/macos/MacPorts.h"
#include "platform/macos/tests/Eventually.h"

namespace keyrow::macos {
namespace {

TEST(MacSecureInputTest, SeesWhatThisProcessSwitches) {
  const std::unique_ptr<SecureInput> secureInput = makeSecureInput();
  // Another application may have it.
  const bool before = secureInput->isEnabled();
  ASSERT_EQ(EnableSecureEventInput(), noErr);
  EXPECT_TRUE(secureInput->isEnabled());
  ASSERT_EQ(DisableSecureEventInput(), noErr);
  EXPECT_EQ(secureInput->isEnabled(), before);
}

TEST(MacSecureInputTest, NamesNobodyWhereNobodyHasIt) {
  const std::unique_ptr<SecureInput> secureInput = makeSecureInput();
  if (secureInput->isEnabled()) GTEST_SKIP() << "An application holds secure input.";
  // The registry is told of an end a moment later.
  EXPECT_TRUE(eventually([&] { return !secureInput->holder(); }));
}

}  // namespace
}  // namespace keyrow::macos
