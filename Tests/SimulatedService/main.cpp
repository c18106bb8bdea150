// screenweaverd-simulated: the service's entry on the simulated window server.
#include <string>
#include <vector>

#include "Platform/MainLoop.hpp"
#include "SimulatedService.hpp"

int main(int argc, char** argv) {
    const std::vector<std::string> arguments =
        argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>{};
    screenweaver::FileDescriptorOutput output{1};
    screenweaver::FileDescriptorOutput error{2};
    return screenweaver::simulation::runSimulatedService(
        arguments, output, error, [] { screenweaver::platform::parkMainThreadForever(); });
}
