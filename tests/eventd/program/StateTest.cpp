// What a running eventd tells of itself, and how it answers what it does not know.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "apps/eventd/api/Problem.h"
#include "tests/eventd/program/DaemonHome.h"

namespace EventSystemTest {
namespace {

using ::testing::HasSubstr;

class State : public DaemonHome {
 protected:
  // The value of a series; nothing fails as loudly as a series that is not there.
  double metric(const std::string& series) const {
    const std::string text = get("/metrics").body;
    const std::size_t at = text.find("\n" + series + " ");
    if (at == std::string::npos) {
      ADD_FAILURE() << series << " is not in " << text;
      return -1;
    }
    return std::stod(text.substr(at + series.size() + 2));
  }
};

TEST_F(State, CountsQueuesAndEvents) {
  start();
  addDataSelection(7);
  add("a");
  add("b");
  add("c", 7);
  json stats;
  do {  // figures are not read for every request
    stats = jsonOf(get("/v1/stats"));
  } while (stats["count"] != 3);
  EXPECT_EQ(stats["queues"][0]["types"], json::parse(R"({"serverstatus":2})"));
  EXPECT_EQ(stats["queues"][1]["dsid"], 7);
  EXPECT_EQ(stats["queues"][1]["type"], 9);
  EXPECT_EQ(stats["queues"][1]["highestId"], 1);
  EXPECT_EQ(stats["countLimit"], 50000);
  EXPECT_GT(stats["bytes"]["database"], 0);
  EXPECT_GT(stats["bytes"]["diskFree"], 0);
  EXPECT_EQ(stats["home"], home().string());
  EXPECT_FALSE(stats.contains("cluster"));
  EXPECT_EQ(jsonOf(get("/v1/cluster")), json::parse(R"({"clustered":false})"));
  while (jsonOf(get("/v1/stats"))["rates"]["byType"].value("serverstatus", 0.0) <= 0) {
  }
}

TEST_F(State, TellsLimitsAndTheFieldsOfEveryKind) {
  write("eventd.ini", "[limits]\nbody_bytes = 4096\nwaiting = 17\n");
  write("OrbCentral.ini", "[events]\ncount_limit = 9\nage_limit_days = 3\n");
  start();
  const json limits = jsonOf(get("/v1/limits"));
  EXPECT_EQ(limits["countLimit"], 9);
  EXPECT_EQ(limits["ageLimitDays"], 3);
  EXPECT_EQ(limits["bodyBytes"], 4096);
  EXPECT_EQ(limits["waiting"], 17);
  EXPECT_EQ(limits["kinds"].size(), 9U);
  const json& server = limits["kinds"]["capacity"]["fields"].back();
  EXPECT_EQ(server["key"], "server");
  EXPECT_EQ(server["type"], "text");
  EXPECT_EQ(server["required"], true);
  EXPECT_EQ(server["mostBytes"], 124);
}

TEST_F(State, ExplainsEveryTypeOfProblem) {
  start();
  for (const auto& text : EventApps::Api::problemTexts()) {
    const json told = jsonOf(get(std::string("/problems/") + text.name));
    EXPECT_EQ(told.value("title", ""), text.title);
    EXPECT_EQ(told.value("status", 0U), text.status);
    EXPECT_NE(told.value("explanation", ""), "") << text.name;
  }
  EXPECT_EQ(problemName(get("/problems/none-of-ours")), "not-found");
}

TEST_F(State, ChecksTheQueues) {
  start();
  const auto check = [this](const std::string& body) { return post("/v1/check", body); };
  const json found = jsonOf(check(""));
  EXPECT_EQ(found, json::parse(R"({"fix":false,"findings":[],"remaining":0})"));
  EXPECT_EQ(jsonOf(check(R"({"fix":true})"))["fix"], true);
  for (const char* body : {"[]", "{\"fix\":1}", "{\"fux\":true}", "{", "{\"fix\":{}}"}) {
    EXPECT_EQ(problemName(check(body)), "bad-request") << body;
  }
  EXPECT_EQ(problemName(post("/v1/check", "{}", "text/plain")), "unsupported-media-type");
  EXPECT_EQ(metric("eventd_check_findings"), 0);
}

TEST_F(State, KnowsDataSelections) {
  start();
  const auto put = [this](const std::string& path, const std::string& body) {
    return request(
        {.method = "PUT", .path = path, .body = body, .contentType = "application/json"});
  };
  const Reply added = put("/v1/queues/7", R"({"name":"nightly","type":9})");
  EXPECT_EQ(added.status, 201U);
  EXPECT_EQ(jsonOf(added), json::parse(R"({"dsid":7,"name":"nightly","type":9})"));
  EXPECT_EQ(problemName(put("/v1/queues/7", "{}")), "conflict");
  EXPECT_EQ(problemName(put("/v1/queues/0", "{}")), "conflict");
  EXPECT_EQ(put("/v1/queues/2147483647", "{}").status, 201U);
  for (const char* dsid : {"2147483648", "4294967295", "4294967296", "-1", "x"}) {
    EXPECT_EQ(problemName(put("/v1/queues/" + std::string(dsid), "{}")), "bad-request") << dsid;
  }
  for (const char* body : {"{\"name\":7}", "{\"type\":\"9\"}", "{\"type\":-1}", "{\"x\":1}",
                           "{\"name\":\"a\\u0007\"}", "{\"type\":4294967296}"}) {
    EXPECT_EQ(problemName(put("/v1/queues/8", body)), "bad-request") << body;
  }
  add("kept", 7);
  const Ask remove{.method = "DELETE", .path = "/v1/queues/7"};
  EXPECT_EQ(problemName(request(remove)), "conflict");
  EXPECT_EQ(request({.method = "DELETE", .path = "/v1/queues/7/events/1"}).status, 204U);
  EXPECT_EQ(request(remove).status, 204U);
  EXPECT_EQ(problemName(request(remove)), "unknown-data-selection");
  EXPECT_EQ(problemName(request({.method = "DELETE", .path = "/v1/queues/0"})), "conflict");
}

TEST_F(State, IsMeasured) {
  write("OrbCentral.ini", "[events]\ncount_limit = 2\n");
  start();
  add("a");
  add("b");
  EXPECT_EQ(post("/v1/queues/0/events", statusEvent("c")).status, 507U);
  while (metric("eventd_queue_length{dsid=\"0\"}") != 2) {
  }
  EXPECT_EQ(metric("eventd_events{dsid=\"0\",kind=\"serverstatus\"}"), 2);
  EXPECT_EQ(metric("eventd_queue_highest_id{dsid=\"0\"}"), 2);
  EXPECT_EQ(metric("eventd_count_limit"), 2);
  EXPECT_EQ(metric("eventd_events_written_total{kind=\"serverstatus\"}"), 2);
  EXPECT_EQ(metric("eventd_events_written_total{kind=\"audit\"}"), 0);
  EXPECT_EQ(metric("eventd_writes_refused_total{reason=\"full\"}"), 1);
  EXPECT_EQ(metric("eventd_operation_seconds_count{operation=\"post\"}"), 3);
  EXPECT_EQ(metric("eventd_requests_total{method=\"POST\",status=\"507\"}"), 1);
  EXPECT_EQ(metric("eventd_ready"), 0) << "the queue is full";
  EXPECT_GE(metric("eventd_flushes_total"), 1);
  EXPECT_GE(metric("eventd_flush_seconds_count"), 1);
  EXPECT_GT(metric("process_resident_memory_bytes"), 1e6);
  EXPECT_GT(metric("process_start_time_seconds"), 1.7e9);
  EXPECT_GT(metric("process_open_fds"), 3);
  const Reply reply = get("/metrics");
  EXPECT_EQ(reply.headers.at("content-type"), "text/plain; version=0.0.4; charset=utf-8");
}

// Every line is a comment or a sample, and no family comes twice: a scrape is all or nothing.
TEST_F(State, IsMeasuredInAFormThatCanBeRead) {
  start();
  add("a");
  post("/v1/check", "");
  std::istringstream text(get("/metrics").body);
  const std::regex sample(R"([a-z_]+(\{[a-z]+="[^"]*"(,[a-z]+="[^"]*")*\})? ([-+0-9.e]+|\+Inf))");
  std::set<std::string> families;
  for (std::string line; std::getline(text, line);) {
    if (line.starts_with("# TYPE ")) {
      EXPECT_TRUE(families.insert(line.substr(0, line.rfind(' '))).second) << line;
    } else if (!line.starts_with("# HELP ")) {
      EXPECT_TRUE(std::regex_match(line, sample)) << line;
    }
  }
  EXPECT_GT(families.size(), 25U);
}

TEST_F(State, OfMethodsNobodyUsesIsNotMeasuredOneByOne) {
  start();
  for (const char* method : {"BREW", "PATCH", "OPTIONS"}) request({.method = method, .path = "/x"});
  EXPECT_EQ(metric("eventd_requests_total{method=\"other\",status=\"404\"}"), 3);
}

TEST_F(State, IsReadyAndWell) {
  start();
  EXPECT_EQ(get("/healthz").body, "{\"status\":\"ok\"}\n");
  EXPECT_EQ(get("/readyz").body, "{\"status\":\"ready\",\"reads\":true,\"writes\":true}\n");
}

TEST_F(State, TellsReadinessForReadsFromThatForWrites) {
  write("OrbCentral.ini", "[events]\ncount_limit = 1\n");
  start();
  add("a");
  EXPECT_EQ(post("/v1/queues/0/events", statusEvent("b")).status, 507U);
  const Reply refused = get("/readyz");
  EXPECT_EQ(refused.status, 503U);
  EXPECT_EQ(problemName(refused), "unavailable");
  EXPECT_EQ(jsonOf(refused)["reads"], true);
  EXPECT_EQ(jsonOf(refused)["writes"], false);
  EXPECT_THAT(jsonOf(refused).value("detail", ""), HasSubstr("the queue is full"));
  const Reply reads = get("/readyz?for=reads");
  EXPECT_EQ(reads.status, 200U);
  EXPECT_THAT(jsonOf(reads).value("why", ""), HasSubstr("the queue is full"));
  EXPECT_EQ(get("/readyz?for=writes").status, 503U);
  EXPECT_EQ(problemName(get("/readyz?for=everything")), "bad-request");
  EXPECT_EQ(metric("eventd_ready"), 0);
  EXPECT_EQ(metric("eventd_ready_for_reads"), 1);
  EXPECT_EQ(metric("eventd_ready_for_writes"), 0);
}

TEST_F(State, HasHeadersThatKeepItOutOfCaches) {
  start();
  for (const char* path : {"/v1/stats", "/nothing", "/", "/metrics"}) {
    const Reply reply = get(path);
    EXPECT_EQ(reply.headers.at("cache-control"), "no-store") << path;
    EXPECT_EQ(reply.headers.at("x-content-type-options"), "nosniff") << path;
  }
}

TEST_F(State, IsNothingWhereNothingIs) {
  start();
  for (const char* path : {"/nothing", "/v1", "/v1/", "/v1/queues/", "/v1/stats/", "//v1/stats",
                           "/v1/queues/0/events/1/2", "/../etc/passwd", "/index.htm"}) {
    EXPECT_EQ(problemName(get(path)), "not-found") << path;
  }
  EXPECT_EQ(problemName(post("/nothing", "{}")), "not-found");
  const Reply reply = post("/v1/stats", "{}");
  EXPECT_EQ(reply.status, 405U);
  EXPECT_EQ(problemName(reply), "method-not-allowed");
  EXPECT_EQ(reply.headers.at("allow"), "GET, HEAD");
}

TEST_F(State, IsToldInTheTypesAskedFor) {
  start();
  const auto status = [this](const std::string& accept) {
    return request({.path = "/v1/stats", .headers = {{"Accept", accept}}}).status;
  };
  for (const char* accept : {"*/*", "application/json", "application/*", "text/html, */*;q=0.1",
                             "APPLICATION/JSON; q=0.5", ""}) {
    EXPECT_EQ(status(accept), 200U) << accept;
  }
  for (const char* accept : {"text/html", "application/json;q=0, text/*", "*/*;q=0"}) {
    EXPECT_EQ(status(accept), 406U) << accept;
  }
}

TEST_F(State, ProblemsBelowTheApiAreProblemsToo) {
  start();
  RawClient client(socket());
  client.send("GET / HTTP/1.1\r\nHost: a\r\nHost: b\r\n\r\n");
  EXPECT_EQ(problemName(client.reply()), "bad-request");
  RawClient large(socket());
  std::string head = "GET / HTTP/1.1\r\nHost: a\r\nX: ";
  large.send(head.append(20000, 'x'));
  const Reply reply = large.reply();
  EXPECT_EQ(reply.status, 431U);
  EXPECT_EQ(problemName(reply), "headers-too-large");
}

TEST_F(State, HasAPageThatRunsNothingOfOthers) {
  start();
  const Reply page = get("/");
  EXPECT_EQ(page.status, 200U);
  EXPECT_THAT(page.headers.at("content-security-policy"), HasSubstr("default-src 'none'"));
  EXPECT_THAT(page.headers.at("content-security-policy"), HasSubstr("frame-ancestors 'none'"));
}

}  // namespace
}  // namespace EventSystemTest
