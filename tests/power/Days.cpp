#include "tests/power/Days.h"

#include <fstream>
#include <vector>

namespace EventSystemTest {

namespace {

constexpr unsigned int kFirst = 3;
constexpr unsigned int kSecond = 5;

void morning(Service& service, unsigned int& number) {
  service.knowDataSelection(kFirst);
  service.add(number++);
  service.add(number++, kFirst);
  service.knowDataSelection(kSecond);
  service.add(number++, kSecond);
  service.add(number++, kFirst);
  for (int i = 0; i < 4; ++i) service.add(number++);
  service.waitDurable();
  service.add(number++);
  service.remove(2);
  service.remove(2, kSecond);
}

}  // namespace

void shortDay(Service& service) {
  unsigned int number = 0;
  service.leaveAuditRow(number++);
  service.start();
  morning(service, number);
  service.leaveAuditRow(number++);
  service.leaveAuditRow(number++);
  service.import();
  service.remove(service.lastId());
  service.stop();

  service.leaveAuditRow(number++);
  service.start();
  for (int i = 0; i < 3; ++i) service.add(number++);
  service.remove(1);
  service.waitDurable();
  service.add(number++, kSecond);
  service.add(number++);
  service.remove(service.lastId());
  service.waitDurable();
  service.stop();

  service.start();
  service.add(number++);
  service.stop();
}

void briefDay(Service& service) {
  unsigned int number = 0;
  service.leaveAuditRow(number++);
  service.start();
  service.knowDataSelection(kFirst);
  service.add(number++);
  service.add(number++, kFirst);
  service.leaveAuditRow(number++);
  service.import();
  service.add(number++);
  service.waitDurable();
  service.remove(2);
  service.add(number++);
  service.stop();

  service.start();
  service.add(number++);
  service.remove(service.lastId());
  service.add(number++, kFirst);
  service.waitDurable();
  service.stop();
}

void longDay(Service& service, const std::function<void()>& copied) {
  unsigned int number = 0;
  service.start();
  morning(service, number);
  std::vector<unsigned long> ids;
  for (int i = 0; i < 1500; ++i) {
    service.add(number++);
    ids.push_back(service.lastId());
    if (i % 40 == 39) service.waitDurable();
    copied();
  }
  for (std::size_t i = 0; i < ids.size() - 10; ++i) {
    service.remove(ids[i]);
    copied();
  }
  service.add(number++);
  service.stop();
}

void configureHome(const std::filesystem::path& home, const std::string& durability,
                   const std::string& logLevel) {
  std::ofstream(home / "host.ini")
      << "[server]\nname = node1\n[database]\ndurability = " << durability
      << "\n[log]\nlevel = " << logLevel << "\n";
}

}  // namespace EventSystemTest
