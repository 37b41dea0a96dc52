#include "app/StatusReport.h"

#include <string>

namespace keyrow {

namespace {

Status::Keyboard described(const KeyboardDeviceSource& source) {
  const auto numbers = source.numbers();
  return {.name = source.product && !source.product->empty() ? *source.product
                                                             : std::string{kindText(source.kind)},
          .numbers = numbers ? std::optional{numbers->text()} : std::nullopt,
          .isTranslatable = source.mediaTranslationEligible};
}

}  // namespace

Status StatusReport::status() const {
  auto status = storedStatus(use_.storedFnStates, use_.keyboardFnStates, use_.settings);
  status.mode = use_.modePolicy.lastKnownFnState();
  status.isOverride = use_.modePolicy.isLocalScopeActive();
  status.application = use_.workspace.frontmostBundleIdentifier();
  status.running = running();
  return status;
}

Status::Running StatusReport::running() const {
  Status::Running running{.processIdentifier = use_.process.processIdentifier(),
                          .isTrusted = use_.accessibility.isProcessTrusted(),
                          .inputMonitoring = use_.inputMonitoring.access(),
                          .hasEventTap = use_.eventTapKeeper.hasEventTap(),
                          .isSessionActive = use_.modePolicy.isSessionActive(),
                          .keyboards = {}};
  for (const auto& source : use_.keyboardSourceMonitor.keyboards()) {
    running.keyboards.push_back(described(source));
  }
  return running;
}

}  // namespace keyrow
