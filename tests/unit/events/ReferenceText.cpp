#include "tests/unit/events/ReferenceText.h"

#include <cstdio>
#include <cstring>
#include <functional>

#include "tests/unit/events/EventKinds.h"

namespace EventSystemTest {
namespace {

// A section as it is written again, or the format of the complaint about it.
struct Section {
  std::string again;
  const char* complaint = nullptr;
};

Section refused(const char* complaint) {
  return {.again = "", .complaint = complaint};
}

using Rest = std::function<Section(const std::string& text)>;

bool ends(const std::string& text) {
  return text.ends_with(";}}");
}

// What follows `key`, as far as a buffer of `bound` bytes holds it; NULL when the key is not there.
const char* follow(const char* from, const char* key) {
  const char* const found = strstr(from, key);
  return found == nullptr ? nullptr : found + strlen(key);
}

std::string bounded(const char* text, std::size_t bound) {
  return {text, strnlen(text, bound - 1)};
}

// Takes the text that ends the section and hands it on without its three closing characters.
Section closing(const char* text, std::size_t bound, const Rest& rest) {
  if (text == nullptr) return refused(kBadFormat);
  const std::string copy = bounded(text, bound);
  if (!ends(copy)) return refused(kBadEnding);
  return rest(copy.substr(0, copy.size() - 3));
}

std::string nulled(const std::string& server) {
  return server.starts_with("(NULL)") ? "(NULL)" : server;
}

std::string number(auto value) {
  return std::to_string(value);
}

Section state(const char* section, const std::string& tag, int scanned, unsigned int value) {
  if (scanned != 1) return refused(kBadFormat);
  return closing(follow(section, ";server:"), 128, [&](const std::string& server) {
    return Section{";" + tag + "{state:" + number(value > 2 ? 1 : value) + ";server:" + server +
                   ";}}"};
  });
}

Section lsuStatus(const char* section, const char*) {
  unsigned int value = 0;
  const int scanned = sscanf(section, "LSUSTATUSEVENT{state:%u;", &value);
  return state(section, "LSUSTATUSEVENT", scanned, value);
}

Section serverStatus(const char* section, const char*) {
  unsigned int value = 0;
  const int scanned = sscanf(section, "SERVERSTATUSEVENT{state:%u;server:", &value);
  return state(section, "SERVERSTATUSEVENT", scanned, value);
}

Section capacity(const char* section, const char*) {
  unsigned long total = 0, physical = 0, used = 0, usedPhysical = 0;
  if (sscanf(section, "CAPACITYEVENT{capacity:%lu;capacityphys:%lu;used:%lu;usedphys:%lu;", &total,
             &physical, &used, &usedPhysical) != 4) {
    return refused(kBadFormat);
  }
  return closing(follow(section, ";server:"), 128, [&](const std::string& server) {
    return Section{";CAPACITYEVENT{capacity:" + number(total) +
                   ";capacityphys:" + number(physical) + ";used:" + number(used) +
                   ";usedphys:" + number(usedPhysical) + ";server:" + nulled(server) + ";}}"};
  });
}

Section abilities(const char* section, const char*) {
  unsigned int flags = 0;
  if (sscanf(section, "ABILITIESEVENT{flags:0x%X;server:", &flags) != 1) return refused(kBadFormat);
  char hex[16];
  snprintf(hex, sizeof hex, "0x%X", flags);
  return closing(follow(section, ";server:"), 128, [&](const std::string& server) {
    return Section{std::string(";ABILITIESEVENT{flags:") + hex + ";server:" + nulled(server) +
                   ";}}"};
  });
}

Section activity(const char* section, const char*) {
  int version = 0, action = 0, severity = 0;
  unsigned long time = 0;
  if (sscanf(section, "ACTIVITYEVENT{version:%d;action:%d;time:%lu;severity:%d;msg:", &version,
             &action, &time, &severity) != 4) {
    return refused(kBadFormat);
  }
  return closing(follow(section, ";msg:"), 1024, [&](const std::string& message) {
    return Section{";{ACTIVITYEVENT{version:1;action:" + number(action) + ";time:" + number(time) +
                   ";severity:" + number(severity) + ";msg:" + message + ";}}"};
  });
}

Section audit(const char* section, const char* text) {
  int version = 0, action = 0, loadSize = 0;
  unsigned long time = 0;
  const char* const message = follow(text, ";AUditMSg:");
  if (sscanf(section, "AUDITEVENT{version:%d;action:%d;time:%lu;loadSize:%d;AUditMSg:", &version,
             &action, &time, &loadSize) < 4 ||
      message == nullptr) {
    return refused(kBadFormat);
  }
  if (strlen(message) < 4) return refused(kEmptyMessage);
  return closing(message, 10240, [&](const std::string& whole) {
    return Section{";AUDITEVENT{version:" + number(version) + ";action:" + number(action) +
                   ";time:" + number(time) + ";loadSize:" + number(loadSize) +
                   ";AUditMSg:" + whole + ";}}"};
  });
}

Section legacy(const char* section, const char*) {
  if (strncmp(section, "LEGACYEVENT{payload:", 20) != 0) return refused(kBadFormat);
  return closing(section + 20, 1024, [](const std::string& payload) {
    return Section{";LEGACYEVENT{payload:" + payload + ";}}"};
  });
}

std::string lsuOf(const char* text) {
  const char* const lsu = follow(text, "lsu:");
  const char* const end = lsu == nullptr ? nullptr : strchr(lsu, ';');
  if (end == nullptr) return "TarnwellVolume";
  return std::string(lsu, end).substr(0, 1023);
}

Section imageRep(const char* section, const char* text) {
  unsigned int size = 0;
  if (strncmp(section, "IMAGEREPEVENT{size:", 19) != 0 ||
      sscanf(section, "IMAGEREPEVENT{size:%u;path:", &size) != 1) {
    return refused(kBadFormat);
  }
  return closing(follow(section, ";path:"), 2048, [&](const std::string& path) {
    return Section{";lsu:" + lsuOf(text) + ";IMAGEREPEVENT{size:" + number(size) +
                   ";path:" + (path.empty() ? "Unknown" : path) + ";}}"};
  });
}

// The closing of a KelpEvent from the number of its form on.
Section kelpString(const char* from, const char* text, const std::string& opening) {
  const char* const string = follow(from, ";string:");
  if (string == nullptr) return refused(kNoString);
  if (!ends(text)) return refused(kBadEnding);
  const std::string copy = bounded(string, 1024);
  return {opening + ";string:" + copy.substr(0, copy.size() - 3) + ";}}"};
}

Section kelp(const char* section, const char* text) {
  int version = 0, severity = 0, issue = 0, shareType = 0, duration = 0, name = 0, host = 0;
  unsigned long long group = 0;
  if (sscanf(section, "KELPEVENT{version:%d;severity:%d;issue:%d;share_type:%d;", &version,
             &severity, &issue, &shareType) != 4) {
    return refused(kBadFormat);
  }
  const char* const from = follow(text, issue == 3 ? ";file_group:" : ";issue_duration:");
  if (from == nullptr) return refused(issue == 3 ? kNoFileGroup : kNoDuration);
  const int scanned = issue == 3
                          ? sscanf(from, "%llu;name:%d;host:%d;string:", &group, &name, &host)
                          : sscanf(from, "%d;name:%d;host:%d;string:", &duration, &name, &host);
  if (scanned != 3) return refused(kBadFormat);
  return kelpString(
      from, text,
      ";KELPEVENT{version:" + number(version) + ";severity:" + number(severity) +
          ";issue:" + number(issue) + ";share_type:" + number(shareType) +
          (issue == 3 ? ";file_group:" + number(group) : ";issue_duration:" + number(duration)) +
          ";name:" + number(name) + ";host:" + number(host));
}

using SectionReading = Section (*)(const char* section, const char* text);

struct Reader {
  const char* tag;
  SectionReading read;
};

constexpr Reader kReaders[] = {{"", nullptr},
                               {"LEGACYEVENT", legacy},
                               {"IMAGEREPEVENT", imageRep},
                               {"LSUSTATUSEVENT", lsuStatus},
                               {"SERVERSTATUSEVENT", serverStatus},
                               {"CAPACITYEVENT", capacity},
                               {"ABILITIESEVENT", abilities},
                               {"ACTIVITYEVENT", activity},
                               {"AUDITEVENT", audit},
                               {"KELPEVENT", kelp}};

Section readSection(const Reader& reader, const char* text) {
  const char* const section = strstr(text, reader.tag);
  return section == nullptr ? refused(kWrongType) : reader.read(section, text);
}

}  // namespace

Reading referenceReading(const std::string& text) {
  Reading reading;
  unsigned int version = 0;
  int type = 0;
  unsigned long id = 0, date = 0;
  const bool opened = sscanf(text.c_str(), "EVENT{version:%u;", &version) == 1;
  if (opened && version != 1) {
    reading.log.push_back(info(0, "%s Event version (%u) is different than current version (%u)",
                               "fromString", version, 1u));
  }
  if (!opened ||
      sscanf(text.c_str(), "EVENT{version:%*u;type:%d;id:%lu;date:%lu", &type, &id, &date) != 3) {
    reading.log.push_back(complaint(kInvalid, text));
    return reading;
  }
  if (type < 1 || type > 9) {
    reading.log.push_back(error(9, "%s Invalid event type: %d", "fromString", type));
    return reading;
  }
  const Section section = readSection(kReaders[type], text.c_str());
  if (section.complaint != nullptr) {
    reading.log.push_back(complaint(section.complaint, text));
    reading.log.push_back(complaint(kUnparsed, text));
    return reading;
  }
  reading.code = 0;
  reading.again = eventString(type, section.again, id, date);
  return reading;
}

}  // namespace EventSystemTest
