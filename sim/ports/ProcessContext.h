#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "sim/machine/SimulatedMac.h"
#include "sim/ports/MainThread.h"

namespace keyrow::sim {

/// What the ports of one process have in common.
struct ProcessContext {
  SimulatedMac& mac;
  OpenHandles::ProcessID processID = 0;
  /// Absent for a process without a bundle.
  std::optional<std::string> bundleIdentifier;
  /// In whose session it runs.
  std::string user{Sessions::firstUser};
  std::shared_ptr<MainThread> mainThread = std::make_shared<MainThread>();

  /// Wraps an observer's handler: it runs in the process's main thread, and as long as
  /// the wrapper lives it counts as held. One that has gone is not called any more, not even for
  /// what has waited for a thread that hung. `name` is for the trace.
  template <typename... Arguments>
  std::function<void(Arguments...)> observer(std::string name,
                                             std::function<void(Arguments...)> handler) const {
    auto held = std::make_shared<HeldObserver>(mac, processID, std::move(name));
    using Handler = std::function<void(Arguments...)>;
    return [thread = mainThread, held = std::move(held),
            handler = std::make_shared<const Handler>(std::move(handler))](
               const Arguments&... arguments) {
      thread->deliver([weak = std::weak_ptr{handler}, arguments...] {
        if (const auto alive = weak.lock()) (*alive)(arguments...);
      });
    };
  }

 private:
  struct HeldObserver {
    HeldObserver(SimulatedMac& itsMac, OpenHandles::ProcessID process, std::string itsName)
        : mac{itsMac}, name{std::move(itsName)}, handle{itsMac.openHandles, "observer", process} {
      mac.trace.add("observe " + name);
    }
    ~HeldObserver() { mac.trace.add("stop observing " + name); }
    HeldObserver(const HeldObserver&) = delete;
    HeldObserver& operator=(const HeldObserver&) = delete;

    SimulatedMac& mac;
    const std::string name;
    const OpenHandle handle;
  };
};

}  // namespace keyrow::sim
