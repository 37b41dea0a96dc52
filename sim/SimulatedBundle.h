#pragma once

#include <utility>

#include "platform/Bundle.h"

namespace keyrow::sim {

/// A main bundle with the identifier it was given.
class SimulatedBundle final : public Bundle {
 public:
  explicit SimulatedBundle(std::optional<std::string> identifier)
      : identifier_{std::move(identifier)} {}

  std::optional<std::string> identifier() override { return identifier_; }

 private:
  const std::optional<std::string> identifier_;
};

}  // namespace keyrow::sim
