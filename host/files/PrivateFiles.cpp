#include "host/files/PrivateFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <utility>

#include "host/Host.h"
#include "host/files/FileDescriptor.h"

namespace EventSystemHost {

namespace {

constexpr mode_t kFileMode = 0600;
constexpr mode_t kDirectoryMode = 0700;

[[noreturn]] void fail(const std::filesystem::path& file, const char* what) {
  throw HostError(file.string() + ": " + what + ": " + std::strerror(errno));
}

void writeAll(int descriptor, std::string_view content, const std::filesystem::path& file) {
  while (!content.empty()) {
    const ssize_t written = write(descriptor, content.data(), content.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) fail(file, "cannot be written");
    content.remove_prefix(static_cast<std::size_t>(written));
  }
}

std::filesystem::path directoryOf(const std::filesystem::path& file) {
  return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

}  // namespace

void makePrivateDirectories(const std::filesystem::path& directory) {
  if (directory.empty()) return;
  std::error_code error;
  if (std::filesystem::is_directory(directory, error)) return;
  const std::filesystem::path parent = directoryOf(directory);
  if (parent != directory) makePrivateDirectories(parent);
  if (mkdir(directory.c_str(), kDirectoryMode) != 0) {
    if (errno == EEXIST && std::filesystem::is_directory(directory, error)) return;
    fail(directory, "the directory cannot be created");
  }
  if (chmod(directory.c_str(), kDirectoryMode) != 0) fail(directory, "its mode cannot be set");
  syncDirectory(parent);
}

void syncDirectory(const std::filesystem::path& directory) {
  const FileDescriptor opened(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!opened.valid()) fail(directory, "the directory cannot be opened");
  // EINVAL: a file system that has nothing to sync for a directory.
  if (fsync(opened.get()) != 0 && errno != EINVAL) fail(directory, "cannot be synced");
}

bool makePrivateFile(const std::filesystem::path& file) {
  const FileDescriptor created(
      open(file.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, kFileMode));
  if (!created.valid()) {
    if (errno == EEXIST) return false;
    fail(file, "cannot be created");
  }
  if (fchmod(created.get(), kFileMode) != 0) fail(file, "its mode cannot be set");
  syncDirectory(directoryOf(file));
  return true;
}

void writePrivateFile(const std::filesystem::path& file, std::string_view content) {
  const std::filesystem::path temporary = file.string() + ".new";
  {
    // What a crash, or somebody else, has left under this name is not written to.
    unlink(temporary.c_str());
    const FileDescriptor created(
        open(temporary.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, kFileMode));
    if (!created.valid()) fail(temporary, "cannot be created");
    if (fchmod(created.get(), kFileMode) != 0) fail(temporary, "its mode cannot be set");
    writeAll(created.get(), content, temporary);
    if (fsync(created.get()) != 0) fail(temporary, "cannot be synced");
  }
  if (rename(temporary.c_str(), file.c_str()) != 0) fail(file, "cannot be created");
  syncDirectory(directoryOf(file));
}

void requireOwn(const std::filesystem::path& file) {
  constexpr uid_t kRoot = 0;
  struct stat status {};
  // What cannot be looked at cannot be used either, and that says why.
  if (geteuid() != kRoot || stat(file.c_str(), &status) != 0) return;
  const std::string advice =
      ": root writes nothing there, because it might lead elsewhere; run this as its owner "
      "(runuser -u USER -- ...), or give it to root (chown, chmod go-w)";
  if (status.st_uid != kRoot) {
    throw HostError(file.string() + ": belongs to the user with the number " +
                    std::to_string(status.st_uid) + advice);
  }
  const bool groupMayWrite = (status.st_mode & S_IWGRP) != 0 && status.st_gid != kRoot;
  if (groupMayWrite || (status.st_mode & S_IWOTH) != 0) {
    throw HostError(file.string() + ": others than root may write to it" + advice);
  }
}

}  // namespace EventSystemHost
