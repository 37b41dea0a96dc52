#include "ui/MailtoURL.h"

#include <gtest/gtest.h>

namespace keyrow {
namespace {

TEST(MailtoURLTest, OfAnAddressAloneHasNoQuery) {
  EXPECT_EQ(mailtoURL("support@keyrow.example"), "mailto:support@keyrow.example");
}

TEST(MailtoURLTest, LeavesOutWhatIsEmpty) {
  EXPECT_EQ(mailtoURL("a@b.example", "S", ""), "mailto:a@b.example?subject=S");
  EXPECT_EQ(mailtoURL("a@b.example", "", "B"), "mailto:a@b.example?body=B");
}

TEST(MailtoURLTest, EncodesWhatWouldMeanSomethingElse) {
  EXPECT_EQ(mailtoURL("a+b@c.example", "Tom & Jerry", "1 + 1 = 2?\n#100% \"ok\""),
            "mailto:a%2Bb@c.example?subject=Tom%20%26%20Jerry"
            "&body=1%20%2B%201%20%3D%202%3F%0A%23100%25%20%22ok%22");
}

TEST(MailtoURLTest, EncodesOtherScriptsAsUTF8) {
  EXPECT_EQ(mailtoURL("a@b.example", "é😀", "あ"),
            "mailto:a@b.example?subject=%C3%A9%F0%9F%98%80&body=%E3%81%82");
}

TEST(MailtoURLTest, LeavesUnreservedCharactersAsTheyAre) {
  EXPECT_EQ(mailtoURL("a@b.example", "AZaz09-._~"), "mailto:a@b.example?subject=AZaz09-._~");
  // What stands right beside them in ASCII.
  EXPECT_EQ(mailtoURL("a@b.example", "@[`{/:"), "mailto:a@b.example?subject=%40%5B%60%7B%2F%3A");
}

}  // namespace
}  // namespace keyrow
