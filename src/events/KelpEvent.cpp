#include "EventSystem/KelpEvent.h"

#include <cstdio>
#include <cstdlib>

#include "EventSystem/platform/HostText.h"
#include "EventText.h"

namespace EventSystem {
namespace {

constexpr int kFileGroupIssue = 3;

}  // namespace

KelpEvent::KelpEvent(int version, int severity, int issue, int share_type, int issue_duration,
                     unsigned long file_group, int name, int host, const char* string,
                     unsigned long id)
    : Event(kKelpEvent, kInlinePayload, 0, id),
      m_version(version),
      m_severity(severity),
      m_issue(issue),
      m_shareType(share_type),
      m_issueDuration(issue_duration),
      m_fileGroup(file_group),
      m_name(name),
      m_host(host),
      m_string(duplicateText(string)) {}

KelpEvent::~KelpEvent() {
  free(m_string);
}

int KelpEvent::toString(char* buffer, unsigned long size) {
  const int opening =
      writeSection(*this, buffer, size, ";KELPEVENT{version:%d;severity:%d;issue:%d;share_type:%d;",
                   m_version, m_severity, m_issue, m_shareType);
  if (buffer == nullptr) return opening;
  // A NULL string goes to %s as it is: the C library writes "(null)".
  if (m_issue == kFileGroupIssue) {
    return appendText(buffer, size, "file_group:%llu;name:%d;host:%d;string:%s;}}",
                      static_cast<unsigned long long>(m_fileGroup), m_name, m_host, m_string);
  }
  return appendText(buffer, size, "issue_duration:%d;name:%d;host:%d;string:%s;}}", m_issueDuration,
                    m_name, m_host, m_string);
}

int KelpEvent::fromString(const char* text, Event** event) {
  SectionReader reader(text, event);
  if (!reader.find("KELPEVENT")) return kGeneralFailure;
  int version = 0;
  int severity = 0;
  int issue = 0;
  int share_type = 0;
  if (sscanf(reader.section(), "KELPEVENT{version:%d;severity:%d;issue:%d;share_type:%d;", &version,
             &severity, &issue, &share_type) != 4) {
    return reader.fail(SectionReader::kBadFormat);
  }

  const bool hasFileGroup = issue == kFileGroupIssue;
  const char* const rest =
      SectionReader::after(text, hasFileGroup ? ";file_group:" : ";issue_duration:");
  if (rest == nullptr) {
    return reader.fail(hasFileGroup ? SectionReader::kNoFileGroup
                                    : SectionReader::kNoIssueDuration);
  }
  int issue_duration = 0;
  unsigned long long file_group = 0;
  int name = 0;
  int host = 0;
  const int values =
      hasFileGroup ? sscanf(rest, "%llu;name:%d;host:%d;string:", &file_group, &name, &host)
                   : sscanf(rest, "%d;name:%d;host:%d;string:", &issue_duration, &name, &host);
  if (values != 3) return reader.fail(SectionReader::kBadFormat);

  const char* const source = SectionReader::after(rest, ";string:");
  if (source == nullptr) return reader.fail(SectionReader::kNoString);
  char string[1024];
  kvrstrcpy(string, source, sizeof string);
  // The ending is looked for in the whole text: a string longer than the copy is read, shortened
  // by what the ending would have taken.
  if (!SectionReader::hasEnding(text)) return reader.fail(SectionReader::kBadEnding);
  SectionReader::cutEnding(string);
  return reader.accept(std::make_unique<KelpEvent>(
      version, severity, issue, share_type, issue_duration, file_group, name, host, string, 0));
}

}  // namespace EventSystem
