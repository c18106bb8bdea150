#include "HeadlessXServer/HeadlessXServer.hpp"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <stdlib.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/wait.h>
#include <vector>

extern char** environ;

namespace screenweaver::testing {
namespace {

// Xorg writes its display number to this descriptor once it accepts connections.
constexpr int displayDescriptor = 3;
// Long enough for a slow, busy machine to bring up a server; only a server that hangs meets it.
constexpr std::chrono::seconds startupLimit{120};

std::string tailOf(const std::string& path, std::size_t lines) {
    std::ifstream file{path};
    std::vector<std::string> kept;
    for (std::string line; std::getline(file, line);) {
        kept.push_back(line);
        if (kept.size() > lines) {
            kept.erase(kept.begin());
        }
    }
    std::string text;
    for (const std::string& line : kept) {
        text += "\n    " + line;
    }
    return text;
}

void stop(pid_t pid) {
    ::kill(pid, SIGTERM);
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
}

// Reads the display number, or nothing when the server ends or stays silent too long.
std::string readDisplayNumber(int descriptor) {
    std::string text;
    const auto deadline = std::chrono::steady_clock::now() + startupLimit;
    while (text.find('\n') == std::string::npos) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0) {
            return {};
        }
        pollfd ready{descriptor, POLLIN, 0};
        const int polled = ::poll(&ready, 1, static_cast<int>(left.count()));
        if (polled < 0 && errno == EINTR) {
            continue;
        }
        if (polled <= 0) {
            return {};
        }
        std::array<char, 32> buffer{};
        const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
        if (count <= 0) {
            return {};
        }
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return text.substr(0, text.find('\n'));
}

}  // namespace

std::expected<std::unique_ptr<HeadlessXServer>, std::string> HeadlessXServer::start() {
    std::string directory = (std::filesystem::temp_directory_path() / "screenweaver-xorg-XXXXXX").string();
    if (::mkdtemp(directory.data()) == nullptr) {
        return std::unexpected{"no temporary folder for the server's log"};
    }
    const std::string log = directory + "/Xorg.log";
    std::array<int, 2> pipe{};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0) {
        return std::unexpected{"no pipe for the server's display number"};
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipe[1], displayDescriptor);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    const std::string output = directory + "/output";
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(), O_WRONLY | O_CREAT, 0600);
    posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
    std::vector<std::string> arguments{"Xorg",
                                       "-displayfd",
                                       std::to_string(displayDescriptor),
                                       "-config",
                                       SCREENWEAVER_HEADLESS_XORG_CONF,
                                       "-logfile",
                                       log,
                                       "-noreset",
                                       "-nolisten",
                                       "tcp",
                                       "-novtswitch"};
    std::vector<char*> argv;
    for (std::string& argument : arguments) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    pid_t pid = 0;
    const int spawned = ::posix_spawnp(&pid, "Xorg", &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(pipe[1]);
    if (spawned != 0) {
        ::close(pipe[0]);
        return std::unexpected{"Xorg could not be started (is xserver-xorg-core installed?): " +
                               std::generic_category().message(spawned)};
    }
    const std::string number = readDisplayNumber(pipe[0]);
    ::close(pipe[0]);
    if (number.empty()) {
        stop(pid);
        return std::unexpected{"Xorg did not come up; the end of its log (" + log + "):" + tailOf(log, 15) +
                               tailOf(output, 5)};
    }
    return std::unique_ptr<HeadlessXServer>{new HeadlessXServer{pid, std::move(directory), ":" + number}};
}

HeadlessXServer::HeadlessXServer(pid_t pid, std::string directory, std::string displayName)
    : pid_(pid), directory_(std::move(directory)), displayName_(std::move(displayName)) {}

HeadlessXServer::~HeadlessXServer() {
    stop(pid_);
    std::error_code ignored;
    std::filesystem::remove_all(directory_, ignored);
}

}  // namespace screenweaver::testing
