#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "core/AppSettings.h"
#include "platform/Bundle.h"
#include "platform/Clock.h"
#include "platform/Files.h"
#include "platform/MailComposer.h"
#include "platform/Process.h"
#include "platform/Workspace.h"

namespace keyrow {

/// Lets the user write mails to the support address: a plain one, or a bug report with the
/// recent log. Main thread only.
class BugReport {
 public:
  struct Uses {
    const AppSettings& settings;
    Bundle& bundle;
    Clock& clock;
    Files& files;
    MailComposer& mailComposer;
    Process& process;
    Workspace& workspace;
    /// Gives the text of the log to attach.
    std::function<std::string()> recentLogReport;
  };

  explicit BugReport(Uses uses) : use_{std::move(uses)} {}

  void openContactEmail();

  /// Opens a draft with the template and the log attached. Without a mail service a mailto
  /// URL is opened, which cannot carry the log; without a writable file there is no log.
  void openBugReportEmail();

 private:
  std::string body() const;
  std::optional<std::string> writeLogAttachment();

  const Uses use_;
  /// Of the last report: it has to live while the user edits the draft.
  std::unique_ptr<MailService> activeSharingService_;
};

}  // namespace keyrow
