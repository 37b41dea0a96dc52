#include "platform/macos/MacPorts.h"

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

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

TEST(MacWorkspaceTest, ListsWhatRunsAndWhatIsInstalled) {
  const std::unique_ptr<Workspace> workspace = makeWorkspace();
  std::set<std::string> identifiers;
  for (const auto& application : workspace->applications()) {
    EXPECT_FALSE(application.name.empty()) << application.bundleIdentifier;
    EXPECT_FALSE(application.name.ends_with(".app")) << application.name;
    identifiers.insert(application.bundleIdentifier);
  }
  EXPECT_TRUE(identifiers.contains("com.apple.finder"));
  EXPECT_TRUE(identifiers.contains("com.apple.TextEdit"));
}

TEST(MacWorkspaceTest, KnowsWhatLiesAtAPath) {
  const std::unique_ptr<Workspace> workspace = makeWorkspace();
  EXPECT_EQ(workspace->bundleIdentifier("/System/Applications/TextEdit.app"), "com.apple.TextEdit");
  for (const auto* path : {"", "/", "/System/Applications/Missing.app", "/etc/hosts"}) {
    EXPECT_EQ(workspace->bundleIdentifier(path), std::nullopt) << path;
  }
}

TEST(MacWorkspaceTest, KnowsHowApplicationsSpellThemselves) {
  const std::unique_ptr<Workspace> workspace = makeWorkspace();
  EXPECT_EQ(workspace->bundleIdentifierAsSpelled("COM.apple.textedit"), "com.apple.TextEdit");
  for (const auto* identifier : {"", "app.keyrow.Keyrow.mac-tests.missing"}) {
    EXPECT_EQ(workspace->bundleIdentifierAsSpelled(identifier), std::nullopt) << identifier;
  }
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
