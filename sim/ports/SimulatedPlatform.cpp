#include "sim/ports/SimulatedPlatform.h"

#include <utility>

namespace keyrow::sim {

SimulatedPlatform::SimulatedPlatform(const ProcessContext& context, std::function<void()> terminate)
    : general{context},
      about{context},
      settingsWindow{context, general, about},
      mainMenu{context,
               settingsWindow,
               {.hide = [this] { application_.hide(); },
                .terminate = [this] { application_.terminate(); }}},
      statusItem{context},
      eventMonitors{context, [this](const KeyDown& key) { keyDown(key); }},
      eventTaps{context},
      hidManagers{context},
      updateFramework{context},
      userNotifications{context},
      accessibility_{context},
      alerts_{context},
      bundle_{context.bundleIdentifier, context.mac.infoDictionary},
      clock_{context.mac},
      distributedNotificationCenter_{context},
      eventPoster_{context},
      files_{context.mac},
      globalPreferences_{context.mac, Sessions::domain(context.user, GlobalPreferences::domain)},
      hidSystem_{context.mac, context.processID},
      inputMonitoring_{context},
      loginItem_{context},
      mailComposer_{context},
      mainQueue_{context.mac.scheduler, context.mainThread},
      mainRunLoop_{context},
      process_{context.mac, context.processID},
      systemLog_{context.mac, context.processID},
      userDefaults_{context.mac,
                    Sessions::domain(context.user, context.bundleIdentifier.value_or("Keyrow"))},
      workspace_{context},
      notificationCenter_{context},
      application_{context, notificationCenter_, settingsWindow, std::move(terminate)},
      ports_{.accessibility = accessibility_,
             .alerts = alerts_,
             .application = application_,
             .bundle = bundle_,
             .clock = clock_,
             .distributedNotificationCenter = distributedNotificationCenter_,
             .eventMonitors = eventMonitors,
             .eventPoster = eventPoster_,
             .eventTaps = eventTaps,
             .files = files_,
             .globalPreferences = globalPreferences_,
             .hidManagers = hidManagers,
             .hidSystem = hidSystem_,
             .inputMonitoring = inputMonitoring_,
             .loginItem = loginItem_,
             .mailComposer = mailComposer_,
             .mainQueue = mainQueue_,
             .mainRunLoop = mainRunLoop_,
             .notificationCenter = notificationCenter_,
             .process = process_,
             .systemLog = systemLog_,
             .text = text_,
             .updateFramework = updateFramework,
             .userDefaults = userDefaults_,
             .userNotifications = userNotifications,
             .workspace = workspace_} {}

void SimulatedPlatform::keyDown(const KeyDown& key) {
  if (!mainMenu.performKeyEquivalent(key)) settingsWindow.keyDown();
}

}  // namespace keyrow::sim
