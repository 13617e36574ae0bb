// The description of the API and the API itself, held against each other.

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "apps/eventd/api/Router.h"
#include "tests/eventd/program/DaemonHome.h"
#include "tests/eventd/program/SchemaCheck.h"

namespace EventSystemTest {
namespace {

using EventApps::Api::Route;

const std::set<std::string> kMethods = {"get", "put", "post", "delete"};

class OpenApi : public DaemonHome {
 protected:
  void describe() {
    m_description = jsonOf(get("/openapi.json"));
    ASSERT_TRUE(m_description.is_object());
  }
  const json& description() const { return m_description; }

  const json& resolved(const json& one) const {
    if (!one.contains("$ref")) return one;
    return m_description.at(json::json_pointer(one["$ref"].get<std::string>().substr(1)));
  }

  // What the description gives as examples for all that must be there.
  Ask askOf(std::string path, const std::string& method, const json& operation,
            const json& common) const {
    std::string query;
    for (const json& list : {common, operation.value("parameters", json::array())}) {
      for (const json& reference : list) {
        const json& parameter = resolved(reference);
        if (parameter["in"] == "path") {
          const std::string name = "{" + parameter["name"].get<std::string>() + "}";
          path.replace(path.find(name), name.size(), textOf(parameter["example"]));
        } else if (parameter["in"] == "query" && parameter.contains("example")) {
          query += (query.empty() ? "?" : "&") + parameter["name"].get<std::string>() + "=" +
                   textOf(parameter["example"]);
        }
      }
    }
    Ask ask{.method = method, .path = path + query};
    for (char& c : ask.method) c = static_cast<char>(std::toupper(c));
    if (operation.contains("requestBody") && operation["requestBody"].value("required", false)) {
      ask.contentType = "application/json";
      ask.body = operation["requestBody"]["content"]["application/json"]["example"].dump();
    }
    return ask;
  }

  // Whether the answer is one that the operation says it gives.
  void check(const Ask& ask, const Reply& reply, const json& operation) const {
    const std::string where = ask.method + " " + ask.path + ": " + std::to_string(reply.status);
    const json& responses = operation["responses"];
    const std::string status = std::to_string(reply.status);
    const json& response =
        resolved(responses.contains(status) ? responses[status] : responses["default"]);
    if (!response.contains("content")) {
      EXPECT_EQ(reply.body, "") << where;
      return;
    }
    const auto header = reply.headers.find("content-type");
    ASSERT_NE(header, reply.headers.end()) << where;
    const std::string type = header->second.substr(0, header->second.find(';'));
    ASSERT_TRUE(response["content"].contains(type)) << where << " " << type;
    if (type.find("json") == std::string::npos) return;
    const auto problems =
        whyNotValid(jsonOf(reply), response["content"][type]["schema"], m_description);
    EXPECT_EQ(problems, std::vector<std::string>()) << where << "\n" << reply.body;
  }

  template <typename Visit>
  void forEachOperation(Visit visit) const {
    for (const auto& [path, item] : m_description["paths"].items()) {
      const json common = item.value("parameters", json::array());
      for (const auto& [method, operation] : item.items()) {
        if (kMethods.contains(method)) visit(path, method, operation, common);
      }
    }
  }

 private:
  static std::string textOf(const json& example) {
    return example.is_string() ? example.get<std::string>() : example.dump();
  }

  json m_description;
};

TEST_F(OpenApi, DescribesEveryRouteAndNoOther) {
  start();
  describe();
  std::set<std::string> described;
  forEachOperation(
      [&](const std::string& path, std::string method, const json& operation, const json&) {
        for (char& c : method) c = static_cast<char>(std::toupper(c));
        const std::string role = operation["x-role"];
        described.insert(method + " " + path + " " + role);
      });
  std::set<std::string> served;
  for (const Route& route : EventApps::Api::routes()) {
    const std::vector<std::string> roles = {"none", "any", "read", "write", "admin", "read"};
    served.insert(std::string(route.method) + " " + std::string(route.pattern) + " " +
                  roles.at(static_cast<std::size_t>(route.need)));
  }
  EXPECT_EQ(described, served);
}

TEST_F(OpenApi, IsWhatTheAnswersAreLike) {
  start();
  describe();
  add("one");
  add("two");
  addDataSelection(7);
  std::size_t asked = 0;
  forEachOperation([&](const std::string& path, const std::string& method, const json& operation,
                       const json& common) {
    const Ask ask = askOf(path, method, operation, common);
    if (path.ends_with("/stream")) return;
    check(ask, request(ask), operation);
    ++asked;
  });
  EXPECT_EQ(asked + 1, EventApps::Api::routes().size());
}

// The same, where every operation fails: without credentials, and with wrong ones of everything.
TEST_F(OpenApi, IsWhatProblemsAreLike) {
  write("eventd.ini", "[tcp]\nlisten = 127.0.0.1:0\n");
  makeToken("one", EventApps::Role::kRead);
  start();
  describe();
  forEachOperation([&](const std::string& path, const std::string& method, const json& operation,
                       const json& common) {
    Ask ask = askOf(path, method, operation, common);
    if (operation["x-role"] != "none") check(ask, requestTcp(ask), operation);
    if (path.ends_with("/stream")) return;
    ask.path += ask.path.find('?') == std::string::npos ? "?nonsense=1" : "&nonsense=1";
    check(ask, request(ask), operation);
    ask.body = "{";
    ask.contentType = "application/json";
    check(ask, request(ask), operation);
  });
}

TEST_F(OpenApi, FitsSinglePiecesToo) {
  start();
  describe();
  addDataSelection(7);
  const auto checkOne = [&](const Ask& ask, unsigned status) {
    const std::string pattern = ask.path.find("/v1/queues/7/events") == 0
                                    ? ask.path.find("events/") == std::string::npos
                                          ? "/v1/queues/{dsid}/events"
                                          : "/v1/queues/{dsid}/events/{id}"
                                : ask.path == "/v1/queues/7" ? "/v1/queues/{dsid}"
                                                             : ask.path;
    std::string method = ask.method;
    for (char& c : method) c = static_cast<char>(std::tolower(c));
    const Reply reply = request(ask);
    EXPECT_EQ(reply.status, status) << ask.method << " " << ask.path << reply.body;
    check(ask, reply, description()["paths"][pattern][method]);
  };
  checkOne({.method = "PUT", .path = "/v1/queues/7"}, 409);
  checkOne({.method = "POST",
            .path = "/v1/queues/7/events",
            .body = "EVENT{version:1;type:1;id:1;date:1;LEGACYEVENT{payload:\xff;}}",
            .contentType = "text/plain"},
           201);
  checkOne({.path = "/v1/queues/7/events"}, 200);
  checkOne({.path = "/v1/queues/7/events/1"}, 200);
  checkOne({.path = "/v1/queues"}, 200);
  checkOne({.method = "DELETE", .path = "/v1/queues/7"}, 409);
  checkOne({.method = "DELETE", .path = "/v1/queues/7/events/1"}, 204);
  checkOne({.method = "DELETE", .path = "/v1/queues/7/events/1"}, 404);
  checkOne({.method = "DELETE", .path = "/v1/queues/7"}, 204);
  checkOne({.path = "/v1/stats"}, 200);
  checkOne({.path = "/v1/limits"}, 200);
  checkOne({.method = "POST",
            .path = "/v1/check",
            .body = R"({"fix":true})",
            .contentType = "application/json"},
           200);
}

TEST(SchemaCheck, SeesWhatIsNotValid) {
  const json root = json::parse(R"({"schemas":{"n":{"type":"integer","minimum":1}}})");
  const auto problems = [&](const char* value, const char* schema) {
    return whyNotValid(json::parse(value), json::parse(schema), root).size();
  };
  EXPECT_EQ(problems("1", R"({"$ref":"#/schemas/n"})"), 0U);
  EXPECT_EQ(problems("0", R"({"$ref":"#/schemas/n"})"), 1U);
  EXPECT_EQ(problems("\"1\"", R"({"$ref":"#/schemas/n"})"), 1U);
  EXPECT_EQ(problems("1.5", R"({"type":"integer"})"), 1U);
  EXPECT_EQ(problems("1", R"({"type":"number"})"), 0U);
  EXPECT_EQ(problems("{}", R"({"type":"object","required":["a"]})"), 1U);
  EXPECT_EQ(problems(R"({"b":1})",
                     R"({"type":"object","properties":{"a":{}},"additionalProperties":false})"),
            1U);
  EXPECT_EQ(
      problems(R"({"b":"x"})", R"({"type":"object","additionalProperties":{"type":"integer"}})"),
      1U);
  EXPECT_EQ(problems("[1,\"a\"]", R"({"type":"array","items":{"type":"integer"}})"), 1U);
  EXPECT_EQ(problems("[]", R"({"type":"array","minItems":1})"), 1U);
  EXPECT_EQ(problems("\"c\"", R"({"enum":["a","b"]})"), 1U);
  EXPECT_EQ(problems("\"ab\"", R"({"pattern":"^a$"})"), 1U);
  EXPECT_EQ(problems("1", R"({"type":["string","integer"]})"), 0U);
  EXPECT_EQ(problems("true", R"({"type":["string","integer"]})"), 1U);
  EXPECT_EQ(problems("1", R"({"maximum":0})"), 1U);
  EXPECT_EQ(problems("1", R"({"frobnicate":0})"), 1U);
}

}  // namespace
}  // namespace EventSystemTest
