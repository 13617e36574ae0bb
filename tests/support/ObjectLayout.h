// Where a class keeps things: the place of a virtual function in its table and of a data member
// in its object, as the Itanium C++ ABI lays them out on x86-64. A host compiled against version 1
// of the library relies on both.
//
// Thread safety: pure functions.

#ifndef EVENTSYSTEM_TESTS_SUPPORT_OBJECTLAYOUT_H
#define EVENTSYSTEM_TESTS_SUPPORT_OBJECTLAYOUT_H

#include <dlfcn.h>
#include <elf.h>
#include <link.h>

#include <cstddef>
#include <cstring>
#include <string>

namespace EventSystemTest {

// What vtableSlot() gives for a function that is not virtual.
constexpr std::size_t kNotVirtual = static_cast<std::size_t>(-1);

// The index of a virtual function in its table. A virtual destructor takes two places, so the
// first function behind it has index 2.
template <typename Class, typename Function>
std::size_t vtableSlot(Function Class::*member) {
  struct {
    std::size_t pointer;
    std::ptrdiff_t adjustment;
  } parts;
  static_assert(sizeof parts == sizeof member);
  std::memcpy(&parts, &member, sizeof parts);
  if (parts.pointer % 2 == 0) return kNotVirtual;
  return (parts.pointer - 1) / sizeof(void*);
}

// The offset of a data member in its object.
template <typename Class, typename Member>
std::size_t memberOffset(Member Class::*member) {
  static_assert(sizeof member == sizeof(std::size_t));
  std::size_t offset = 0;
  std::memcpy(&offset, &member, sizeof offset);
  return offset;
}

// How many functions the virtual table of a class of namespace EventSystem has, the destructor's
// two places included; 0 when the class exports no table.
__attribute__((no_sanitize("address"))) inline std::size_t vtableSize(const char* className) {
  const std::string symbol =
      "_ZTVN11EventSystem" + std::to_string(std::strlen(className)) + className + "E";
  void* const address = dlsym(RTLD_DEFAULT, symbol.c_str());
  Dl_info found;
  void* entry = nullptr;
  if (address == nullptr || dladdr1(address, &found, &entry, RTLD_DL_SYMENT) == 0) {
    return 0;
  }
  const std::size_t header = 2;  // offset to top and type information
  const auto* const slots = static_cast<void* const*>(address) + header;
  std::size_t size = static_cast<const ElfW(Sym)*>(entry)->st_size / sizeof(void*) - header;
  while (size > 0 && slots[size - 1] == nullptr) --size;  // AddressSanitizer's padding
  return size;
}

}  // namespace EventSystemTest

#endif
