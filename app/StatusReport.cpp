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
  auto status =
      storedStatus(use_.storedFnStates, use_.keyboardFnStates, use_.settings, use_.namedSettings);
  const auto mode = use_.fnStateController.readFnState();
  if (mode) status.mode = *mode;
  status.application = use_.workspace.frontmostBundleIdentifier();
  status.source = source(status);
  status.running = running();
  return status;
}

Status::Source StatusReport::source(const Status& status) const {
  // Somebody else may have put it there.
  if (!use_.modePolicy.isSessionActive()) return Status::Source::unknown;
  if (!status.mode || status.mode != use_.modePolicy.lastKnownFnState()) {
    return Status::Source::unknown;
  }
  if (!use_.modePolicy.isLocalScopeActive()) {
    return status.mode == status.global ? Status::Source::global : Status::Source::unknown;
  }
  const auto found =
      status.application ? status.overrides.find(*status.application) : status.overrides.end();
  const bool isOfOverride = found != status.overrides.end() && found->second == *status.mode;
  return isOfOverride ? Status::Source::override_ : Status::Source::unknown;
}

Status::Running StatusReport::running() const {
  Status::Running running{.processIdentifier = use_.process.processIdentifier(),
                          .isTrusted = use_.accessibility.isProcessTrusted(),
                          .inputMonitoring = use_.inputMonitoring.access(),
                          .hasEventTap = use_.eventTapKeeper.hasEventTap(),
                          .isSessionActive = use_.modePolicy.isSessionActive(),
                          .seesKeyboards = use_.keyboardSourceMonitor.isMonitoring(),
                          .isKeyboardSeized = use_.keyboardSourceMonitor.lacksKeyboard(),
                          .keyboards = {}};
  for (const auto& source : use_.keyboardSourceMonitor.keyboards()) {
    running.keyboards.push_back(described(source));
  }
  return running;
}

}  // namespace keyrow
