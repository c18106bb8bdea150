#include "DisplayKit/X11/DPMSDisplaySleeper.hpp"

#include "CoreTypes/Log.hpp"
#include "Platform/X11/X11Connection.hpp"

namespace screenweaver {

using platform::x11::X11Connection;

DPMSDisplaySleeper::DPMSDisplaySleeper(const platform::x11::XCBRandRAPI& x11,
                                       const platform::x11::XCBDPMSAPI& dpms)
    : x11_(x11), dpms_(dpms) {}

std::expected<void, DisplayError> DPMSDisplaySleeper::sleepDisplays() {
    const auto failed = [](const std::string& reason) {
        return std::unexpected{DisplayError::displaySleepFailed(reason)};
    };
    auto opened = X11Connection::open(x11_);
    if (!opened) {
        return failed("no X server to put to sleep: " + opened.error().reason());
    }
    const X11Connection& connection = **opened;
    xcb_connection_t* const c = connection.get();
    const xcb_query_extension_reply_t* const extension = dpms_.xcb_get_extension_data(c, dpms_.xcb_dpms_id);
    if (extension == nullptr || extension->present == 0) {
        return failed("the X server has no DPMS extension");
    }
    auto capable = connection.reply("DPMSCapable", dpms_.xcb_dpms_capable_reply, dpms_.xcb_dpms_capable(c));
    if (!capable) {
        return failed(capable.error().reason());
    }
    if ((*capable)->capable == 0) {
        return failed("the X server cannot power its displays down (it is not DPMS capable)");
    }
    if (auto enabled =
            connection.check("DPMSEnable", dpms_.xcb_dpms_enable_checked(c), dpms_.xcb_request_check);
        !enabled) {
        return failed(enabled.error().reason());
    }
    if (auto forced =
            connection.check("DPMSForceLevel", dpms_.xcb_dpms_force_level_checked(c, XCB_DPMS_DPMS_MODE_OFF),
                             dpms_.xcb_request_check);
        !forced) {
        return failed(forced.error().reason());
    }
    Log::display().log("displays asked to sleep");
    return {};
}

}  // namespace screenweaver
