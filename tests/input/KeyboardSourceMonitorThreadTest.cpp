#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "tests/input/KeyboardSourceMonitorFixture.h"

namespace keyrow::sim {
namespace {

using KeyboardSourceMonitorThreadTest = KeyboardSourceMonitorFixture;

TEST_F(KeyboardSourceMonitorThreadTest,
       AnswersAnotherThreadWhileInputsArriveAndMonitoringRestarts) {
  constexpr std::uint64_t rounds = 2'000;
  constexpr std::uint64_t ticksPerRound = 24'000;
  std::atomic<std::uint64_t> now{1'000'000'000};
  std::atomic<bool> isDone{false};
  std::atomic<std::uint64_t> answers{0};
  std::set<std::string> labels;

  std::thread worker{[&] {
    while (!isDone) {
      const auto source = monitor().source(now);
      if (!source) continue;
      labels.insert(source->inputSourceLabel(
          keyrow().settings().isOn(BooleanSetting::enhancedDiagnosticsEnabled)));
      ++answers;
    }
  }};

  const auto cached = makeKeyboard(1, {{"Product", "Cached"}, {"Transport", "USB"}});
  const auto uncached = makeKeyboard(std::nullopt, {{"Product", "Uncached"}});
  // Rounds on while the worker has not had its turn yet, but not for ever.
  const auto goesOn = [&](std::uint64_t round) {
    return round < rounds || (answers == 0 && round < 1'000 * rounds);
  };
  for (std::uint64_t round = 0; goesOn(round); ++round) {
    input(cached, now += ticksPerRound);
    input(uncached, now += ticksPerRound);
    if (round % 16 == 0)
      keyrow().settings().set(BooleanSetting::enhancedDiagnosticsEnabled, round % 32 == 0);
    if (round % 64 == 63) {
      monitor().stopMonitoring();
      monitor().startMonitoring();
    }
  }
  isDone = true;
  worker.join();

  EXPECT_GT(answers, 0U);
  // Whatever the worker was told is one of the two keyboards, whole.
  for (const auto& label : labels) {
    EXPECT_TRUE(label == "external keyboard" || label == "unknown keyboard" ||
                label == "external keyboard (Cached), transport=USB" ||
                label == "unknown keyboard (Uncached)")
        << label;
  }
  EXPECT_EQ(mac.openHandles.count("HidManager"), 1);
}

TEST_F(KeyboardSourceMonitorThreadTest, WhatItAnsweredOutlivesTheMonitoring) {
  input(namedKeyboard("A"), 1'000);
  std::shared_ptr<const KeyboardDeviceSource> source;
  std::thread worker{[&] { source = monitor().source(1'000); }};
  worker.join();
  monitor().stopMonitoring();
  ASSERT_NE(source, nullptr);
  EXPECT_EQ(source->product, "A");
}

/// Asks a monitor from another thread whenever it is asked to, and notes when the answer
/// has to wait for the asker.
class Questioner {
 public:
  void setMonitor(KeyboardSourceMonitor& monitor) { monitor_ = &monitor; }

  void ask() {
    ++questions_;
    pending_.push_back(std::async(std::launch::async, [this] { monitor_->source(1'000); }));
    const auto status = pending_.back().wait_for(std::chrono::seconds{10});
    isAlwaysAnswered_ = isAlwaysAnswered_ && status == std::future_status::ready;
  }

  int questions() const { return questions_; }
  bool isAlwaysAnswered() const { return isAlwaysAnswered_; }

 private:
  KeyboardSourceMonitor* monitor_ = nullptr;
  int questions_ = 0;
  bool isAlwaysAnswered_ = true;
  std::vector<std::future<void>> pending_;
};

class QuestioningDevice final : public HidDevice {
 public:
  explicit QuestioningDevice(Questioner& questioner) : questioner_{questioner} {}

  std::optional<std::uint64_t> registryEntryID() override {
    questioner_.ask();
    return 7;
  }
  std::optional<PropertyValue> property(std::string_view) override {
    questioner_.ask();
    return std::nullopt;
  }

 private:
  Questioner& questioner_;
};

class QuestioningManagers final : public HidManagers {
 public:
  std::function<void(const HidInputValue&)> callback;
  std::function<void()> whenClosed = [] {};

  std::unique_ptr<HidManager> create() override { return std::make_unique<Manager>(*this); }

 private:
  class Manager final : public HidManager {
   public:
    explicit Manager(QuestioningManagers& owner) : owner_{owner} {}
    ~Manager() override { owner_.whenClosed(); }
    void setDeviceMatching(std::span<const PropertyDictionary>) override {}
    void setInputValueMatching(const PropertyDictionary&) override {}
    void registerInputValueCallback(std::function<void(const HidInputValue&)> handler) override {
      owner_.callback = std::move(handler);
    }
    void registerDeviceMatchingCallback(std::function<void()>) override {}
    void registerDeviceRemovalCallback(std::function<void()>) override {}
    std::vector<std::unique_ptr<HidDevice>> devices() override { return {}; }
    void scheduleWithMainRunLoop() override {}
    IOReturn open() override { return ioReturnSuccess; }

   private:
    QuestioningManagers& owner_;
  };
};

class QuestioningLogger final : public Logger {
 public:
  explicit QuestioningLogger(Questioner& questioner) : questioner_{questioner} {}
  void write(LogLevel, std::string_view) override { questioner_.ask(); }

 private:
  Questioner& questioner_;
};

TEST_F(KeyboardSourceMonitorThreadTest, AnswersWhileAKeyboardIsLookedAtAndLogged) {
  Questioner questioner;
  QuestioningManagers managers;
  QuestioningLogger logger{questioner};
  const auto& platform = process->platform();
  KeyboardSourceMonitor asked{{.hidManagers = managers,
                               .inputMonitoring = platform.inputMonitoring,
                               .clock = platform.clock,
                               .text = platform.text,
                               .settings = keyrow().settings(),
                               .hardwareLog = logger}};
  questioner.setMonitor(asked);
  asked.startMonitoring();
  QuestioningDevice device{questioner};
  managers.callback({&device, keyboardPage, 1'000});
  // The identifier, at least five properties, and the line in the log.
  EXPECT_GE(questioner.questions(), 7);
  EXPECT_TRUE(questioner.isAlwaysAnswered());
}

TEST_F(KeyboardSourceMonitorThreadTest, AnswersWhileItsManagerIsClosed) {
  Questioner questioner;
  QuestioningManagers managers;
  const auto& platform = process->platform();
  KeyboardSourceMonitor asked{
      {.hidManagers = managers,
       .inputMonitoring = platform.inputMonitoring,
       .clock = platform.clock,
       .text = platform.text,
       .settings = keyrow().settings(),
       .hardwareLog = keyrow().diagnosticsLog().logger(LogCategory::hardware)}};
  questioner.setMonitor(asked);
  managers.whenClosed = [&] { questioner.ask(); };
  asked.startMonitoring();
  asked.stopMonitoring();
  EXPECT_EQ(questioner.questions(), 1);
  EXPECT_TRUE(questioner.isAlwaysAnswered());
}

}  // namespace
}  // namespace keyrow::sim
