#pragma once

#include <chrono>
#include <string>
#include <sys/types.h>
#include <vector>

namespace screenweaver::testing {

/// A program started with its standard output and error on pipes, for tests that compare a built
/// executable's exact output bytes and exit status.
class ChildProcess {
public:
    /// Starts `path` with `arguments` (without the program path), inheriting the environment.
    ChildProcess(const std::string& path, const std::vector<std::string>& arguments);
    /// The same with `environment` ("NAME=value" entries) instead.
    ChildProcess(const std::string& path, const std::vector<std::string>& arguments,
                 const std::vector<std::string>& environment);

    /// This process's environment, without the variable `name`.
    [[nodiscard]] static std::vector<std::string> environmentWithout(const std::string& name);

    /// The child's process ID.
    [[nodiscard]] pid_t pid() const { return pid_; }
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Reads both pipes until the child closes them, then waits for it. Returns the exit status, or
    /// 128 + the signal number when a signal ended it.
    int wait();

    /// Whether the child is still running (it is not reaped).
    [[nodiscard]] bool isRunning();

    /// What the kernel has counted for the child's main thread so far, from /proc.
    struct ThreadActivity {
        /// Time spent on a processor.
        std::chrono::nanoseconds processorTime{};
        /// How often the thread gave up the processor to wait.
        long long voluntarySwitches = 0;
        /// The scheduler state letter: 'R' running, 'S' asleep in a wait, ...
        char state = '?';
    };
    [[nodiscard]] ThreadActivity mainThreadActivity() const;

    /// Reads what the child has written so far, without waiting.
    void drain();

    /// Reads until the child's standard error holds a whole line (or the child closed it).
    void waitForErrorLine();
    /// Reads until the child's standard output holds a whole line (or the child closed it).
    void waitForOutputLine();

    /// Ends the child with `signal` and reaps it.
    void stop(int signal);

    [[nodiscard]] const std::string& output() const { return output_; }
    [[nodiscard]] const std::string& error() const { return error_; }

private:
    void read(bool untilClosed);
    void waitForLine(const std::string& text);

    pid_t pid_ = -1;
    int outputPipe_ = -1;
    int errorPipe_ = -1;
    std::string output_;
    std::string error_;
    bool reaped_ = false;
    int status_ = -1;
};

}  // namespace screenweaver::testing
