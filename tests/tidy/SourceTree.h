// The files of the repository as the tidiness tests look at them.
//
// Thread safety: plain functions; allFiles() is filled on first use.

#ifndef EVENTSYSTEM_TESTS_TIDY_SOURCETREE_H
#define EVENTSYSTEM_TESTS_TIDY_SOURCETREE_H

#include <cstddef>
#include <string>
#include <vector>

namespace EventSystemTest {

struct SourceFile {
  std::string path;  // from the root of the repository, with slashes
  std::string text;

  bool isUnder(const std::string& folder) const { return path.starts_with(folder + "/"); }
  bool isHeader() const { return path.ends_with(".h"); }
  bool isCpp() const { return path.ends_with(".cpp"); }
  std::string folder() const { return path.substr(0, path.rfind('/') + 1); }
  std::string name() const { return path.substr(path.rfind('/') + 1); }
};

// Every text file of the repository; what version control and builds keep is left out.
const std::vector<SourceFile>& allFiles();

// The C++ files in these folders, or in all.
std::vector<SourceFile> cppFiles(const std::vector<std::string>& folders = {""});

std::vector<std::string> linesOf(const std::string& text);

// The text with comments and the contents of literals blanked, line for line.
std::string codeOnly(const std::string& text);

struct Function {
  std::size_t line = 0;    // its first, from 1
  std::size_t length = 0;  // in lines, from its head to its closing brace
  std::string head;
};

// The functions of a C++ source, found by their braces.
std::vector<Function> functionsOf(const std::string& text);

}  // namespace EventSystemTest

#endif
