// Damages SQLite files where it matters: in the header, in the headers of pages, in the pointers to
// cells, in cells, and by pages that stand in each other's place. The bytes keep their places, so
// that most of the file still makes sense. Other inputs are mutated as libFuzzer does.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>

extern "C" {
__attribute__((visibility("default"))) std::size_t LLVMFuzzerMutate(std::uint8_t* data,
                                                                    std::size_t size,
                                                                    std::size_t most);
__attribute__((visibility("default"))) std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data,
                                                                           std::size_t size,
                                                                           std::size_t most,
                                                                           unsigned int seed);
}

namespace {

constexpr std::size_t kPage = 512;
constexpr std::size_t kLayoutByte = 1;  // before the file
constexpr char kMagic[] = "SQLite format 3";

class Mutation {
 public:
  Mutation(std::uint8_t* data, std::size_t size, unsigned int seed)
      : m_file(data + kLayoutByte), m_size(size - kLayoutByte), m_random(seed) {}

  void apply() {
    switch (below(6)) {
      case 0:  // the file's header
        set(16 + below(84));
        break;
      case 1:  // a page's header
        set(pageHeader() + below(12));
        break;
      case 2:  // a pointer to a cell
        set(pageHeader() + 8 + below(24));
        break;
      case 3:  // what cells say of themselves, and what they hold
        LLVMFuzzerMutate(m_file + below(m_size), 1, 1);
        break;
      case 4:
        mutateRange();
        break;
      default:
        swapPages();
    }
  }

 private:
  std::size_t below(std::size_t limit) { return limit == 0 ? 0 : m_random() % limit; }

  std::size_t pageHeader() {
    const std::size_t page = below(m_size / kPage);
    return page == 0 ? 100 : page * kPage;
  }

  void set(std::size_t at) {
    constexpr std::uint8_t kValues[] = {0, 1, 2, 3, 5, 8, 10, 13, 0x7f, 0x80, 0xff};
    if (at < m_size)
      m_file[at] =
          below(2) == 0 ? kValues[below(sizeof kValues)] : static_cast<std::uint8_t>(m_random());
  }

  void mutateRange() {
    const std::size_t start = below(m_size);
    const std::size_t length = std::min(m_size - start, 1 + below(16));
    std::uint8_t piece[16];
    std::memcpy(piece, m_file + start, length);
    LLVMFuzzerMutate(piece, length, length);
    std::memcpy(m_file + start, piece, length);
  }

  void swapPages() {
    const std::size_t pages = m_size / kPage;
    if (pages < 2) return;
    std::uint8_t* const one = m_file + kPage * below(pages);
    std::uint8_t* const other = m_file + kPage * below(pages);
    if (one != other) std::swap_ranges(one, one + kPage, other);
  }

  std::uint8_t* m_file;
  std::size_t m_size;
  std::minstd_rand m_random;
};

}  // namespace

std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most,
                                    unsigned int seed) {
  const bool isDatabase =
      size > kLayoutByte + kPage && std::memcmp(data + kLayoutByte, kMagic, sizeof kMagic) == 0;
  if (!isDatabase || seed % 16 == 0) return LLVMFuzzerMutate(data, size, most);
  Mutation mutation(data, size, seed);
  for (unsigned int i = 0; i <= seed % 3; ++i) mutation.apply();
  return size;
}
