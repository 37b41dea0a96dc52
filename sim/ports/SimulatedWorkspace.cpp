#include "sim/ports/SimulatedWorkspace.h"

#include <utility>

#include "core/Words.h"

namespace keyrow::sim {

namespace {

class Application final : public RunningApplication {
 public:
  Application(PortTrace& trace, std::shared_ptr<RunningProcess> process)
      : trace_{trace}, process_{std::move(process)} {}

  std::int32_t processIdentifier() override { return process_->processIdentifier; }
  bool isTerminated() override { return process_->isTerminated; }
  bool terminate() override {
    trace_.add("terminate " + std::to_string(process_->processIdentifier));
    return !isTerminated() && process_->terminate();
  }
  bool forceTerminate() override {
    trace_.add("force-terminate " + std::to_string(process_->processIdentifier));
    return !isTerminated() && process_->forceTerminate();
  }

 private:
  PortTrace& trace_;
  const std::shared_ptr<RunningProcess> process_;
};

std::string nameOf(std::string_view bundleIdentifier) {
  return std::string{bundleIdentifier.substr(bundleIdentifier.rfind('.') + 1)};
}

}  // namespace

std::vector<NamedApplication> SimulatedWorkspace::applications() {
  std::vector<NamedApplication> applications;
  const auto& known = context_.mac.applications;
  for (const auto& identifier : known.installed()) {
    const NamedApplication application{.name = nameOf(identifier), .bundleIdentifier = identifier};
    if (known.frontmost() == identifier) applications.push_back(application);
    if (!known.isElsewhere(identifier)) applications.push_back(application);
  }
  return applications;
}

std::optional<std::string> SimulatedWorkspace::bundleIdentifier(std::string_view atPath) {
  const auto& known = context_.mac.applications;
  for (const auto& identifier : known.installed()) {
    const bool isThere = atPath == "/Applications/" + nameOf(identifier) + ".app";
    if (isThere && !known.isElsewhere(identifier)) return identifier;
  }
  return std::nullopt;
}

std::optional<std::string> SimulatedWorkspace::bundleIdentifierAsSpelled(
    std::string_view bundleIdentifier) {
  if (!context_.mac.call(PortCall::findApplication)) return std::nullopt;
  for (const auto& identifier : context_.mac.applications.installed()) {
    if (isSameWord(bundleIdentifier, identifier)) return identifier;
  }
  return std::nullopt;
}

std::optional<std::string> SimulatedWorkspace::frontmostBundleIdentifier() {
  if (!context_.mac.call(PortCall::frontmostApplication)) return std::nullopt;
  return context_.mac.sessions.frontmost(context_.user);
}

bool SimulatedWorkspace::isApplicationInstalled(std::string_view bundleIdentifier) {
  return bundleIdentifierAsSpelled(bundleIdentifier).has_value();
}

ObserverToken SimulatedWorkspace::observeActivation(std::function<void()> handler) {
  return context_.mac.applications.observeActivation(
      [this, tell = context_.observer("activation", std::move(handler))] {
        if (context_.mac.sessions.active() == context_.user) tell();
      });
}

ObserverToken SimulatedWorkspace::observeWillSleep(std::function<void()> handler) {
  return context_.mac.power.observeWillSleep(context_.observer("sleep", std::move(handler)));
}

ObserverToken SimulatedWorkspace::observeDidWake(std::function<void()> handler) {
  return context_.mac.power.observeDidWake(context_.observer("wake", std::move(handler)));
}

bool SimulatedWorkspace::isSessionActive() {
  return context_.mac.sessions.onConsole() == context_.user;
}

ObserverToken SimulatedWorkspace::observeSessionDidResignActive(std::function<void()> handler) {
  return context_.mac.sessions.observeResigned(
      context_.user, context_.observer("session leaving", std::move(handler)));
}

ObserverToken SimulatedWorkspace::observeSessionDidBecomeActive(std::function<void()> handler) {
  return context_.mac.sessions.observeBecameActive(
      context_.user, context_.observer("session coming", std::move(handler)));
}

std::vector<std::unique_ptr<RunningApplication>> SimulatedWorkspace::runningApplications(
    std::string_view bundleIdentifier) {
  context_.mac.trace.add("list running applications");
  std::vector<std::unique_ptr<RunningApplication>> applications;
  for (auto& process : context_.mac.applications.running(bundleIdentifier)) {
    if (process->user != context_.user) continue;
    applications.push_back(std::make_unique<Application>(context_.mac.trace, std::move(process)));
  }
  return applications;
}

void SimulatedWorkspace::openApplication(std::string_view path) { context_.mac.screen.open(path); }

bool SimulatedWorkspace::isURL(std::string_view text) {
  // Some versions of macOS take an empty text for one.
  return text.find_first_of(" \n\t<>\"") == std::string_view::npos;
}

bool SimulatedWorkspace::openURL(std::string_view url) {
  if (!context_.mac.call(PortCall::openURL)) return false;
  context_.mac.screen.open(url);
  if (url.starts_with("x-apple.systempreferences:")) {
    context_.mac.openSystemSettings(context_.user);
  }
  return true;
}

}  // namespace keyrow::sim
