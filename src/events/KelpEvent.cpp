#include "EventSystem/KelpEvent.h"

#include <cstdlib>

#include "EventText.h"
#include "Sections.h"

namespace EventSystem {
namespace {

constexpr int kFileGroupIssue = 3;

// The ending is looked for in the whole text: a string longer than the copy is read, shortened by
// what the ending would have taken.
bool readString(SectionReader& section, char* string, unsigned long bound) {
  if (!section.rest().ends_with(kEnding)) return section.fail(SectionReader::kBadEnding);
  std::string_view copied = section.rest().substr(0, bound - 1);
  copied.remove_suffix(kEnding.size());
  copyText(copied, string, bound);
  return true;
}

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
  SectionWriter section(*this, buffer, size);
  section.write(";KELPEVENT{version:", m_version, ";severity:", m_severity, ";issue:", m_issue,
                ";share_type:", m_shareType, ";");
  // A NULL string is written as "(null)". The length that is returned counts from here.
  if (m_issue == kFileGroupIssue) {
    return section.write("file_group:", m_fileGroup, ";name:", m_name, ";host:", m_host,
                         ";string:", Text{m_string}, ";}}");
  }
  return section.write("issue_duration:", m_issueDuration, ";name:", m_name, ";host:", m_host,
                       ";string:", Text{m_string}, ";}}");
}

bool readKelpEvent(SectionReader& section) {
  int version = 0;
  int severity = 0;
  int issue = 0;
  int share_type = 0;
  if (!section.open("KELPEVENT", "{version:", version, ";severity:", severity, ";issue:", issue,
                    ";share_type:", share_type)) {
    return false;
  }
  int issue_duration = 0;
  unsigned long file_group = 0;
  int name = 0;
  int host = 0;
  const bool complete =
      issue == kFileGroupIssue
          ? section.seekAnywhere(";file_group:", SectionReader::kNoFileGroup) &&
                section.read(file_group, ";name:", name, ";host:", host)
          : section.seekAnywhere(";issue_duration:", SectionReader::kNoIssueDuration) &&
                section.read(issue_duration, ";name:", name, ";host:", host);
  char string[1024];
  return complete && section.seek(";string:", SectionReader::kNoString) &&
         readString(section, string, sizeof string) &&
         section.accept(std::make_unique<KelpEvent>(version, severity, issue, share_type,
                                                    issue_duration, file_group, name, host, string,
                                                    0));
}

int KelpEvent::fromString(const char* text, Event** event) {
  return readSection(text, event, readKelpEvent);
}

}  // namespace EventSystem
