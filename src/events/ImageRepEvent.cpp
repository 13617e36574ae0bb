#include "EventSystem/ImageRepEvent.h"

#include <cstdio>
#include <cstring>

#include "EventSystem/platform/HostText.h"
#include "EventText.h"

namespace EventSystem {
namespace {

constexpr char kDefaultLSU[] = "TarnwellVolume";

// The storage unit stands before the section and may be missing.
void readLSU(const char* text, char* lsu, unsigned long bound) {
  kvrstrcpy(lsu, kDefaultLSU, bound);
  const char* const name = SectionReader::after(text, "lsu:");
  if (name == nullptr) return;
  const char* const end = strchr(name, ';');
  if (end == nullptr) return;
  kvrstrncpy(lsu, name, static_cast<unsigned long>(end - name), bound);
}

}  // namespace

ImageRepEvent::ImageRepEvent(char* path, unsigned int size, unsigned long id, const char* lsu)
    : DetachedEvent(kImageRepEvent, path, size, id) {
  setLSU(lsu == nullptr ? kDefaultLSU : lsu);
}

ImageRepEvent::~ImageRepEvent() = default;

int ImageRepEvent::toString(char* buffer, unsigned long size) {
  return writeSection(*this, buffer, size, ";lsu:%s;IMAGEREPEVENT{size:%u;path:%s;}}", m_lsu,
                      getPayloadSize(), getPayloadPath());
}

void ImageRepEvent::setLSU(const char* lsu) {
  kvrstrcpy(m_lsu, lsu, sizeof m_lsu);
}

char* ImageRepEvent::getLSU() {
  return m_lsu;
}

int ImageRepEvent::fromString(const char* text, Event** event) {
  SectionReader reader(text, event);
  if (!reader.find("IMAGEREPEVENT")) return kGeneralFailure;
  unsigned int size = 0;
  if (!SectionReader::startsWith(reader.section(), "IMAGEREPEVENT{size:") ||
      sscanf(reader.section(), "IMAGEREPEVENT{size:%u;path:", &size) != 1) {
    return reader.fail(SectionReader::kBadFormat);
  }
  char path[2048];
  if (!reader.copyLast(";path:", path)) return kGeneralFailure;
  char lsu[sizeof m_lsu];
  readLSU(text, lsu, sizeof lsu);
  return reader.accept(std::make_unique<ImageRepEvent>(path, size, 0, lsu));
}

}  // namespace EventSystem
