#include "input/HidManagerOpener.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "tests/SimulatedMacTest.h"
#include "tests/input/FakeHidManagers.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;

/// Notes what is logged among the calls of the managers.
class NotingLogger final : public Logger {
 public:
  explicit NotingLogger(std::vector<std::string>& calls) : calls_{calls} {}
  void write(LogLevel level, std::string_view message) override {
    calls_.push_back(std::string{logLevelName(level)} + ": " + std::string{message});
  }

 private:
  std::vector<std::string>& calls_;
};

class HidManagerOpenerTest : public SimulatedMacTest {
 protected:
  static constexpr IOReturn notPermitted = static_cast<IOReturn>(0xE00002E2);

  FakeHidManagers managers;
  NotingLogger log{managers.calls};
  HidManagerOpener opener{{.hidManagers = managers,
                           .inputMonitoring = process->platform().inputMonitoring,
                           .hardwareLog = log},
                          "listening"};

  bool isOpenedWith(IOReturn result) {
    managers.openResult = result;
    return opener.open([](HidManager&) {}) != nullptr;
  }

  std::vector<std::string> takeLines() {
    std::vector<std::string> lines;
    for (const auto& call : managers.calls) {
      if (call.find(": ") != std::string::npos) lines.push_back(call);
    }
    managers.calls.clear();
    return lines;
  }
};

TEST_F(HidManagerOpenerTest, LogsAFailureOnlyWhenTheManagerIsGone) {
  EXPECT_FALSE(isOpenedWith(notPermitted));
  EXPECT_THAT(managers.calls,
              ElementsAre("create", "device matching", "schedule", "open", "destroy",
                          "error: Failed to start listening: "
                          "-536870174"));
}

TEST_F(HidManagerOpenerTest, SaysTheSameFailureOnceUntilItIsAnother) {
  isOpenedWith(notPermitted);
  isOpenedWith(notPermitted);
  EXPECT_THAT(takeLines(), ElementsAre("error: Failed to start listening: -536870174"));
  isOpenedWith(-1);
  EXPECT_THAT(takeLines(), ElementsAre("error: Failed to start listening: -1"));
  EXPECT_TRUE(isOpenedWith(ioReturnSuccess));
  EXPECT_THAT(takeLines(), ElementsAre());
  isOpenedWith(-1);
  EXPECT_THAT(takeLines(), ElementsAre("error: Failed to start listening: -1"));
}

TEST_F(HidManagerOpenerTest, AKeyboardThatAnotherProgramHasToItselfCostsNoOther) {
  EXPECT_TRUE(isOpenedWith(ioReturnExclusiveAccess));
  EXPECT_THAT(takeLines(), ElementsAre("info: Started listening without a keyboard that another "
                                       "program has to itself."));
  EXPECT_TRUE(isOpenedWith(ioReturnExclusiveAccess));
  EXPECT_THAT(takeLines(), ElementsAre());
}

TEST_F(HidManagerOpenerTest, MakesNoManagerBeforeTheUserHasAnswered) {
  mac.inputMonitoring.set(InputMonitoringAccess::unknown);
  EXPECT_FALSE(isOpenedWith(ioReturnSuccess));
  EXPECT_FALSE(opener.isOutdated());
  EXPECT_THAT(managers.calls, ElementsAre());
  mac.inputMonitoring.set(InputMonitoringAccess::denied);
  EXPECT_TRUE(opener.isOutdated());
  EXPECT_TRUE(isOpenedWith(ioReturnSuccess));
  EXPECT_FALSE(opener.isOutdated());
}

}  // namespace
}  // namespace keyrow::sim
