#include "sim/machine/OpenHandles.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace keyrow::sim {
namespace {

using Held = std::map<std::pair<std::string, OpenHandles::ProcessID>, int>;

TEST(OpenHandlesTest, HoldsNothingAtFirst) {
  const OpenHandles handles;
  EXPECT_EQ(handles.all(), Held{});
  EXPECT_EQ(handles.count("HidManager"), 0);
}

TEST(OpenHandlesTest, CountsByKindAndProcess) {
  OpenHandles handles;
  handles.opened("HidManager", 501);
  handles.opened("HidManager", 502);
  handles.opened("HidManager", 502);
  handles.opened("HidService", 501);
  EXPECT_EQ(handles.all(),
            (Held{{{"HidManager", 501}, 1}, {{"HidManager", 502}, 2}, {{"HidService", 501}, 1}}));
  EXPECT_EQ(handles.count("HidManager"), 3);
  EXPECT_EQ(handles.count("HidService"), 1);
  EXPECT_EQ(handles.count("Hid"), 0);
}

TEST(OpenHandlesTest, ClosingOneLeavesTheOthers) {
  OpenHandles handles;
  handles.opened("HidManager", 501);
  handles.opened("HidManager", 501);
  handles.opened("HidManager", 502);
  handles.closed("HidManager", 501);
  EXPECT_EQ(handles.all(), (Held{{{"HidManager", 501}, 1}, {{"HidManager", 502}, 1}}));
}

TEST(OpenHandlesTest, WhatIsNoLongerHeldIsNotListed) {
  OpenHandles handles;
  handles.opened("HidManager", 501);
  handles.closed("HidManager", 501);
  EXPECT_EQ(handles.all(), Held{});
}

TEST(OpenHandlesTest, AHandleIsHeldForAsLongAsItLives) {
  OpenHandles handles;
  auto first = std::make_unique<OpenHandle>(handles, "observer", 501);
  {
    const OpenHandle second{handles, "observer", 501};
    EXPECT_EQ(handles.count("observer"), 2);
  }
  EXPECT_EQ(handles.all(), (Held{{{"observer", 501}, 1}}));
  first.reset();
  EXPECT_EQ(handles.all(), Held{});
}

TEST(OpenHandlesTest, ThreadsMayOpenAndCloseAtTheSameTime) {
  OpenHandles handles;
  std::vector<std::thread> workers;
  for (const int process : {501, 502, 503}) {
    workers.emplace_back([&handles, process] {
      for (int count = 0; count < 1'000; ++count) const OpenHandle handle{handles, "x", process};
    });
  }
  for (auto& worker : workers) worker.join();
  EXPECT_EQ(handles.all(), Held{});
}

}  // namespace
}  // namespace keyrow::sim
