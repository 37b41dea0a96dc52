#include "desk/Server.h"

#include <httplib.h>

#include <cstddef>
#include <functional>
#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>

#include "core/AppSettings.h"
#include "desk/Film.h"
#include "desk/Opening.h"
#include "desk/Page.h"
#include "desk/Stages.h"
#include "sim/machine/PortCall.h"

namespace keyrow::desk {

namespace {

using httplib::Request;
using httplib::Response;
using nlohmann::json;
using namespace std::chrono_literals;

constexpr auto host = "127.0.0.1";

/// The largest request; a whole session is below it.
constexpr std::size_t maximumBodySize = std::size_t{2} * 1024 * 1024;

constexpr std::size_t maximumStageCount = 16;

/// A browser keeps six connections open, and each holds a thread.
constexpr std::size_t threadCount = 48;
constexpr auto keepAliveTimeout = 5;

namespace status {
constexpr int ok = 200;
constexpr int badRequest = 400;
constexpr int forbidden = 403;
constexpr int notFound = 404;
constexpr int methodNotAllowed = 405;
}  // namespace status

constexpr std::string_view policy =
    "default-src 'none'; script-src 'self'; style-src 'self'; connect-src 'self'; "
    "base-uri 'none'; form-action 'none'; frame-ancestors 'none'";

const char* typeOf(std::string_view name) {
  if (name.ends_with(".css")) return "text/css; charset=utf-8";
  if (name.ends_with(".js")) return "text/javascript; charset=utf-8";
  return "text/html; charset=utf-8";
}

void answer(Response& response, int status, const json& body) {
  response.status = status;
  response.set_content(body.dump(-1, ' ', false, json::error_handler_t::replace),
                       "application/json");
}

void refuse(Response& response, int status, std::string_view why) {
  answer(response, status, {{"error", why}});
}

/// The request in the body; absent where it is none.
std::optional<PlayRequest> playRequest(const std::string& body) {
  const auto parsed = json::parse(body, nullptr, /*allow_exceptions=*/false);
  if (!parsed.is_object()) return std::nullopt;
  const auto kept = parsed.find("kept");
  const auto lines = parsed.find("lines");
  const auto joins = parsed.find("joinsWaits");
  if (kept == parsed.end() || !kept->is_number_unsigned()) return std::nullopt;
  if (lines == parsed.end() || !lines->is_array() || lines->size() > maximumLineCount) {
    return std::nullopt;
  }
  PlayRequest request{.kept = kept->get<std::size_t>(), .lines = {}};
  for (const auto& line : *lines) {
    if (!line.is_string()) return std::nullopt;
    request.lines.push_back(line.get<std::string>());
  }
  request.joinsWaits = joins != parsed.end() && joins->is_boolean() && joins->get<bool>();
  return request;
}

json portCallsOf() {
  auto calls = json::array();
  for (const auto& call : sim::portCalls) {
    calls.push_back({{"name", call.name}, {"failure", call.failure}});
  }
  return calls;
}

/// As the library does by default it would share the port with whoever else wants it.
void setSocketOptions(socket_t socket) {
  const int yes = 1;
  setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
}

}  // namespace

struct Server::Contents {
  explicit Contents(std::optional<sim::Scenario> scenario) {
    beginning = {{"file", scenario ? fileOf(*scenario) : json{}},
                 {"opening", openingLines},
                 {"start", Session::blank()},
                 {"calls", portCallsOf()},
                 {"settings", settingsKey::all}};
    server.new_task_queue = [] { return new httplib::ThreadPool(threadCount); };
    server.set_tcp_nodelay(true);
    server.set_socket_options(setSocketOptions);
    server.set_keep_alive_timeout(keepAliveTimeout);
    server.set_payload_max_length(maximumBodySize);
    server.set_default_headers({{"Content-Security-Policy", std::string{policy}},
                                {"X-Content-Type-Options", "nosniff"},
                                {"Referrer-Policy", "no-referrer"},
                                {"Cross-Origin-Resource-Policy", "same-origin"},
                                {"Cross-Origin-Opener-Policy", "same-origin"},
                                {"Cache-Control", "no-store"}});
    route();
  }

  using Handler = std::function<void(const Request&, Response&)>;

  /// Only for the page itself. This is asked when the body has been read, so that nothing of a
  /// refused request is left to be taken for the next one.
  httplib::Server::Handler guarded(Handler handler) {
    return [this, handler = std::move(handler)](const Request& request, Response& response) {
      if (!isForThisDesk(request)) {
        refuse(response, status::forbidden, "This desk is only for its own page.");
        return;
      }
      handler(request, response);
    };
  }

  bool isForThisDesk(const Request& request) const {
    const auto ending = ":" + std::to_string(port);
    const auto asked = request.get_header_value("Host");
    const bool isOurs = asked == host + ending || asked == "localhost" + ending;
    if (!isOurs || request.get_header_value_count("Host") != 1) return false;
    if (!request.has_header("Origin")) return true;
    return request.get_header_value("Origin") == "http://" + asked &&
           request.get_header_value_count("Origin") == 1;
  }

  void route() {
    for (const auto& file : pageFiles()) {
      const auto path = file.name == "index.html" ? "/" : "/" + std::string{file.name};
      server.Get(path, guarded([&file](const Request&, Response& response) {
                   response.set_content(file.contents.data(), file.contents.size(),
                                        typeOf(file.name));
                 }));
    }
    server.Post("/stages", guarded([this](const Request&, Response& response) {
                  auto opened = beginning;
                  opened["stage"] = stages.open();
                  answer(response, status::ok, opened);
                }));
    server.Post(R"(/stages/([0-9a-f]{32})/play)",
                guarded([this](const Request& request, Response& response) {
                  const auto play = playRequest(request.body);
                  if (!play) return refuse(response, status::badRequest, "That is no request.");
                  const auto played = stages.play(request.matches[1].str(), *play);
                  if (!played) return refuse(response, status::notFound, "That stage is gone.");
                  answer(response, status::ok, *played);
                }));
    server.Post(R"(/stages/([0-9a-f]{32})/close)",
                guarded([this](const Request& request, Response& response) {
                  stages.close(request.matches[1].str());
                  answer(response, status::ok, json::object());
                }));
    const auto nothing = guarded([](const Request&, Response& response) {
      refuse(response, status::notFound, "There is nothing here.");
    });
    const auto notThatWay = guarded([](const Request&, Response& response) {
      refuse(response, status::methodNotAllowed, "Not that way.");
    });
    server.Get(".*", nothing);
    server.Post(".*", nothing);
    server.Put(".*", notThatWay);
    server.Patch(".*", notThatWay);
    server.Delete(".*", notThatWay);
    server.Options(".*", notThatWay);
  }

  httplib::Server server;
  Stages stages{maximumStageCount};
  json beginning;
  int port = 0;
};

Server::Server(std::optional<sim::Scenario> scenario)
    : contents_{std::make_unique<Contents>(std::move(scenario))} {}
Server::~Server() = default;

std::expected<void, std::string> Server::bind(int port) {
  if (!contents_->server.bind_to_port(host, port)) {
    return std::unexpected{"port " + std::to_string(port) + " is taken"};
  }
  contents_->port = port;
  return {};
}

std::expected<void, std::string> Server::bindToAnyPort() {
  const int port = contents_->server.bind_to_any_port(host);
  if (port <= 0) return std::unexpected{"no port is free"};
  contents_->port = port;
  return {};
}

int Server::port() const { return contents_->port; }

std::string Server::address() const {
  return "http://" + std::string{host} + ":" + std::to_string(port()) + "/";
}

void Server::serve() { contents_->server.listen_after_bind(); }

void Server::stop() { contents_->server.stop(); }

}  // namespace keyrow::desk
