// The real libxcb-dpms, for putting displays to sleep on an X server (off Apple platforms). Each
// entry is initialised with the library's own function, so a type that differs from the library's
// declaration does not compile.
#include "Platform/X11/XCBDPMSAPI.hpp"

namespace screenweaver::platform::x11 {

const XCBDPMSAPI& systemXCBDPMS() {
    static const XCBDPMSAPI table{
        .xcb_get_extension_data = &::xcb_get_extension_data,
        .xcb_request_check = &::xcb_request_check,
        .xcb_dpms_id = &::xcb_dpms_id,
        .xcb_dpms_capable = &::xcb_dpms_capable,
        .xcb_dpms_capable_reply = &::xcb_dpms_capable_reply,
        .xcb_dpms_info = &::xcb_dpms_info,
        .xcb_dpms_info_reply = &::xcb_dpms_info_reply,
        .xcb_dpms_enable_checked = &::xcb_dpms_enable_checked,
        .xcb_dpms_force_level_checked = &::xcb_dpms_force_level_checked,
    };
    return table;
}

}  // namespace screenweaver::platform::x11
