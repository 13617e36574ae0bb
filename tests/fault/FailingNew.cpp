#include "FailingNew.h"

#include <cstdlib>
#include <new>

#include "tests/support/FakeHost.h"

namespace EventSystemTest {

namespace {

thread_local bool armed = false;
thread_local std::size_t counted = 0;
thread_local std::size_t failing = 0;

void* allocate(std::size_t size) {
  if (armed && !FakeHost::isInside() && ++counted == failing) throw std::bad_alloc();
  void* const memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

FailingNew::FailingNew(std::size_t nth) {
  armed = true;
  counted = 0;
  failing = nth;
}

FailingNew::~FailingNew() {
  armed = false;
}

std::size_t FailingNew::count() const {
  return counted;
}

}  // namespace EventSystemTest

#pragma GCC visibility push(default)

void* operator new(std::size_t size) {
  return EventSystemTest::allocate(size);
}
void* operator new[](std::size_t size) {
  return EventSystemTest::allocate(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  try {
    return EventSystemTest::allocate(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
  return operator new(size, tag);
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete[](void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
  std::free(memory);
}

#pragma GCC visibility pop
