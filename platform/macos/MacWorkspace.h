#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Workspace.h"

namespace keyrow::macos {

/// `Workspace` on `NSWorkspace`.
class MacWorkspace final : public Workspace {
 public:
  std::optional<std::string> frontmostBundleIdentifier() override;
  bool isApplicationInstalled(std::string_view bundleIdentifier) override;
  ObserverToken observeActivation(std::function<void()> handler) override;
};

}  // namespace keyrow::macos
