#include "core/ModePolicy.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "core/LogText.h"
#include "core/StateLogTexts.h"

namespace keyrow {

namespace {

using namespace std::chrono_literals;

/// The n-th retry of a failed hardware read waits n times as long.
constexpr auto retryDelay = 350ms;

/// How long two users' Keyrows may disagree when their sessions change places.
constexpr auto switchingTime = 1s;

constexpr std::string_view applyGlobalAction = "apply the stored global function key mode";
constexpr std::string_view applyLocalAction = "apply the stored local function key mode";

/// Where a mode was found that somebody has chosen, as the log names it.
namespace origin {
constexpr std::string_view appSwitch = "from hardware during app switch";
constexpr std::string_view leavingSystemSettings = "from hardware after leaving System Settings";
constexpr std::string_view command = "from hardware before a command";
constexpr std::string_view takeover = "from hardware before instance takeover";
constexpr std::string_view sleep = "from hardware before system sleep";
constexpr std::string_view termination = "from hardware before application termination";
constexpr std::string_view launch = "from System Settings at launch";
constexpr std::string_view session = "from System Settings at a change of session";
constexpr std::string_view store = "from System Settings before a stored override";
constexpr std::string_view wake = "from System Settings at wake";
}  // namespace origin

bool isSystemSettings(const std::optional<std::string>& bundleIdentifier) {
  return bundleIdentifier == "com.apple.systempreferences" ||
         bundleIdentifier == "com.apple.SystemSettings";
}

}  // namespace

// What happened.

void ModePolicy::willLaunch() { isSessionActive_ = use_.workspace.isSessionActive(); }

void ModePolicy::takesOver() {
  if (!isSessionActive_) return;
  adoptByEvidence(origin::takeover);
  const auto preference = use_.fnStateController.readSystemFnStatePreference();
  const auto target =
      preference ? std::optional{fnStateFromPreference(*preference)} : use_.storedFnStates.global();
  if (!target) return;
  // Without an override in front the hardware holds the global mode already.
  if (!overrideOf(use_.workspace.frontmostBundleIdentifier())) return;

  const auto current = use_.fnStateController.readFnState();
  if (!current) {
    use_.appLog.error(
        "Failed to read the current function key mode before forcing an older instance to exit: " +
        std::string{errorDescription(current.error())});
    return;
  }
  if (*current == *target) return;
  if (const auto written = use_.fnStateController.writeFnState(*target); !written) {
    use_.appLog.error(
        "Failed to restore the global function key mode before forcing an older instance to "
        "exit: " +
        std::string{errorDescription(written.error())});
    return;
  }
  use_.appLog.notice(
      "Restored the global function key mode before forcing an older instance to exit.");
}

void ModePolicy::yields(bool isTooLate) {
  isLeaving_ = true;
  isLeftBehind_ = isTooLate;
  if (isLeftBehind_) return;
  adopt(origin::takeover, mayAdoptFromHardware());
  restoreGlobalFnState();
  persist(FnStatePersistReason::instanceTakeover);
}

void ModePolicy::launched() {
  isInControl_ = true;
  custody_.begin();
  noteStore();
  // Never inside the notice: what it tells of may be half done.
  storeObserver_ =
      use_.storedFnStates.observe([this] { use_.mainQueue.async([this] { obeyStore(); }); });
  if (!isSessionActive_) return;
  lastActivatedBundleIdentifier_ = use_.workspace.frontmostBundleIdentifier();
  if (use_.storedFnStates.global()) {
    // A Keyrow that was killed may have left an override's mode there.
    leftover_ = Leftover{lastKnownFnState_};
    adoptByEvidence(origin::launch);
  } else {
    evidence_.noteSeen();
  }
  // Once the override is applied, the hardware cannot tell any more.
  if (overrideOf(lastActivatedBundleIdentifier_)) storedGlobalFnState();
  applyStoredFnState();
}

bool ModePolicy::switchedApplication() {
  if (!isFollowing()) return false;
  obeyStore();
  const auto frontmost = use_.workspace.frontmostBundleIdentifier();
  const auto previous = std::exchange(lastActivatedBundleIdentifier_, frontmost);
  const bool leavesSystemSettings = isSystemSettings(previous) && !isSystemSettings(frontmost);
  const auto origin = leavesSystemSettings ? origin::leavingSystemSettings : origin::appSwitch;
  if (!adoptByEvidence(origin)) {
    if (leavesSystemSettings) adoptFromHardware(currentFnState(), origin);
    if (!isLocalScopeActive_) adoptFromHardware(currentFnState(), origin::appSwitch);
  }
  applyStoredFnState();
  return leavesSystemSettings;
}

void ModePolicy::willSleep() {
  adopt(origin::sleep, mayAdoptFromHardware());
  persist(FnStatePersistReason::systemSleep);
}

void ModePolicy::didWake() {
  if (!isSessionActive_) return custody_.resume();
  // The hardware may have come back in a mode that nobody has chosen.
  adopt(origin::wake, /*alsoFromHardware=*/false);
  refreshFromHardware();
  applyStoredFnState();
  custody_.resume();
}

void ModePolicy::sessionResigned() {
  if (isFollowing()) {
    const bool isLeftAsItWas = holdsWhatWasLeft();
    constexpr auto hardware = PreferenceEvidence::Hardware::mayBeAnothersAlready;
    obeyStore(hardware);
    adoptByEvidence(origin::session, hardware);
    // The next user finds the keyboard as this one leaves it. If this is late, that was long ago.
    const auto global = storedGlobalFnState();
    if (isLeftAsItWas && global && write(*global, applyGlobalAction, nullptr)) setScope(false);
    persist(FnStatePersistReason::quiet);
  }
  isSessionActive_ = false;
  isSettling_ = false;
  secondLook_ = {};
  retries_.clear();
  IOKitRetryCount_ = 0;
}

void ModePolicy::sessionBecameActive() {
  isSessionActive_ = true;
  if (!isInControl_) return;
  // What the keyboard holds is the other user's, also where it cannot be read now.
  leftover_ = Leftover{};
  lastActivatedBundleIdentifier_ = use_.workspace.frontmostBundleIdentifier();
  noteStore();
  isSettling_ = true;
  applyStoredFnState();
  secondLook_ = use_.mainQueue.after(switchingTime, [this] { lookAgain(); });
}

/// The other user's Keyrow may have written its mode after this one.
void ModePolicy::lookAgain() {
  isSettling_ = false;
  adopt(origin::session, /*alsoFromHardware=*/false);
  const auto hardware = use_.fnStateController.readFnState();
  if (hardware && *hardware == lastKnownFnState_) return;
  applyStoredFnState();
}

void ModePolicy::willQuit() {
  isLeaving_ = true;
  if (isLeftBehind_) return;
  adopt(origin::termination, mayAdoptFromHardware());
  restoreGlobalFnState();
}

void ModePolicy::hasStopped() {
  if (isLeftBehind_) return;
  pruneLocalFnStates();
  persist(FnStatePersistReason::applicationTermination);
}

ModesToOffer ModePolicy::menuOpens() {
  // What it shows is to be what a command would depart from.
  beforeCommand();
  const auto frontmost = use_.workspace.frontmostBundleIdentifier();
  ModesToOffer modes{.global = globalOrCurrentFnState(),
                     .local = overrideOf(frontmost),
                     .hasFrontmostApplication = frontmost.has_value(),
                     .isGlobalManaged = use_.storedFnStates.isGlobalManaged(),
                     .isLocalManaged = use_.storedFnStates.areLocalsManaged()};
  if (!modes.local) modes.local = modes.global;
  return modes;
}

// The user's commands.

void ModePolicy::clicked() {
  if (isLocalScopeActive_) {
    toggleLocalOverride(nullptr);
  } else {
    toggleGlobalFnState(nullptr);
  }
}

void ModePolicy::setGlobalFnState(FnState state, const KeyboardDeviceSource* source) {
  beforeCommand();
  tell(setGlobal(state, source));
}

void ModePolicy::toggleGlobalFnState(const KeyboardDeviceSource* source) {
  beforeCommand();
  tell(toggleGlobal(source));
}

void ModePolicy::setLocalFnState(FnState state, const std::string& bundleIdentifier,
                                 const KeyboardDeviceSource* source) {
  beforeCommand();
  tell(setLocal(state, bundleIdentifier, source));
}

void ModePolicy::toggleLocalOverride(const KeyboardDeviceSource* source) {
  beforeCommand();
  const auto frontmost = use_.workspace.frontmostBundleIdentifier();
  if (!frontmost) return;
  auto base = overrideOf(frontmost);
  if (!base) base = globalOrCurrentFnState();
  if (base) tell(setLocal(otherFnState(*base), *frontmost, source));
}

void ModePolicy::clearLocalOverride(const KeyboardDeviceSource* source) {
  beforeCommand();
  const auto frontmost = use_.workspace.frontmostBundleIdentifier();
  tell(overrideOf(frontmost) ? clearLocal(*frontmost, source) : toggleGlobal(source));
}

void ModePolicy::tell(CommandResult result) {
  // The keyboard has changed also where that could not be stored.
  if (result == CommandResult::done || result == CommandResult::notKept)
    use_.presenter.commandWorked();
}

// What other programs ask for.

CommandResult ModePolicy::setGlobalMode(FnState state) {
  beforeCommand();
  return setGlobal(state, nullptr);
}

CommandResult ModePolicy::flipGlobalMode() {
  beforeCommand();
  return toggleGlobal(nullptr);
}

CommandResult ModePolicy::setOverride(const std::string& bundleIdentifier, FnState state) {
  beforeCommand();
  if (use_.workspace.frontmostBundleIdentifier() == bundleIdentifier) {
    return setLocal(state, bundleIdentifier, nullptr);
  }
  if (!mayChangeLocals()) return CommandResult::managed;
  const bool isStored = use_.storedFnStates.setLocal(bundleIdentifier, state);
  noteStore();
  if (!isStored) return CommandResult::notStored;
  use_.stateLog.notice("Stored a function key override for an app that is not in front: " +
                       std::string{modeText(state)} + appSuffix(bundleIdentifier) + ".");
  return CommandResult::done;
}

CommandResult ModePolicy::clearOverride(const std::string& bundleIdentifier) {
  beforeCommand();
  const auto stored = use_.storedFnStates.localBundleIdentifiers();
  if (std::ranges::find(stored, bundleIdentifier) == stored.end()) return CommandResult::noOverride;
  if (use_.workspace.frontmostBundleIdentifier() == bundleIdentifier &&
      overrideOf(bundleIdentifier)) {
    return clearLocal(bundleIdentifier, nullptr);
  }
  if (!mayChangeLocals()) return CommandResult::managed;
  const bool isStored = use_.storedFnStates.removeLocal(bundleIdentifier);
  noteStore();
  if (!isStored) return CommandResult::notStored;
  use_.stateLog.notice("Removed the function key override of an app that is not in front" +
                       appSuffix(bundleIdentifier) + ".");
  return CommandResult::done;
}

// What the commands do.

CommandResult ModePolicy::setGlobal(FnState state, const KeyboardDeviceSource* source) {
  if (!mayChangeGlobal()) return CommandResult::managed;
  const std::string mode{modeText(state)};
  if (!apply(state, "set the global function key mode to " + mode, source)) return whyNotApplied();
  const bool isStored = storeGlobal(state);
  setScope(false);
  use_.stateLog.notice(std::string{stateLogText::setGlobal} + mode + sourceSuffix(source) + ".");
  return isStored ? CommandResult::done : CommandResult::notKept;
}

CommandResult ModePolicy::toggleGlobal(const KeyboardDeviceSource* source) {
  const auto base = globalOrCurrentFnState();
  return base ? setGlobal(otherFnState(*base), source) : CommandResult::noMode;
}

CommandResult ModePolicy::setLocal(FnState state, const std::string& bundleIdentifier,
                                   const KeyboardDeviceSource* source) {
  if (!mayChangeLocals()) return CommandResult::managed;
  const auto target = "local function key override for the frontmost app to " +
                      std::string{modeText(state)} + appSuffix(bundleIdentifier);
  if (!apply(state, "set a " + target, source)) return whyNotApplied();
  leftover_ = Leftover{state, /*isOfOverride=*/true};
  const bool isStored = use_.storedFnStates.setLocal(bundleIdentifier, state);
  noteStore();
  setScope(true);
  use_.stateLog.notice("Set a " + target + sourceSuffix(source) + ".");
  return isStored ? CommandResult::done : CommandResult::notKept;
}

CommandResult ModePolicy::clearLocal(const std::string& bundleIdentifier,
                                     const KeyboardDeviceSource* source) {
  if (!mayChangeLocals()) return CommandResult::managed;
  const auto suffixes = appSuffix(bundleIdentifier) + sourceSuffix(source);
  const auto global = storedGlobalFnState();
  if (!global) {
    use_.stateLog.error(
        "Unable to clear the current app override because no global function key mode is stored" +
        suffixes + ".");
    return CommandResult::noGlobalMode;
  }
  if (!apply(*global, applyGlobalAction, source)) return whyNotApplied();
  setScope(false);
  const bool isStored = use_.storedFnStates.removeLocal(bundleIdentifier);
  noteStore();
  use_.stateLog.notice(std::string{stateLogText::clearedOverride} + suffixes + ".");
  return isStored ? CommandResult::done : CommandResult::notKept;
}

CommandResult ModePolicy::whyNotApplied() const {
  return hasKeyboard() ? CommandResult::writeFailed : CommandResult::otherSession;
}

bool ModePolicy::mayChangeGlobal() {
  return !refusesManaged(use_.storedFnStates.isGlobalManaged(), hasSaidGlobalIsManaged_,
                         "The global function key mode is");
}

bool ModePolicy::mayChangeLocals() {
  return !refusesManaged(use_.storedFnStates.areLocalsManaged(), hasSaidLocalsAreManaged_,
                         "The app overrides are");
}

bool ModePolicy::refusesManaged(bool isManaged, bool& hasSaid, std::string_view what) {
  if (isManaged && !std::exchange(hasSaid, true)) {
    use_.stateLog.notice(std::string{what} + " managed by an administrator and cannot be changed.");
  }
  return isManaged;
}

// What somebody has chosen behind Keyrow's back.

void ModePolicy::beforeCommand() { adopt(origin::command, mayAdoptFromHardware()); }

bool ModePolicy::mayAdoptFromHardware() const {
  return !isLocalScopeActive_ || isSystemSettings(lastActivatedBundleIdentifier_);
}

void ModePolicy::adopt(std::string_view origin, bool alsoFromHardware) {
  if (!isFollowing()) return;
  obeyStore();
  if (adoptByEvidence(origin) || !alsoFromHardware) return;
  const auto hardware = use_.fnStateController.readFnState();
  if (hardware) adoptFromHardware(*hardware, origin);
}

bool ModePolicy::adoptByEvidence(std::string_view origin, PreferenceEvidence::Hardware hardware) {
  const auto chosen = evidence_.takeChosenFnState(hardware);
  if (!chosen) return false;
  leftover_.reset();
  syncStoredGlobalFnState(*chosen, origin);
  return true;
}

void ModePolicy::adoptFromHardware(std::optional<FnState> hardware, std::string_view origin) {
  if (!hardware || isLeftover(*hardware)) return;
  if (use_.storedFnStates.global() != hardware && !custody_.isUnbroken()) return;
  syncStoredGlobalFnState(*hardware, origin);
  // Also where that is the global mode already, it is what is there now.
  if (lastKnownFnState_ != hardware) setLastKnownFnState(*hardware);
}

void ModePolicy::syncStoredGlobalFnState(FnState state, std::string_view origin) {
  if (use_.storedFnStates.global() == state || !mayChangeGlobal()) return;
  storeGlobal(state);
  use_.stateLog.notice(std::string{stateLogText::synchronizedGlobal} + std::string{origin} + ": " +
                       std::string{modeText(state)} + ".");
  // Before the launch there is nothing that could show it.
  if (isInControl_ && lastKnownFnState_ != state) setLastKnownFnState(state);
}

bool ModePolicy::isLeftover(FnState hardware) {
  if (isSettling_) return true;
  if (!leftover_) return false;
  if (!leftover_->mode) leftover_->mode = hardware;
  if (leftover_->mode == hardware) return true;
  // Somebody has changed it: from now on this one is a choice, too.
  leftover_.reset();
  return false;
}

/// Writes what was stored into the hardware, and stores nothing, save a global mode where that is
/// gone.
void ModePolicy::obeyStore(PreferenceEvidence::Hardware hardware) {
  if (!isFollowing()) return;
  const auto before = std::exchange(seenStore_, use_.storedFnStates.all());
  if (seenStore_ == before) return;

  if (seenStore_.global != before.global) {
    // What is in the hardware, and in the preference, is older.
    rememberLeftover();
    evidence_.noteSeen();
    if (!seenStore_.global) storedGlobalFnState();
  } else {
    // An override says nothing about a mode that was chosen for all applications.
    adoptByEvidence(origin::store, hardware);
  }
  const auto modeOf =
      [frontmost = use_.workspace.frontmostBundleIdentifier()](const StoredFnStates::All& stored) {
        const auto found = frontmost ? stored.overrides.find(*frontmost) : stored.overrides.end();
        const bool isLocal = found != stored.overrides.end();
        return std::pair{isLocal, isLocal ? std::optional{found->second} : stored.global};
      };
  if (modeOf(seenStore_) != modeOf(before)) applyStoredFnState();
}

// What these come down to.

void ModePolicy::applyStoredFnState() {
  if (const auto local = overrideOf(use_.workspace.frontmostBundleIdentifier())) {
    if (!apply(*local, applyLocalAction, nullptr)) return;
    leftover_ = Leftover{local, /*isOfOverride=*/true};
    setScope(true);
    return;
  }
  const auto global = storedGlobalFnState();
  if (!global) {
    refreshFromHardware();
    return;
  }
  if (apply(*global, applyGlobalAction, nullptr)) setScope(false);
}

void ModePolicy::restoreGlobalFnState() {
  if (!hasKeyboard()) return;
  const auto global = storedGlobalFnState();
  if (!global) {
    use_.stateLog.notice(stateLogText::cannotRestoreGlobal);
    return;
  }
  if (const auto written = use_.fnStateController.writeFnState(*global); !written) {
    use_.stateLog.error(std::string{stateLogText::failedToRestoreGlobal} +
                        std::string{errorDescription(written.error())});
    return;
  }
  leftover_.reset();
  lastKnownFnState_ = global;
  setScope(false);
  use_.stateLog.notice("Restored the global function key mode before termination: " +
                       std::string{modeText(*global)} + ".");
}

std::optional<FnState> ModePolicy::storedGlobalFnState() {
  if (const auto stored = use_.storedFnStates.global()) return stored;

  if (const auto preference = use_.fnStateController.readSystemFnStatePreference()) {
    const auto state = fnStateFromPreference(*preference);
    storeGlobal(state);
    use_.stateLog.notice("Initialized the stored global function key mode from System Settings: " +
                         std::string{modeText(state)} + ".");
    return state;
  }
  if (!hasKeyboard()) return std::nullopt;
  if (holdsOverride()) {
    use_.stateLog.notice(stateLogText::overrideIsNotGlobal);
    return std::nullopt;
  }
  const auto hardware = currentFnState();
  if (hardware) storeGlobal(*hardware);
  return hardware;
}

/// False when it could not be stored.
bool ModePolicy::storeGlobal(FnState state) {
  if (!mayChangeGlobal()) return false;
  const bool isStored = use_.storedFnStates.setGlobal(state);
  noteStore();
  if (isInControl_) evidence_.noteSeen();
  return isStored;
}

/// Puts the global mode where System Settings shows it.
void ModePolicy::persist(FnStatePersistReason reason) {
  if (!isSessionActive_ && !use_.storedFnStates.global()) return;
  if (holdsOverride() && !use_.storedFnStates.global()) {
    use_.stateLog.notice(stateLogText::overrideIsNotPersisted);
    return;
  }
  const auto persisted = use_.fnStateController.persistStoredGlobalFnState(reason);
  if (persisted && isInControl_) evidence_.noteWritten(*persisted);
}

std::optional<FnState> ModePolicy::currentFnState() {
  const auto state = use_.fnStateController.readFnState();
  if (state) return *state;
  use_.stateLog.error("Failed to read the current function key mode from hardware: " +
                      std::string{errorDescription(state.error())});
  return std::nullopt;
}

/// A read that fails is logged once, and tried once more.
std::optional<FnState> ModePolicy::globalOrCurrentFnState() {
  if (const auto stored = storedGlobalFnState()) return stored;
  const auto hardware = use_.fnStateController.readFnState();
  return hardware ? std::optional{*hardware} : std::nullopt;
}

void ModePolicy::refreshFromHardware() {
  if (const auto state = use_.fnStateController.readFnState()) {
    IOKitRetryCount_ = 0;
    if (lastKnownFnState_ != *state) setLastKnownFnState(*state);
    return;
  }
  if (IOKitRetryCount_ >= maximumIOKitRetryCount) return;
  ++IOKitRetryCount_;
  const auto retry = retries_.emplace(retries_.end());
  *retry = use_.mainQueue.after(IOKitRetryCount_ * retryDelay, [this, retry] {
    retries_.erase(retry);
    refreshFromHardware();
  });
}

void ModePolicy::pruneLocalFnStates() {
  if (use_.storedFnStates.areLocalsManaged()) return;
  const auto gone = missingApplications_.goneAmong(use_.storedFnStates.localBundleIdentifiers());
  if (gone.empty()) return;
  use_.storedFnStates.removeLocals(gone);
  noteStore();
  std::string which;
  for (const auto& identifier : gone) which += appSuffix(identifier);
  use_.stateLog.notice("Removed the overrides of apps that are not installed any more: " +
                       std::to_string(gone.size()) + which + ".");
}

/// Not so while it is in another user's hands, also where nobody has said so yet. When a session
/// has just come back, the system's answer may be older than its notice.
bool ModePolicy::hasKeyboard() const {
  return isSessionActive_ && (isSettling_ || use_.workspace.isSessionActive());
}

bool ModePolicy::apply(FnState state, std::string_view action, const KeyboardDeviceSource* source) {
  return hasKeyboard() && write(state, action, source);
}

bool ModePolicy::write(FnState state, std::string_view action, const KeyboardDeviceSource* source) {
  if (const auto written = use_.fnStateController.writeFnState(state); !written) {
    use_.stateLog.error("Failed to " + std::string{action} + ": " +
                        std::string{errorDescription(written.error())} + sourceSuffix(source));
    rememberLeftover();
    return false;
  }
  leftover_.reset();
  setLastKnownFnState(state);
  return true;
}

/// Whatever is there, it is not what was to be there.
void ModePolicy::rememberLeftover() {
  const auto hardware = use_.fnStateController.readFnState();
  const auto before = leftover_.value_or(Leftover{lastKnownFnState_});
  const auto mode = hardware ? std::optional{*hardware} : before.mode;
  leftover_ = Leftover{mode, before.isOfOverride && (!before.mode || mode == before.mode)};
}

/// Whether nobody else has put another mode there.
bool ModePolicy::holdsWhatWasLeft() {
  const auto hardware = use_.fnStateController.readFnState();
  return !hardware || *hardware == lastKnownFnState_ || isLeftover(*hardware);
}

void ModePolicy::setScope(bool isLocal) {
  isLocalScopeActive_ = isLocal;
  use_.presenter.scopeDidChange(isLocal);
}

void ModePolicy::setLastKnownFnState(FnState state) {
  lastKnownFnState_ = state;
  use_.presenter.fnStateDidChange(state);
}

std::optional<FnState> ModePolicy::overrideOf(
    const std::optional<std::string>& bundleIdentifier) const {
  return bundleIdentifier ? use_.storedFnStates.local(*bundleIdentifier) : std::nullopt;
}

std::string ModePolicy::appSuffix(std::string_view bundleIdentifier) const {
  if (!use_.settings.isOn(BooleanSetting::enhancedDiagnosticsEnabled)) return {};
  return " app=" + inOneLine(bundleIdentifier);
}

std::string ModePolicy::sourceSuffix(const KeyboardDeviceSource* source) const {
  if (!source) return {};
  return " source=" +
         source->inputSourceLabel(use_.settings.isOn(BooleanSetting::enhancedDiagnosticsEnabled));
}

}  // namespace keyrow
