#include "apps/eventd/console/Assets.h"

#include <algorithm>

#include "apps/eventd/console/AssetTable.h"

namespace EventApps {

const Asset* findAsset(std::string_view path) {
  const auto assets = assetTable();
  const auto found = std::ranges::find(assets, path, &Asset::path);
  return found == assets.end() ? nullptr : &*found;
}

}  // namespace EventApps
