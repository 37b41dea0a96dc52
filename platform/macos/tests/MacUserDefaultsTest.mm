#include "platform/macos/MacPorts.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>

#include "core/AppSettings.h"
#include "platform/macos/CFRef.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/tests/Eventually.h"
#include "platform/macos/tests/ThrowAwayDefaults.h"

namespace keyrow::macos {
namespace {

/// One of those that are observed.
constexpr auto key = settingsKey::globalFnState;

class MacUserDefaultsTest : public ::testing::Test {
 protected:
  ThrowAwayDefaults suite;
  NSUserDefaults* const foundation = suite.open();
  const std::unique_ptr<UserDefaults> defaults = makeUserDefaults(suite.name());

  void storeWithFoundation(id object) { [foundation setObject:object forKey:nsString(key)]; }
};

struct RoundTrip {
  std::string name;
  PropertyValue value;
};

class MacUserDefaultsRoundTripTest : public MacUserDefaultsTest,
                                     public ::testing::WithParamInterface<RoundTrip> {};

TEST_P(MacUserDefaultsRoundTripTest, KeepsValueAndType) {
  const std::optional<PropertyValue> value = GetParam().value;
  defaults->setObject(key, *value);
  EXPECT_EQ(defaults->object(key), value);
  const auto others = makeUserDefaults(suite.name());
  EXPECT_EQ(others->object(key), value);
}

TEST_F(MacUserDefaultsTest, SynchronizesWhatItWrote) {
  defaults->setObject(key, 1);
  EXPECT_TRUE(defaults->synchronize());
  const auto stored = CFRef<CFTypeRef>::adopt(CFPreferencesCopyAppValue(
      (__bridge CFStringRef)nsString(key), (__bridge CFStringRef)nsString(suite.name())));
  EXPECT_EQ(propertyValue(stored.get()), PropertyValue{1});
}

INSTANTIATE_TEST_SUITE_P(
    Values, MacUserDefaultsRoundTripTest,
    ::testing::Values(RoundTrip{"True", true}, RoundTrip{"False", false}, RoundTrip{"Zero", 0},
                      RoundTrip{"One", 1}, RoundTrip{"Negative", -1},
                      RoundTrip{"Largest", std::numeric_limits<std::int64_t>::max()},
                      RoundTrip{"Smallest", std::numeric_limits<std::int64_t>::min()},
                      RoundTrip{"Fraction", 0.5}, RoundTrip{"WholeFloatingPoint", 1.0},
                      RoundTrip{"EmptyString", ""}, RoundTrip{"Digits", "1"},
                      RoundTrip{"Unicode", "Fn + é 😀"},
                      RoundTrip{"EmptyDictionary", PropertyDictionary{}},
                      RoundTrip{
                          "Dictionary",
                          PropertyDictionary{{"com.example.editor", 1},
                                             {"com.example.player", 0},
                                             {"a Boolean", true},
                                             {"a fraction", 0.25},
                                             {"é", "😀"},
                                             {"nested", PropertyDictionary{{"inner", false}}}}}),
    [](const auto& test) { return test.param.name; });

TEST_F(MacUserDefaultsTest, HasNothingAtFirst) {
  for (const auto each : settingsKey::all) EXPECT_EQ(defaults->object(each), std::nullopt) << each;
}

TEST_F(MacUserDefaultsTest, RemovesWhatItHolds) {
  defaults->setObject(key, 1);
  defaults->removeObject(key);
  EXPECT_EQ(defaults->object(key), std::nullopt);
  EXPECT_EQ([foundation objectForKey:nsString(key)], nil);
}

TEST_F(MacUserDefaultsTest, ReplacesAValueByOneOfAnotherType) {
  defaults->setObject(key, "1");
  defaults->setObject(key, true);
  EXPECT_EQ(defaults->object(key), PropertyValue{true});
}

TEST_F(MacUserDefaultsTest, ReadsWhatFoundationWrites) {
  [foundation setBool:YES forKey:nsString(key)];
  EXPECT_EQ(defaults->object(key), PropertyValue{true});
  [foundation setInteger:1 forKey:nsString(key)];
  EXPECT_EQ(defaults->object(key), PropertyValue{1});
  [foundation setDouble:1 forKey:nsString(key)];
  EXPECT_EQ(defaults->object(key), PropertyValue{1.0});
  storeWithFoundation(@{@"a" : @NO, @"b" : @2});
  EXPECT_EQ(defaults->object(key), (PropertyDictionary{{"a", false}, {"b", 2}}));
}

TEST_F(MacUserDefaultsTest, LeavesOutWhatNoPropertyValueCanHold) {
  storeWithFoundation(NSDate.date);
  EXPECT_EQ(defaults->object(key), std::nullopt);
  storeWithFoundation(@[ @1 ]);
  EXPECT_EQ(defaults->object(key), std::nullopt);
  storeWithFoundation(@{@"kept" : @1, @"left out" : NSDate.date});
  EXPECT_EQ(defaults->object(key), (PropertyDictionary{{"kept", 1}}));
}

TEST_F(MacUserDefaultsTest, CountsEachOfItsOwnWrites) {
  auto count = defaults->changeCount();
  EXPECT_EQ(defaults->changeCount(), count);
  defaults->setObject("of no interest", 1);
  EXPECT_NE(defaults->changeCount(), count);
  count = defaults->changeCount();
  defaults->removeObject("of no interest");
  EXPECT_NE(defaults->changeCount(), count);
}

TEST_F(MacUserDefaultsTest, CountsWritesThroughAnotherObject) {
  for (const auto each : settingsKey::all) {
    const auto count = defaults->changeCount();
    [foundation setObject:@1 forKey:nsString(each)];
    EXPECT_TRUE(eventually([&] { return defaults->changeCount() != count; })) << each;
    EXPECT_EQ(defaults->object(each), PropertyValue{1}) << each;
  }
}

TEST_F(MacUserDefaultsTest, TellsOfItsOwnWritesInsideTheCall) {
  int told = 0;
  auto observer = defaults->observeChanges([&] { ++told; });
  defaults->setObject(key, 1);
  EXPECT_EQ(told, 1);
  defaults->removeObject(key);
  EXPECT_EQ(told, 2);
  observer = {};
  defaults->setObject(key, 1);
  EXPECT_EQ(told, 2);
}

TEST_F(MacUserDefaultsTest, CountsWritesOfAnotherProcess) {
  // By then whatever emptying the suite has set off is over.
  eventually([] { return false; }, /*seconds=*/0.5);
  const auto count = defaults->changeCount();
  NSError* error = nil;
  NSTask* const task =
      [NSTask launchedTaskWithExecutableURL:[NSURL fileURLWithPath:@"/usr/bin/defaults"]
                                  arguments:@[
                                    @"write", nsString(suite.name()), nsString(key), @"-int", @"1"
                                  ]
                                      error:&error
                         terminationHandler:nil];
  ASSERT_NE(task, nil) << utf8Text(error.localizedDescription);
  [task waitUntilExit];
  ASSERT_EQ(task.terminationStatus, 0);

  EXPECT_TRUE(eventually([&] { return defaults->changeCount() != count; }));
  EXPECT_TRUE(eventually([&] { return defaults->object(key) == PropertyValue{1}; }));
}

}  // namespace
}  // namespace keyrow::macos
