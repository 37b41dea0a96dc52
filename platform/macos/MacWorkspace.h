#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Workspace.h"

namespace keyrow::macos {

/// `Workspace` on `NSWorkspace`.
class MacWorkspace final : public Workspace {
 public:
  std::optional<std::string> frontmostBundleIdentifier() override;
  bool isApplicationInstalled(std::string_view bundleIdentifier) override;
  ObserverToken observeActivation(std::function<void()> handler) override;
  ObserverToken observeWillSleep(std::function<void()> handler) override;
  ObserverToken observeDidWake(std::function<void()> handler) override;
  bool isSessionActive() override;
  ObserverToken observeSessionDidResignActive(std::function<void()> handler) override;
  ObserverToken observeSessionDidBecomeActive(std::function<void()> handler) override;
  std::vector<std::unique_ptr<RunningApplication>> runningApplications(
      std::string_view bundleIdentifier) override;
  void openApplication(std::string_view path) override;
  bool isURL(std::string_view text) override;
  bool openURL(std::string_view url) override;
};

}  // namespace keyrow::macos
