#include "sim/machine/ObserverList.h"

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;

class ObserverListTest : public ::testing::Test {
 protected:
  ObserverList<int> list;
  std::vector<std::string> calls;

  Registration add(std::string name) {
    return list.add([this, name = std::move(name)](int argument) {
      calls.push_back(name + std::to_string(argument));
    });
  }
};

TEST_F(ObserverListTest, CallsEveryObserverInTheOrderOfAdding) {
  const auto a = add("a");
  const auto b = add("b");
  list.notify(1);
  list.notify(2);
  EXPECT_THAT(calls, ElementsAre("a1", "b1", "a2", "b2"));
}

TEST_F(ObserverListTest, DoesNotCallARemovedObserver) {
  auto a = add("a");
  const auto b = add("b");
  a = {};
  list.notify(1);
  EXPECT_THAT(calls, ElementsAre("b1"));
}

TEST_F(ObserverListTest, AnObserverMayRemoveItself) {
  Registration self;
  self = list.add([&](int) {
    self = {};
    calls.emplace_back("self");
  });
  const auto b = add("b");
  list.notify(1);
  list.notify(2);
  EXPECT_THAT(calls, ElementsAre("self", "b1", "b2"));
}

TEST_F(ObserverListTest, AnObserverRemovedByAnotherIsNotCalledAnyMore) {
  Registration b;
  const auto a = list.add([&](int) { b = {}; });
  b = add("b");
  const auto c = add("c");
  list.notify(1);
  EXPECT_THAT(calls, ElementsAre("c1"));
}

TEST_F(ObserverListTest, AnObserverAddedByAnotherIsCalledFromTheNextTimeOn) {
  Registration b;
  const auto a = list.add([&](int) {
    if (!b) b = add("b");
  });
  list.notify(1);
  EXPECT_THAT(calls, ElementsAre());
  list.notify(2);
  EXPECT_THAT(calls, ElementsAre("b2"));
}

TEST_F(ObserverListTest, ARegistrationMayOutliveTheList) {
  std::optional<ObserverList<>> shortLived{std::in_place};
  const auto registration = shortLived->add([] {});
  shortLived.reset();
  EXPECT_TRUE(registration);
}

}  // namespace
}  // namespace keyrow::sim
