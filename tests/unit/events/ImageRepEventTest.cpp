// Events with a payload file: the detached base and the replicated image.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>

#include "EventSystem/ImageRepEvent.h"
#include "tests/support/FakeHostTest.h"
#include "tests/support/TempDir.h"
#include "tests/unit/events/EventKinds.h"

namespace EventSystemTest {
namespace {

using namespace EventSystem;

class PayloadFile : public FakeHostTest {};

std::string image(const std::string& lsu, const std::string& size, const std::string& path) {
  return ";lsu:" + lsu + ";IMAGEREPEVENT{size:" + size + ";path:" + path + ";}}";
}

TEST_F(PayloadFile, DetachedEventWritesTheEnvelopeAlone) {
  char path[] = "/data/img.bin";
  DetachedEvent event(kImageRepEvent, path, 4096, 9);
  EXPECT_EQ(eventString(2, "", 9, event.getDate()), written(event));
  EXPECT_STREQ("/data/img.bin", event.getPayloadPath());
  EXPECT_EQ(4096u, event.getPayloadSize());
}

TEST_F(PayloadFile, DetachedEventMayHaveAnyType) {
  char path[] = "/p";
  EXPECT_EQ(kKelpEvent, DetachedEvent(kKelpEvent, path, 1, 9).getType());
}

TEST_F(PayloadFile, NoPathIsUnknown) {
  char empty[] = "";
  EXPECT_STREQ("Unknown", DetachedEvent(kImageRepEvent, nullptr, 1, 1).getPayloadPath());
  EXPECT_STREQ("Unknown", DetachedEvent(kImageRepEvent, empty, 1, 1).getPayloadPath());
  ImageRepEvent event(nullptr, 1, 1, "vol1");
  EXPECT_EQ(image("vol1", "1", "Unknown"), writtenSection(event));
}

TEST_F(PayloadFile, PathIsCutAtItsArray) {
  for (const std::size_t length : {2046u, 2047u, 2048u, 20000u}) {
    std::string path(length, 'p');
    DetachedEvent event(kImageRepEvent, path.data(), 1, 1);
    EXPECT_EQ(std::string(std::min<std::size_t>(length, 2047), 'p'), event.getPayloadPath());
  }
}

TEST_F(PayloadFile, LongPathsAreWrittenButNotReadBack) {
  std::string path(2047, 'p');
  ImageRepEvent event(path.data(), 1, 1, "vol1");
  EXPECT_EQ(image("vol1", "1", path), writtenSection(event));
  expectRefused(ImageRepEvent::fromString, written(event), kBadEnding);
}

TEST_F(PayloadFile, DeletingThePayloadFileIsLeftToOthers) {
  const TempDir directory;
  const std::filesystem::path file = directory.path() / "payload";
  std::ofstream(file) << "payload";
  std::string path = file.string();
  {
    ImageRepEvent event(path.data(), 7, 1, "vol1");
    event.deletePayloadFile();
    EXPECT_EQ(path, event.getPayloadPath());
  }
  EXPECT_EQ(7u, std::filesystem::file_size(file));
}

TEST_F(PayloadFile, ImageWritesItsExample) {
  char path[] = "/data/img.bin";
  ImageRepEvent event(path, 4096, 9, "vol1");
  EXPECT_EQ(";lsu:vol1;IMAGEREPEVENT{size:4096;path:/data/img.bin;}}", writtenSection(event));
  const std::string text =
      "EVENT{version:1;type:2;id:9;date:1700000000;lsu:vol1;IMAGEREPEVENT{size:4096;"
      "path:/data/img.bin;}}";
  const Parsed parsed = parse(text);
  ASSERT_EQ(0, parsed.code);
  EXPECT_EQ(text, written(*parsed.event));
}

TEST_F(PayloadFile, ImageKeepsItsParts) {
  const Parsed parsed =
      parseWith(ImageRepEvent::fromString, image("vol1", "4294967295", "/data/img.bin"));
  auto* const event = dynamic_cast<ImageRepEvent*>(parsed.event.get());
  ASSERT_NE(nullptr, event);
  EXPECT_STREQ("vol1", event->getLSU());
  EXPECT_STREQ("/data/img.bin", event->getPayloadPath());
  EXPECT_EQ(4294967295u, event->getPayloadSize());
}

TEST_F(PayloadFile, ANullLsuHasAName) {
  char path[] = "/p";
  ImageRepEvent event(path, 1, 1, nullptr);
  EXPECT_STREQ("TarnwellVolume", event.getLSU());
  EXPECT_EQ(image("TarnwellVolume", "1", "/p"), writtenSection(event));
}

TEST_F(PayloadFile, LsuCanBeSetAndIsCutAtItsArray) {
  char path[] = "/p";
  ImageRepEvent event(path, 1, 1, "vol1");
  event.setLSU("other");
  EXPECT_STREQ("other", event.getLSU());
  for (const std::size_t length : {1022u, 1023u, 1024u, 20000u}) {
    const std::string lsu(length, 'l');
    const std::string kept(std::min<std::size_t>(length, 1023), 'l');
    event.setLSU(lsu.c_str());
    EXPECT_EQ(kept, event.getLSU());
    EXPECT_EQ(kept, ImageRepEvent(path, 1, 1, lsu.c_str()).getLSU());
    EXPECT_EQ(image(kept, "5", "/p"), rewritten(ImageRepEvent::fromString, image(lsu, "5", "/p")));
  }
}

TEST_F(PayloadFile, ANullLsuSetLaterIsTheEmptyText) {
  char path[] = "/p";
  ImageRepEvent event(path, 1, 1, "vol1");
  event.setLSU(nullptr);
  EXPECT_STREQ("", event.getLSU());
}

TEST_F(PayloadFile, LsuIsOptional) {
  const std::string text = "EVENT{version:1;type:2;id:1;date:1;IMAGEREPEVENT{size:5;path:/p;}}";
  EXPECT_EQ(image("TarnwellVolume", "5", "/p"), rewritten(Event::fromString, text));
}

TEST_F(PayloadFile, LsuEndsAtTheNextSemicolon) {
  EXPECT_EQ(image("", "5", "/p"), rewritten(ImageRepEvent::fromString, image("", "5", "/p")));
  EXPECT_EQ(image("a", "5", "/p"), rewritten(ImageRepEvent::fromString, image("a;b", "5", "/p")));
  EXPECT_EQ(image("a b%n", "5", "/p"),
            rewritten(ImageRepEvent::fromString, image("a b%n", "5", "/p")));
}

TEST_F(PayloadFile, LsuIsFoundAnywhereInTheText) {
  EXPECT_EQ(image("vol", "5", "/p"),
            rewritten(ImageRepEvent::fromString, "lsu:vol;IMAGEREPEVENT{size:5;path:/p;}}"));
  EXPECT_EQ(image("vol", "5", "/p"),
            rewritten(ImageRepEvent::fromString, "xlsu:vol;IMAGEREPEVENT{size:5;path:/p;}}"));
  EXPECT_EQ(image("dir", "5", "/lsu:dir"),
            rewritten(ImageRepEvent::fromString, "IMAGEREPEVENT{size:5;path:/lsu:dir;}}"));
  EXPECT_EQ(image("TarnwellVolume", "5", "/p"),
            rewritten(ImageRepEvent::fromString, ";LSU:vol;IMAGEREPEVENT{size:5;path:/p;}}"));
}

TEST_F(PayloadFile, AnEmptyPathInTheTextIsUnknown) {
  EXPECT_EQ(image("v", "5", "Unknown"), rewritten(ImageRepEvent::fromString, image("v", "5", "")));
}

TEST_F(PayloadFile, SizeMustFollowTheTagAtOnceAndBeANumber) {
  for (const char* section :
       {"IMAGEREPEVENT {size:1;path:/p;}}", "IMAGEREPEVENT{ size:1;path:/p;}}",
        "IMAGEREPEVENT{size :1;path:/p;}}", "IMAGEREPEVENT{Size:1;path:/p;}}",
        "IMAGEREPEVENT{path:/p;size:1;}}", "IMAGEREPEVENT{size:;path:/p;}}",
        "IMAGEREPEVENT{size:x;path:/p;}}", "IMAGEREPEVENT{size:", "IMAGEREPEVENT",
        "IMAGEREPEVENT{size:1;Path:/p;}}", "IMAGEREPEVENT{size:1;}}"}) {
    expectRefused(ImageRepEvent::fromString, section, kBadFormat);
  }
}

TEST_F(PayloadFile, SizeIsReadAsTheCLibraryReadsUnsignedNumbers) {
  const std::pair<std::string, std::string> sizes[] = {{" \t+5", "5"},
                                                       {"-1", "4294967295"},
                                                       {"4294967296", "0"},
                                                       {"99999999999999999999", "4294967295"},
                                                       {"5 bytes", "5"}};
  for (const auto& [given, again] : sizes) {
    EXPECT_EQ(image("v", again, "/p"),
              rewritten(ImageRepEvent::fromString, image("v", given, "/p")));
  }
}

TEST_F(PayloadFile, ShortEndingsAreBad) {
  for (const char* rest : {"", "}", ";}", "abc"}) {
    expectRefused(ImageRepEvent::fromString, std::string("lsu:v;IMAGEREPEVENT{size:1;path:") + rest,
                  kBadEnding);
  }
}

}  // namespace
}  // namespace EventSystemTest
