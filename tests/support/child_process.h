// A program that a test starts, reads and ends. It never outlives the test.
#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace spellwick::testing_support {

// Variables to set in the child; an empty value unsets the variable.
using Environment = std::map<std::string, std::string>;

class ChildProcess {
  public:
    // Its output and error output go into a file. The child has become the program by then, or
    // there is none, and its exit code is 127. Null if there can be no child.
    static std::unique_ptr<ChildProcess> Start(const std::vector<std::string>& command,
                                               const Environment& environment = {});

    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    // Asks the program to end, and ends it after two seconds.
    ~ChildProcess();

    pid_t Id() const { return m_id; }
    bool Runs();
    // Its output so far.
    std::string Output() const;
    // The exit code, or 128 + number after a signal. None if it is still running after that time.
    std::optional<int> WaitForEnd(std::chrono::milliseconds patience);
    void Signal(int number) const;

  private:
    ChildProcess(pid_t id, int outputFile) : m_id(id), m_outputFile(outputFile) {}

    pid_t m_id;
    int m_outputFile;
    std::optional<int> m_exitCode;
};

struct RunResult {
    int exitCode = -1;
    std::string output;
};

// Runs a program to its end. Exit code -1 means that it did not start, or did not end in time.
RunResult RunToEnd(const std::vector<std::string>& command, const Environment& environment = {},
                   std::chrono::milliseconds patience = std::chrono::seconds(20));

// Whether a program of this name is on the search path.
bool HasProgram(const std::string& name);

}  // namespace spellwick::testing_support
