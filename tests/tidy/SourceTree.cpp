#include "tests/tidy/SourceTree.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <sstream>

namespace EventSystemTest {
namespace {

namespace fs = std::filesystem;

// Folders that hold no source: version control, builds, fetched packages, caches.
bool isLeftOut(const fs::path& folder) {
  static const std::set<std::string> names = {".git",         "build",  "out",        "dist",
                                              "node_modules", ".cache", "__pycache__"};
  return names.contains(folder.filename().string());
}

std::string contentOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::vector<SourceFile> readTree() {
  const fs::path root(EVENTSYSTEM_SOURCE_DIR);
  std::vector<SourceFile> files;
  for (auto entry = fs::recursive_directory_iterator(root); entry != fs::end(entry); ++entry) {
    if (entry->is_directory() && isLeftOut(entry->path())) {
      entry.disable_recursion_pending();
    } else if (entry->is_regular_file() && !entry->is_symlink()) {
      std::string text = contentOf(entry->path());
      if (text.find('\0') != std::string::npos) continue;  // not a text
      files.push_back({entry->path().lexically_relative(root).generic_string(), std::move(text)});
    }
  }
  std::sort(files.begin(), files.end(),
            [](const SourceFile& a, const SourceFile& b) { return a.path < b.path; });
  return files;
}

// Walks through C++ text and blanks what is no code.
class Blanker {
 public:
  explicit Blanker(const std::string& text) : m_text(text), m_code(text) {}

  std::string run() {
    while (m_at < m_text.size()) {
      if (startsWith("//")) {
        blankTo(m_text.find('\n', m_at));
      } else if (startsWith("/*")) {
        blankPast("*/", m_at + 2);
      } else if (startsWith("R\"")) {
        blankRawString();
      } else if (m_text[m_at] == '"' || isCharacterLiteral()) {
        blankLiteral(m_text[m_at]);
      } else {
        ++m_at;
      }
    }
    return m_code;
  }

 private:
  bool startsWith(const char* opening) const { return m_text.compare(m_at, 2, opening) == 0; }

  // A quote behind a letter or digit separates digits or ends a literal's prefix.
  bool isCharacterLiteral() const {
    return m_text[m_at] == '\'' &&
           (m_at == 0 || !std::isalnum(static_cast<unsigned char>(m_text[m_at - 1])));
  }

  void blankTo(std::size_t end) {
    for (end = std::min(end, m_text.size()); m_at < end; ++m_at) {
      if (m_text[m_at] != '\n') m_code[m_at] = ' ';
    }
  }

  void blankPast(const std::string& closing, std::size_t from) {
    const std::size_t end = m_text.find(closing, from);
    blankTo(end == std::string::npos ? end : end + closing.size());
  }

  void blankRawString() {
    const std::size_t opening = m_text.find('(', m_at);
    if (opening == std::string::npos) return blankTo(opening);
    blankPast(")" + m_text.substr(m_at + 2, opening - m_at - 2) + "\"", opening);
  }

  void blankLiteral(char quote) {
    std::size_t end = m_at + 1;
    while (end < m_text.size() && m_text[end] != quote && m_text[end] != '\n') {
      end += m_text[end] == '\\' ? 2 : 1;
    }
    ++m_at;
    blankTo(end);
    if (m_at < m_text.size()) ++m_at;
  }

  const std::string& m_text;
  std::string m_code;
  std::size_t m_at = 0;
};

// Follows the braces of code; what opens outside a function with parentheses in its head is one.
class FunctionFinder {
 public:
  explicit FunctionFinder(std::string code) : m_code(std::move(code)) {}

  std::vector<Function> run() {
    for (std::size_t at = 0; at < m_code.size(); ++at) {
      const char c = m_code[at];
      if (c == '{') {
        open(at);
      } else if (c == '}') {
        close(at);
      }
      if (c == '{' || c == '}' || c == ';') m_headStart = at + 1;
    }
    return m_functions;
  }

 private:
  std::size_t lineAt(std::size_t at) const {
    return 1 + static_cast<std::size_t>(std::count(
                   m_code.begin(), m_code.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
  }

  void open(std::size_t at) {
    static const std::regex container("(^|\\s)(namespace|class|struct|union|enum|extern)\\s");
    ++m_depth;
    if (m_functionDepth != 0) return;
    const std::size_t start = m_code.find_first_not_of(" \n\t", m_headStart);
    const std::string head = m_code.substr(start, at - start);
    if (head.find('(') == std::string::npos || std::regex_search(head, container)) return;
    m_functionDepth = m_depth;
    m_functions.push_back({lineAt(start), 0, head.substr(0, head.find('\n'))});
  }

  void close(std::size_t at) {
    if (m_depth == m_functionDepth) {
      m_functions.back().length = lineAt(at) - m_functions.back().line + 1;
      m_functionDepth = 0;
    }
    --m_depth;
  }

  const std::string m_code;
  std::vector<Function> m_functions;
  std::size_t m_headStart = 0;
  int m_depth = 0;
  int m_functionDepth = 0;  // 0: outside any function
};

}  // namespace

const std::vector<SourceFile>& allFiles() {
  static const std::vector<SourceFile> files = readTree();
  return files;
}

std::vector<SourceFile> cppFiles(const std::vector<std::string>& folders) {
  std::vector<SourceFile> chosen;
  for (const SourceFile& file : allFiles()) {
    const bool inside = std::any_of(folders.begin(), folders.end(), [&](const std::string& folder) {
      return folder.empty() || file.isUnder(folder);
    });
    if (inside && (file.isHeader() || file.isCpp())) chosen.push_back(file);
  }
  return chosen;
}

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

std::string codeOnly(const std::string& text) {
  return Blanker(text).run();
}

std::vector<Function> functionsOf(const std::string& text) {
  return FunctionFinder(codeOnly(text)).run();
}

}  // namespace EventSystemTest
