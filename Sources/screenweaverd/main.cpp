#include <string>
#include <vector>

#include "Platform/MainLoop.hpp"
#include "screenweaverd/Daemon.hpp"

int main(int argc, char** argv) {
    // The program path is dropped; only the arguments after it are parsed.
    const std::vector<std::string> arguments =
        argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>{};
    screenweaver::FileDescriptorOutput output{1};
    screenweaver::FileDescriptorOutput error{2};
    return screenweaver::runDaemon(
        arguments, {output, error, [] { screenweaver::platform::parkMainThreadForever(); },
                    screenweaver::platform::PlatformAPI::system(), screenweaver::ContinuousClock::shared()});
}
