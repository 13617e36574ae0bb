// Events over the API of a running eventd: stored, read, waited for, removed.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>
#include <string>
#include <vector>

#include "tests/eventd/program/DaemonHome.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kEvents = "/v1/queues/0/events";

class Events : public DaemonHome {
 protected:
  Reply postKeyed(const std::string& body, const std::string& key) const {
    return request({.method = "POST",
                    .path = kEvents,
                    .body = body,
                    .contentType = "application/json",
                    .headers = {{"Idempotency-Key", key}}});
  }

  // The name of the problem with which a body is refused; nothing may be stored then.
  std::string refusal(const std::string& body, const std::string& type = "application/json") {
    const Reply reply = post(kEvents, body, type);
    m_problem = jsonOf(reply);
    return std::to_string(reply.status) + " " + problemName(reply);
  }
  const json& problem() const { return m_problem; }

 private:
  json m_problem;
};

TEST_F(Events, AreReadAsTheyWereStored) {
  start();
  const Reply stored = post(kEvents,
                            R"({"kind":"capacity","date":1700000000,"fields":{"server":"n1",
          "capacity":18446744073709551615,
          "capacityphys":"7","used":0,"usedphys":3}})");
  ASSERT_EQ(stored.status, 201U) << stored.body;
  EXPECT_EQ(jsonOf(stored), json::parse(R"({"ids":[1]})"));
  EXPECT_EQ(stored.headers.at("location"), "/v1/queues/0/events/1");
  const Reply found = get("/v1/queues/0/events/1");
  ASSERT_EQ(found.status, 200U) << found.body;
  const json event = jsonOf(found);
  EXPECT_EQ(event["id"], 1);
  EXPECT_EQ(event["kind"], "capacity");
  EXPECT_EQ(event["time"], "2023-11-14T22:13:20Z");
  EXPECT_EQ(event["fields"]["capacity"], 18446744073709551615UL);
  EXPECT_EQ(event["fields"]["capacityphys"], 7);
  EXPECT_EQ(event["eventString"],
            "EVENT{version:1;type:5;id:1;date:1700000000;CAPACITYEVENT{capacity:"
            "18446744073709551615;capacityphys:7;used:0;usedphys:3;server:n1;}}");
  EXPECT_EQ(jsonOf(get(kEvents))["events"][0], event);
}

TEST_F(Events, AreTakenInAllForms) {
  start();
  const std::string line =
      "EVENT{version:1;type:4;id:99;date:1700000000;SERVERSTATUSEVENT{state:2;server:";
  const json asString = {{"eventString", line + "a;}}"}};
  EXPECT_EQ(post(kEvents, "[" + statusEvent("b") + "," + asString.dump() + "]").status, 201U);
  EXPECT_EQ(
      post(kEvents, statusEvent("c") + "\r\n\n" + statusEvent("d"), "application/x-ndjson").status,
      201U);
  const Reply lines = post(kEvents, "# comment\n\n \t\n" + line + "\xff;}}\r\n" + line + "f;}}",
                           "text/plain; charset=utf-8");
  EXPECT_EQ(jsonOf(lines), json::parse(R"({"ids":[5,6]})"));
  const json events = jsonOf(get(kEvents))["events"];
  ASSERT_EQ(events.size(), 6U);
  EXPECT_EQ(events[1]["date"], 1700000000);
  EXPECT_EQ(events[1]["id"], 2);
  EXPECT_THAT(events[4]["eventStringHex"].get<std::string>(), HasSubstr("ff3b7d7d"));
}

TEST_F(Events, MayNameTheQueueThatTheyAreSentTo) {
  start();
  addDataSelection(7);
  const std::string line =
      "EVENT{version:1;type:4;id:99;date:1700000000;SERVERSTATUSEVENT{state:2;server:a;}}";
  for (const char* const queue : {"dsid=0 ", "dsid=2 "}) {
    EXPECT_EQ(post(kEvents, queue + line, "text/plain").status, 201U) << queue;
  }
  EXPECT_EQ(post("/v1/queues/7/events", "dsid=7 " + line, "text/plain").status, 201U);
  EXPECT_EQ(refusal("dsid=7 " + line, "text/plain"), "422 invalid-event");
  EXPECT_THAT(problem()["detail"].get<std::string>(), HasSubstr("data selection 7"));
}

TEST_F(Events, ThatAreWrongAreToldWithPlaceAndField) {
  start();
  EXPECT_EQ(refusal("[" + statusEvent("a") +
                    R"(,{"kind":"serverstatus","fields":{"server":"b","state":3}}])"),
            "422 invalid-event");
  EXPECT_EQ(problem()["index"], 1);
  EXPECT_EQ(problem()["field"], "state");
  EXPECT_EQ(problem()["detail"], "event 1: '3' is not 0, 1 or 2");
  EXPECT_EQ(refusal(statusEvent("a") + "\n\n{\"kind\":\"nothing\"}", "application/x-ndjson"),
            "422 invalid-event");
  EXPECT_EQ(problem()["line"], 3);
  EXPECT_EQ(problem()["index"], 1);
  EXPECT_EQ(refusal("EVENT{version:1;type:4;", "text/plain"), "422 invalid-event");
  EXPECT_EQ(problem()["line"], 1);
  EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(Events, AreRefusedForWhatTheyAre) {
  start();
  const auto fields = [](const std::string& text) {
    return R"({"kind":"serverstatus","fields":)" + text + "}";
  };
  for (const std::string& body :
       {std::string("7"),
        std::string("[[]]"),
        std::string("{}"),
        fields("{}"),
        fields("[]"),
        fields(R"({"server":"a"})"),
        fields(R"({"server":"a","state":1.5})"),
        fields(R"({"server":"a","state":true})"),
        fields(R"({"server":"a","state":null})"),
        fields(R"({"server":7,"state":1})"),
        fields(R"({"server":"a","state":1,"x":1})"),
        fields(R"({"server":"a\u0000b","state":1})"),
        fields(R"({"server":"a\nb","state":1})"),
        fields("{\"server\":\"" + std::string(125, 'x') + "\",\"state\":1}"),
        std::string(R"({"kind":"4","fields":{"server":"a","state":1}})"),
        std::string(R"({"kind":"serverstatus","fields":{"server":"a","state":1},"date":0})"),
        std::string(R"({"kind":"serverstatus","fields":{"server":"a","state":1},"date":-1})"),
        std::string(
            R"({"kind":"serverstatus","fields":{"server":"a","state":1},
               "date":18446744073709551615})"),
        std::string(R"({"kind":"serverstatus","fields":{"server":"a","state":1},"id":3})"),
        std::string(R"({"kind":4,"fields":{"server":"a","state":1}})"),
        std::string(R"({"eventString":7})"),
        std::string(R"({"eventString":"EVENT{","kind":"audit"})"),
        std::string(R"({"eventString":"dsid=7 EVENT{version:1;type:4;id:1;date:1;)"
                    R"(SERVERSTATUSEVENT{state:2;server:x;}}"})"),
        std::string(
            R"({"kind":"kelp","fields":{"severity":1,"issue":3,"share_type":1,"name":1,"host":1,
               "string":"x"}})")}) {
    EXPECT_EQ(refusal(body), "422 invalid-event") << body;
  }
  EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(Events, AreRefusedInABodyThatIsNone) {
  start();
  const std::string deep = std::string(100000, '[');
  for (const std::string& body :
       {std::string(), std::string("[]"), std::string("{"), std::string("nul"), deep,
        std::string("{\"kind\":\"a\",\"kind\":\"b\"}"), std::string("\xff"),
        std::string("{\"eventString\":\"\xff\"}"), statusEvent("a") + "x"}) {
    EXPECT_EQ(refusal(body), "400 bad-request") << body.substr(0, 20);
  }
  EXPECT_EQ(refusal("# nothing\n", "text/plain"), "400 bad-request");
  EXPECT_EQ(refusal(statusEvent("a"), "application/xml"), "415 unsupported-media-type");
  EXPECT_EQ(refusal(statusEvent("a"), ""), "415 unsupported-media-type");
  EXPECT_EQ(refusal(statusEvent("a"), "application/json; charset=latin1"),
            "415 unsupported-media-type");
  EXPECT_THAT(ids(), IsEmpty());
}

// Whoever sends megabytes is not sent them back, nor do they fill the log.
TEST_F(Events, ThatAreWrongAndLongAreNotRepeated) {
  write("host.ini", "[log]\nlevel = info\n");
  start();
  const std::string much(1u << 20, 'x');
  const std::vector<std::pair<std::string, std::string>> bodies = {
      {R"({")" + much + R"(":1})", "application/json"},
      {R"({"kind":")" + much + R"("})", "application/json"},
      {R"({"kind":"activity","fields":{")" + much + R"(":1}})", "application/json"},
      {"EVENT{version:1;type:5;id:0;date:1;CAPACITYEVENT{" + much + "}}", "text/plain"},
      {"EVENT{version:1;type:5;id:0;date:1;" + much, "text/plain"}};
  for (const auto& [body, type] : bodies) {
    const Reply reply = post("/v1/queues/0/events", body, type);
    EXPECT_EQ(problemName(reply), "invalid-event");
    EXPECT_LT(reply.body.size(), 2000U) << reply.body.substr(0, 2000);
  }
  stop();
  EXPECT_LT(log().size(), 100000U);
}

TEST_F(Events, TakeTheNamesOfFieldsAsWellAsTheirKeys) {
  start();
  for (const char* const fields : {R"("load_size":7,"msg":"x","record_version":2)",
                                   R"("loadSize":7,"AUditMSg":"x","version":2)"}) {
    const std::string body = R"({"kind":"audit","fields":{"action":3,"time":1,)";
    EXPECT_EQ(post(kEvents, body + fields + "}}").status, 201U) << fields;
  }
  const json events = jsonOf(get(kEvents))["events"];
  ASSERT_EQ(events.size(), 2U);
  for (const json& event : events) {
    EXPECT_EQ(event["fields"],
              json::parse(R"({"version":2,"action":3,"time":1,"loadSize":7,"AUditMSg":"x"})"));
  }
  EXPECT_EQ(refusal(R"({"kind":"audit","fields":{"action":3,"msg":"x","AUditMSg":"y"}})"),
            "422 invalid-event");
  EXPECT_THAT(problem()["detail"].get<std::string>(),
              HasSubstr("the field is there twice, as msg and as AUditMSg"));
  EXPECT_EQ(refusal(R"({"kind":"audit","fields":{"action":3}})"), "422 invalid-event");
  EXPECT_EQ(problem()["field"], "msg");
}

TEST_F(Events, AreBoundedInNumberAndBytes) {
  write("eventd.ini", "[limits]\nbatch_events = 3\nbody_bytes = 2000\n");
  start();
  const std::string one = statusEvent("a");
  EXPECT_EQ(post(kEvents, "[" + one + "," + one + "," + one + "]").status, 201U);
  EXPECT_EQ(refusal("[" + one + "," + one + "," + one + "," + one + "]"), "413 payload-too-large");
  EXPECT_EQ(refusal(one + "\n" + one + "\n" + one + "\n" + one, "application/x-ndjson"),
            "413 payload-too-large");
  EXPECT_EQ(refusal(std::string(2001, ' ')), "413 payload-too-large");
  EXPECT_THAT(ids(), ElementsAre(1, 2, 3));
}

TEST_F(Events, OfALargeBodyAreStoredInTheirOrder) {
  start();
  std::string body;
  for (int i = 0; i < 5000; ++i) body += statusEvent("server-" + std::to_string(i)) + "\n";
  const Reply reply = post(kEvents, body, "application/x-ndjson");
  ASSERT_EQ(reply.status, 201U) << reply.body;
  EXPECT_EQ(jsonOf(reply)["ids"].size(), 5000U);
  const json last = jsonOf(get("/v1/queues/0/events?after=4999"));
  EXPECT_EQ(last["events"][0]["fields"]["server"], "server-4999");
  EXPECT_EQ(refusal(body + "x", "application/x-ndjson"), "400 bad-request");
}

TEST_F(Events, AreReadFromWhereOneLeftOff) {
  start();
  for (const char* server : {"a", "b", "c"}) add(server);
  EXPECT_EQ(jsonOf(get("/v1/queues/0/events?limit=2"))["last"], 2);
  const json rest = jsonOf(get("/v1/queues/0/events?after=2"));
  EXPECT_EQ(rest["events"].size(), 1U);
  EXPECT_EQ(rest["last"], 3);
  EXPECT_EQ(jsonOf(get("/v1/queues/0/events?after=3")), json::parse(R"({"events":[],"last":3})"));
}

// However long events are, a page of them is not: the next one goes on behind it.
TEST_F(Events, AreReadInPagesThatFitIntoMemory) {
  start();
  std::string text;
  for (int i = 0; i < 1000; ++i) text += "\\u0001";  // six bytes of JSON, twice, for one
  constexpr unsigned long kMany = 500;
  std::string body;
  for (unsigned long i = 0; i < kMany; ++i) {
    body.append(R"({"kind":"activity","fields":{"action":1,"severity":2,"msg":")").append(text);
    body.append("\"}}\n");
  }
  ASSERT_EQ(post("/v1/queues/0/events", body, "application/x-ndjson").status, 201U);
  unsigned long last = 0;
  for (int pages = 1; last < kMany; ++pages) {
    const Reply reply = get("/v1/queues/0/events?limit=1000&after=" + std::to_string(last));
    EXPECT_LE(reply.body.size(), 5u << 20);
    const json page = jsonOf(reply);
    for (const json& one : page["events"]) ASSERT_EQ(one["id"], ++last);
    EXPECT_EQ(page["last"], last);
    ASSERT_LE(pages, 3);
  }
}

TEST_F(Events, AreFilteredByKind) {
  start();
  add("a");
  EXPECT_EQ(post(kEvents, R"({"kind":"legacy","fields":{"payload":"x"}})").status, 201U);
  add("b");
  EXPECT_EQ(jsonOf(get("/v1/queues/0/events?type=legacy"))["events"].size(), 1U);
  EXPECT_EQ(jsonOf(get("/v1/queues/0/events?type=legacy,serverstatus"))["events"].size(), 3U);
  EXPECT_EQ(jsonOf(get("/v1/queues/0/events?type=1"))["events"].size(), 1U);
  EXPECT_EQ(jsonOf(get("/v1/queues/0/events?type=audit"))["events"].size(), 0U);
}

TEST_F(Events, AreAskedForStrictly) {
  start();
  for (const char* query :
       {"after=-1", "after=x", "after=", "after=18446744073709551616", "limit=0", "limit=1001",
        "limit=1e2", "wait=61", "wait=-1", "wait=1e1", "wait=nan", "wait=", "type=", "type=x",
        "type=audit,", "afte=1", "after=1&after=1"}) {
    EXPECT_EQ(problemName(get(std::string(kEvents) + "?" + query)), "bad-request") << query;
  }
  EXPECT_EQ(problemName(get("/v1/queues/x/events")), "bad-request");
  EXPECT_EQ(problemName(get("/v1/queues/4294967296/events")), "bad-request");
  EXPECT_EQ(problemName(get("/v1/queues/7/events")), "unknown-data-selection");
  EXPECT_EQ(problemName(get("/v1/queues/0/events/x")), "bad-request");
  EXPECT_EQ(problemName(get("/v1/queues/0/events/1")), "not-found");
  EXPECT_EQ(problemName(get("/v1/queues/0/events/")), "not-found");
}

TEST_F(Events, AreWaitedFor) {
  start();
  auto reader =
      std::async(std::launch::async, [this] { return get("/v1/queues/0/events?wait=60"); });
  while (jsonOf(get("/v1/stats"))["waiting"] == 0) {
  }
  add("late");
  const json read = jsonOf(reader.get());
  ASSERT_EQ(read["events"].size(), 1U);
  EXPECT_EQ(read["events"][0]["fields"]["server"], "late");
  EXPECT_EQ(jsonOf(get("/v1/queues/0/events?after=1&wait=0.05")),
            json::parse(R"({"events":[],"last":1})"));
}

TEST_F(Events, AreNoLongerWaitedForByAClientThatHasGone) {
  start();
  {
    RawClient client(socket());
    client.get("/v1/queues/0/events?wait=60");
    while (jsonOf(get("/v1/stats"))["waiting"] == 0) {
    }
  }
  while (jsonOf(get("/v1/stats"))["waiting"] != 0) {
  }
}

TEST_F(Events, AreWaitedForByABoundedNumberOfReaders) {
  write("eventd.ini", "[limits]\nwaiting = 2\n");
  start();
  RawClient one(socket());
  RawClient two(socket());
  one.get("/v1/queues/0/events?wait=60");
  two.get("/v1/queues/0/events?wait=60");
  while (jsonOf(get("/v1/stats"))["waiting"] != 2) {
  }
  const Reply third = get("/v1/queues/0/events?wait=60");
  EXPECT_EQ(third.status, 503U);
  EXPECT_EQ(problemName(third), "too-many-waiting");
  EXPECT_EQ(third.headers.at("retry-after"), "1");
  EXPECT_EQ(get("/v1/queues/0/events").status, 200U);
}

TEST_F(Events, AreDeletedOneByOne) {
  start();
  add("a");
  add("b");
  const Reply gone = request({.method = "DELETE", .path = "/v1/queues/0/events/1"});
  EXPECT_EQ(gone.status, 204U);
  EXPECT_EQ(gone.body, "");
  EXPECT_EQ(problemName(request({.method = "DELETE", .path = "/v1/queues/0/events/1"})),
            "not-found");
  EXPECT_THAT(ids(), ElementsAre(2));
}

TEST_F(Events, AreDeletedUpToAnId) {
  start();
  for (const char* server : {"a", "b", "c", "d"}) add(server);
  const auto remove = [this](const std::string& query) {
    return request({.method = "DELETE", .path = std::string(kEvents) + query});
  };
  EXPECT_EQ(jsonOf(remove("?upto=3&dry_run=true")), json::parse(R"({"deleted":3,"last":3})"));
  EXPECT_EQ(ids().size(), 4U);
  for (const char* query : {"", "?upto=", "?upto=x", "?upto=ALL", "?upto=3&dry_run=1", "?up=3"}) {
    EXPECT_EQ(problemName(remove(query)), "bad-request") << query;
  }
  EXPECT_EQ(ids().size(), 4U);
  EXPECT_EQ(jsonOf(remove("?upto=3")), json::parse(R"({"deleted":3,"last":3})"));
  EXPECT_EQ(jsonOf(remove("?upto=all")), json::parse(R"({"deleted":1,"last":4})"));
  EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(Events, WithAKeyAreStoredOnce) {
  start();
  const Reply first = postKeyed(statusEvent("a"), "k1");
  const Reply again = postKeyed(statusEvent("a"), "k1");
  EXPECT_EQ(first.status, 201U);
  EXPECT_EQ(again.status, 201U);
  EXPECT_EQ(first.body, again.body);
  EXPECT_EQ(again.headers.at("location"), "/v1/queues/0/events/1");
  const Reply other = postKeyed(statusEvent("b"), "k1");
  EXPECT_EQ(other.status, 422U);
  EXPECT_EQ(problemName(other), "idempotency-mismatch");
  EXPECT_THAT(ids(), ElementsAre(1));
  EXPECT_EQ(postKeyed(statusEvent("b"), "k2").status, 201U);
  EXPECT_THAT(ids(), ElementsAre(1, 2));
}

TEST_F(Events, WithAKeyAreStoredOnceOverTheDeathOfTheDaemon) {
  start();
  const std::string first = postKeyed(statusEvent("a"), "k1").body;
  kill();
  start();
  EXPECT_EQ(postKeyed(statusEvent("a"), "k1").body, first);
  EXPECT_THAT(ids(), ElementsAre(1));
}

TEST_F(Events, WithTheSameKeyOfTwoClientsAreBothStored) {
  const std::string token = makeToken("one", EventApps::Role::kWrite);
  start();
  EXPECT_EQ(postKeyed(statusEvent("a"), "k").status, 201U);
  const Reply other = request({.method = "POST",
                               .path = kEvents,
                               .body = statusEvent("a"),
                               .contentType = "application/json",
                               .token = token,
                               .headers = {{"Idempotency-Key", "k"}}});
  EXPECT_EQ(jsonOf(other), json::parse(R"({"ids":[2]})"));
}

TEST_F(Events, WithAKeyThatIsNoneAreRefused) {
  start();
  for (const std::string& key :
       {std::string(), std::string(129, 'k'), std::string("a b"), std::string("\xc3\xa4")}) {
    EXPECT_EQ(problemName(postKeyed(statusEvent("a"), key)), "bad-request") << key;
  }
  EXPECT_EQ(postKeyed(statusEvent("a"), std::string(128, 'k')).status, 201U);
}

TEST_F(Events, ThatFillTheQueueAreToldWithThoseStored) {
  write("OrbCentral.ini", "[events]\ncount_limit = 2\n");
  start();
  const std::string one = statusEvent("a");
  const Reply reply = post(kEvents, "[" + one + "," + one + "," + one + "]");
  EXPECT_EQ(reply.status, 507U);
  EXPECT_EQ(problemName(reply), "queue-full");
  EXPECT_EQ(jsonOf(reply)["ids"], json::parse("[1,2]"));
  EXPECT_THAT(ids(), ElementsAre(1, 2));
}

TEST_F(Events, OfDataSelectionsAreApart) {
  start();
  EXPECT_EQ(problemName(post("/v1/queues/7/events", statusEvent("a"))), "unknown-data-selection");
  addDataSelection(7);
  add("seven", 7);
  add("global");
  EXPECT_EQ(ids(7).size(), 1U);
  EXPECT_EQ(ids().size(), 1U);
  EXPECT_EQ(jsonOf(get("/v1/queues/7/events"))["events"][0]["dsid"], 7);
}

TEST_F(Events, AcknowledgedAreThereAfterTheDeathOfTheDaemon) {
  start();
  std::vector<unsigned long> acknowledged;
  for (int i = 0; i < 50; ++i) acknowledged.push_back(add("s" + std::to_string(i)));
  kill();
  start();
  EXPECT_EQ(ids(), acknowledged);
}

}  // namespace
}  // namespace EventSystemTest
