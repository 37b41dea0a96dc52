#include "platform/macos/MacPorts.h"

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>

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

TEST(MacWorkspaceTest, ListsWhatRunsAndWhatIsInstalledOnceByEachName) {
  const std::unique_ptr<Workspace> workspace = makeWorkspace();
  std::set<std::string> identifiers;
  std::set<std::pair<std::string, std::string>> named;
  for (const auto& application : workspace->applications()) {
    EXPECT_FALSE(application.name.empty()) << application.bundleIdentifier;
    EXPECT_FALSE(application.name.ends_with(".app")) << application.name;
    identifiers.insert(application.bundleIdentifier);
    EXPECT_TRUE(named.insert({application.name, application.bundleIdentifier}).second)
        << application.name << " " << application.bundleIdentifier;
  }
  EXPECT_TRUE(identifiers.contains("com.apple.finder"));
  EXPECT_TRUE(identifiers.contains("com.apple.TextEdit"));
}

TEST(MacWorkspaceTest, KnowsWhatLiesAtAPath) {
  const std::unique_ptr<Workspace> workspace = makeWorkspace();
  EXPECT_EQ(workspace->bundleIdentifier("/System/Applications/TextEdit.app"), "com.apple.TextEdit");
  EXPECT_EQ(workspace->bundleIdentifier("COM.apple.textedit"), "com.apple.TextEdit");
  for (const auto* path : {"", "app.keyrow.Keyrow.mac-tests.missing", "/",
                           "/System/Applications/Missing.app", "/etc/hosts"}) {
    EXPECT_EQ(workspace->bundleIdentifier(path), std::nullopt) << path;
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
