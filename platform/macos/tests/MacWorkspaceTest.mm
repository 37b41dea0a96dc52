#include "platform/macos/MacPorts.h"

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

namespace keyrow::macos {
namespace {

TEST(MacWorkspaceTest, KnowsWhatIsAURL) {
  const std::unique_ptr<Workspace> workspace = makeWorkspace();
  EXPECT_TRUE(workspace->isURL("https://keyrow.example/appcast.xml"));
  EXPECT_TRUE(workspace->isURL("https://keyrow.example/appcast.xml?from=1%202"));
  // Whoever takes these apart would repair some of them.
  for (const auto* text : {"", "https://keyrow.example/an appcast.xml", "https://[keyrow", "%"}) {
    EXPECT_FALSE(workspace->isURL(text)) << text;
  }
}

TEST(MacWorkspaceTest, KnowsWhichApplicationsAreInstalled) {
  const std::unique_ptr<Workspace> workspace = makeWorkspace();
  EXPECT_TRUE(workspace->isApplicationInstalled("com.apple.finder"));
  EXPECT_FALSE(workspace->isApplicationInstalled("app.keyrow.Keyrow.mac-tests.missing"));
  EXPECT_FALSE(workspace->isApplicationInstalled(""));
}

TEST(MacWorkspaceTest, FindsNoInstanceOfWhatDoesNotRun) {
  const std::unique_ptr<Workspace> workspace = makeWorkspace();
  EXPECT_TRUE(workspace->runningApplications("app.keyrow.Keyrow.mac-tests.missing").empty());
}

TEST(MacWorkspaceTest, OpensNothingThatIsNoURL) {
  const std::unique_ptr<Workspace> workspace = makeWorkspace();
  EXPECT_FALSE(workspace->openURL(""));
}

}  // namespace
}  // namespace keyrow::macos
