#include "ui/BugReport.h"

#include <chrono>
#include <utility>

#include "platform/Iso8601.h"
#include "ui/MailtoURL.h"
#include "ui/VersionText.h"

namespace keyrow {

namespace {

/// Where users' mails go: the CMake option of that name, a placeholder by default.
constexpr auto supportEmailAddress = KEYROW_SUPPORT_ADDRESS;

}  // namespace

void BugReport::openContactEmail() { use_.workspace.openURL(mailtoURL(supportEmailAddress)); }

void BugReport::openBugReportEmail() {
  const Mail mail{.recipient = supportEmailAddress,
                  .subject = "Keyrow Bug Report",
                  .body = body(),
                  .attachment = writeLogAttachment()};
  auto service = use_.mailComposer.composeEmailService();
  if (!service || !service->canPerform(mail)) {
    use_.workspace.openURL(mailtoURL(mail.recipient, mail.subject, mail.body));
    return;
  }
  activeSharingService_ = std::move(service);
  activeSharingService_->perform(mail);
}

std::string BugReport::body() const {
  return "Summary:\n\nWhat happened?\n\nExpected result:\n\nSteps to reproduce:\n1.\n2.\n3.\n\n"
         "Reproducibility:\nEvery time / Sometimes / Only once\n\nEnvironment:\nKeyrow version: " +
         versionText(use_.bundle) + "\nmacOS version: " + use_.process.operatingSystemVersion() +
         "\nFrontmost app when the issue happened:\nExternal keyboard: Yes / No\n"
         "Apple external keyboard: Yes / No / Unknown\n"
         "Accessibility permission granted: Yes / No / Unsure\n"
         "Input Monitoring permission granted: Yes / No / Unsure\n"
         "Enhanced diagnostics enabled: " +
         (use_.settings.isOn(BooleanSetting::enhancedDiagnosticsEnabled) ? "Yes" : "No") +
         "\n\nAttachments:\nA recent Keyrow log file should already be attached to this draft.";
}

std::optional<std::string> BugReport::writeLogAttachment() {
  const auto text = use_.recentLogReport();
  auto path = use_.files.temporaryDirectory() + "/Keyrow-log-report-" +
              iso8601Text(use_.clock.now(), Iso8601Precision::seconds) + ".txt";
  if (!use_.files.writeAtomically(path, text)) return std::nullopt;
  return path;
}

}  // namespace keyrow
