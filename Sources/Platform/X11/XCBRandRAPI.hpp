#pragma once

#include <sys/uio.h>
#include <xcb/randr.h>
#include <xcb/xcb.h>
#include <xcb/xcbext.h>

namespace screenweaver::platform::x11 {

/// The functions of libxcb and its RandR binding that the X backend uses, one entry per function
/// under its own name and with its exact type, like the CoreGraphics table on macOS. The system's
/// table holds the real functions; a test may hand in a copy with some entries replaced.
///
/// Every request is sent and answered on the caller's connection. A request's error comes back as
/// a value to the caller that made it: through the `e` argument of a `_reply` function, or from
/// `xcb_request_check` for a `_checked` request. Replies and errors are malloc'ed and the caller
/// frees them. A connection that broke answers every request with nothing and reports its error
/// from `xcb_connection_has_error`; nothing here exits or aborts.
struct XCBRandRAPI {
    // The connection.
    xcb_connection_t* (*xcb_connect)(const char* displayname, int* screenp);
    void (*xcb_disconnect)(xcb_connection_t* c);
    int (*xcb_connection_has_error)(xcb_connection_t* c);
    const struct xcb_setup_t* (*xcb_get_setup)(xcb_connection_t* c);
    xcb_screen_iterator_t (*xcb_setup_roots_iterator)(const xcb_setup_t* R);
    void (*xcb_screen_next)(xcb_screen_iterator_t* i);
    uint32_t (*xcb_generate_id)(xcb_connection_t* c);
    int (*xcb_flush)(xcb_connection_t* c);
    xcb_generic_error_t* (*xcb_request_check)(xcb_connection_t* c, xcb_void_cookie_t cookie);
    const struct xcb_query_extension_reply_t* (*xcb_get_extension_data)(xcb_connection_t* c,
                                                                        xcb_extension_t* ext);
    xcb_generic_event_t* (*xcb_poll_for_event)(xcb_connection_t* c);
    int (*xcb_get_file_descriptor)(xcb_connection_t* c);
    // A request put together by the caller, for the one request whose generated function is broken
    // (see RRSetMonitor below). `vector` must hold two iovecs for libxcb's own use before the
    // request's parts.
    unsigned int (*xcb_send_request)(xcb_connection_t* c, int flags, struct iovec* vector,
                                     const xcb_protocol_request_t* request);

    // The core protocol: grabbing the server, the windows that own our monitors, their properties,
    // atoms and the root window's size.
    xcb_void_cookie_t (*xcb_grab_server_checked)(xcb_connection_t* c);
    xcb_void_cookie_t (*xcb_ungrab_server_checked)(xcb_connection_t* c);
    xcb_void_cookie_t (*xcb_create_window_checked)(xcb_connection_t* c, uint8_t depth, xcb_window_t wid,
                                                   xcb_window_t parent, int16_t x, int16_t y, uint16_t width,
                                                   uint16_t height, uint16_t border_width,
                                                   uint16_t window_class, xcb_visualid_t visual,
                                                   uint32_t value_mask, const void* value_list);
    xcb_void_cookie_t (*xcb_destroy_window_checked)(xcb_connection_t* c, xcb_window_t window);
    xcb_void_cookie_t (*xcb_change_property_checked)(xcb_connection_t* c, uint8_t mode, xcb_window_t window,
                                                     xcb_atom_t property, xcb_atom_t type, uint8_t format,
                                                     uint32_t data_len, const void* data);
    xcb_void_cookie_t (*xcb_delete_property_checked)(xcb_connection_t* c, xcb_window_t window,
                                                     xcb_atom_t property);
    xcb_get_property_cookie_t (*xcb_get_property)(xcb_connection_t* c, uint8_t delete_property,
                                                  xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                                                  uint32_t long_offset, uint32_t long_length);
    xcb_get_property_reply_t* (*xcb_get_property_reply)(xcb_connection_t* c, xcb_get_property_cookie_t cookie,
                                                        xcb_generic_error_t** e);
    void* (*xcb_get_property_value)(const xcb_get_property_reply_t* R);
    int (*xcb_get_property_value_length)(const xcb_get_property_reply_t* R);
    xcb_intern_atom_cookie_t (*xcb_intern_atom)(xcb_connection_t* c, uint8_t only_if_exists,
                                                uint16_t name_len, const char* name);
    xcb_intern_atom_reply_t* (*xcb_intern_atom_reply)(xcb_connection_t* c, xcb_intern_atom_cookie_t cookie,
                                                      xcb_generic_error_t** e);
    xcb_get_atom_name_cookie_t (*xcb_get_atom_name)(xcb_connection_t* c, xcb_atom_t atom);
    xcb_get_atom_name_reply_t* (*xcb_get_atom_name_reply)(xcb_connection_t* c,
                                                          xcb_get_atom_name_cookie_t cookie,
                                                          xcb_generic_error_t** e);
    char* (*xcb_get_atom_name_name)(const xcb_get_atom_name_reply_t* R);
    int (*xcb_get_atom_name_name_length)(const xcb_get_atom_name_reply_t* R);
    // The cheapest round trip: every event the server sent before its reply arrives before it.
    xcb_get_input_focus_cookie_t (*xcb_get_input_focus)(xcb_connection_t* c);
    xcb_get_input_focus_reply_t* (*xcb_get_input_focus_reply)(xcb_connection_t* c,
                                                              xcb_get_input_focus_cookie_t cookie,
                                                              xcb_generic_error_t** e);
    xcb_get_geometry_cookie_t (*xcb_get_geometry)(xcb_connection_t* c, xcb_drawable_t drawable);
    xcb_get_geometry_reply_t* (*xcb_get_geometry_reply)(xcb_connection_t* c, xcb_get_geometry_cookie_t cookie,
                                                        xcb_generic_error_t** e);

    // RandR. The extension's identity, for xcb_get_extension_data.
    xcb_extension_t* xcb_randr_id;
    xcb_randr_query_version_cookie_t (*xcb_randr_query_version)(xcb_connection_t* c, uint32_t major_version,
                                                                uint32_t minor_version);
    xcb_randr_query_version_reply_t* (*xcb_randr_query_version_reply)(xcb_connection_t* c,
                                                                      xcb_randr_query_version_cookie_t cookie,
                                                                      xcb_generic_error_t** e);
    xcb_void_cookie_t (*xcb_randr_select_input_checked)(xcb_connection_t* c, xcb_window_t window,
                                                        uint16_t enable);

    // The screen: its size limits, its size, and its size in millimetres (RandR 1.0's screen info).
    xcb_randr_get_screen_size_range_cookie_t (*xcb_randr_get_screen_size_range)(xcb_connection_t* c,
                                                                                xcb_window_t window);
    xcb_randr_get_screen_size_range_reply_t* (*xcb_randr_get_screen_size_range_reply)(
        xcb_connection_t* c, xcb_randr_get_screen_size_range_cookie_t cookie, xcb_generic_error_t** e);
    xcb_void_cookie_t (*xcb_randr_set_screen_size_checked)(xcb_connection_t* c, xcb_window_t window,
                                                           uint16_t width, uint16_t height, uint32_t mm_width,
                                                           uint32_t mm_height);
    xcb_randr_get_screen_info_cookie_t (*xcb_randr_get_screen_info)(xcb_connection_t* c, xcb_window_t window);
    xcb_randr_get_screen_info_reply_t* (*xcb_randr_get_screen_info_reply)(
        xcb_connection_t* c, xcb_randr_get_screen_info_cookie_t cookie, xcb_generic_error_t** e);
    xcb_randr_screen_size_t* (*xcb_randr_get_screen_info_sizes)(const xcb_randr_get_screen_info_reply_t* R);
    int (*xcb_randr_get_screen_info_sizes_length)(const xcb_randr_get_screen_info_reply_t* R);

    // Resources: CRTCs, outputs and modes as the server has them now (no probing of hardware).
    xcb_randr_get_screen_resources_current_cookie_t (*xcb_randr_get_screen_resources_current)(
        xcb_connection_t* c, xcb_window_t window);
    xcb_randr_get_screen_resources_current_reply_t* (*xcb_randr_get_screen_resources_current_reply)(
        xcb_connection_t* c, xcb_randr_get_screen_resources_current_cookie_t cookie, xcb_generic_error_t** e);
    xcb_randr_crtc_t* (*xcb_randr_get_screen_resources_current_crtcs)(
        const xcb_randr_get_screen_resources_current_reply_t* R);
    int (*xcb_randr_get_screen_resources_current_crtcs_length)(
        const xcb_randr_get_screen_resources_current_reply_t* R);
    xcb_randr_output_t* (*xcb_randr_get_screen_resources_current_outputs)(
        const xcb_randr_get_screen_resources_current_reply_t* R);
    int (*xcb_randr_get_screen_resources_current_outputs_length)(
        const xcb_randr_get_screen_resources_current_reply_t* R);
    xcb_randr_mode_info_t* (*xcb_randr_get_screen_resources_current_modes)(
        const xcb_randr_get_screen_resources_current_reply_t* R);
    int (*xcb_randr_get_screen_resources_current_modes_length)(
        const xcb_randr_get_screen_resources_current_reply_t* R);

    // Outputs (connectors) and CRTCs (scan-out engines).
    xcb_randr_get_output_info_cookie_t (*xcb_randr_get_output_info)(xcb_connection_t* c,
                                                                    xcb_randr_output_t output,
                                                                    xcb_timestamp_t config_timestamp);
    xcb_randr_get_output_info_reply_t* (*xcb_randr_get_output_info_reply)(
        xcb_connection_t* c, xcb_randr_get_output_info_cookie_t cookie, xcb_generic_error_t** e);
    xcb_randr_mode_t* (*xcb_randr_get_output_info_modes)(const xcb_randr_get_output_info_reply_t* R);
    int (*xcb_randr_get_output_info_modes_length)(const xcb_randr_get_output_info_reply_t* R);
    uint8_t* (*xcb_randr_get_output_info_name)(const xcb_randr_get_output_info_reply_t* R);
    int (*xcb_randr_get_output_info_name_length)(const xcb_randr_get_output_info_reply_t* R);
    xcb_randr_get_crtc_info_cookie_t (*xcb_randr_get_crtc_info)(xcb_connection_t* c, xcb_randr_crtc_t crtc,
                                                                xcb_timestamp_t config_timestamp);
    xcb_randr_get_crtc_info_reply_t* (*xcb_randr_get_crtc_info_reply)(xcb_connection_t* c,
                                                                      xcb_randr_get_crtc_info_cookie_t cookie,
                                                                      xcb_generic_error_t** e);
    xcb_randr_output_t* (*xcb_randr_get_crtc_info_outputs)(const xcb_randr_get_crtc_info_reply_t* R);
    int (*xcb_randr_get_crtc_info_outputs_length)(const xcb_randr_get_crtc_info_reply_t* R);
    xcb_randr_set_crtc_config_cookie_t (*xcb_randr_set_crtc_config)(
        xcb_connection_t* c, xcb_randr_crtc_t crtc, xcb_timestamp_t timestamp,
        xcb_timestamp_t config_timestamp, int16_t x, int16_t y, xcb_randr_mode_t mode, uint16_t rotation,
        uint32_t outputs_len, const xcb_randr_output_t* outputs);
    xcb_randr_set_crtc_config_reply_t* (*xcb_randr_set_crtc_config_reply)(
        xcb_connection_t* c, xcb_randr_set_crtc_config_cookie_t cookie, xcb_generic_error_t** e);
    xcb_randr_get_output_primary_cookie_t (*xcb_randr_get_output_primary)(xcb_connection_t* c,
                                                                          xcb_window_t window);
    xcb_randr_get_output_primary_reply_t* (*xcb_randr_get_output_primary_reply)(
        xcb_connection_t* c, xcb_randr_get_output_primary_cookie_t cookie, xcb_generic_error_t** e);
    xcb_randr_get_output_property_cookie_t (*xcb_randr_get_output_property)(
        xcb_connection_t* c, xcb_randr_output_t output, xcb_atom_t property, xcb_atom_t type,
        uint32_t long_offset, uint32_t long_length, uint8_t delete_property, uint8_t pending);
    xcb_randr_get_output_property_reply_t* (*xcb_randr_get_output_property_reply)(
        xcb_connection_t* c, xcb_randr_get_output_property_cookie_t cookie, xcb_generic_error_t** e);
    uint8_t* (*xcb_randr_get_output_property_data)(const xcb_randr_get_output_property_reply_t* R);
    int (*xcb_randr_get_output_property_data_length)(const xcb_randr_get_output_property_reply_t* R);

    // Monitors (RandR 1.5): the rectangles desktops place windows on.
    xcb_randr_get_monitors_cookie_t (*xcb_randr_get_monitors)(xcb_connection_t* c, xcb_window_t window,
                                                              uint8_t get_active);
    xcb_randr_get_monitors_reply_t* (*xcb_randr_get_monitors_reply)(xcb_connection_t* c,
                                                                    xcb_randr_get_monitors_cookie_t cookie,
                                                                    xcb_generic_error_t** e);
    xcb_randr_monitor_info_iterator_t (*xcb_randr_get_monitors_monitors_iterator)(
        const xcb_randr_get_monitors_reply_t* R);
    void (*xcb_randr_monitor_info_next)(xcb_randr_monitor_info_iterator_t* i);
    xcb_randr_output_t* (*xcb_randr_monitor_info_outputs)(const xcb_randr_monitor_info_t* R);
    int (*xcb_randr_monitor_info_outputs_length)(const xcb_randr_monitor_info_t* R);
    // RRSetMonitor is sent through xcb_send_request: libxcb-randr 1.15 (Debian 12) builds it from
    // four iovecs and fills only three, so xcb_randr_set_monitor sends, or crashes on, whatever the
    // fourth holds (seen in its machine code and under valgrind).
    xcb_void_cookie_t (*xcb_randr_delete_monitor_checked)(xcb_connection_t* c, xcb_window_t window,
                                                          xcb_atom_t name);
};

/// The real functions of libxcb and libxcb-randr. The table lives for the whole process.
[[nodiscard]] const XCBRandRAPI& systemXCBRandR();

}  // namespace screenweaver::platform::x11
