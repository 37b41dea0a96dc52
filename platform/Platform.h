#pragma once

namespace keyrow {

class Bundle;
class Clock;
class GlobalPreferences;
class HidManagers;
class HidSystem;
class MainQueue;
class NotificationCenter;
class SystemLog;
class Text;
class UserDefaults;
class Workspace;

/// All ports of one process. Only the composition root sees it whole.
struct Platform {
  Bundle& bundle;
  Clock& clock;
  GlobalPreferences& globalPreferences;
  HidManagers& hidManagers;
  HidSystem& hidSystem;
  MainQueue& mainQueue;
  NotificationCenter& notificationCenter;
  SystemLog& systemLog;
  Text& text;
  UserDefaults& userDefaults;
  Workspace& workspace;
};

}  // namespace keyrow
