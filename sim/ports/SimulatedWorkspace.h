#pragma once

#include "platform/Workspace.h"
#include "sim/ports/ProcessContext.h"

namespace keyrow::sim {

/// The machine's applications as a process sees them.
class SimulatedWorkspace final : public Workspace {
 public:
  explicit SimulatedWorkspace(const ProcessContext& context) : context_{context} {}

  std::optional<std::string> frontmostBundleIdentifier() override;
  bool isApplicationInstalled(std::string_view bundleIdentifier) override;
  /// The one in front, as it runs, and those in /Applications; named after the last part of the
  /// identifier.
  std::vector<NamedApplication> applications() override;
  std::optional<std::string> bundleIdentifier(std::string_view atPath) override;
  std::optional<std::string> bundleIdentifierAsSpelled(std::string_view bundleIdentifier) override;
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

 private:
  const ProcessContext& context_;
};

}  // namespace keyrow::sim
