#import <AppKit/AppKit.h>

#include <memory>

#include "platform/macos/Conversions.h"
#include "platform/macos/MacPorts.h"

namespace keyrow::macos {

namespace {

NSArray* itemsOf(const Mail& mail) {
  NSString* const body = nsString(mail.body);
  if (!mail.attachment) return @[ body ];
  return @[ body, [NSURL fileURLWithPath:nsString(*mail.attachment)] ];
}

class MacMailService final : public MailService {
 public:
  explicit MacMailService(NSSharingService* service) : service_{service} {}

  bool canPerform(const Mail& mail) override {
    prepare(mail);
    return [service_ canPerformWithItems:itemsOf(mail)];
  }

  void perform(const Mail& mail) override {
    prepare(mail);
    [service_ performWithItems:itemsOf(mail)];
  }

 private:
  void prepare(const Mail& mail) {
    service_.recipients = @[ nsString(mail.recipient) ];
    service_.subject = nsString(mail.subject);
  }

  NSSharingService* const service_;
};

class MacMailComposer final : public MailComposer {
 public:
  std::unique_ptr<MailService> composeEmailService() override {
    NSSharingService* const service =
        [NSSharingService sharingServiceNamed:NSSharingServiceNameComposeEmail];
    return service ? std::make_unique<MacMailService>(service) : nullptr;
  }
};

}  // namespace

std::unique_ptr<MailComposer> makeMailComposer() { return std::make_unique<MacMailComposer>(); }

}  // namespace keyrow::macos
