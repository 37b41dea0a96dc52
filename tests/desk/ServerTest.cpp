#include <gmock/gmock.h>
#include <httplib.h>

#include <nlohmann/json.hpp>
#include <string>
#include <thread>

#include "desk/ContentHash.h"
#include "desk/Film.h"
#include "desk/Page.h"
#include "desk/Server.h"
#include "sim/scenario/ScenarioParser.h"

namespace keyrow::desk {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class DeskServerTest : public testing::Test {
 protected:
  DeskServerTest() : server_{std::nullopt} {
    EXPECT_TRUE(server_.bindToAnyPort());
    thread_ = std::thread{[this] { server_.serve(); }};
    while (!client().Get("/")) std::this_thread::yield();
  }
  ~DeskServerTest() override {
    server_.stop();
    thread_.join();
  }

  httplib::Client client() const { return httplib::Client{"127.0.0.1", server_.port()}; }

  int statusOf(const std::string& method, const std::string& path, httplib::Headers headers = {},
               const std::string& body = "{}") const {
    httplib::Request request;
    request.method = method;
    request.path = path;
    request.headers = std::move(headers);
    request.body = body;
    auto one = client();
    const auto result = one.send(request);
    return result ? result->status : -1;
  }

  std::string ownOrigin() const { return "http://127.0.0.1:" + std::to_string(server_.port()); }

  std::string openStage() const {
    return json::parse(client().Post("/stages")->body)["stage"].get<std::string>();
  }

 private:
  Server server_;
  std::thread thread_;

 protected:
  int port() const { return server_.port(); }
};

TEST_F(DeskServerTest, ServesThePageWithAStrictPolicy) {
  const auto answer = client().Get("/");
  EXPECT_EQ(answer->status, 200);
  EXPECT_EQ(answer->body, pageFile("index.html"));
  const auto policy = answer->get_header_value("Content-Security-Policy");
  EXPECT_THAT(policy, StartsWith("default-src 'none'; script-src 'self'"));
  EXPECT_THAT(policy, Not(HasSubstr("unsafe")));
}

TEST_F(DeskServerTest, RefusesForeignHosts) {
  for (const std::string host : {"evil.example", "127.0.0.1", "127.0.0.1:1", "localhost.evil"}) {
    EXPECT_EQ(statusOf("GET", "/", {{"Host", host}}), 403) << host;
    EXPECT_EQ(statusOf("POST", "/stages", {{"Host", host}}), 403) << host;
  }
  EXPECT_EQ(statusOf("GET", "/", {{"Host", "localhost:" + std::to_string(port())}}), 200);
}

TEST_F(DeskServerTest, RefusesForeignOrigins) {
  for (const std::string origin : {"http://evil.example", "null", "https://127.0.0.1:1"}) {
    EXPECT_EQ(statusOf("POST", "/stages", {{"Origin", origin}}), 403) << origin;
  }
  EXPECT_EQ(statusOf("POST", "/stages", {{"Origin", ownOrigin()}}), 200);
}

TEST_F(DeskServerTest, OnlyAPostChangesAnything) {
  const auto play = "/stages/" + openStage() + "/play";
  for (const std::string method : {"PUT", "PATCH", "DELETE", "OPTIONS"}) {
    EXPECT_EQ(statusOf(method, play), 405) << method;
  }
  EXPECT_EQ(statusOf("GET", play), 404);
  EXPECT_EQ(statusOf("GET", "/stages"), 404);
}

TEST_F(DeskServerTest, OpensNoFileThatARequestNames) {
  for (const std::string path : {"/../etc/passwd", "/%2e%2e/etc/passwd", "/etc/passwd",
                                 "/scenarios/first-day-with-keyrow.txt", "/desk.js/..", "//"}) {
    EXPECT_EQ(statusOf("GET", path), 404) << path;
  }
  // The prompt's own lines are none of the language.
  const auto play = "/stages/" + openStage() + "/play";
  for (const std::string line : {"save /tmp/desk.txt", "play /etc/passwd"}) {
    const auto answer =
        client().Post(play, json{{"kept", 0}, {"lines", {line}}}.dump(), "application/json");
    EXPECT_EQ(json::parse(answer->body)["refused"]["line"], line);
  }
}

TEST_F(DeskServerTest, RefusesBodiesThatAreNoRequest) {
  const auto play = "/stages/" + openStage() + "/play";
  for (const std::string body :
       {"", "{", "[]", "{}", R"({"kept":-1,"lines":[]})", R"({"kept":0,"lines":"wait 1s"})",
        R"({"kept":0,"lines":[1]})", R"({"kept":1e99,"lines":[]})"}) {
    EXPECT_EQ(client().Post(play, body, "application/json")->status, 400) << body;
  }
  const auto deep = std::string(100'000, '[');
  EXPECT_EQ(client().Post(play, deep, "application/json")->status, 400);
  const auto large = std::string(3 * 1024 * 1024, ' ');
  EXPECT_EQ(client().Post(play, large, "application/json")->status, 413);
  EXPECT_EQ(
      statusOf("POST", "/stages/" + std::string(32, '0') + "/play", {}, R"({"kept":0,"lines":[]})"),
      404);
}

TEST_F(DeskServerTest, NothingOfARefusedRequestIsTakenForAnother) {
  const auto smuggled =
      "POST /stages HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(port()) + "\r\n\r\n";
  auto one = client();
  one.set_keep_alive(true);
  httplib::Headers foreign{{"Origin", "http://evil.example"}};
  EXPECT_EQ(one.Post("/stages", foreign, smuggled, "text/plain")->status, 403);
  // The next answer on this connection is the one to the next request.
  EXPECT_EQ(one.Get("/desk.css")->body, pageFile("desk.css"));
}

TEST_F(DeskServerTest, APortThatIsTakenIsAnError) {
  Server other{std::nullopt};
  EXPECT_FALSE(other.bind(port()));
  EXPECT_TRUE(other.bindToAnyPort());
}

TEST(ContentHashTest, IsThatOfTheStandard) {
  EXPECT_EQ(contentHash(""), "sha256-47DEQpj8HBSa+/TImW+5JCeuQeRkm5NMpJWZG3hSuFU=");
  EXPECT_EQ(contentHash("abc"), "sha256-ungWv48Bz+pBQUDeXa4iI7ADYaOWF3qctBD/YfIAFa0=");
  // Its length lies in a block of its own.
  EXPECT_EQ(contentHash("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
            "sha256-JI1qYdIGOLjlwCaTDD5gOaM85Flk/yFn9uzt1BnbBsE=");
}

Film filmOfLines(const std::string& lines) {
  const auto scenario = sim::parseScenario("</title><script>alert(1)</script>", lines);
  return filmOf(*scenario);
}

TEST(FilmTest, NothingInAScenarioBreaksOutOfIt) {
  const auto film = filmOfLines(
      "# </script><script>alert(2)</script><!--\n"
      "keyboard usb product=\"</script><img src=x onerror=alert(3)>\"\nlaunch keyrow\n");
  EXPECT_THAT(film.html, Not(HasSubstr("<script>alert")));
  EXPECT_THAT(film.html, Not(HasSubstr("<img")));
  EXPECT_THAT(film.html, Not(HasSubstr("<!--")));
}

TEST(FilmTest, NeedsNothingElse) {
  const auto film = filmOfLines("launch keyrow\nexpect hardware standard\n");
  EXPECT_EQ(film.unmetExpectations, 1);
  EXPECT_THAT(film.html, Not(HasSubstr("src=")));
  EXPECT_THAT(film.html, Not(HasSubstr("\nimport ")));
  EXPECT_THAT(film.html, Not(HasSubstr("unsafe")));
  EXPECT_THAT(film.html, HasSubstr("script-src 'sha256-"));
}

}  // namespace
}  // namespace keyrow::desk
