#include "input/KeyboardModes.h"

#include <gtest/gtest.h>

#include <atomic>
#include <optional>
#include <thread>
#include <vector>

#include "tests/AllocationCounter.h"
#include "tests/SimulatedMacTest.h"
#include "tests/input/KeyboardDeviceSources.h"

namespace keyrow::sim {
namespace {

class KeyboardModesTest : public SimulatedMacTest {
 protected:
  UserDefaults& defaults = process->platform().userDefaults;
  KeyboardFnStates states{defaults};
  KeyboardModes modes{{.userDefaults = defaults, .keyboardFnStates = states}};
  const KeyboardDeviceSource gPro = makeSource({.vendorID = 0x046D, .productID = 0xC33F});
  const KeyboardDeviceSource other = makeSource({.vendorID = 0x1234, .productID = 1});
};

TEST_F(KeyboardModesTest, AreWhatIsStoredAtTheMoment) {
  EXPECT_EQ(modes.of(gPro), std::nullopt);
  states.set(*gPro.numbers(), FnState::standard);
  EXPECT_EQ(modes.of(gPro), FnState::standard);
  EXPECT_EQ(modes.of(other), std::nullopt);
  // As another process does it.
  store("keyboardFnStates", PropertyDictionary{{"046d:c33f", 0}, {"1234:0001", true}});
  EXPECT_EQ(modes.of(gPro), FnState::special);
  EXPECT_EQ(modes.of(other), FnState::standard);
  store("keyboardFnStates", std::nullopt);
  EXPECT_EQ(modes.of(gPro), std::nullopt);
}

TEST_F(KeyboardModesTest, AKeyboardThatLacksANumberHasNone) {
  store("keyboardFnStates", PropertyDictionary{{"046d:c33f", 1}, {"046d:0000", 1}});
  EXPECT_EQ(modes.of(makeSource({.vendorID = 0x046D})), std::nullopt);
  EXPECT_EQ(modes.of(makeSource({.productID = 0xC33F})), std::nullopt);
  EXPECT_EQ(modes.of(makeSource({})), std::nullopt);
}

TEST_F(KeyboardModesTest, AreReadAgainOnlyAfterAChange) {
  store("keyboardFnStates", PropertyDictionary{{"046d:c33f", 1}});
  EXPECT_EQ(modes.of(gPro), FnState::standard);
  const auto before = allocationCount();
  EXPECT_EQ(modes.of(gPro), FnState::standard);
  EXPECT_EQ(modes.of(other), std::nullopt);
  EXPECT_EQ(allocationCount(), before);
}

TEST_F(KeyboardModesTest, MayBeAskedForOnAnyThread) {
  store("keyboardFnStates", PropertyDictionary{{"1234:0001", 0}});
  std::atomic<bool> isOver{false};
  std::atomic<int> oddCount{0};
  std::vector<std::thread> askers;
  for (int number = 0; number < 2; ++number) {
    askers.emplace_back([&] {
      while (!isOver) {
        if (modes.of(other) != FnState::special) ++oddCount;
        modes.of(gPro);
      }
    });
  }
  for (int change = 0; change < 1000; ++change) {
    store("keyboardFnStates", PropertyDictionary{{"046d:c33f", change % 2}, {"1234:0001", 0}});
  }
  isOver = true;
  for (auto& asker : askers) asker.join();
  EXPECT_EQ(oddCount, 0);
  EXPECT_EQ(modes.of(gPro), FnState::standard);
}

}  // namespace
}  // namespace keyrow::sim
