#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/Accessibility.h"
#include "platform/Alerts.h"
#include "platform/Application.h"
#include "platform/Files.h"
#include "platform/InputMonitoring.h"
#include "platform/LoginItem.h"
#include "platform/MailComposer.h"
#include "platform/UpdateFramework.h"
#include "platform/UserNotifications.h"
#include "platform/Workspace.h"

/// The ports through which Keyrow would reach the user, or change what is the user's: these
/// only note what they are asked for.
namespace keyrow::macos {

class FakeAccessibility final : public Accessibility {
 public:
  bool isProcessTrusted() override { return isTrusted; }
  void promptForTrust() override {}

  bool isTrusted = false;
};

class FakeAlerts final : public Alerts {
 public:
  void runModal(const Alert& alert, std::function<void(int response)> answered) override {
    messages.emplace_back(alert.messageText);
    answered(alertFirstButtonReturn);
  }
  void beep() override {}

  std::vector<std::string> messages;
};

class FakeApplication final : public Application {
 public:
  void activateAllWindows() override {}
  void activateIgnoringOtherApps() override {}
  void terminate() override { ++terminations; }

  int terminations = 0;
};

class FakeFiles final : public Files {
 public:
  std::string temporaryDirectory() override { return "/fake"; }
  bool writeAtomically(const std::string& path, std::string_view contents) override {
    files[path] = contents;
    return true;
  }

  std::map<std::string, std::string> files;
};

class FakeInputMonitoring final : public InputMonitoring {
 public:
  InputMonitoringAccess access() override { return answer; }
  Registration requestAccess(std::function<void()>) override { return {}; }

  InputMonitoringAccess answer = InputMonitoringAccess::granted;
};

class FakeLoginItem final : public LoginItem {
 public:
  LoginItemStatus status() override {
    return enabled ? LoginItemStatus::enabled : LoginItemStatus::notRegistered;
  }
  void registerItem() override { enabled = true; }
  void unregisterItem() override { enabled = false; }
  void openSystemSettings() override {}

  bool enabled = false;
};

class FakeMailService final : public MailService {
 public:
  explicit FakeMailService(std::vector<Mail>& drafts) : drafts_{drafts} {}

  bool canPerform(const Mail&) override { return true; }
  void perform(const Mail& mail) override { drafts_.push_back(mail); }

 private:
  std::vector<Mail>& drafts_;
};

class FakeMailComposer final : public MailComposer {
 public:
  std::unique_ptr<MailService> composeEmailService() override {
    return std::make_unique<FakeMailService>(drafts);
  }

  std::vector<Mail> drafts;
};

class FakeUpdateFramework final : public UpdateFramework {
 public:
  void start(UpdateFrameworkDelegate&) override {}
  void checkForUpdates() override {}
  bool automaticallyChecksForUpdates() override { return checksAutomatically; }
  void setAutomaticallyChecksForUpdates(bool checks) override { checksAutomatically = checks; }

  bool checksAutomatically = false;
};

class FakeUserNotifications final : public UserNotifications {
 public:
  void setDelegate(UserNotificationsDelegate&) override {}
  void requestAuthorization(
      std::function<void(bool granted, const std::optional<SystemError>& error)>) override {}
  void add(const UserNotification&,
           std::function<void(const std::optional<SystemError>& error)>) override {}
  void removePending(std::string_view) override {}
  void removeDelivered(std::string_view) override {}
};

class FakeWorkspace final : public Workspace {
 public:
  std::optional<std::string> frontmostBundleIdentifier() override { return std::nullopt; }
  bool isApplicationInstalled(std::string_view) override { return true; }
  std::vector<NamedApplication> applications() override { return {}; }
  std::optional<std::string> bundleIdentifier(std::string_view) override { return std::nullopt; }
  std::optional<std::string> bundleIdentifierAsSpelled(std::string_view) override {
    return std::nullopt;
  }
  ObserverToken observeActivation(std::function<void()>) override { return {}; }
  ObserverToken observeWillSleep(std::function<void()>) override { return {}; }
  ObserverToken observeDidWake(std::function<void()>) override { return {}; }
  bool isSessionActive() override { return true; }
  ObserverToken observeSessionDidResignActive(std::function<void()>) override { return {}; }
  ObserverToken observeSessionDidBecomeActive(std::function<void()>) override { return {}; }
  std::vector<std::unique_ptr<RunningApplication>> runningApplications(std::string_view) override {
    return {};
  }
  void openApplication(std::string_view) override {}
  bool isURL(std::string_view) override { return true; }
  bool openURL(std::string_view url) override {
    openedURLs.emplace_back(url);
    return true;
  }

  std::vector<std::string> openedURLs;
};

}  // namespace keyrow::macos
