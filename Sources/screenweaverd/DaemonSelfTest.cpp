#include "screenweaverd/DaemonSelfTest.hpp"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <memory>

#include "VirtualDisplayKit/VirtualDisplayBackend.hpp"
#include "VirtualDisplayKit/VirtualDisplayGeometry.hpp"
#include "VirtualDisplayKit/VirtualDisplayManagerFactory.hpp"

namespace screenweaver::DaemonSelfTest {
namespace {

std::vector<std::uint32_t> displayIDs(const std::vector<LiveDisplaySnapshot>& displays) {
    std::vector<std::uint32_t> ids;
    ids.reserve(displays.size());
    for (const LiveDisplaySnapshot& display : displays) {
        ids.push_back(display.displayID);
    }
    return ids;
}

}  // namespace

const VirtualDisplaySpec& spec() {
    static const VirtualDisplaySpec fixed{
        .id = UUID::parse("5E1F7E57-0000-4000-8000-000000000001").value_or(UUID::random()),
        .name = "Service self-test",
        .catalogEntryID = std::nullopt,
        .pixelWidth = 5120,
        .pixelHeight = 1440,
        .refreshRate = 60.0,
        .hiDPI = false,
        .rotation = 0,
        .dynamicRange = DynamicRange::standard,
        .targetPPIOverride = std::nullopt,
    };
    return fixed;
}

Report run(const platform::PlatformAPI& platform, const Clock& clock, const StopToken& stop) {
    Report report;
    // The machine's own display server: the window server on a Mac, the session's X server
    // elsewhere. The check observes the displays through the same probe as its manager.
    VirtualDisplayBackend backend = VirtualDisplayBackend::system(platform);
    const std::shared_ptr<LiveDisplayProbing> observer = backend.probe;
    const auto manager = VirtualDisplayManagerFactory::make(std::move(backend), clock);
    report.lines.push_back(fmt::format("uid {}, displays before: [{}]", platform.process.realUserID,
                                       fmt::join(displayIDs(observer->activeDisplays()), ", ")));

    if (const auto availability = manager->availability();
        const auto* unavailable = availability.asUnavailable()) {
        report.lines.push_back("private interface unavailable: " + unavailable->reason);
        return report;
    }
    const auto handle = manager->create(spec(), stop);
    if (!handle) {
        report.lines.push_back("FAIL: " + handle.error().description());
        return report;
    }
    report.lines.push_back(fmt::format("created display {} at {} PPI", handle->displayID,
                                       VirtualDisplayGeometry::wholePPI(handle->acceptedPPI)));

    const std::vector<LiveDisplaySnapshot> after = observer->activeDisplays();
    const auto observed = std::ranges::find(after, handle->displayID, &LiveDisplaySnapshot::displayID);
    report.lines.push_back("machine reports: " +
                           (observed == after.end()
                                ? std::string{"absent"}
                                : fmt::format("{}x{}", observed->pixelWidth, observed->pixelHeight)));
    report.passed = observed != after.end() && observed->pixelWidth == spec().pixelWidth &&
                    observed->pixelHeight == spec().pixelHeight;

    manager->release(*handle, stop);
    report.lines.push_back("released");
    report.lines.push_back(report.passed ? "PASS" : "FAIL: the display is not the size it was asked for");
    return report;
}

}  // namespace screenweaver::DaemonSelfTest
