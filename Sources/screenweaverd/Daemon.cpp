#include "screenweaverd/Daemon.hpp"

#include <fmt/format.h>

#include "CoreTypes/AppIdentity.hpp"
#include "CoreTypes/Log.hpp"
#include "CoreTypes/Overloaded.hpp"
#include "screenweaverd/DaemonArguments.hpp"
#include "screenweaverd/DaemonSelfTest.hpp"

namespace screenweaver {

std::string daemonHelpText() {
    return fmt::format(
        "The {} privileged service.\n"
        "\n"
        "Started by launchd; there is nothing to run by hand except the check.\n"
        "\n"
        "  --self-test   create a display, verify it, release it, and report\n"
        "  --help        print this text\n"
        "\n"
        "Exit codes: 0 success, 1 the check failed, 2 unknown argument.",
        AppIdentity::name);
}

int runDaemon(std::span<const std::string> arguments, const DaemonContext& context) {
    return std::visit(
        Overloaded{
            [&](const DaemonInvocation::Serve&) {
                Log::app().log(
                    fmt::format("service starting as uid {}", context.platform.process.realUserID));
                report(context.error,
                       fmt::format("{} service: started, nothing to serve yet", AppIdentity::name));
                context.park();
                return 0;
            },
            [&](const DaemonInvocation::Help&) {
                context.output.write(daemonHelpText() + "\n");
                return 0;
            },
            [&](const DaemonInvocation::Unknown& unknown) {
                report(context.error,
                       fmt::format("{}: unknown argument '{}'", AppIdentity::name, unknown.argument));
                report(context.error, daemonHelpText());
                return 2;
            },
            [&](const DaemonInvocation::SelfTest&) {
                const DaemonSelfTest::Report report = DaemonSelfTest::run(context.platform, context.clock);
                for (const std::string& line : report.lines) {
                    context.output.write(line + "\n");
                }
                return report.passed ? 0 : 1;
            },
        },
        DaemonArguments::parse(arguments).value);
}

}  // namespace screenweaver
