#include "DisplayKit/DisplaySleeper.hpp"

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <cerrno>
#include <sys/wait.h>
#include <system_error>

#include "CoreTypes/Log.hpp"

extern char** environ;

namespace screenweaver {

namespace {

constexpr const char* powerManagementTool = "/usr/bin/pmset";

ProgramLaunchError launchError(int code) {
    return ProgramLaunchError{std::generic_category().message(code)};
}

// Releases the spawn attributes however the launch ends.
class FileActions {
public:
    FileActions() { posix_spawn_file_actions_init(&actions_); }
    ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    posix_spawn_file_actions_t* get() { return &actions_; }

private:
    posix_spawn_file_actions_t actions_{};
};

}  // namespace

DisplaySleeper::DisplaySleeper(Runner run) : run_(run ? std::move(run) : Runner{&DisplaySleeper::spawn}) {}

std::expected<void, DisplayError> DisplaySleeper::sleepDisplays() {
    const auto status = run_(powerManagementTool, {"displaysleepnow"});
    if (!status) {
        return std::unexpected{DisplayError::displaySleepFailed(
            std::string{powerManagementTool} + " could not be run: " + status.error().description())};
    }
    if (*status != 0) {
        return std::unexpected{DisplayError::displaySleepFailed(std::string{powerManagementTool} +
                                                                " exited " + std::to_string(*status))};
    }
    Log::display().log("displays asked to sleep");
    return {};
}

std::expected<std::int32_t, ProgramLaunchError> DisplaySleeper::spawn(
    const std::string& path, const std::vector<std::string>& arguments) {
    FileActions actions;
    for (const int descriptor : {STDOUT_FILENO, STDERR_FILENO}) {
        if (const int code =
                posix_spawn_file_actions_addopen(actions.get(), descriptor, "/dev/null", O_WRONLY, 0);
            code != 0) {
            return std::unexpected{launchError(code)};
        }
    }
    // posix_spawn takes the argument vector as mutable C strings; it does not change them.
    std::vector<std::string> argumentStorage{path};
    argumentStorage.insert(argumentStorage.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    argv.reserve(argumentStorage.size() + 1);
    for (auto& argument : argumentStorage) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);

    pid_t child = 0;
    if (const int code = posix_spawn(&child, path.c_str(), actions.get(), nullptr, argv.data(), environ);
        code != 0) {
        return std::unexpected{launchError(code)};
    }
    int status = 0;
    while (waitpid(child, &status, 0) == -1) {
        if (errno != EINTR) {
            return std::unexpected{launchError(errno)};
        }
    }
    if (WIFSIGNALED(status)) {
        return WTERMSIG(status);
    }
    return WEXITSTATUS(status);
}

}  // namespace screenweaver
