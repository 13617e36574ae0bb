// PostgreSQL, through a Unix socket. One cluster is made for all measurements of a run; each gets
// a new table in it.

#include <libpq-fe.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <ctime>

#include "bench/systems/ServerProcess.h"
#include "bench/systems/Systems.h"

namespace EventSystemBench {
namespace {

constexpr const char* kTable =
    "create table events("
    "id bigserial primary key, type integer not null, date bigint not null, "
    "eventstring text not null)";
constexpr const char* kInsert =
    "insert into events(type, date, eventstring) values(8, $1, $2) returning id";
constexpr const char* kNext =
    "select id, type, date, eventstring from events where id > $1 order by id limit 1";
constexpr const char* kDelete = "delete from events where id = $1";

using Result = std::unique_ptr<PGresult, decltype(&PQclear)>;

class Connection {
 public:
  explicit Connection(const std::filesystem::path& socketDirectory)
      : m_connection(
            PQconnectdb(
                ("host=" + socketDirectory.string() + " user=bench dbname=postgres").c_str()),
            PQfinish) {}

  bool works() const { return PQstatus(m_connection.get()) == CONNECTION_OK; }

  void execute(const std::string& sql) const {
    check({PQexec(m_connection.get(), sql.c_str()), PQclear});
  }
  void prepare(const char* name, const char* sql) const {
    check({PQprepare(m_connection.get(), name, sql, 0, nullptr), PQclear});
  }
  template <std::size_t count>
  Result run(const char* name, const std::array<const char*, count>& values) const {
    return check({PQexecPrepared(m_connection.get(), name, static_cast<int>(count), values.data(),
                                 nullptr, nullptr, 0),
                  PQclear});
  }

 private:
  Result check(Result result) const {
    const ExecStatusType status = PQresultStatus(result.get());
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) {
      throw SystemError(std::string("PostgreSQL: ") + PQerrorMessage(m_connection.get()));
    }
    return result;
  }

  std::unique_ptr<PGconn, decltype(&PQfinish)> m_connection;
};

std::uint64_t numberIn(const Result& result, int column) {
  const char* const text = PQgetvalue(result.get(), 0, column);
  std::uint64_t number = 0;
  std::from_chars(text, text + std::strlen(text), number);
  return number;
}

class PostgresQueue : public Queue {
 public:
  PostgresQueue(const std::filesystem::path& socketDirectory, const std::string& commit)
      : m_connection(socketDirectory) {
    m_connection.execute("set synchronous_commit = " + commit);
    m_connection.prepare("insert", kInsert);
    m_connection.prepare("next", kNext);
    m_connection.prepare("delete", kDelete);
  }

  std::uint64_t produce(const std::string& text) override {
    const std::string now = std::to_string(std::time(nullptr));
    return numberIn(m_connection.run("insert", std::array{now.c_str(), text.c_str()}), 0);
  }

  std::optional<QueuedText> next(std::uint64_t after) override {
    const Result row = m_connection.run("next", std::array{std::to_string(after).c_str()});
    if (PQntuples(row.get()) == 0) return std::nullopt;
    return QueuedText{numberIn(row, 0), PQgetvalue(row.get(), 0, 3)};
  }

  void remove(std::uint64_t id) override {
    const Result done = m_connection.run("delete", std::array{std::to_string(id).c_str()});
    if (std::strcmp(PQcmdTuples(done.get()), "1") != 0) {
      throw SystemError("PostgreSQL: nothing deleted");
    }
  }

 private:
  Connection m_connection;
};

// The programs of the newest release that is installed; Debian keeps them out of PATH.
std::string program(const std::string& name) {
  std::vector<std::filesystem::path> releases;
  const std::filesystem::path root("/usr/lib/postgresql");
  if (std::filesystem::exists(root)) {
    for (const auto& entry : std::filesystem::directory_iterator(root)) {
      if (exists(entry.path() / "bin" / name)) releases.push_back(entry.path());
    }
  }
  if (releases.empty()) throw SystemError("PostgreSQL is not installed");
  return *std::ranges::max_element(releases) / "bin" / name;
}

// The cluster beside the measurement's own directory, made when it is not there yet.
std::filesystem::path clusterBeside(const std::filesystem::path& directory) {
  std::filesystem::path cluster = directory.parent_path() / "postgres-cluster";
  if (std::filesystem::exists(cluster)) return cluster;
  std::filesystem::create_directory(cluster);
  const std::optional<User> user = unprivilegedUser();
  if (user && chown(cluster.c_str(), user->uid, user->gid) != 0) {
    throw SystemError("cannot give " + cluster.string() + " to the user of PostgreSQL");
  }
  ServerProcess initdb({{program("initdb"), "-D", cluster / "data", "-A", "trust", "-U", "bench",
                         "-E", "UTF8", "--locale=C"},
                        cluster,
                        user});
  if (initdb.waitForEnd() != 0) throw SystemError("initdb failed in " + cluster.string());
  return cluster;
}

class Postgres : public System {
 public:
  Postgres(const std::filesystem::path& directory, std::string commit)
      : m_cluster(clusterBeside(directory)),
        m_commit(std::move(commit)),
        m_server({{program("postgres"), "-D", m_cluster / "data", "-k", m_cluster, "-h", ""},
                  m_cluster,
                  unprivilegedUser(),
                  SIGINT,      // ends the connections and the server, after a checkpoint
                  SIGQUIT}) {  // the same at once; SIGKILL would leave its children to themselves
    m_server.waitUntil([this] { return Connection(m_cluster).works(); });
    const Connection connection(m_cluster);
    connection.execute("set client_min_messages = warning");
    for (const char* sql : {"drop table if exists events", "checkpoint", kTable}) {
      connection.execute(sql);
    }
  }

  std::unique_ptr<Queue> connect() override {
    return std::make_unique<PostgresQueue>(m_cluster, m_commit);
  }

 private:
  std::filesystem::path m_cluster;
  std::string m_commit;
  ServerProcess m_server;
};

SystemEntry entry(const std::string& commit, Promise promise, const std::string& meaning) {
  return {"PostgreSQL, commit " + commit,
          promise,
          "synchronous_commit=" + commit + meaning + "; otherwise as installed; Unix socket",
          "insert ... returning id, prepared",
          "select ... where id > $1 limit 1, prepared",
          "delete, prepared",
          [commit](const std::filesystem::path& directory) {
            return std::make_unique<Postgres>(directory, commit);
          }};
}

}  // namespace

std::vector<SystemEntry> postgresEntries() {
  return {entry("on", Promise::kDurable,
                " (the default): a flush for each commit; commits that wait together share it"),
          entry("off", Promise::kRelaxed,
                ": a flush every 0.2 s; the death of the server itself may take up to 0.6 s")};
}

}  // namespace EventSystemBench
