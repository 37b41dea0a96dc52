#include <algorithm>
#include <array>
#include <chrono>

#include "sim/machine/PropertyText.h"
#include "sim/scenario/Command.h"

namespace keyrow::sim {

namespace {

using namespace std::chrono_literals;

constexpr auto longestUptime = 24h * 36525;

Play parseInstall(LineReader& line) {
  return [app = line.word("a bundle identifier")](Stage& stage) {
    stage.mac.applications.install(app);
    return Outcome{};
  };
}

Play parseUninstall(LineReader& line) {
  return [app = line.word("a bundle identifier")](Stage& stage) {
    if (!stage.mac.applications.isInstalled(app)) return unplayable(app + " is not installed");
    stage.mac.applications.uninstall(app);
    return Outcome{};
  };
}

Play parseFront(LineReader& line) {
  if (line.accept("none")) {
    return [](Stage& stage) {
      stage.mac.applications.activate(std::nullopt);
      return Outcome{};
    };
  }
  return [app = line.word("a bundle identifier or none")](Stage& stage) {
    auto& applications = stage.mac.applications;
    if (!applications.isInstalled(app) && applications.running(app).empty()) {
      return unplayable(app + " is not installed");
    }
    applications.activate(app);
    return Outcome{};
  };
}

/// A property of a keyboard as scenarios write it, and as the HID system names it.
struct KeyboardProperty {
  std::string_view word;
  std::string_view name;
};
constexpr std::array<KeyboardProperty, 7> keyboardProperties{{
    {"vendor", "VendorID"},
    {"product", "Product"},
    {"manufacturer", "Manufacturer"},
    {"transport", "Transport"},
    {"built-in", "Built-In"},
    {"location", "LocationID"},
    {"caps-lock", "HIDCapsLockState"},
}};

constexpr std::string_view keyboardPropertyExpected =
    "vendor=, product=, manufacturer=, transport=, built-in=, location=, caps-lock=, registry= or "
    "usage=";

Play parseKeyboard(LineReader& line) {
  const auto name = line.word("a name for the keyboard");
  SimulatedKeyboard keyboard;
  bool hasRegistryID = true;
  while (!line.atEnd()) {
    const auto property = line.property(keyboardPropertyExpected);
    const auto known = std::ranges::find(keyboardProperties, property.key, &KeyboardProperty::word);
    const auto* number = property.value ? property.value->integer() : nullptr;
    if (known != keyboardProperties.end()) {
      keyboard.properties.erase(std::string{known->name});
      if (property.value) keyboard.properties.emplace(known->name, *property.value);
    } else if (property.key == "registry" && !property.value) {
      hasRegistryID = false;
    } else if (property.key == "registry" && number) {
      keyboard.registryID = static_cast<std::uint64_t>(*number);
    } else if (property.key == "usage" && number) {
      keyboard.usage = *number;
    } else {
      line.failBefore(keyboardPropertyExpected);
    }
  }
  return [name, keyboard, hasRegistryID](Stage& stage) {
    auto attached = keyboard;
    if (hasRegistryID && !attached.registryID) attached.registryID = stage.nextRegistryID();
    stage.mac.keyboards.attach(name, std::move(attached));
    return Outcome{};
  };
}

Play parseUnplug(LineReader& line) {
  return [name = line.word("the name of a keyboard")](Stage& stage) {
    return stage.mac.keyboards.unplug(name) ? Outcome{}
                                            : unplayable("no keyboard " + name + " is attached");
  };
}

Play parseSystemSettings(LineReader& line) {
  return [state = line.mode()](Stage& stage) {
    stage.mac.changeModeInSystemSettings(state == FnState::standard);
    return Outcome{};
  };
}

Play parseHardware(LineReader& line) {
  if (!line.atProperty()) {
    return [state = line.mode()](Stage& stage) {
      stage.mac.hid.setParameter("HIDFKeyMode", rawValue(state));
      return Outcome{};
    };
  }
  constexpr std::string_view expected =
      "special, standard, HIDFKeyMode=VALUE or HIDParameters=VALUE";
  const auto property = line.property(expected);
  if (property.key == "HIDFKeyMode") {
    return [value = property.value](Stage& stage) {
      stage.mac.hid.setParameter("HIDFKeyMode", value);
      return Outcome{};
    };
  }
  if (property.key != "HIDParameters") line.failBefore(expected);
  return [value = property.value](Stage& stage) {
    stage.mac.hid.setParameters(value);
    return Outcome{};
  };
}

Play parsePreference(LineReader& line) {
  return [value = line.valueOrNone()](Stage& stage) {
    stage.mac.globalPreferences.setValue(GlobalPreferences::domain,
                                         FnStateController::fnStateDefaultsKey, value);
    return Outcome{};
  };
}

Play parseDefaults(LineReader& line) {
  constexpr std::array<std::string_view, 2> verbs{"write", "delete"};
  const bool writes = line.oneOf(verbs) == 0;
  const auto key = line.word("the key of a setting");
  const auto value = writes ? std::optional{line.value()} : std::nullopt;
  return [key, value](Stage& stage) {
    stage.mac.defaults.setValue(appIdentifier, key, value);
    return Outcome{};
  };
}

Play parseWait(LineReader& line) {
  return [duration = line.duration()](Stage& stage) {
    if (stage.mac.scheduler.now() + duration > longestUptime) {
      return unplayable("the machine cannot stay on for more than a hundred years");
    }
    stage.mac.scheduler.advance(duration);
    return Outcome{};
  };
}

PortCall parsePortCall(LineReader& line) {
  std::array<std::string_view, portCalls.size()> names;
  std::ranges::transform(portCalls, names.begin(), &PortCallInfo::name);
  return static_cast<PortCall>(line.oneOf(names));
}

Play parseFail(LineReader& line) {
  const auto call = parsePortCall(line);
  std::uint64_t times = 1;
  std::uint64_t passing = 0;
  if (line.accept("always")) {
    times = Faults::always;
  } else if (line.accept("after")) {
    passing = line.number(1'000'000);
  } else if (!line.atEnd()) {
    times = line.number(1'000'000);
    line.require("times");
  }
  return [call, times, passing](Stage& stage) {
    stage.mac.faults.fail(call, times, passing);
    return Outcome{};
  };
}

Play parseRepair(LineReader&) {
  return [](Stage& stage) {
    stage.mac.faults.repair();
    return Outcome{};
  };
}

constexpr std::array<Command, 12> commands{{
    {"install", "install APP", "An application is put on the Mac.", "install com.apple.TextEdit",
     parseInstall},
    {"uninstall", "uninstall APP", "An application is thrown away.", "uninstall com.apple.TextEdit",
     parseUninstall},
    {"front", "front APP|none",
     "An installed application comes to the front; none stands for one without an identifier, or "
     "no application at all.",
     "front com.apple.TextEdit", parseFront},
    {"keyboard", "keyboard NAME [PROPERTY=VALUE ...]",
     "A keyboard is attached. Its properties: vendor, product, manufacturer, transport, built-in, "
     "location, caps-lock (what it reports), registry (its registry entry ID, or none) and usage "
     "(6 keyboard, 7 keypad).",
     "keyboard usb1 vendor=0x046d product=\"G Pro\" transport=USB built-in=false", parseKeyboard},
    {"unplug", "unplug NAME", "A keyboard is taken away.", "unplug usb1", parseUnplug},
    {"system-settings", "system-settings special|standard",
     "The user changes the mode in System Settings, behind Keyrow's back.",
     "system-settings standard", parseSystemSettings},
    {"hardware", "hardware special|standard|KEY=VALUE",
     "Something else changes the mode in the hardware alone, or puts a raw value there: "
     "HIDFKeyMode=VALUE or HIDParameters=VALUE.",
     "hardware HIDFKeyMode=2", parseHardware},
    {"preference", "preference VALUE|none",
     "Something else sets or removes the system preference com.apple.keyboard.fnState.",
     "preference true", parsePreference},
    {"defaults", "defaults write KEY VALUE | defaults delete KEY",
     "Something else writes one of Keyrow's settings. KEY=VALUE ... makes a dictionary.",
     "defaults write localFnState com.apple.TextEdit=1", parseDefaults},
    {"wait", "wait DURATION", "Time passes.", "wait 0.35s", parseWait},
    {"fail", "fail CALL [N times|always|after N]",
     "A call of the system fails: the next time, the next N times, always, or once after N calls "
     "that work.",
     "fail set-hid-parameter 2 times", parseFail},
    {"repair", "repair", "No call of the system fails any more.", "repair", parseRepair},
}};

}  // namespace

std::span<const Command> machineCommands() { return commands; }

}  // namespace keyrow::sim
