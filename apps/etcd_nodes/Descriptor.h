// A file descriptor that is closed by its owner's end.
//
// Thread safety: as an int.

#ifndef EVENTSYSTEM_APPS_ETCD_NODES_DESCRIPTOR_H
#define EVENTSYSTEM_APPS_ETCD_NODES_DESCRIPTOR_H

#include <unistd.h>

#include <utility>

namespace EtcdNodes {

class Descriptor {
 public:
  explicit Descriptor(int descriptor = -1) : m_descriptor(descriptor) {}
  ~Descriptor() { close(); }
  Descriptor(Descriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
  }

  // Hands the descriptor over.
  int release() { return std::exchange(m_descriptor, -1); }

  // -1: none, or closed.
  int get() const { return m_descriptor; }
  void close() {
    if (m_descriptor >= 0) ::close(std::exchange(m_descriptor, -1));
  }

 private:
  int m_descriptor;
};

}  // namespace EtcdNodes

#endif
