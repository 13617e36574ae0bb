// What producers were promised and what consumers got, and whether the two agree.
//
// Thread safety: any thread, also at once.

#ifndef EVENTSYSTEM_TESTS_EVENTD_LOAD_BOOKS_H
#define EVENTSYSTEM_TESTS_EVENTD_LOAD_BOOKS_H

#include <cstdint>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

namespace EventSystemTest {

class Books {
 public:
  // The event with this text was acknowledged under this id.
  void acknowledged(const std::string& text, unsigned long id);

  // A consumer read this event and then deleted it.
  void consumed(const std::string& text, unsigned long id);

  // Something that must not be.
  void wrong(std::string what);

  struct Balance {
    std::uint64_t acknowledged = 0;
    std::uint64_t consumed = 0;
    std::uint64_t lost = 0;     // acknowledged, and never read
    std::uint64_t doubled = 0;  // read under two ids
    std::uint64_t unknown = 0;  // read, and never acknowledged
    std::vector<std::string> wrong;
  };
  Balance balance() const;

 private:
  struct Entry {
    unsigned long acknowledgedId = 0;
    unsigned long consumedId = 0;
    bool doubled = false;
  };

  mutable std::mutex m_mutex;
  std::unordered_map<std::string, Entry> m_entries;
  std::vector<std::string> m_wrong;
};

}  // namespace EventSystemTest

#endif
