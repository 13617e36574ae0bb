// A place for one text right before memory that nobody may touch: reading a byte beyond its
// terminator ends the program.
//
// Thread safety: an object belongs to one thread.

#ifndef EVENTSYSTEM_TESTS_DIFFERENTIAL_GUARDEDTEXT_H
#define EVENTSYSTEM_TESTS_DIFFERENTIAL_GUARDEDTEXT_H

#include <sys/mman.h>

#include <cstddef>
#include <cstring>
#include <new>
#include <string_view>

namespace EventSystemTest {

class GuardedText {
 public:
  GuardedText()
      : m_memory(mmap(nullptr, kRoom + kPage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS,
                      -1, 0)) {
    if (m_memory == MAP_FAILED) throw std::bad_alloc();
    mprotect(end(), kPage, PROT_NONE);
  }
  ~GuardedText() { munmap(m_memory, kRoom + kPage); }

  GuardedText(const GuardedText&) = delete;
  GuardedText& operator=(const GuardedText&) = delete;

  // The text, terminated. It is shorter than kRoom.
  const char* place(std::string_view text) {
    char* const start = end() - text.size() - 1;
    memcpy(start, text.data(), text.size());
    start[text.size()] = '\0';
    return start;
  }

  static constexpr std::size_t kRoom = 1 << 15;

 private:
  static constexpr std::size_t kPage = 4096;

  char* end() const { return static_cast<char*>(m_memory) + kRoom; }

  void* m_memory;
};

}  // namespace EventSystemTest

#endif
