#include "host/logging/Log.h"

#include <fcntl.h>
#include <spdlog/logger.h>
#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <string>

#include "host/Host.h"
#include "host/files/PrivateFiles.h"
#include "host/logging/JsonText.h"
#include "host/logging/LineWriter.h"
#include "host/logging/Observers.h"

namespace EventSystemHost {

namespace {

constexpr const char* kPattern = "%Y-%m-%dT%H:%M:%S.%e%z %l %v";
constexpr const char* kJsonPattern = R"({"time":"%Y-%m-%dT%H:%M:%S.%e%z","level":"%l",%v})";
constexpr std::size_t kRoomForCode = 32;

constexpr std::array<spdlog::level::level_enum, 5> kLevels = {
    spdlog::level::off, spdlog::level::err, spdlog::level::warn, spdlog::level::info,
    spdlog::level::trace};

std::shared_ptr<spdlog::logger> makeLogger(spdlog::sink_ptr sink, LogLevel level,
                                           LogFormat format) {
  auto logger = std::make_shared<spdlog::logger>("eventsystem", std::move(sink));
  logger->set_pattern(format == LogFormat::kJson ? kJsonPattern : kPattern);
  logger->set_level(kLevels.at(static_cast<std::size_t>(level)));
  logger->flush_on(spdlog::level::warn);
  return logger;
}

// Where lines go while no log is open. Never destroyed: lines may come at exit, too.
spdlog::logger& fallback() {
  static auto* logger = new std::shared_ptr<spdlog::logger>(makeLogger(
      std::make_shared<spdlog::sinks::stderr_sink_mt>(), LogLevel::kWarning, LogFormat::kText));
  return **logger;
}

std::shared_ptr<spdlog::logger> openedLog;
std::atomic<spdlog::logger*> current{nullptr};
std::atomic<LogLevel> levelWithoutLog{LogLevel::kWarning};
std::atomic<LogLevel> currentLevel{LogLevel::kWarning};
std::atomic<LogFormat> currentFormat{LogFormat::kText};

// The log holds what events say; only the server's own account reads it. A link is followed where
// whoever made it could write to the log's place anyhow: this account, or root.
void makeLogFile(const std::string& name) {
  struct stat status {};
  const bool isLink = lstat(name.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
  if (isLink && status.st_uid != geteuid() && status.st_uid != 0) {
    throw HostError(name + ": is a symbolic link of the user with the number " +
                    std::to_string(status.st_uid) + ", which the log does not follow; remove it");
  }
  const int file = open(name.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
  if (file >= 0) close(file);
}

spdlog::sink_ptr openFile(const HostConfiguration& configuration) {
  makePrivateDirectories(configuration.logFile.parent_path());
  spdlog::file_event_handlers handlers;
  handlers.before_open = [](const spdlog::filename_t& name) { makeLogFile(name); };
  return std::make_shared<spdlog::sinks::rotating_file_sink_mt>(
      configuration.logFile.string(), configuration.logMaxBytes, configuration.logMaxFiles - 1,
      false, handlers);
}

bool isControl(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x20 || byte == 0x7f;
}

// Replaces what would end or garble the line by its escape sequence.
void appendVisible(std::string& line, std::string_view text) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  while (!text.empty()) {
    const auto plain = std::find_if(text.begin(), text.end(), isControl);
    line.append(text.begin(), plain);
    text.remove_prefix(static_cast<std::size_t>(plain - text.begin()));
    if (text.empty()) return;
    const char c = text.front();
    const auto byte = static_cast<unsigned char>(c);
    text.remove_prefix(1);
    if (c == '\n') {
      line += "\\n";
    } else if (c == '\r') {
      line += "\\r";
    } else if (c == '\t') {
      line += "\\t";
    } else {
      line += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 15]};
    }
  }
}

}  // namespace

void openLog(const HostConfiguration& configuration) {
  try {
    auto sink = configuration.logFile == "-" ? std::make_shared<spdlog::sinks::stderr_sink_mt>()
                                             : openFile(configuration);
    openedLog = makeLogger(std::move(sink), configuration.logLevel, configuration.logFormat);
  } catch (const spdlog::spdlog_ex& problem) {
    throw HostError(configuration.logFile.string() +
                    ": the log cannot be opened: " + problem.what());
  }
  currentFormat.store(configuration.logFormat);
  current.store(openedLog.get());
  currentLevel.store(configuration.logLevel);
}

void setLevelWithoutLog(LogLevel level) {
  fallback().set_level(kLevels.at(static_cast<std::size_t>(level)));
  levelWithoutLog.store(level);
  currentLevel.store(level);
}

void closeLog() {
  currentLevel.store(levelWithoutLog.load());
  current.store(nullptr);
  currentFormat.store(LogFormat::kText);
  if (openedLog) openedLog->flush();
  openedLog.reset();
}

void flushLog() {
  if (spdlog::logger* const logger = current.load(std::memory_order_acquire)) logger->flush();
}

bool logs(LogLevel level) {
  return level <= currentLevel.load(std::memory_order_relaxed) || isObserved(level);
}

void writeLine(LogLevel level, int code, std::string_view text) noexcept {
  try {
    tellObservers(level, code, text);
    std::string line;
    line.reserve(text.size() + kRoomForCode);
    if (currentFormat.load(std::memory_order_relaxed) == LogFormat::kJson) {
      line.append("\"code\":").append(std::to_string(code)).append(",\"message\":\"");
      appendJsonText(line, text);
      line += '"';
    } else {
      line.append(std::to_string(code)).append(" ");
      appendVisible(line, text);
    }
    spdlog::logger* logger = current.load(std::memory_order_acquire);
    (logger != nullptr ? *logger : fallback())
        .log(kLevels.at(static_cast<std::size_t>(level)), spdlog::string_view_t(line));
  } catch (...) {
    // The log's callers have their own work to do: a line without memory for it is left out.
  }
}

}  // namespace EventSystemHost
