// The built eventctl as a child process of a test.
//
// Thread safety: none; used by the thread of the test.

#ifndef EVENTSYSTEM_TESTS_E2E_PROGRAM_H
#define EVENTSYSTEM_TESTS_E2E_PROGRAM_H

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace EventSystemTest {

// What a program that has ended left behind.
struct Outcome {
  int status = -1;  // -1: ended by a signal
  std::string out;
  std::string err;
};

std::vector<std::string> linesOf(const std::string& text);

// Where the child's standard streams lead, and what it finds in its environment.
struct Surroundings {
  enum class Out {
    kPipe,        // gathered for the test
    kBrokenPipe,  // nobody reads
    kClosed,      // the descriptor does not exist
    kFile,        // `outFile`
    kTerminal     // a pseudo-terminal of 80 columns, gathered for the test
  };
  std::filesystem::path program = {};  // empty: the one that the tests are about
  Out out = Out::kPipe;
  std::filesystem::path outFile = {};
  std::string input = {};                     // all of standard input, unless:
  bool keepInputOpen = false;                 // the test writes it piece by piece
  bool terminalInput = false;                 // the same, on a pseudo-terminal
  std::vector<std::string> environment = {};  // "NAME=value"
  std::filesystem::path directory = {};       // empty: the test's own
};

class Program {
 public:
  explicit Program(const std::vector<std::string>& arguments,
                   const Surroundings& surroundings = {});
  // Kills the child where it still runs.
  ~Program();

  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  pid_t pid() const { return m_pid; }

  void write(const std::string& text);
  void closeInput();
  void closeOutput();
  void signal(int number);

  // Gathers output until the condition holds. False when the child ended or time ran out before.
  bool waitUntil(const std::function<bool(const Outcome&)>& condition);
  bool waitForOutput(const std::string& text);
  bool waitForError(const std::string& text);

  // Gathers output until the child has ended.
  Outcome wait();

 private:
  void openStreams(const Surroundings& surroundings);
  void spawn(const std::vector<std::string>& arguments, const Surroundings& surroundings);
  bool gather(std::chrono::steady_clock::time_point end);

  pid_t m_pid = -1;
  int m_childInput = -1;
  int m_childOutput = -1;
  int m_childError = -1;
  int m_input = -1;
  int m_output = -1;
  int m_error = -1;
  Outcome m_outcome;
};

// Runs the program to its end.
Outcome runProgram(const std::vector<std::string>& arguments,
                   const Surroundings& surroundings = {});

}  // namespace EventSystemTest

#endif
