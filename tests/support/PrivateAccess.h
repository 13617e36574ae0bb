// Access of tests to private and protected members, without a friend or a changed keyword in the
// headers: the names in an explicit template instantiation are exempt from access checks, so the
// instantiation may hand out a pointer to the member.
//
//   EVENTSYSTEM_TEST_ACCESS(MaxId, unsigned long EventStorage::*, &EventStorage::m_maxId)
//   store.*access(MaxId()) = 7;
//
// Thread safety: pure functions.

#ifndef EVENTSYSTEM_TESTS_SUPPORT_PRIVATEACCESS_H
#define EVENTSYSTEM_TESTS_SUPPORT_PRIVATEACCESS_H

#include <type_traits>

namespace EventSystemTest {

template <typename Tag, typename Tag::Type Member>
struct Expose {
  friend typename Tag::Type access(Tag) { return Member; }
};

}  // namespace EventSystemTest

// Once for a member, in namespace EventSystemTest. `PointerType` is the type of the pointer to the
// member; give it through an alias where it holds a comma.
#define EVENTSYSTEM_TEST_ACCESS(Tag, PointerType, Member) \
  struct Tag {                                            \
    using Type = std::type_identity_t<PointerType>;       \
    friend Type access(Tag);                              \
  };                                                      \
  template struct Expose<Tag, Member>;

#endif
