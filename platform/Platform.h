#pragma once

namespace keyrow {

class Accessibility;
class Alerts;
class Application;
class Bundle;
class Clock;
class DistributedNotificationCenter;
class EventMonitors;
class EventPoster;
class EventTaps;
class Files;
class GlobalPreferences;
class HidManagers;
class HidSystem;
class InputMonitoring;
class LoginItem;
class MailComposer;
class MainQueue;
class MainRunLoop;
class NotificationCenter;
class Process;
class SystemLog;
class Text;
class UpdateFramework;
class UserDefaults;
class UserNotifications;
class Workspace;

/// All ports of one process. Only the composition root sees it whole.
struct Platform {
  Accessibility& accessibility;
  Alerts& alerts;
  Application& application;
  Bundle& bundle;
  Clock& clock;
  DistributedNotificationCenter& distributedNotificationCenter;
  EventMonitors& eventMonitors;
  EventPoster& eventPoster;
  EventTaps& eventTaps;
  Files& files;
  GlobalPreferences& globalPreferences;
  HidManagers& hidManagers;
  HidSystem& hidSystem;
  InputMonitoring& inputMonitoring;
  LoginItem& loginItem;
  MailComposer& mailComposer;
  MainQueue& mainQueue;
  MainRunLoop& mainRunLoop;
  NotificationCenter& notificationCenter;
  Process& process;
  SystemLog& systemLog;
  Text& text;
  UpdateFramework& updateFramework;
  UserDefaults& userDefaults;
  UserNotifications& userNotifications;
  Workspace& workspace;
};

}  // namespace keyrow
