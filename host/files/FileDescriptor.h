// An open file's descriptor, closed by its owner's end.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_HOST_FILES_FILEDESCRIPTOR_H
#define EVENTSYSTEM_HOST_FILES_FILEDESCRIPTOR_H

#include <unistd.h>

namespace EventSystemHost {

class FileDescriptor {
 public:
  explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
  ~FileDescriptor() {
    if (m_descriptor >= 0) close(m_descriptor);
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;

  bool valid() const { return m_descriptor >= 0; }
  int get() const { return m_descriptor; }

 private:
  int m_descriptor;
};

}  // namespace EventSystemHost

#endif
