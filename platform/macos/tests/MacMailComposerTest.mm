#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <memory>

#include "platform/MailComposer.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/MacPorts.h"
#include "platform/macos/tests/ReplacedMethod.h"

/// Takes mails, and shows them to nobody.
@interface KeyrowFakeSharingService : NSObject
@property(copy) NSArray<NSString*>* recipients;
@property(copy) NSString* subject;
@property BOOL takesMails;
@property(copy) NSArray* askedItems;
@property(copy) NSArray* performedItems;
@end

@implementation KeyrowFakeSharingService
- (BOOL)canPerformWithItems:(NSArray*)items {
  self.askedItems = items;
  return self.takesMails;
}
- (void)performWithItems:(NSArray*)items {
  self.performedItems = items;
}
@end

namespace keyrow::macos {
namespace {

class MacMailComposerTest : public ::testing::Test {
 protected:
  KeyrowFakeSharingService* const fake = [[KeyrowFakeSharingService alloc] init];
  const ReplacedMethod service {
    class_getClassMethod(NSSharingService.class, @selector(sharingServiceNamed:)),
        ^id(Class, NSString* name) {
          return [name isEqualToString:NSSharingServiceNameComposeEmail] ? this->fake : nil;
        }
  };
  const std::unique_ptr<MailService> mailService = makeMailComposer()->composeEmailService();
  Mail mail{.recipient = "support@keyrow.example",
            .subject = "Naïve 😀",
            .body = "first\nsecond",
            .attachment = std::nullopt};

  void expectAddressed() {
    EXPECT_TRUE([fake.recipients isEqualToArray:@[ @"support@keyrow.example" ]]);
    EXPECT_EQ(utf8Text(fake.subject), mail.subject);
  }
};

TEST_F(MacMailComposerTest, HandsTheMailOn) {
  ASSERT_NE(mailService, nullptr);
  mailService->perform(mail);
  expectAddressed();
  EXPECT_TRUE([fake.performedItems isEqualToArray:@[ @"first\nsecond" ]]);
}

TEST_F(MacMailComposerTest, AttachesAFile) {
  ASSERT_NE(mailService, nullptr);
  mail.attachment = "/tmp/a report.txt";
  mailService->perform(mail);
  NSArray* const expected = @[ @"first\nsecond", [NSURL fileURLWithPath:@"/tmp/a report.txt"] ];
  EXPECT_TRUE([fake.performedItems isEqualToArray:expected]);
}

TEST_F(MacMailComposerTest, AsksAboutTheWholeMailBefore) {
  ASSERT_NE(mailService, nullptr);
  EXPECT_FALSE(mailService->canPerform(mail));
  expectAddressed();
  EXPECT_TRUE([fake.askedItems isEqualToArray:@[ @"first\nsecond" ]]);
  EXPECT_EQ(fake.performedItems, nil);
  fake.takesMails = YES;
  EXPECT_TRUE(mailService->canPerform(mail));
}

TEST(MacMailComposerWithoutServiceTest, HasNone) {
  const ReplacedMethod service {
    class_getClassMethod(NSSharingService.class, @selector(sharingServiceNamed:)),
        ^id(Class, NSString*) {
          return nil;
        }
  };
  EXPECT_EQ(makeMailComposer()->composeEmailService(), nullptr);
}

}  // namespace
}  // namespace keyrow::macos
