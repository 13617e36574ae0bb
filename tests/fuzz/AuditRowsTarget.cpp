// The audit database as a program with a will of its own would write it: any columns, any types,
// any texts. Each row ends in the queue, in the log, or stays; which of these, a second reading of
// the file with the plain parser foretells.

#include <sqlite3.h>

#include <algorithm>
#include <cstdint>
#include <memory>

#include "tests/fuzz/AuditStore.h"
#include "tests/fuzz/Target.h"
#include "tests/oracle/events/EventMembers.h"
#include "tests/oracle/events/EventOracle.h"
#include "tests/support/FakeHost.h"

namespace EventSystemTest {
namespace {

constexpr const char* kSchemas[] = {
    "CREATE TABLE event (_id INTEGER PRIMARY KEY, date_created TEXT, content TEXT, etype INTEGER)",
    "CREATE TABLE event (_id, date_created, content, etype)",
    "CREATE TABLE event (_id TEXT, date_created INTEGER, content BLOB, etype TEXT)",
    "CREATE TABLE event (date_created REAL, _id REAL PRIMARY KEY, content, etype REAL, more)",
    "CREATE TABLE event (_id INTEGER PRIMARY KEY, date_created TEXT, content INTEGER, etype "
    "NUMERIC) WITHOUT ROWID",
    "PRAGMA encoding='UTF-16'; CREATE TABLE event (_id INTEGER PRIMARY KEY, date_created TEXT, "
    "content TEXT, etype INTEGER)",
    "CREATE TABLE event (_id INTEGER PRIMARY KEY, date_created TEXT, etype INTEGER)",
    "CREATE TABLE events (_id INTEGER PRIMARY KEY, date_created TEXT, content TEXT, etype INTEGER)",
};
struct Finalize {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  void operator()(sqlite3* database) const { sqlite3_close(database); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;
using Connection = std::unique_ptr<sqlite3, Finalize>;

Connection open(const std::filesystem::path& file) {
  sqlite3* opened = nullptr;
  sqlite3_open(file.c_str(), &opened);
  Connection database(opened);
  sqlite3_exec(opened, "PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF", nullptr, nullptr,
               nullptr);
  return database;
}

Statement prepare(const Connection& database, const char* sql) {
  sqlite3_stmt* prepared = nullptr;
  sqlite3_prepare_v2(database.get(), sql, -1, &prepared, nullptr);
  return Statement(prepared);
}

// Takes bytes, numbers and texts off the input; zeros when it is at its end.
class Script {
 public:
  explicit Script(std::string_view input) : m_rest(input) {}

  bool more() const { return !m_rest.empty(); }
  unsigned char byte() {
    if (m_rest.empty()) return 0;
    const auto value = static_cast<unsigned char>(m_rest[0]);
    m_rest.remove_prefix(1);
    return value;
  }
  sqlite3_int64 number() {
    sqlite3_int64 value = 0;
    for (int i = 0; i < 8; ++i)
      value = static_cast<sqlite3_int64>((static_cast<std::uint64_t>(value) << 8) | byte());
    return value;
  }
  std::string text() {
    const std::size_t size = std::min<std::size_t>(byte(), m_rest.size());
    std::string text(m_rest.substr(0, size));
    m_rest.remove_prefix(size);
    return text;
  }

 private:
  std::string_view m_rest;
};

std::string auditContent(const std::string& message) {
  std::string content = "version:1;action:2;time:3;loadSize:4;AUditMSg:";
  content += message;
  return content;
}

void bindText(sqlite3_stmt* statement, int parameter, const std::string& text) {
  sqlite3_bind_text(statement, parameter, text.data(), static_cast<int>(text.size()),
                    SQLITE_TRANSIENT);
}

// One value of a row; 8 is an audit event, whatever the column.
void bind(sqlite3_stmt* statement, int parameter, Script& script) {
  switch (script.byte() % 9) {
    case 0:
      sqlite3_bind_null(statement, parameter);
      break;
    case 1:
      sqlite3_bind_int64(statement, parameter, script.number());
      break;
    case 2:
      bindText(statement, parameter, script.text());
      break;
    case 3: {
      const std::string bytes = script.text();
      sqlite3_bind_blob(statement, parameter, bytes.data(), static_cast<int>(bytes.size()),
                        SQLITE_TRANSIENT);
      break;
    }
    case 4:
      sqlite3_bind_double(statement, parameter, static_cast<double>(script.number()) / 1000);
      break;
    case 5:
      sqlite3_bind_int(statement, parameter, 8);
      break;
    case 6:
      sqlite3_bind_int(statement, parameter, script.byte());
      break;
    case 7:
      bindText(statement, parameter, auditContent(script.text()));
      break;
    default:  // around the 10240 bytes of an event string
      bindText(statement, parameter,
               auditContent(std::string(10000 + std::size_t{script.byte()}, 'm')));
  }
}

// True when the table has the four columns.
bool write(const Connection& database, Script& script) {
  sqlite3_exec(database.get(), kSchemas[script.byte() % std::size(kSchemas)], nullptr, nullptr,
               nullptr);
  const Statement insert = prepare(
      database, "INSERT INTO event (_id, date_created, content, etype) VALUES (?, ?, ?, ?)");
  sqlite3_exec(database.get(), "BEGIN", nullptr, nullptr, nullptr);
  for (int row = 0; insert != nullptr && script.more() && row < 32; ++row) {
    for (int column = 1; column <= 4; ++column) bind(insert.get(), column, script);
    sqlite3_step(insert.get());
    sqlite3_reset(insert.get());
  }
  sqlite3_exec(database.get(), "COMMIT", nullptr, nullptr, nullptr);
  return insert != nullptr;
}

// What a run must do with a file.
struct Forecast {
  unsigned int result = 0;
  std::vector<std::string> events;
  std::vector<std::string> lost;  // texts of the rows that only the log has then
  sqlite3_int64 left = 0;         // rows
};

const char* textOf(const Statement& rows, int column) {
  return reinterpret_cast<const char*>(sqlite3_column_text(rows.get(), column));
}

std::string eventTextOf(const char* date, const char* content) {
  std::string text = "EVENT{version:1;type:8;id:0;date:";
  text.append(date).append(";AUDITEVENT{").append(content).append(";}}");
  return text.substr(0, 10239);
}

// The text of the event that the plain parser makes of it; empty when it refuses.
std::string plainlyRead(const std::string& text) {
  EventSystem::Event* parsed = nullptr;
  Oracle::parseSection(EventSystem::kAuditEvent, text.c_str(), &parsed);
  const std::unique_ptr<EventSystem::Event> event(parsed);
  if (event == nullptr) return "";
  char written[32768];
  setEnvelope(*event, 0, 0);
  Oracle::write(*event, written, sizeof written);
  return written;
}

sqlite3_int64 count(const Connection& database, const std::string& condition) {
  const std::string sql = "SELECT count(*) FROM event WHERE " + condition;
  const Statement rows = prepare(database, sql.c_str());
  sqlite3_step(rows.get());
  return sqlite3_column_int64(rows.get(), 0);
}

void foretellRow(const Statement& rows, unsigned int refused, Forecast& forecast) {
  const char* const date = textOf(rows, 1);
  const char* const content = textOf(rows, 2);
  if (date == nullptr || content == nullptr) return;
  const std::string event = plainlyRead(eventTextOf(date, content));
  forecast.result = 0;
  if (event.empty()) {
    forecast.result = 9;
    forecast.lost.emplace_back(content);
    return;
  }
  forecast.events.push_back(event);
  if (forecast.events.size() == refused) forecast.result = 50;
}

Forecast foretell(const Connection& database, unsigned int refused) {
  Forecast forecast;
  std::uint32_t largest = 0;
  const Statement rows =
      prepare(database, "SELECT _id,date_created, content,etype FROM event order by _id ");
  bool whole = true;
  while (whole && sqlite3_step(rows.get()) == SQLITE_ROW) {
    largest = std::max(largest, static_cast<std::uint32_t>(sqlite3_column_int(rows.get(), 0)));
    const bool empty = textOf(rows, 1) == nullptr || textOf(rows, 2) == nullptr;
    whole = empty || sqlite3_column_int(rows.get(), 3) == 8;
    if (whole) foretellRow(rows, refused, forecast);
  }
  const std::string kept = whole && largest != 0 ? std::to_string(static_cast<int>(largest)) : "";
  forecast.left = count(database, kept.empty() ? "1" : "NOT coalesce(_id <= " + kept + ", 0)");
  return forecast;
}

std::string withoutDate(const std::string& text) {
  const std::size_t start = text.find(";date:");
  return text.substr(0, start) + ";date:0" + text.substr(text.find(';', start + 1));
}

void requireLogged(const std::vector<std::string>& contents) {
  const std::vector<LogLine> log = host().log();
  for (const std::string& content : contents) {
    const bool logged = std::any_of(log.begin(), log.end(), [&](const LogLine& line) {
      return line.code == 9 && line.format.find("failed fromString") != std::string::npos &&
             line.text.find(content) != std::string::npos;
    });
    require(logged, "a row is lost without its text in the log", content);
  }
}

}  // namespace

// The schema, which event is refused, and the rows.
void runTarget(std::string_view input) {
  static AuditStore store;
  store.removeFiles();
  Script script(input);
  const unsigned int refused = script.byte();
  Connection database = open(store.file());
  const bool readable = write(database, script);
  Forecast forecast;
  forecast.result = 4;
  if (readable) forecast = foretell(database, refused);
  database.reset();

  const unsigned int result = store.run(refused);
  require(result == forecast.result, "another result", std::to_string(result));
  require(store.events().size() == forecast.events.size(), "another number of events");
  for (std::size_t i = 0; i < forecast.events.size(); ++i) {
    require(withoutDate(store.events()[i]) == forecast.events[i], "another event",
            store.events()[i]);
  }
  requireLogged(forecast.lost);
  if (!readable) return;
  require(count(open(store.file()), "1") == forecast.left, "other rows are left");
}

}  // namespace EventSystemTest
