#include "EventText.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <new>

#include "EventSystem/platform/HostLog.h"
#include "EventSystem/platform/HostText.h"

namespace EventSystem {
namespace {

constexpr char kFunction[] = "fromString";
constexpr char kNullName[] = "(NULL)";
constexpr char kEnding[] = ";}}";
constexpr unsigned long kEndingLength = sizeof kEnding - 1;

__attribute__((format(printf, 3, 0))) int appendList(char* buffer, unsigned long size,
                                                     const char* format, va_list arguments) {
  const unsigned long length = kvrstrlen(buffer, size);
  return vsnprintf(buffer + length, size - length, format, arguments);
}

}  // namespace

char* duplicateText(const char* text) {
  if (text == nullptr) return nullptr;
  char* const copy = strdup(text);
  if (copy == nullptr) throw std::bad_alloc();
  return copy;
}

const char* nameOrNull(const char* server) {
  return server == nullptr ? kNullName : server;
}

char* nameFromText(char* server) {
  return SectionReader::startsWith(server, kNullName) ? nullptr : server;
}

unsigned int validState(unsigned int state) {
  return state > 2 ? 1 : state;
}

int writeSection(Event& event, char* buffer, unsigned long size, const char* format, ...) {
  const int envelope = event.Event::toString(buffer, size);
  if (buffer == nullptr) return envelope;
  va_list arguments;
  va_start(arguments, format);
  const int section = appendList(buffer, size, format, arguments);
  va_end(arguments);
  return section;
}

int appendText(char* buffer, unsigned long size, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int length = appendList(buffer, size, format, arguments);
  va_end(arguments);
  return length;
}

bool SectionReader::find(const char* tag) {
  if (m_event == nullptr) {
    ErrorA(kGeneralFailure, "%s The event pointer is NULL.", kFunction);
    return false;
  }
  if (m_text == nullptr) {
    ErrorA(kGeneralFailure, "%s The event string buffer is NULL.", kFunction);
    *m_event = nullptr;
    return false;
  }
  m_section = strstr(m_text, tag);
  if (m_section == nullptr) fail(kWrongType);
  return m_section != nullptr;
}

const char* SectionReader::after(const char* from, const char* key) {
  const char* const found = strstr(from, key);
  return found == nullptr ? nullptr : found + strlen(key);
}

bool SectionReader::startsWith(const char* text, const char* opening) {
  return strncmp(text, opening, strlen(opening)) == 0;
}

bool SectionReader::hasEnding(const char* text) {
  const unsigned long length = strlen(text);
  return length >= kEndingLength && strcmp(text + length - kEndingLength, kEnding) == 0;
}

void SectionReader::cutEnding(char* value) {
  const unsigned long length = strlen(value);
  value[length < kEndingLength ? 0 : length - kEndingLength] = '\0';
}

bool SectionReader::copyLast(const char* source, char* value, unsigned long bound) {
  if (source == nullptr) {
    fail(kBadFormat);
    return false;
  }
  kvrstrcpy(value, source, bound);
  if (!hasEnding(value)) {
    fail(kBadEnding);
    return false;
  }
  cutEnding(value);
  return true;
}

int SectionReader::fail(Flaw flaw) {
  switch (flaw) {
    case kWrongType:
      ErrorA(kGeneralFailure, "%s Invalid event string (wrong event type?): %s", kFunction, m_text);
      break;
    case kBadFormat:
      ErrorA(kGeneralFailure, "%s Invalid event string (bad format): %s", kFunction, m_text);
      break;
    case kBadEnding:
      ErrorA(kGeneralFailure, "%s Invalid event string (bad ending): %s", kFunction, m_text);
      break;
    case kEmptyAuditMessage:
      ErrorA(kGeneralFailure, "%s Invalid event string (empty after AUditMSg): %s", kFunction,
             m_text);
      break;
    case kNoFileGroup:
      ErrorA(kGeneralFailure, "%s Invalid event string (no file_group): %s", kFunction, m_text);
      break;
    case kNoIssueDuration:  // the message names the file group; operators know it by this text
      ErrorA(kGeneralFailure, "%s Invalid event string (no file_group tag): %s", kFunction, m_text);
      break;
    case kNoString:
      ErrorA(kGeneralFailure, "%s Invalid event string (no string tag): %s", kFunction, m_text);
      break;
  }
  *m_event = nullptr;
  return kGeneralFailure;
}

int SectionReader::accept(std::unique_ptr<Event> event) {
  *m_event = event.release();
  return kSuccess;
}

}  // namespace EventSystem
