#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/HidManagers.h"

namespace keyrow::sim {

/// Notes what is asked of it in the order of the calls, and delivers what it is told to.
class FakeHidManagers final : public HidManagers {
 public:
  std::vector<std::string> calls;
  std::vector<PropertyDictionary> deviceMatching;
  PropertyDictionary inputValueMatching;
  std::function<void(const HidInputValue&)> callback;
  /// What opening a manager gives.
  IOReturn openResult = ioReturnSuccess;

  std::unique_ptr<HidManager> create() override {
    calls.emplace_back("create");
    return std::make_unique<Manager>(*this);
  }

 private:
  class Manager final : public HidManager {
   public:
    explicit Manager(FakeHidManagers& owner) : owner_{owner} {}
    ~Manager() override { owner_.calls.emplace_back("destroy"); }

    void setDeviceMatching(std::span<const PropertyDictionary> matching) override {
      owner_.calls.emplace_back("device matching");
      owner_.deviceMatching.assign(matching.begin(), matching.end());
    }
    void setInputValueMatching(const PropertyDictionary& matching) override {
      owner_.calls.emplace_back("input value matching");
      owner_.inputValueMatching = matching;
    }
    void registerInputValueCallback(std::function<void(const HidInputValue&)> handler) override {
      owner_.calls.emplace_back("register");
      owner_.callback = std::move(handler);
    }
    void registerDeviceMatchingCallback(std::function<void()>) override {
      owner_.calls.emplace_back("register for devices");
    }
    void registerDeviceRemovalCallback(std::function<void()>) override {
      owner_.calls.emplace_back("register for removals");
    }
    std::vector<std::unique_ptr<HidDevice>> devices() override { return {}; }
    void scheduleWithMainRunLoop() override { owner_.calls.emplace_back("schedule"); }
    IOReturn open() override {
      owner_.calls.emplace_back("open");
      return owner_.openResult;
    }

   private:
    FakeHidManagers& owner_;
  };
};

}  // namespace keyrow::sim
