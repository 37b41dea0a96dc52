#pragma once

namespace keyrow {

class Accessibility;
class Alerts;
class Application;
class Bundle;
class Clock;
class DistributedNotificationCenter;
class EventPoster;
class EventTaps;
class GlobalPreferences;
class HidManagers;
class HidSystem;
class MainQueue;
class MainRunLoop;
class NotificationCenter;
class Process;
class SystemLog;
class Text;
class UserDefaults;
class Workspace;

/// All ports of one process. Only the composition root sees it whole.
struct Platform {
  Accessibility& accessibility;
  Alerts& alerts;
  Application& application;
  Bundle& bundle;
  Clock& clock;
  DistributedNotificationCenter& distributedNotificationCenter;
  EventPoster& eventPoster;
  EventTaps& eventTaps;
  GlobalPreferences& globalPreferences;
  HidManagers& hidManagers;
  HidSystem& hidSystem;
  MainQueue& mainQueue;
  MainRunLoop& mainRunLoop;
  NotificationCenter& notificationCenter;
  Process& process;
  SystemLog& systemLog;
  Text& text;
  UserDefaults& userDefaults;
  Workspace& workspace;
};

}  // namespace keyrow
