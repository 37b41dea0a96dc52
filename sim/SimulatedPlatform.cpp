#include "sim/SimulatedPlatform.h"

#include <utility>

namespace keyrow::sim {

SimulatedPlatform::SimulatedPlatform(const ProcessContext& context, std::function<void()> terminate)
    : settingsWindow{context},
      statusItem{context},
      eventTaps{context},
      accessibility{context},
      alerts{context.mac},
      bundle{context.bundleIdentifier},
      clock{context.mac},
      distributedNotificationCenter{context},
      eventPoster{context},
      globalPreferences{context.mac},
      hidManagers{context},
      hidSystem{context.mac, context.processID},
      mainQueue{context.mac.scheduler, context.mainThread},
      mainRunLoop{context},
      notificationCenter{context},
      application{context, notificationCenter, std::move(terminate)},
      process{context.processID},
      systemLog{context.mac, context.processID},
      userDefaults{context.mac, context.bundleIdentifier.value_or("Keyrow")},
      workspace{context},
      ports_{.accessibility = accessibility,
             .alerts = alerts,
             .application = application,
             .bundle = bundle,
             .clock = clock,
             .distributedNotificationCenter = distributedNotificationCenter,
             .eventPoster = eventPoster,
             .eventTaps = eventTaps,
             .globalPreferences = globalPreferences,
             .hidManagers = hidManagers,
             .hidSystem = hidSystem,
             .mainQueue = mainQueue,
             .mainRunLoop = mainRunLoop,
             .notificationCenter = notificationCenter,
             .process = process,
             .systemLog = systemLog,
             .text = text,
             .userDefaults = userDefaults,
             .workspace = workspace} {}

}  // namespace keyrow::sim
