#include "core/Commands.h"

#include "core/KeyboardDeviceSource.h"
#include "core/Words.h"

namespace keyrow {

namespace {

constexpr std::string_view notStored = "It could not be stored.";

std::string noSuchMode(std::string_view word) {
  return "A mode is special or standard, and not " + inQuotes(word) + ".";
}

std::optional<std::string> problemOf(CommandResult result) {
  switch (result) {
    case CommandResult::done:
      return std::nullopt;
    case CommandResult::managed:
      return "The modes are managed by an administrator.";
    case CommandResult::otherSession:
      return "Another user has the keyboard.";
    case CommandResult::writeFailed:
      return "The keyboard did not take the mode.";
    case CommandResult::noMode:
      return "No mode is stored, and the keyboard's cannot be read.";
    case CommandResult::noGlobalMode:
      return "No global mode is stored that would take its place. keyrow mode special or standard "
             "stores one.";
    case CommandResult::noOverride:
      return "This application has no override.";
    case CommandResult::notStored:
      return std::string{notStored};
    case CommandResult::notKept:
      return "The keyboard has taken it, but it could not be stored.";
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::string> Commands::carryOut(const Request& request) {
  switch (request.kind) {
    case Request::Kind::setMode:
      if (const auto mode = fnStateFromWord(request.value)) {
        return problemOf(use_.modes.setGlobalMode(*mode));
      }
      return noSuchMode(request.value);
    case Request::Kind::toggleMode:
      return problemOf(use_.modes.flipGlobalMode());
    case Request::Kind::setOverride:
      return setOverride(request);
    case Request::Kind::clearOverride:
      return problemOf(use_.modes.clearOverride(request.subject));
    case Request::Kind::setKeyboard:
      return setKeyboard(request);
    case Request::Kind::setSetting:
      return setSetting(request);
    case Request::Kind::status:
    case Request::Kind::watch:
      break;
  }
  return "This is a question, and no command.";
}

std::optional<std::string> Commands::setOverride(const Request& request) {
  const auto mode = fnStateFromWord(request.value);
  if (!mode) return noSuchMode(request.value);
  if (!use_.workspace.isApplicationInstalled(request.subject)) {
    return inQuotes(request.subject) + " is not installed.";
  }
  return problemOf(use_.modes.setOverride(request.subject, *mode));
}

std::optional<std::string> Commands::setKeyboard(const Request& request) {
  const auto numbers = keyboardNumbersFromText(request.subject);
  if (!numbers) {
    return inQuotes(request.subject) + " is no pair of a vendor and a product number.";
  }
  const auto mode = fnStateFromWord(request.value);
  if (!mode && request.value != follow) {
    return "A keyboard's mode is special, standard or follow, and not " + inQuotes(request.value) +
           ".";
  }
  // What is stored for one all the same can be taken away.
  if (mode && isAppleVendor(numbers->vendorID)) return std::string{appleKeyboards};
  if (use_.keyboardFnStates.isManaged()) {
    return "The keyboards' modes are managed by an administrator.";
  }
  if (!use_.keyboardFnStates.set(*numbers, mode)) return std::string{notStored};
  return std::nullopt;
}

std::optional<std::string> Commands::setSetting(const Request& request) {
  if (auto problem = use_.namedSettings.problem(request.subject, request.value)) return problem;
  if (!use_.namedSettings.set(request.subject, request.value)) return std::string{notStored};
  return std::nullopt;
}

}  // namespace keyrow
