// What a process beside a test does with a Host: `host_process TASK HOME`. It says on standard
// output how far it has come, and waits for a line on standard input where a test has to act.

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>
#include <string>

#include "EventSystem/platform/OrbDB.h"
#include "host/Host.h"

namespace {

using EventSystemHost::Access;

void say(const std::string& line) {
  std::cout << line << std::endl;
}

bool waitForLine() {
  std::string line;
  return static_cast<bool>(std::getline(std::cin, line));
}

OrbDB::CTable open(const char* table) {
  return OrbDB::CTable(*OrbDB::COrbDatabase::Instance().GetTable(table));
}

int add(long id) {
  const std::string number = std::to_string(id);
  return open("events").addRecord((number + "," + number + ",5,1,\"text\"").c_str(), nullptr, 0);
}

void createEvents(const std::string& home) {
  OrbDB::COrbDatabase::Instance().CheckAddTable("events", (home + "/orbdb.ini").c_str());
}

std::string rows() {
  OrbDB::CTable table = open("events");
  long count = 0;
  long id = 0;
  for (int end = table.ListRecordsStart(nullptr); end == 0; end = table.ListRecordsNext(nullptr)) {
    table.GetValBigInt("id", id);
    ++count;
  }
  return std::to_string(count) + " rows up to " + std::to_string(id);
}

// Opens the database for writing and holds it.
void hold(const std::string& home) {
  createEvents(home);
  say("open");
  waitForLine();
}

// Adds events, and says each one that it was told is stored.
void write(const std::string&) {
  OrbDB::CTable table = open("events");
  for (long id = 1;; ++id) {
    if (add(id) != 0) return;
    say(std::to_string(id));
  }
}

// Says what it reads, each time it is asked.
void list(const std::string&) {
  say(rows());
  while (waitForLine()) say(rows());
}

// Stops in the middle of a walk.
void walk(const std::string&) {
  OrbDB::CTable table = open("events");
  table.ListRecordsStart(nullptr);
  say("walking");
  waitForLine();
  long count = 1;
  while (table.ListRecordsNext(nullptr) == 0) ++count;
  say(std::to_string(count) + " rows");
}

// Says how a child ended that had a copy of the host, and what can be read and written then.
// Returns true in the child.
bool endAsChild(const std::string& home) {
  createEvents(home);
  const pid_t child = fork();
  if (child == 0) {
    alarm(10);  // ends a child that hangs
    return true;
  }
  int status = 0;
  waitpid(child, &status, 0);
  say("child: " + std::to_string(status));
  waitForLine();
  add(1);
  say(rows());
  return false;
}

int run(const std::string& task, const std::string& home) {
  EventSystemHost::HostOptions options;
  options.home = home;
  options.access = task == "list" || task == "walk" ? Access::kReadOnly : Access::kReadWrite;
  const EventSystemHost::Host host(options);
  if (task == "fork" && endAsChild(home)) return 0;
  if (task == "hold") hold(home);
  if (task == "write") {
    createEvents(home);
    write(home);
  }
  if (task == "list") list(home);
  if (task == "walk") walk(home);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  try {
    return run(argv[1], argv[2]);
  } catch (const EventSystemHost::DatabaseBusy& problem) {
    say(std::string("busy: ") + problem.what());
  } catch (const std::exception& problem) {
    say(std::string("error: ") + problem.what());
  }
  return 1;
}
