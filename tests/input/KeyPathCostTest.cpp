#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <string>

#include "bench/KeyPath.h"
#include "tests/AllocationCounter.h"

namespace keyrow::sim {
namespace {

constexpr std::uint16_t keyA = 0;

/// How often the heap is asked while these many ordinary keys go down and up.
std::uint64_t allocationsOfKeys(KeyPath& path, int count) {
  // The settings are read at the first key after a change.
  path.pass(keyEventType::keyDown, keyA);
  const auto before = allocationCount();
  for (int key = 0; key < count; ++key) {
    EXPECT_TRUE(path.pass(keyEventType::keyDown, keyA));
    EXPECT_TRUE(path.pass(keyEventType::keyUp, keyA));
  }
  return allocationCount() - before;
}

TEST(KeyPathCostTest, CountsAllocations) {
  const auto before = allocationCount();
  const std::string tooLongForItsOwnBuffer(100, 'x');
  EXPECT_EQ(allocationCount(), before + (areAllocationsCounted() ? 1 : 0));
}

TEST(KeyPathCostTest, AnOrdinaryKeyAllocatesNothing) {
  KeyPath path;
  EXPECT_EQ(allocationsOfKeys(path, 1000), 0U);
}

TEST(KeyPathCostTest, AnOrdinaryKeyAllocatesNothingWithEverySettingOn) {
  KeyPath path;
  path.store("fnReplacementModifier", "rightCommand");
  path.store("applyFnModeToExternalFunctionKeys", true);
  path.store("enhancedDiagnosticsEnabled", true);
  path.store("localFnState", PropertyDictionary{{"com.apple.TextEdit", 1}});
  EXPECT_EQ(allocationsOfKeys(path, 1000), 0U);
}

TEST(KeyPathCostTest, TheKeyAfterAChangeOfSettingsAllocatesNothingEither) {
  KeyPath path;
  allocationsOfKeys(path, 1);
  path.store("fnReplacementModifier", "leftOption");
  path.store("localToggleShortcutKeyCode", 49);
  const auto before = allocationCount();
  EXPECT_TRUE(path.pass(keyEventType::keyDown, keyA));
  EXPECT_EQ(allocationCount(), before);
}

TEST(KeyPathCostTest, ATopRowKeyWithAModeOfItsOwnAllocatesNothing) {
  constexpr std::uint16_t keyF7 = 98;
  KeyPath path;
  path.store("applyFnModeToExternalFunctionKeys", true);
  path.storeOwnMode(FnState::standard);
  EXPECT_TRUE(path.pass(keyEventType::keyDown, keyF7));
  const auto before = allocationCount();
  EXPECT_TRUE(path.pass(keyEventType::keyDown, keyF7));
  EXPECT_TRUE(path.pass(keyEventType::keyUp, keyF7));
  EXPECT_EQ(allocationCount(), before);
}

TEST(KeyPathCostTest, ABlockedMainThreadDelaysNoKey) {
  KeyPath path;
  path.store("applyFnModeToExternalFunctionKeys", true);
  // This is the main thread, and it serves neither its queue nor any timer while it waits.
  auto worker = std::async(std::launch::async, [&path] {
    constexpr std::uint16_t keyF7 = 98;
    constexpr std::uint16_t keyGrave = 50;
    bool isRight = true;
    for (int round = 0; round < 100; ++round) {
      isRight = isRight && path.pass(keyEventType::keyDown, keyA);
      isRight = isRight && !path.pass(keyEventType::keyDown, keyF7);
      isRight = isRight && !path.pass(keyEventType::keyUp, keyF7);
      isRight = isRight && !path.pass(keyEventType::keyDown, keyGrave, keyEventFlag::secondaryFn);
    }
    return isRight;
  });
  ASSERT_EQ(worker.wait_for(std::chrono::seconds{30}), std::future_status::ready);
  EXPECT_TRUE(worker.get());
  EXPECT_TRUE(path.mac.systemDefinedEvents.empty());

  // What the keys wanted is done as soon as the main thread gets to it.
  path.drainMainQueue();
  EXPECT_EQ(path.mac.systemDefinedEvents.size(), 200U);
  EXPECT_EQ(path.mac.hid.writtenValues().size(), 102U);
}

}  // namespace
}  // namespace keyrow::sim
