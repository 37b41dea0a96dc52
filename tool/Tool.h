#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/AppSettings.h"
#include "core/Commands.h"
#include "core/FnStateController.h"
#include "core/KeyboardFnStates.h"
#include "core/NamedSettings.h"
#include "core/PreferenceEvidence.h"
#include "core/Request.h"
#include "core/Status.h"
#include "core/StoredFnStates.h"
#include "platform/Bundle.h"
#include "platform/Clock.h"
#include "platform/DistributedNotificationCenter.h"
#include "platform/GlobalPreferences.h"
#include "platform/HidSystem.h"
#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"
#include "platform/Process.h"
#include "platform/SecureInput.h"
#include "platform/SystemLog.h"
#include "platform/Terminal.h"
#include "platform/Text.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"
#include "tool/Arguments.h"
#include "tool/Report.h"
#include "tool/RunningKeyrow.h"
#include "tool/StoredModes.h"

namespace keyrow::tool {

/// How a command has ended: the program's exit status.
namespace exitStatus {
inline constexpr int done = 0;
inline constexpr int couldNot = 1;
inline constexpr int usage = 2;
}  // namespace exitStatus

/// The command `keyrow`: one run of it. What changes something is asked of the Keyrow that runs;
/// where none does, it is stored for the next one. Asks for no permission, and opens no event tap
/// and no HID manager. Main thread only.
class Tool {
 public:
  /// What it uses. `userDefaults` are Keyrow's, `bundle` is the application's that it lies in.
  /// `finished` is called once, at the end, with the exit status.
  struct Uses {
    Bundle& bundle;
    Clock& clock;
    DistributedNotificationCenter& distributedNotificationCenter;
    GlobalPreferences& globalPreferences;
    HidSystem& hidSystem;
    MainQueue& mainQueue;
    NotificationCenter& notificationCenter;
    Process& process;
    SecureInput& secureInput;
    SystemLog& systemLog;
    Terminal& terminal;
    Text& text;
    UserDefaults& userDefaults;
    Workspace& workspace;
    std::function<void(int exitStatus)> finished;
  };

  explicit Tool(Uses uses);

  /// Does what the arguments say; comes back at once.
  void run(const std::vector<std::string>& arguments);

 private:
  void perform(const Arguments& arguments);

  // What only looks.

  void showStatus(bool isJson);
  void showMode();
  void showSettings();
  void showSetting(const std::string& name);
  void showDiagnosis();
  std::vector<std::string> statusLines(const Status& status, bool isJson);
  std::vector<std::string> factLines(const std::vector<Fact>& facts);

  // What changes something.

  void changeOverride(const Arguments& arguments);
  void changeKeyboard(const Arguments& arguments);
  void changeSetting(const Arguments& arguments);
  void change(Request::Kind kind, const std::string& subject, const std::string& value);
  void store(Request::Kind kind, const std::string& subject, const std::string& value);
  void tellResult(Request::Kind kind, const std::string& subject, const Status& status);

  // Watching.

  void watch(bool isJson);
  void lookAgain();
  void tell(const Status& status);

  // How things stand.

  void withStatus(std::function<void(const Status& status)> handler);
  Status ownStatus();
  Surroundings surroundings();

  // The terminal.

  void print(const std::string& line);
  void printAsItIs(const std::string& line);
  void printLines(const std::vector<std::string>& lines);
  void complain(const std::string& problem);
  void succeed();
  void fail(const std::string& problem, int status = exitStatus::couldNot);
  void finish(int status);

  const Uses use_;
  const std::unique_ptr<Logger> stateLog_;
  StoredFnStates storedFnStates_;
  FnStateController fnStateController_;
  PreferenceEvidence evidence_;
  StoredModes storedModes_;
  AppSettings settings_;
  KeyboardFnStates keyboardFnStates_;
  NamedSettings namedSettings_;
  Commands commands_;
  RunningKeyrow keyrow_;

  /// The exit status of what comes to its end.
  int outcome_ = exitStatus::done;

  bool isWatchingInJson_ = false;
  int looksSinceRenewal_ = 0;
  std::optional<Status> told_;
  std::vector<std::string> toldLines_;
  ObserverToken changeObserver_;
  DelayedCall nextLook_;
  bool hasFinished_ = false;
};

}  // namespace keyrow::tool
