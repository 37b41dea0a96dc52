#include "sim/ports/SimulatedMailComposer.h"

#include "sim/machine/PropertyText.h"

namespace keyrow::sim {

namespace {

class Service final : public MailService {
 public:
  explicit Service(const ProcessContext& context)
      : mac_{context.mac}, handle_{context.mac.openHandles, "mail service", context.processID} {}

  bool canPerform(const Mail& /*mail*/) override {
    return mac_.mailbox.service == Mailbox::Service::works;
  }

  void perform(const Mail& mail) override {
    mac_.mailbox.drafts.push_back(mail);
    mac_.screen.note("draft to " + mail.recipient + ": " + quoted(mail.subject) +
                     (mail.attachment ? ", with a file attached" : ""));
  }

 private:
  SimulatedMac& mac_;
  const OpenHandle handle_;
};

}  // namespace

std::unique_ptr<MailService> SimulatedMailComposer::composeEmailService() {
  if (context_.mac.mailbox.service == Mailbox::Service::missing) return nullptr;
  return std::make_unique<Service>(context_);
}

}  // namespace keyrow::sim
