#include "EventSystem/ImageRepEvent.h"

#include "EventText.h"
#include "Sections.h"

namespace EventSystem {
namespace {

constexpr char kDefaultLSU[] = "TarnwellVolume";
constexpr unsigned long kLSUBound = 1024;

// The storage unit stands before the section and may be missing.
std::string_view lsuOf(std::string_view body) {
  TextScanner scanner(body);
  if (!scanner.read(";lsu:") && !scanner.skipBehind("lsu:")) return kDefaultLSU;
  const std::size_t length = scanner.rest().find(';');
  return length == std::string_view::npos ? kDefaultLSU : scanner.rest().substr(0, length);
}

}  // namespace

ImageRepEvent::ImageRepEvent(char* path, unsigned int size, unsigned long id, const char* lsu)
    : DetachedEvent(kImageRepEvent, path, size, id) {
  setLSU(lsu == nullptr ? kDefaultLSU : lsu);
}

ImageRepEvent::~ImageRepEvent() = default;

int ImageRepEvent::toString(char* buffer, unsigned long size) {
  return SectionWriter(*this, buffer, size)
      .write(";lsu:", Text{m_lsu}, ";IMAGEREPEVENT{size:", getPayloadSize(),
             ";path:", Text{getPayloadPath()}, ";}}");
}

void ImageRepEvent::setLSU(const char* lsu) {
  copyText(lsu, m_lsu, sizeof m_lsu);
}

char* ImageRepEvent::getLSU() {
  return m_lsu;
}

bool readImageRepEvent(SectionReader& section) {
  unsigned int size = 0;
  char path[2048];
  if (!section.open("IMAGEREPEVENT", "{size:", size) || !section.readLast(";path:", path)) {
    return false;
  }
  auto event = std::make_unique<ImageRepEvent>(path, size, 0, "");
  copyText(lsuOf(section.body()), event->getLSU(), kLSUBound);
  return section.accept(std::move(event));
}

int ImageRepEvent::fromString(const char* text, Event** event) {
  return readSection(text, event, readImageRepEvent);
}

}  // namespace EventSystem
