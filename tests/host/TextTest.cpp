#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>

#include "EventSystem/platform/HostText.h"

namespace {

using Buffer = std::array<char, 8>;

Buffer filled() {
  Buffer buffer;
  buffer.fill('#');
  return buffer;
}

TEST(BoundedCopy, CutsAtTheBoundAndAlwaysTerminates) {
  Buffer buffer = filled();
  EXPECT_EQ(kvrstrcpy(buffer.data(), "abcdef", 4), buffer.data());
  EXPECT_STREQ(buffer.data(), "abc");
  EXPECT_EQ(buffer[4], '#');
}

TEST(BoundedCopy, TakesAtMostTheCount) {
  Buffer buffer = filled();
  EXPECT_EQ(kvrstrncpy(buffer.data(), "abcdef", 2, 8), buffer.data());
  EXPECT_STREQ(buffer.data(), "ab");
  kvrstrncpy(buffer.data(), "abcdef", 6, 4);
  EXPECT_STREQ(buffer.data(), "abc");
  kvrstrncpy(buffer.data(), "ab", 6, 8);
  EXPECT_STREQ(buffer.data(), "ab");
}

TEST(BoundedCopy, ReadsNothingBehindTheCount) {
  const std::array<char, 3> unterminated = {'a', 'b', 'c'};
  Buffer buffer = filled();
  kvrstrncpy(buffer.data(), unterminated.data(), unterminated.size(), 8);
  EXPECT_STREQ(buffer.data(), "abc");
}

TEST(BoundedCopy, TakesNullAsTheEmptyText) {
  Buffer buffer = filled();
  kvrstrcpy(buffer.data(), nullptr, 4);
  EXPECT_STREQ(buffer.data(), "");
  buffer = filled();
  kvrstrncpy(buffer.data(), nullptr, 3, 4);
  EXPECT_STREQ(buffer.data(), "");
}

TEST(BoundedCopy, WritesNothingWithinABoundOfZero) {
  Buffer buffer = filled();
  EXPECT_EQ(kvrstrcpy(buffer.data(), "abc", 0), buffer.data());
  kvrstrncpy(buffer.data(), "abc", 3, 0);
  EXPECT_EQ(buffer[0], '#');
  EXPECT_EQ(kvrstrcpy(nullptr, "abc", 4), nullptr);
}

TEST(BoundedLength, StopsAtTheBound) {
  EXPECT_EQ(kvrstrlen("abc", 10), 3U);
  EXPECT_EQ(kvrstrlen("abc", 2), 2U);
  EXPECT_EQ(kvrstrlen("abc", 0), 0U);
  EXPECT_EQ(kvrstrlen(nullptr, 10), 0U);
  const std::array<char, 3> unterminated = {'a', 'b', 'c'};
  EXPECT_EQ(kvrstrlen(unterminated.data(), unterminated.size()), 3U);
}

TEST(Escaping, WrapsInQuotesAndDoublesInnerOnes) {
  std::array<char, 32> field{};
  EXPECT_EQ(QMStringEscapeA("a,\"b\"", field.data(), field.size()), 0);
  EXPECT_STREQ(field.data(), "\"a,\"\"b\"\"\"");
  EXPECT_EQ(QMStringEscapeA("", field.data(), field.size()), 0);
  EXPECT_STREQ(field.data(), "\"\"");
  EXPECT_EQ(QMStringEscapeA(nullptr, field.data(), field.size()), 0);
  EXPECT_STREQ(field.data(), "\"\"");
}

// A field whose quotes are closed although text is missing would be stored damaged.
TEST(Escaping, LeavesTheQuotesOpenWhereverTheFieldIsCut) {
  const std::string text = "a\"\"b\"";
  std::array<char, 32> whole{};
  ASSERT_EQ(QMStringEscapeA(text.c_str(), whole.data(), whole.size()), 0);
  const std::size_t needed = std::strlen(whole.data()) + 1;
  for (std::size_t size = 1; size < needed; ++size) {
    std::array<char, 32> cut{};
    EXPECT_NE(QMStringEscapeA(text.c_str(), cut.data(), size), 0) << size;
    EXPECT_LT(std::strlen(cut.data()), size);
    std::size_t quotes = 0;
    for (const char c : std::string(cut.data())) quotes += c == '"' ? 1 : 0;
    EXPECT_TRUE(cut[0] == '\0' || quotes % 2 == 1) << cut.data();
  }
  EXPECT_EQ(QMStringEscapeA(text.c_str(), whole.data(), needed), 0);
}

TEST(Escaping, RefusesABufferWithoutRoom) {
  char untouched = '#';
  EXPECT_NE(QMStringEscapeA("a", &untouched, 0), 0);
  EXPECT_EQ(untouched, '#');
  EXPECT_NE(QMStringEscapeA("a", nullptr, 10), 0);
}

}  // namespace
