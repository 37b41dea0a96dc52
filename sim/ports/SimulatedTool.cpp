#include "sim/ports/SimulatedTool.h"

namespace keyrow::sim {

SimulatedTool::SimulatedTool(SimulatedMac& mac, OpenHandles::ProcessID processID,
                             const std::string& user, bool isRoot)
    : context_{.mac = mac, .processID = processID, .bundleIdentifier = std::nullopt, .user = user},
      bundle_{std::string{appIdentifier}, mac.infoDictionary},
      clock_{mac},
      distributedNotificationCenter_{context_},
      globalPreferences_{mac, Sessions::domain(context_.user, GlobalPreferences::domain)},
      hidSystem_{mac, processID},
      mainQueue_{mac.scheduler, context_.mainThread},
      notificationCenter_{context_},
      process_{mac, processID, isRoot},
      secureInput_{mac},
      systemLog_{mac, processID},
      terminal_{mac},
      userDefaults_{mac, Sessions::domain(context_.user, appIdentifier)},
      workspace_{context_},
      tool_{{.bundle = bundle_,
             .clock = clock_,
             .distributedNotificationCenter = distributedNotificationCenter_,
             .globalPreferences = globalPreferences_,
             .hidSystem = hidSystem_,
             .mainQueue = mainQueue_,
             .notificationCenter = notificationCenter_,
             .process = process_,
             .secureInput = secureInput_,
             .systemLog = systemLog_,
             .terminal = terminal_,
             .text = text_,
             .userDefaults = userDefaults_,
             .workspace = workspace_,
             .finished = [this](int status) {
               exitStatus_ = status;
               userDefaults_.loseWhatIsOnTheWay();
             }}} {}

}  // namespace keyrow::sim
