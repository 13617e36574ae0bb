#include <cstdio>
#include <cstring>
#include <memory>

#include "EventSystem/AbilitiesEvent.h"
#include "EventSystem/ActivityEvent.h"
#include "EventSystem/AuditEvent.h"
#include "EventSystem/CapacityEvent.h"
#include "EventSystem/ImageRepEvent.h"
#include "EventSystem/KelpEvent.h"
#include "EventSystem/LSUStatusEvent.h"
#include "EventSystem/LegacyEvent.h"
#include "EventSystem/ResultCode.h"
#include "EventSystem/ServerStatusEvent.h"
#include "EventSystem/platform/HostLog.h"
#include "EventSystem/platform/HostText.h"
#include "tests/oracle/events/EventMembers.h"
#include "tests/oracle/events/EventOracle.h"

namespace EventSystemTest::Oracle {

using namespace EventSystem;

namespace {

using Owned = std::unique_ptr<Event>;

constexpr int kFileGroupIssue = 3;
constexpr unsigned long kServerNameBound = 128;
constexpr char kWrongType[] = "%s Invalid event string (wrong event type?): %s";
constexpr char kBadFormat[] = "%s Invalid event string (bad format): %s";
constexpr char kBadEnding[] = "%s Invalid event string (bad ending): %s";
constexpr char kEmptyMessage[] = "%s Invalid event string (empty after AUditMSg): %s";
constexpr char kNoFileGroup[] = "%s Invalid event string (no file_group): %s";
constexpr char kNoIssueDuration[] = "%s Invalid event string (no file_group tag): %s";
constexpr char kNoString[] = "%s Invalid event string (no string tag): %s";

// One section: where its tag was found, and the whole text. A parser gives NULL when it refuses.
struct Section {
  const char* at;
  const char* text;
};

// The format is one of those above.
Owned refuse(const Section& section, const char* format) {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  ErrorA(kGeneralFailure, format, "fromString", section.text);
#pragma GCC diagnostic pop
  return nullptr;
}

const char* after(const char* from, const char* key) {
  const char* const found = strstr(from, key);
  return found == nullptr ? nullptr : found + strlen(key);
}

bool startsWith(const char* text, const char* opening) {
  return strncmp(text, opening, strlen(opening)) == 0;
}

bool hasEnding(const char* text) {
  const unsigned long length = strlen(text);
  return length >= 3 && strcmp(text + length - 3, ";}}") == 0;
}

void cutEnding(char* value) {
  const unsigned long length = strlen(value);
  value[length < 3 ? 0 : length - 3] = '\0';
}

// What is wrong with the last text of a section; NULL when it was copied into `value`.
const char* copyLast(const char* source, char* value, unsigned long bound) {
  if (source == nullptr) return kBadFormat;
  kvrstrcpy(value, source, bound);
  if (!hasEnding(value)) return kBadEnding;
  cutEnding(value);
  return nullptr;
}

char* nameFromText(char* server) {
  return startsWith(server, "(NULL)") ? nullptr : server;
}

Owned readLegacy(const Section& section) {
  constexpr char kOpening[] = "LEGACYEVENT{payload:";
  if (!startsWith(section.at, kOpening)) return refuse(section, kBadFormat);
  char payload[1024];
  const char* const flaw = copyLast(section.at + strlen(kOpening), payload, sizeof payload);
  if (flaw != nullptr) return refuse(section, flaw);
  return std::make_unique<LegacyEvent>(payload, 0);
}

void readLSU(const char* text, char* lsu, unsigned long bound) {
  kvrstrcpy(lsu, "TarnwellVolume", bound);
  const char* const name = after(text, "lsu:");
  if (name == nullptr) return;
  const char* const end = strchr(name, ';');
  if (end == nullptr) return;
  kvrstrncpy(lsu, name, static_cast<unsigned long>(end - name), bound);
}

Owned readImageRep(const Section& section) {
  unsigned int size = 0;
  if (!startsWith(section.at, "IMAGEREPEVENT{size:") ||
      sscanf(section.at, "IMAGEREPEVENT{size:%u;path:", &size) != 1) {
    return refuse(section, kBadFormat);
  }
  char path[2048];
  const char* const flaw = copyLast(after(section.at, ";path:"), path, sizeof path);
  if (flaw != nullptr) return refuse(section, flaw);
  char lsu[1024];
  readLSU(section.text, lsu, sizeof lsu);
  return std::make_unique<ImageRepEvent>(path, size, 0, lsu);
}

Owned readLSUStatus(const Section& section) {
  unsigned int state = 0;
  if (sscanf(section.at, "LSUSTATUSEVENT{state:%u;", &state) != 1) {
    return refuse(section, kBadFormat);
  }
  char server[kServerNameBound];
  const char* const flaw = copyLast(after(section.at, ";server:"), server, sizeof server);
  if (flaw != nullptr) return refuse(section, flaw);
  return std::make_unique<LSUStatusEvent>(server, static_cast<LSUStatusEvent::lsuState>(state), 0);
}

Owned readServerStatus(const Section& section) {
  unsigned int state = 0;
  if (sscanf(section.at, "SERVERSTATUSEVENT{state:%u;server:", &state) != 1) {
    return refuse(section, kBadFormat);
  }
  char server[kServerNameBound];
  const char* const flaw = copyLast(after(section.at, ";server:"), server, sizeof server);
  if (flaw != nullptr) return refuse(section, flaw);
  return std::make_unique<ServerStatusEvent>(server,
                                             static_cast<ServerStatusEvent::serverState>(state), 0);
}

Owned readCapacity(const Section& section) {
  unsigned long capacity = 0;
  unsigned long capacityphys = 0;
  unsigned long used = 0;
  unsigned long usedphys = 0;
  if (sscanf(section.at, "CAPACITYEVENT{capacity:%lu;capacityphys:%lu;used:%lu;usedphys:%lu;",
             &capacity, &capacityphys, &used, &usedphys) != 4) {
    return refuse(section, kBadFormat);
  }
  char server[kServerNameBound];
  const char* const flaw = copyLast(after(section.at, ";server:"), server, sizeof server);
  if (flaw != nullptr) return refuse(section, flaw);
  return std::make_unique<CapacityEvent>(nameFromText(server), capacity, capacityphys, used,
                                         usedphys, 0);
}

Owned readAbilities(const Section& section) {
  unsigned int flags = 0;
  if (sscanf(section.at, "ABILITIESEVENT{flags:0x%X;server:", &flags) != 1) {
    return refuse(section, kBadFormat);
  }
  char server[kServerNameBound];
  const char* const flaw = copyLast(after(section.at, ";server:"), server, sizeof server);
  if (flaw != nullptr) return refuse(section, flaw);
  return std::make_unique<AbilitiesEvent>(static_cast<int>(flags), nameFromText(server), 0);
}

Owned readActivity(const Section& section) {
  int version = 0;
  int action = 0;
  unsigned long time = 0;
  int severity = 0;
  if (sscanf(section.at, "ACTIVITYEVENT{version:%d;action:%d;time:%lu;severity:%d;msg:", &version,
             &action, &time, &severity) != 4) {
    return refuse(section, kBadFormat);
  }
  char msg[1024];
  const char* const flaw = copyLast(after(section.at, ";msg:"), msg, sizeof msg);
  if (flaw != nullptr) return refuse(section, flaw);
  return std::make_unique<ActivityEvent>(action, time, severity, msg, 0);
}

Owned readAudit(const Section& section) {
  int version = 0;
  int action = 0;
  unsigned long time = 0;
  int loadSize = 0;
  const char* const source = after(section.text, ";AUditMSg:");
  if (sscanf(section.at, "AUDITEVENT{version:%d;action:%d;time:%lu;loadSize:%d;AUditMSg:", &version,
             &action, &time, &loadSize) != 4 ||
      source == nullptr) {
    return refuse(section, kBadFormat);
  }
  if (kvrstrlen(source, 4) < 4) return refuse(section, kEmptyMessage);
  char message[10240];
  const char* const flaw = copyLast(source, message, sizeof message);
  if (flaw != nullptr) return refuse(section, flaw);
  return std::make_unique<AuditEvent>(message, version, action, time, loadSize, 0);
}

// The text that ends a KelpEvent; NULL when it was copied into `string`.
const char* copyString(const char* rest, const char* text, char* string, unsigned long bound) {
  const char* const source = after(rest, ";string:");
  if (source == nullptr) return kNoString;
  kvrstrcpy(string, source, bound);
  if (!hasEnding(text)) return kBadEnding;
  cutEnding(string);
  return nullptr;
}

Owned readKelp(const Section& section) {
  int version = 0;
  int severity = 0;
  int issue = 0;
  int shareType = 0;
  if (sscanf(section.at, "KELPEVENT{version:%d;severity:%d;issue:%d;share_type:%d;", &version,
             &severity, &issue, &shareType) != 4) {
    return refuse(section, kBadFormat);
  }
  const bool hasGroup = issue == kFileGroupIssue;
  const char* const rest = after(section.text, hasGroup ? ";file_group:" : ";issue_duration:");
  if (rest == nullptr) return refuse(section, hasGroup ? kNoFileGroup : kNoIssueDuration);
  int duration = 0;
  unsigned long long group = 0;
  int name = 0;
  int host = 0;
  const int values = hasGroup ? sscanf(rest, "%llu;name:%d;host:%d;string:", &group, &name, &host)
                              : sscanf(rest, "%d;name:%d;host:%d;string:", &duration, &name, &host);
  if (values != 3) return refuse(section, kBadFormat);
  char string[1024];
  const char* const flaw = copyString(rest, section.text, string, sizeof string);
  if (flaw != nullptr) return refuse(section, flaw);
  return std::make_unique<KelpEvent>(version, severity, issue, shareType, duration, group, name,
                                     host, string, 0);
}

struct Reader {
  const char* tag;
  Owned (*read)(const Section& section);
};

constexpr Reader kReaders[] = {{"", nullptr},
                               {"LEGACYEVENT", readLegacy},
                               {"IMAGEREPEVENT", readImageRep},
                               {"LSUSTATUSEVENT", readLSUStatus},
                               {"SERVERSTATUSEVENT", readServerStatus},
                               {"CAPACITYEVENT", readCapacity},
                               {"ABILITIESEVENT", readAbilities},
                               {"ACTIVITYEVENT", readActivity},
                               {"AUDITEVENT", readAudit},
                               {"KELPEVENT", readKelp}};

bool haveArguments(const char* text, Event** event) {
  if (event == nullptr) {
    ErrorA(kGeneralFailure, "%s The event pointer is NULL.", "fromString");
    return false;
  }
  if (text == nullptr) {
    ErrorA(kGeneralFailure, "%s The event string buffer is NULL.", "fromString");
    *event = nullptr;
    return false;
  }
  return true;
}

struct Envelope {
  int type;
  unsigned long id;
  unsigned long date;
};

bool readEnvelope(const char* text, Envelope& envelope) {
  unsigned int version = 0;
  if (sscanf(text, "EVENT{version:%u;", &version) != 1) return false;
  if (version != 1) {
    InfoA(kSuccess, "%s Event version (%u) is different than current version (%u)", "fromString",
          version, 1u);
  }
  return sscanf(text, "EVENT{version:%*u;type:%d;id:%lu;date:%lu", &envelope.type, &envelope.id,
                &envelope.date) == 3;
}

}  // namespace

int parseSection(int type, const char* text, Event** event) {
  if (!haveArguments(text, event)) return kGeneralFailure;
  const Reader& reader = kReaders[type];
  const Section section{strstr(text, reader.tag), text};
  *event = (section.at == nullptr ? refuse(section, kWrongType) : reader.read(section)).release();
  return *event == nullptr ? kGeneralFailure : kSuccess;
}

int parse(const char* text, Event** event) {
  if (!haveArguments(text, event)) return kGeneralFailure;
  *event = nullptr;
  Envelope envelope{};
  if (!readEnvelope(text, envelope)) {
    ErrorA(kGeneralFailure, "%s Invalid event string: %s", "fromString", text);
    return kGeneralFailure;
  }
  if (envelope.type < 1 || envelope.type > 9) {
    ErrorA(kGeneralFailure, "%s Invalid event type: %d", "fromString", envelope.type);
    return kGeneralFailure;
  }
  const int result = parseSection(envelope.type, text, event);
  if (*event == nullptr) {
    ErrorA(kGeneralFailure, "%s Failed to parse event string: %s", "fromString", text);
    return kGeneralFailure;
  }
  setEnvelope(**event, envelope.id, envelope.date);
  return result;
}

}  // namespace EventSystemTest::Oracle
