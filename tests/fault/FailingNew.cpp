#include "FailingNew.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "tests/differential/Random.h"

namespace EventSystemTest {

namespace {

thread_local bool armed = false;
thread_local std::size_t counted = 0;
thread_local std::size_t failures = 0;
thread_local AllocationFaults faults;

bool nowhere() {
  return false;
}

bool (*isExempt)() = nowhere;

bool isToFail() {
  switch (faults.kind) {
    case AllocationFaults::Kind::kNone:
      return false;
    case AllocationFaults::Kind::kNth:
      return counted == faults.nth;
    case AllocationFaults::Kind::kFromNth:
      return counted >= faults.nth;
    case AllocationFaults::Kind::kByChance:
      return Random(faults.seed, counted).oneIn(faults.chances);
  }
  return false;
}

void* allocate(std::size_t size) {
  if (allocationFails()) throw std::bad_alloc();
  void* const memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

std::string AllocationFaults::text() const {
  switch (kind) {
    case Kind::kNone:
      return "none fails";
    case Kind::kNth:
      return "allocation " + std::to_string(nth) + " fails";
    case Kind::kFromNth:
      return "allocations fail from " + std::to_string(nth) + " on";
    case Kind::kByChance:
      break;
  }
  return "one allocation in " + std::to_string(chances) + " fails, seed " + std::to_string(seed);
}

FailingNew::FailingNew(const AllocationFaults& which) {
  faults = which;
  counted = 0;
  failures = 0;
  armed = true;
}

FailingNew::~FailingNew() {
  armed = false;
}

std::size_t FailingNew::count() const {
  return counted;
}

std::size_t FailingNew::failed() const {
  return failures;
}

void FailingNew::exempt(bool (*inside)()) {
  isExempt = inside;
}

AllocationPause::AllocationPause() : m_armed(armed) {
  armed = false;
}

AllocationPause::~AllocationPause() {
  armed = m_armed;
}

bool allocationFails() {
  if (!armed || isExempt()) return false;
  ++counted;
  if (!isToFail()) return false;
  ++failures;
  return true;
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

// What the library copies texts with.
extern "C" char* strdup(const char* text) noexcept {
  if (EventSystemTest::allocationFails()) return nullptr;
  const std::size_t size = strlen(text) + 1;
  void* const copy = std::malloc(size);
  return copy == nullptr ? nullptr : static_cast<char*>(memcpy(copy, text, size));
}

#pragma GCC visibility pop
