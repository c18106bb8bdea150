#pragma once

#include <xcb/dpms.h>
#include <xcb/xcb.h>

namespace screenweaver::platform::x11 {

/// The functions of libxcb's DPMS binding that putting displays to sleep uses, with the two core
/// functions its conversation needs (whether the server has the extension, and the answer to a
/// checked request), so that a recorded table can stand in for a server with DPMS: no headless X
/// server offers it. Kept apart from `XCBRandRAPI` so that only the display arrangement library
/// links libxcb-dpms, never the service.
struct XCBDPMSAPI {
    const struct xcb_query_extension_reply_t* (*xcb_get_extension_data)(xcb_connection_t* c,
                                                                        xcb_extension_t* ext);
    xcb_generic_error_t* (*xcb_request_check)(xcb_connection_t* c, xcb_void_cookie_t cookie);

    // The extension's identity, for xcb_get_extension_data.
    xcb_extension_t* xcb_dpms_id;
    xcb_dpms_capable_cookie_t (*xcb_dpms_capable)(xcb_connection_t* c);
    xcb_dpms_capable_reply_t* (*xcb_dpms_capable_reply)(xcb_connection_t* c, xcb_dpms_capable_cookie_t cookie,
                                                        xcb_generic_error_t** e);
    xcb_dpms_info_cookie_t (*xcb_dpms_info)(xcb_connection_t* c);
    xcb_dpms_info_reply_t* (*xcb_dpms_info_reply)(xcb_connection_t* c, xcb_dpms_info_cookie_t cookie,
                                                  xcb_generic_error_t** e);
    xcb_void_cookie_t (*xcb_dpms_enable_checked)(xcb_connection_t* c);
    xcb_void_cookie_t (*xcb_dpms_force_level_checked)(xcb_connection_t* c, uint16_t power_level);
};

/// The real functions of libxcb and libxcb-dpms. The table lives for the whole process.
[[nodiscard]] const XCBDPMSAPI& systemXCBDPMS();

}  // namespace screenweaver::platform::x11
