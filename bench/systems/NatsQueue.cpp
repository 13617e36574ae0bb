// NATS JetStream with file storage, through loopback TCP: it has no Unix sockets. A walk by
// position and deletes by number are used, not a consumer, which would keep state of its own.

#include <nats/nats.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "bench/systems/ServerProcess.h"
#include "bench/systems/Systems.h"

namespace EventSystemBench {
namespace {

constexpr const char* kStream = "EVENTS";
constexpr const char* kSubject = "events";

void require(natsStatus status, const char* call) {
  if (status == NATS_OK) return;
  throw SystemError(std::string("NATS: ") + call + ": " + natsStatus_GetText(status));
}

class NatsConnection {
 public:
  explicit NatsConnection(const std::string& url) {
    require(natsConnection_ConnectTo(&m_connection, url.c_str()), "connect");
    const natsStatus status = natsConnection_JetStream(&m_context, m_connection, nullptr);
    if (status != NATS_OK) natsConnection_Destroy(m_connection);
    require(status, "JetStream");
  }
  ~NatsConnection() {
    jsCtx_Destroy(m_context);
    natsConnection_Destroy(m_connection);
  }
  NatsConnection(const NatsConnection&) = delete;
  NatsConnection& operator=(const NatsConnection&) = delete;

  jsCtx* get() const { return m_context; }

 private:
  natsConnection* m_connection = nullptr;
  jsCtx* m_context = nullptr;
};

class NatsQueue : public Queue {
 public:
  explicit NatsQueue(const std::string& url) : m_connection(url) {}

  std::uint64_t produce(const std::string& text) override {
    jsPubAck* received = nullptr;
    require(js_Publish(&received, m_connection.get(), kSubject, text.data(),
                       static_cast<int>(text.size()), nullptr, nullptr),
            "publish");
    const std::unique_ptr<jsPubAck, decltype(&jsPubAck_Destroy)> answer(received, jsPubAck_Destroy);
    return answer->Sequence;
  }

  std::optional<QueuedText> next(std::uint64_t after) override {
    jsDirectGetMsgOptions wanted;
    jsDirectGetMsgOptions_Init(&wanted);
    wanted.Sequence = after + 1;
    wanted.NextBySubject = kSubject;
    natsMsg* received = nullptr;
    const natsStatus status =
        js_DirectGetMsg(&received, m_connection.get(), kStream, nullptr, &wanted);
    if (status == NATS_NOT_FOUND) return std::nullopt;
    require(status, "get");
    const std::unique_ptr<natsMsg, decltype(&natsMsg_Destroy)> message(received, natsMsg_Destroy);
    return QueuedText{natsMsg_GetSequence(message.get()),
                      {natsMsg_GetData(message.get()),
                       static_cast<std::size_t>(natsMsg_GetDataLength(message.get()))}};
  }

  void remove(std::uint64_t id) override {
    require(js_DeleteMsg(m_connection.get(), kStream, id, nullptr, nullptr), "delete");
  }

 private:
  NatsConnection m_connection;
};

std::filesystem::path writeConfiguration(const std::filesystem::path& directory,
                                         const std::string& sync) {
  std::filesystem::path file = directory / "nats.conf";
  std::ofstream(file) << "listen: \"127.0.0.1:-1\"\n"
                      << "ports_file_dir: \"" << directory.string() << "\"\n"
                      << "jetstream { store_dir: \"" << (directory / "data").string() << "\"\n"
                      << sync << "\n}\n";
  return file;
}

// Whether this release takes the configuration: sync_interval came with 2.10.
std::filesystem::path checked(const std::filesystem::path& configuration, const std::string& sync) {
  ServerProcess test(
      {{"nats-server", "-t", "-c", configuration}, configuration.parent_path(), std::nullopt});
  if (test.waitForEnd() != 0) throw NotOffered("this release has no \"" + sync + "\"");
  return configuration;
}

class Nats : public System {
 public:
  Nats(const std::filesystem::path& directory, const std::string& sync)
      : m_server({{"nats-server", "-c", checked(writeConfiguration(directory, sync), sync)},
                  directory,
                  std::nullopt}) {
    const auto ports = directory / ("nats-server_" + std::to_string(m_server.pid()) + ".ports");
    m_server.waitUntil([&] { return readUrl(ports) && canConnect(); });
    const NatsConnection connection(m_url);
    jsStreamConfig stream;
    jsStreamConfig_Init(&stream);
    const char* subject = kSubject;
    stream.Name = kStream;
    stream.Subjects = &subject;
    stream.SubjectsLen = 1;
    stream.Storage = js_FileStorage;
    stream.AllowDirect = true;
    require(js_AddStream(nullptr, connection.get(), &stream, nullptr, nullptr), "add stream");
  }

  std::unique_ptr<Queue> connect() override { return std::make_unique<NatsQueue>(m_url); }

 private:
  // The server writes the port that it has chosen into a file.
  bool readUrl(const std::filesystem::path& ports) {
    std::ifstream file(ports);
    const auto content = nlohmann::json::parse(file, nullptr, false);
    if (content.is_discarded()) return false;
    m_url = content.at("nats").at(0);
    return true;
  }

  bool canConnect() const {
    try {
      const NatsConnection probe(m_url);
      return true;
    } catch (const SystemError&) {
      return false;
    }
  }

  ServerProcess m_server;
  std::string m_url;
};

SystemEntry entry(const std::string& name, Promise promise, const std::string& settings,
                  const std::string& sync) {
  return {"NATS JetStream, " + name,
          promise,
          settings + "; loopback TCP",
          "publish, with the stream's answer",
          "direct get of the next message from a position",
          "message delete",
          [sync](const std::filesystem::path& directory) {
            return std::make_unique<Nats>(directory, sync);
          }};
}

}  // namespace

std::vector<SystemEntry> natsEntries() {
  return {
      entry("always", Promise::kDurable, "sync_interval: always: a flush for each message",
            "sync_interval: always"),
      entry("2 min", Promise::kRelaxed,
            "file storage, the default: written before the answer, flushed every 2 minutes", "")};
}

}  // namespace EventSystemBench
