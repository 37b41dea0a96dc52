#include "platform/Registration.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace keyrow {
namespace {

using ::testing::ElementsAre;

class RegistrationTest : public ::testing::Test {
 protected:
  std::vector<std::string> undone;

  Registration make(std::string name) {
    return Registration{[this, name = std::move(name)] { undone.push_back(name); }};
  }
};

static_assert(!std::is_copy_constructible_v<Registration>);
static_assert(!std::is_copy_assignable_v<Registration>);
static_assert(std::is_nothrow_move_constructible_v<Registration>);
static_assert(std::is_nothrow_move_assignable_v<Registration>);

TEST_F(RegistrationTest, ADefaultMadeOneHoldsNothing) {
  Registration registration;
  EXPECT_FALSE(registration);
  registration = {};
  EXPECT_FALSE(registration);
}

TEST_F(RegistrationTest, UndoesOnceWhenDestroyed) {
  {
    const auto registration = make("a");
    EXPECT_TRUE(registration);
    EXPECT_THAT(undone, ElementsAre());
  }
  EXPECT_THAT(undone, ElementsAre("a"));
}

TEST_F(RegistrationTest, MovingHandsTheUndoingOver) {
  {
    auto source = make("a");
    const auto target = std::move(source);
    EXPECT_FALSE(source);
    EXPECT_TRUE(target);
    EXPECT_THAT(undone, ElementsAre());
  }
  EXPECT_THAT(undone, ElementsAre("a"));
}

TEST_F(RegistrationTest, OneMovedFromMayBeUsedAgain) {
  auto source = make("a");
  const auto target = std::move(source);
  source = make("b");
  EXPECT_THAT(undone, ElementsAre());
  source = {};
  EXPECT_THAT(undone, ElementsAre("b"));
}

TEST_F(RegistrationTest, ReplacingUndoesTheOldOne) {
  {
    auto registration = make("old");
    auto next = make("new");
    registration = std::move(next);
    EXPECT_FALSE(next);
    EXPECT_TRUE(registration);
    EXPECT_THAT(undone, ElementsAre("old"));
  }
  EXPECT_THAT(undone, ElementsAre("old", "new"));
}

TEST_F(RegistrationTest, ReplacingByAnEmptyOneUndoes) {
  auto registration = make("a");
  registration = {};
  EXPECT_FALSE(registration);
  EXPECT_THAT(undone, ElementsAre("a"));
}

TEST_F(RegistrationTest, IsReplacedByTheTimeTheOldOneIsUndone) {
  Registration registration;
  registration = Registration{[&] { undone.emplace_back(registration ? "held" : "empty"); }};
  registration = make("new");
  EXPECT_THAT(undone, ElementsAre("held"));
}

TEST_F(RegistrationTest, UndoingMayReplaceItAgain) {
  Registration registration;
  registration = Registration{[&] {
    undone.emplace_back("first");
    registration = make("third");
  }};
  registration = make("second");
  EXPECT_THAT(undone, ElementsAre("first", "second"));
  registration = {};
  EXPECT_THAT(undone, ElementsAre("first", "second", "third"));
}

TEST_F(RegistrationTest, UndoesAtMostOnceWhenMovedOntoItself) {
  {
    auto registration = make("a");
    auto& alias = registration;
    registration = std::move(alias);
  }
  EXPECT_THAT(undone, ElementsAre("a"));
}

TEST_F(RegistrationTest, LetsGoOfWhatTheUndoingHeld) {
  const auto token = std::make_shared<int>(0);
  auto registration = Registration{[token] {}};
  EXPECT_EQ(token.use_count(), 2);
  registration = {};
  EXPECT_EQ(token.use_count(), 1);
}

}  // namespace
}  // namespace keyrow
