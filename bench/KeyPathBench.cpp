#include <benchmark/benchmark.h>

#include "bench/KeyPath.h"
#include "platform/HidSystem.h"

namespace keyrow::sim {
namespace {

constexpr std::uint16_t keyA = 0;
constexpr std::uint16_t keyF3 = 99;
constexpr std::uint16_t keyF7 = 98;
constexpr std::uint16_t keyGrave = 50;

/// Measures one event; the main queue is drained outside of the measured time, now and then.
void measure(benchmark::State& state, KeyPath& path, std::uint32_t type, std::uint16_t keyCode,
             std::uint64_t flags, bool passes) {
  if (path.pass(type, keyCode, flags) != passes) {
    state.SkipWithError("the event did not take the path that is to be measured");
    return;
  }
  constexpr int drainInterval = 4096;
  int undrained = 0;
  for (auto unused : state) {
    benchmark::DoNotOptimize(path.pass(type, keyCode, flags));
    if (passes || ++undrained < drainInterval) continue;
    state.PauseTiming();
    path.drainMainQueue();
    undrained = 0;
    state.ResumeTiming();
  }
}

void ordinaryKey(benchmark::State& state) {
  KeyPath path;
  measure(state, path, keyEventType::keyDown, keyA, 0, true);
}
BENCHMARK(ordinaryKey)->Name("ordinary key");

void ordinaryKeyWithReplacement(benchmark::State& state) {
  KeyPath path;
  path.store("fnReplacementModifier", "rightCommand");
  measure(state, path, keyEventType::keyDown, keyA, 0, true);
}
BENCHMARK(ordinaryKeyWithReplacement)->Name("ordinary key, replacement modifier set");

void topRowKeyThatPasses(benchmark::State& state) {
  KeyPath path;
  path.store("applyFnModeToExternalFunctionKeys", true);
  path.mac.hid.setParameter(hidFKeyModeKey, 1);
  measure(state, path, keyEventType::keyDown, keyF7, 0, true);
}
BENCHMARK(topRowKeyThatPasses)->Name("top-row key, standard mode");

void topRowKeyWithItsOwnMode(benchmark::State& state) {
  KeyPath path;
  path.store("applyFnModeToExternalFunctionKeys", true);
  path.storeOwnMode(FnState::standard);
  measure(state, path, keyEventType::keyDown, keyF7, 0, true);
}
BENCHMARK(topRowKeyWithItsOwnMode)->Name("top-row key, standard mode of its own");

/// F3 opens an application, with its press alone; of a media key the release does something, too.
void topRowKeyThatIsTranslated(benchmark::State& state) {
  KeyPath path;
  path.store("applyFnModeToExternalFunctionKeys", true);
  measure(state, path, keyEventType::keyDown, keyF3, 0, false);
}
BENCHMARK(topRowKeyThatIsTranslated)->Name("top-row key, translated");

/// Every press finds the media key down, and lets it up before.
void mediaKeyThatIsPressedAgain(benchmark::State& state) {
  KeyPath path;
  path.store("applyFnModeToExternalFunctionKeys", true);
  measure(state, path, keyEventType::keyDown, keyF7, 0, false);
}
BENCHMARK(mediaKeyThatIsPressedAgain)->Name("media key, up and down again");

void shortcutKeyUp(benchmark::State& state) {
  KeyPath path;
  measure(state, path, keyEventType::keyUp, keyGrave, keyEventFlag::secondaryFn, false);
}
BENCHMARK(shortcutKeyUp)->Name("per-app shortcut, key-up");

void attribution(benchmark::State& state) {
  KeyPath path{1, static_cast<int>(state.range(0))};
  for (auto unused : state) benchmark::DoNotOptimize(path.isAttributed());
}
BENCHMARK(attribution)->Name("attribution alone, samples held")->Arg(1)->Arg(8)->Arg(64);

void overrides(benchmark::State& state) {
  KeyPath path;
  PropertyDictionary stored;
  for (std::int64_t index = 0; index < state.range(0); ++index) {
    stored.emplace("com.example.app" + std::to_string(index), 1);
  }
  path.store("localFnState", stored);
  measure(state, path, keyEventType::keyDown, keyA, 0, true);
}
BENCHMARK(overrides)->Name("ordinary key, overrides stored")->Arg(0)->Arg(100)->Arg(10'000);

void keyboardsSeen(benchmark::State& state) {
  KeyPath path{static_cast<int>(state.range(0))};
  measure(state, path, keyEventType::keyDown, keyA, 0, true);
}
BENCHMARK(keyboardsSeen)->Name("ordinary key, keyboards seen")->Arg(1)->Arg(30)->Arg(1'000);

void eventsSoFar(benchmark::State& state) {
  KeyPath path;
  for (std::int64_t event = 0; event < state.range(0); ++event) {
    path.pass(event % 2 == 0 ? keyEventType::keyDown : keyEventType::keyUp, keyA);
  }
  measure(state, path, keyEventType::keyDown, keyA, 0, true);
}
BENCHMARK(eventsSoFar)->Name("ordinary key, events so far")->Arg(0)->Arg(100'000)->Arg(10'000'000);

}  // namespace
}  // namespace keyrow::sim

BENCHMARK_MAIN();
