#include "screenweaverd/DaemonArguments.hpp"

namespace screenweaver::DaemonArguments {

DaemonInvocation parse(std::span<const std::string> arguments) {
    if (arguments.empty()) {
        return DaemonInvocation::serve();
    }
    const std::string& first = arguments.front();
    if (first == "--self-test") {
        return DaemonInvocation::selfTest();
    }
    if (first == "--help" || first == "-h") {
        return DaemonInvocation::help();
    }
    return DaemonInvocation::unknown(first);
}

}  // namespace screenweaver::DaemonArguments
