#include "platform/macos/MacWorkspace.h"

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

namespace keyrow::macos {
namespace {

TEST(MacWorkspaceTest, KnowsWhatIsAURL) {
  MacWorkspace workspace;
  EXPECT_TRUE(workspace.isURL("https://keyrow.example/appcast.xml"));
  EXPECT_TRUE(workspace.isURL("https://keyrow.example/appcast.xml?from=1%202"));
  // Whoever takes these apart would repair some of them.
  for (const auto* text : {"", "https://keyrow.example/an appcast.xml", "https://[keyrow", "%"}) {
    EXPECT_FALSE(workspace.isURL(text)) << text;
  }
}

TEST(MacWorkspaceTest, KnowsWhichApplicationsAreInstalled) {
  MacWorkspace workspace;
  EXPECT_TRUE(workspace.isApplicationInstalled("com.apple.finder"));
  EXPECT_FALSE(workspace.isApplicationInstalled("app.keyrow.Keyrow.mac-tests.missing"));
  EXPECT_FALSE(workspace.isApplicationInstalled(""));
}

TEST(MacWorkspaceTest, FindsNoInstanceOfWhatDoesNotRun) {
  MacWorkspace workspace;
  EXPECT_TRUE(workspace.runningApplications("app.keyrow.Keyrow.mac-tests.missing").empty());
}

TEST(MacWorkspaceTest, OpensNothingThatIsNoURL) {
  MacWorkspace workspace;
  EXPECT_FALSE(workspace.openURL(""));
}

}  // namespace
}  // namespace keyrow::macos
