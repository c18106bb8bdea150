#include "ChildProcess/ChildProcess.hpp"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <sys/wait.h>

extern char** environ;

namespace screenweaver::testing {

namespace {

void closeIfOpen(int& descriptor) {
    if (descriptor >= 0) {
        ::close(descriptor);
        descriptor = -1;
    }
}

int exitStatus(int waitStatus) {
    return WIFEXITED(waitStatus) ? WEXITSTATUS(waitStatus) : 128 + WTERMSIG(waitStatus);
}

}  // namespace

ChildProcess::ChildProcess(const std::string& path, const std::vector<std::string>& arguments)
    : ChildProcess(path, arguments, environmentWithout("")) {}

std::vector<std::string> ChildProcess::environmentWithout(const std::string& name) {
    std::vector<std::string> kept;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string_view variable{*entry};
        if (name.empty() || !variable.starts_with(name + "=")) {
            kept.emplace_back(variable);
        }
    }
    return kept;
}

ChildProcess::ChildProcess(const std::string& path, const std::vector<std::string>& arguments,
                           const std::vector<std::string>& environment) {
    std::array<int, 2> outputPipe{};
    std::array<int, 2> errorPipe{};
    if (::pipe2(outputPipe.data(), O_CLOEXEC) != 0 || ::pipe2(errorPipe.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("pipe2 failed");
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, outputPipe[1], 1);
    posix_spawn_file_actions_adddup2(&actions, errorPipe[1], 2);

    std::vector<std::string> argumentStorage{path};
    argumentStorage.insert(argumentStorage.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (auto& argument : argumentStorage) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    std::vector<std::string> environmentStorage = environment;
    std::vector<char*> envp;
    for (auto& variable : environmentStorage) {
        envp.push_back(variable.data());
    }
    envp.push_back(nullptr);
    const int spawned = posix_spawn(&pid_, path.c_str(), &actions, nullptr, argv.data(), envp.data());
    posix_spawn_file_actions_destroy(&actions);
    ::close(outputPipe[1]);
    ::close(errorPipe[1]);
    outputPipe_ = outputPipe[0];
    errorPipe_ = errorPipe[0];
    if (spawned != 0) {
        throw std::runtime_error("posix_spawn failed for " + path);
    }
}

ChildProcess::~ChildProcess() {
    if (!reaped_ && pid_ > 0) {
        stop(SIGKILL);
    }
    closeIfOpen(outputPipe_);
    closeIfOpen(errorPipe_);
}

void ChildProcess::read(bool untilClosed) {
    while (outputPipe_ >= 0 || errorPipe_ >= 0) {
        std::array<pollfd, 2> descriptors{pollfd{outputPipe_, POLLIN, 0}, pollfd{errorPipe_, POLLIN, 0}};
        const int ready = ::poll(descriptors.data(), descriptors.size(), untilClosed ? -1 : 0);
        if (ready < 0 && errno == EINTR) {
            continue;
        }
        if (ready <= 0) {
            return;
        }
        for (std::size_t index = 0; index < descriptors.size(); ++index) {
            if (descriptors[index].fd < 0 || descriptors[index].revents == 0) {
                continue;
            }
            std::array<char, 4096> buffer{};
            const ssize_t count = ::read(descriptors[index].fd, buffer.data(), buffer.size());
            int& descriptor = index == 0 ? outputPipe_ : errorPipe_;
            std::string& text = index == 0 ? output_ : error_;
            if (count > 0) {
                text.append(buffer.data(), static_cast<std::size_t>(count));
            } else if (count == 0 || errno != EINTR) {
                closeIfOpen(descriptor);
            }
        }
    }
}

void ChildProcess::drain() {
    read(false);
}

int ChildProcess::wait() {
    read(true);
    if (!reaped_) {
        int waitStatus = 0;
        while (::waitpid(pid_, &waitStatus, 0) < 0 && errno == EINTR) {
        }
        reaped_ = true;
        status_ = exitStatus(waitStatus);
    }
    return status_;
}

bool ChildProcess::isRunning() {
    if (reaped_) {
        return false;
    }
    int waitStatus = 0;
    if (::waitpid(pid_, &waitStatus, WNOHANG) == pid_) {
        reaped_ = true;
        status_ = exitStatus(waitStatus);
        return false;
    }
    return true;
}

ChildProcess::ThreadActivity ChildProcess::mainThreadActivity() const {
    // The main thread's task has the process's ID. Its schedstat starts with the time spent on a
    // processor in nanoseconds; stat's tick counts (fields 14 and 15) are the coarse fallback where
    // the kernel keeps no scheduler statistics.
    const std::string task = "/proc/" + std::to_string(pid_) + "/task/" + std::to_string(pid_);
    ThreadActivity activity;
    std::ifstream statFile{task + "/stat"};
    std::string line;
    std::getline(statFile, line);
    // The command name is in parentheses and may hold blanks; the fields after it are plain.
    std::istringstream fields{line.substr(line.rfind(')') + 2)};
    std::string field;
    long long ticks = 0;
    for (int index = 3; index <= 15 && fields >> field; ++index) {
        if (index == 3) {
            activity.state = field.front();
        } else if (index == 14 || index == 15) {
            ticks += std::stoll(field);
        }
    }
    std::ifstream schedstat{task + "/schedstat"};
    long long nanoseconds = 0;
    activity.processorTime = schedstat >> nanoseconds
                                 ? std::chrono::nanoseconds{nanoseconds}
                                 : std::chrono::nanoseconds{ticks * 1000000000 / ::sysconf(_SC_CLK_TCK)};
    std::ifstream status{task + "/status"};
    for (std::string entry; std::getline(status, entry);) {
        constexpr std::string_view key = "voluntary_ctxt_switches:";
        if (entry.starts_with(key)) {
            activity.voluntarySwitches = std::stoll(entry.substr(key.size()));
        }
    }
    return activity;
}

void ChildProcess::waitForErrorLine() {
    waitForLine(error_);
}

void ChildProcess::waitForOutputLine() {
    waitForLine(output_);
}

void ChildProcess::waitForLine(const std::string& text) {
    while (text.find('\n') == std::string::npos && (outputPipe_ >= 0 || errorPipe_ >= 0)) {
        std::array<pollfd, 2> descriptors{pollfd{outputPipe_, POLLIN, 0}, pollfd{errorPipe_, POLLIN, 0}};
        if (::poll(descriptors.data(), descriptors.size(), -1) < 0 && errno != EINTR) {
            return;
        }
        read(false);
    }
}

void ChildProcess::stop(int signal) {
    if (reaped_) {
        return;
    }
    ::kill(pid_, signal);
    wait();
}

}  // namespace screenweaver::testing
