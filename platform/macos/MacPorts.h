#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "platform/Accessibility.h"
#include "platform/Alerts.h"
#include "platform/Application.h"
#include "platform/Bundle.h"
#include "platform/Clock.h"
#include "platform/DistributedNotificationCenter.h"
#include "platform/EventMonitors.h"
#include "platform/EventPoster.h"
#include "platform/EventTaps.h"
#include "platform/Files.h"
#include "platform/GlobalPreferences.h"
#include "platform/HidManagers.h"
#include "platform/HidSystem.h"
#include "platform/InputMonitoring.h"
#include "platform/LoginItem.h"
#include "platform/MailComposer.h"
#include "platform/MainQueue.h"
#include "platform/MainRunLoop.h"
#include "platform/NotificationCenter.h"
#include "platform/Process.h"
#include "platform/SecureInput.h"
#include "platform/SystemLog.h"
#include "platform/Terminal.h"
#include "platform/Text.h"
#include "platform/UpdateFramework.h"
#include "platform/UserDefaults.h"
#include "platform/UserNotifications.h"
#include "platform/Workspace.h"

/// The ports on Apple's frameworks, one to make of each.
namespace keyrow::macos {

/// On the trust check of HIServices.
std::unique_ptr<Accessibility> makeAccessibility();

/// On `NSAlert`.
std::unique_ptr<Alerts> makeAlerts();

/// On `NSApplication` and `NSRunningApplication`.
std::unique_ptr<Application> makeApplication();

/// On `NSBundle`: the application's own, or the one at this path.
std::unique_ptr<Bundle> makeBundle();
std::unique_ptr<Bundle> makeBundle(std::string_view path);

/// On the system clock and the mach time base.
std::unique_ptr<Clock> makeClock();

/// On `NSDistributedNotificationCenter`.
std::unique_ptr<DistributedNotificationCenter> makeDistributedNotificationCenter();

/// On `NSEvent`.
std::unique_ptr<EventMonitors> makeEventMonitors();

/// On `NSEvent` and Quartz.
std::unique_ptr<EventPoster> makeEventPoster();

/// On Quartz, Core Foundation run loops and `NSThread`.
std::unique_ptr<EventTaps> makeEventTaps();

/// On `NSFileManager` and `NSString`.
std::unique_ptr<Files> makeFiles();

/// On the preferences of Core Foundation.
std::unique_ptr<GlobalPreferences> makeGlobalPreferences();

/// On `IOHIDManager`.
std::unique_ptr<HidManagers> makeHidManagers();

/// On IOKit.
std::unique_ptr<HidSystem> makeHidSystem();

/// On the access check of IOKit.
std::unique_ptr<InputMonitoring> makeInputMonitoring();

/// On `SMAppService`.
std::unique_ptr<LoginItem> makeLoginItem();

/// On `NSSharingService`.
std::unique_ptr<MailComposer> makeMailComposer();

/// On the main dispatch queue.
std::unique_ptr<MainQueue> makeMainQueue();

/// On the main thread's `NSRunLoop`.
std::unique_ptr<MainRunLoop> makeMainRunLoop();

/// On `NSNotificationCenter`.
std::unique_ptr<NotificationCenter> makeNotificationCenter();

/// On `NSProcessInfo`.
std::unique_ptr<Process> makeProcess();

/// On Carbon and the I/O registry.
std::unique_ptr<SecureInput> makeSecureInput();

/// On the unified log.
std::unique_ptr<SystemLog> makeSystemLog();

/// On the standard streams.
std::unique_ptr<Terminal> makeTerminal();

/// On `NSString` and `NSCharacterSet`. A character is a composed character sequence.
std::unique_ptr<Text> makeText();

/// On Sparkle.
std::unique_ptr<UpdateFramework> makeUpdateFramework();

/// On `NSUserDefaults`: the standard ones, or those of the suite with this name.
std::unique_ptr<UserDefaults> makeUserDefaults(
    std::optional<std::string_view> suiteName = std::nullopt);

/// On `UNUserNotificationCenter`.
std::unique_ptr<UserNotifications> makeUserNotifications();

/// On `NSWorkspace`.
std::unique_ptr<Workspace> makeWorkspace();

}  // namespace keyrow::macos
