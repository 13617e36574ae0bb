#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "apps/eventd/console/AssetTable.h"
#include "apps/eventd/console/Assets.h"

namespace EventApps {
namespace {

using ::testing::HasSubstr;
using ::testing::IsNull;
using ::testing::Not;
using ::testing::NotNull;
using ::testing::SizeIs;
using ::testing::StartsWith;

std::string page() {
  const Asset* const found = findAsset("/");
  return found == nullptr ? std::string() : std::string(found->body);
}

// What the page refers to, as paths from its root.
std::vector<std::string> references() {
  const std::string text = page();
  const std::regex reference("(?:src|href)=\"/?([^\"]*)\"");
  std::vector<std::string> found;
  for (std::sregex_iterator hit(text.begin(), text.end(), reference), end; hit != end; ++hit) {
    found.push_back("/" + (*hit)[1].str());
  }
  return found;
}

TEST(Assets, HaveAPageThatIsNeverKeptByCaches) {
  const Asset* const found = findAsset("/");
  ASSERT_THAT(found, NotNull());
  EXPECT_EQ("text/html; charset=utf-8", found->contentType);
  EXPECT_FALSE(found->immutable);
  EXPECT_THAT(page(), StartsWith("<!doctype html>"));
}

TEST(Assets, HoldEverythingThatThePageRefersTo) {
  EXPECT_THAT(references(), SizeIs(4));
  for (const std::string& path : references()) {
    const Asset* const found = findAsset(path);
    ASSERT_THAT(found, NotNull()) << path;
    EXPECT_TRUE(found->immutable) << path;
    EXPECT_FALSE(found->body.empty()) << path;
  }
}

TEST(Assets, NeedNoScriptAndNoStyleInThePageItself) {
  const std::string text = page();
  EXPECT_FALSE(std::regex_search(text, std::regex("<script[^>]*>[^<]|<style| on[a-z]+=| style=")));
  EXPECT_THAT(text, Not(HasSubstr("http")));
}

TEST(Assets, AreFoundByTheirWholePathOnly) {
  EXPECT_THAT(findAsset(""), IsNull());
  EXPECT_THAT(findAsset("/assets"), IsNull());
  EXPECT_THAT(findAsset("/assets/../"), IsNull());
  EXPECT_THAT(findAsset("/index.html"), IsNull());
}

TEST(Assets, AreCompressedWhereThatMakesThemSmaller) {
  for (const Asset& asset : assetTable()) {
    EXPECT_LT(asset.gzip.size(), asset.body.size()) << asset.path;
    if (asset.body.size() < 1000) continue;
    EXPECT_THAT(std::string(asset.gzip), StartsWith("\x1f\x8b")) << asset.path;
  }
}

}  // namespace
}  // namespace EventApps
