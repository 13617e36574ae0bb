#include "SectionReader.h"

#include "EventSystem/ResultCode.h"
#include "EventSystem/platform/HostLog.h"

namespace EventSystem {
namespace {

constexpr char kFunction[] = "fromString";

}  // namespace

bool SectionReader::fail(Flaw flaw) {
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
  return false;
}

}  // namespace EventSystem
