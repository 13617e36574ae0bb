// Lines of a file or of standard input, read in large pieces; an endless line takes no endless
// memory.
//
// Thread safety: none; used by the main thread.

#ifndef EVENTSYSTEM_APPS_COMMON_LINEREADER_H
#define EVENTSYSTEM_APPS_COMMON_LINEREADER_H

#include <cstddef>
#include <string>

namespace EventApps {

class LineReader {
 public:
  enum class Result { kLine, kTooLong, kEnd };

  // Opens `name`, "-" being standard input. Throws Failure.
  LineReader(const std::string& name, std::size_t mostBytes);
  ~LineReader();

  LineReader(const LineReader&) = delete;
  LineReader& operator=(const LineReader&) = delete;

  // The next line without its line feed and a carriage return before that. A line that is too
  // long is passed over. Throws Failure when reading fails.
  Result next(std::string& line);

  // Whether next() can give a line without reading more.
  bool hasLine() const { return m_buffer.find('\n', m_position) != std::string::npos; }

  // "standard input" or the file's name.
  const std::string& name() const { return m_name; }
  // Bytes read so far, and of the whole input; 0 where that is not known.
  std::size_t bytesRead() const { return m_bytesRead; }
  std::size_t bytesInAll() const { return m_bytesInAll; }

 private:
  bool fill();

  std::string m_name;
  std::size_t m_mostBytes;
  int m_descriptor;
  bool m_owned;
  std::string m_buffer;
  std::size_t m_position = 0;
  std::size_t m_bytesRead = 0;
  std::size_t m_bytesInAll = 0;
};

}  // namespace EventApps

#endif
