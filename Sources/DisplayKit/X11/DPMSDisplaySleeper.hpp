#pragma once

#include <expected>

#include "CoreTypes/Errors.hpp"
#include "CoreTypes/Protocols/DisplaySleeping.hpp"
#include "Platform/X11/XCBDPMSAPI.hpp"
#include "Platform/X11/XCBRandRAPI.hpp"

namespace screenweaver {

/// Puts every display of the X server that `DISPLAY` names to sleep at once: DPMS "force off", the
/// X server's counterpart of the power tool on a Mac. It connects only when asked, and lets go of
/// the connection when done. Holds no state; safe to call from any thread.
class DPMSDisplaySleeper final : public DisplaySleeping {
public:
    /// The tables must outlive the sleeper.
    explicit DPMSDisplaySleeper(const platform::x11::XCBRandRAPI& x11 = platform::x11::systemXCBRandR(),
                                const platform::x11::XCBDPMSAPI& dpms = platform::x11::systemXCBDPMS());

    /// Enables DPMS (the server ignores a forced level while it is disabled) and forces the level
    /// off; logs "displays asked to sleep". Fails with `displaySleepFailed` when there is no X
    /// server, when it has no DPMS extension or cannot power its displays down, or when it refuses
    /// a request.
    [[nodiscard]] std::expected<void, DisplayError> sleepDisplays() override;

private:
    const platform::x11::XCBRandRAPI& x11_;
    const platform::x11::XCBDPMSAPI& dpms_;
};

}  // namespace screenweaver
