// The console's page as it is built into the program: index.html, a script, a style sheet, an icon.
//
// Thread safety: constant data.

#ifndef EVENTSYSTEM_APPS_EVENTD_CONSOLE_ASSETS_H
#define EVENTSYSTEM_APPS_EVENTD_CONSOLE_ASSETS_H

#include <string_view>

namespace EventApps {

struct Asset {
  std::string_view path;  // as a request names it: "/", "/assets/console-HASH.js"
  std::string_view contentType;
  std::string_view body;
  std::string_view gzip;  // the body compressed; empty when that is no smaller
  bool immutable;         // the path changes with the content, so that caches may keep it
};

// The asset that a request's path (without its query) names, or null. Its texts live as long as the
// process. A program built without the console has none.
const Asset* findAsset(std::string_view path);

}  // namespace EventApps

#endif
