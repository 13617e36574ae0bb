#include "FirstDsid.h"

#include <cstdio>

#include "DatabaseTable.h"
#include "EventSystem/ResultCode.h"

namespace EventSystem {
namespace {

constexpr char kFunction[] = "getFirstDsid";
constexpr int kType = 9;

}  // namespace

int findFirstDsid(unsigned int& dsid) {
  dsid = 0;
  if (!openDatabase(kFunction)) return kTableUnavailable;
  DatabaseTable selections("dataselection", kFunction);
  if (!selections) return kTableUnavailable;
  char filter[256];
  snprintf(filter, sizeof filter, "dstypeid=%d", kType);
  for (bool row = selections.firstRow(filter); row; row = selections.nextRow(filter)) {
    int id = 0;
    if (selections.getNumber("id", id) != 0) continue;
    dsid = static_cast<unsigned int>(id);
    return kSuccess;
  }
  return kNoDataSelection;
}

}  // namespace EventSystem
