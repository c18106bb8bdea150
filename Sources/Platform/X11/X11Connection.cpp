#include "Platform/X11/X11Connection.hpp"

#include <fmt/format.h>

namespace screenweaver::platform::x11 {
namespace {

std::string connectionFailure(int code, const std::optional<std::string>& displayName) {
    const std::string server =
        displayName ? fmt::format("the X display \"{}\"", *displayName) : std::string{"the X display"};
    switch (code) {
        case XCB_CONN_CLOSED_PARSE_ERR:
            return displayName ? fmt::format("\"{}\" does not name an X display", *displayName)
                               : std::string{"no X display is named (DISPLAY is not set)"};
        case XCB_CONN_CLOSED_INVALID_SCREEN:
            return server + " has no such screen";
        case XCB_CONN_CLOSED_EXT_NOTSUPPORTED:
        case XCB_CONN_CLOSED_MEM_INSUFFICIENT:
        case XCB_CONN_CLOSED_REQ_LEN_EXCEED:
        case XCB_CONN_CLOSED_FDPASSING_FAILED:
        case XCB_CONN_ERROR:
        default:
            return server + " could not be opened";
    }
}

}  // namespace

std::expected<std::unique_ptr<X11Connection>, X11Error> X11Connection::open(
    const XCBRandRAPI& api, const std::optional<std::string>& displayName) {
    int screenNumber = 0;
    // libxcb hands out a connection object even when it fails; it must be disconnected either way.
    xcb_connection_t* const connection =
        api.xcb_connect(displayName ? displayName->c_str() : nullptr, &screenNumber);
    const auto disconnect = [&] { api.xcb_disconnect(connection); };
    if (const int code = api.xcb_connection_has_error(connection); code != 0) {
        disconnect();
        return std::unexpected{X11Error::connectionFailed(connectionFailure(code, displayName))};
    }
    xcb_screen_iterator_t screens = api.xcb_setup_roots_iterator(api.xcb_get_setup(connection));
    for (int index = 0; index < screenNumber && screens.rem > 0; ++index) {
        api.xcb_screen_next(&screens);
    }
    if (screens.rem <= 0) {
        disconnect();
        return std::unexpected{
            X11Error::connectionFailed(connectionFailure(XCB_CONN_CLOSED_INVALID_SCREEN, displayName))};
    }
    const xcb_window_t root = screens.data->root;

    const xcb_query_extension_reply_t* const randr = api.xcb_get_extension_data(connection, api.xcb_randr_id);
    if (randr == nullptr || randr->present == 0) {
        disconnect();
        return std::unexpected{X11Error::extensionMissing("the X server does not offer RandR")};
    }
    xcb_generic_error_t* error = nullptr;
    const XCBPointer<xcb_randr_query_version_reply_t> version{api.xcb_randr_query_version_reply(
        connection, api.xcb_randr_query_version(connection, requiredRandRMajor, requiredRandRMinor), &error)};
    std::free(error);
    if (!version) {
        disconnect();
        return std::unexpected{X11Error::extensionMissing("the X server did not say which RandR it offers")};
    }
    if (version->major_version < requiredRandRMajor ||
        (version->major_version == requiredRandRMajor && version->minor_version < requiredRandRMinor)) {
        disconnect();
        return std::unexpected{X11Error::extensionMissing(
            fmt::format("the X server offers RandR {}.{}; {}.{} or later is needed", version->major_version,
                        version->minor_version, requiredRandRMajor, requiredRandRMinor))};
    }
    return std::unique_ptr<X11Connection>{new X11Connection{api, connection, root, randr->first_event}};
}

X11Connection::X11Connection(const XCBRandRAPI& api, xcb_connection_t* connection, xcb_window_t root,
                             std::uint8_t randrFirstEvent)
    : api_(api), connection_(connection), root_(root), randrFirstEvent_(randrFirstEvent) {}

X11Connection::~X11Connection() {
    api_.xcb_disconnect(connection_);
}

bool X11Connection::broken() const {
    return api_.xcb_connection_has_error(connection_) != 0;
}

std::expected<void, X11Error> X11Connection::check(std::string_view request, xcb_void_cookie_t cookie) const {
    return check(request, cookie, api_.xcb_request_check);
}

std::expected<void, X11Error> X11Connection::check(
    std::string_view request, xcb_void_cookie_t cookie,
    xcb_generic_error_t* (*requestCheck)(xcb_connection_t*, xcb_void_cookie_t)) const {
    XCBPointer<xcb_generic_error_t> error{requestCheck(connection_, cookie)};
    if (error || broken()) {
        return std::unexpected{failure(request, std::move(error))};
    }
    return {};
}

X11Error X11Connection::failure(std::string_view request, XCBPointer<xcb_generic_error_t> error) const {
    if (error) {
        return X11Error::requestFailed(std::string{request}, error->error_code);
    }
    return X11Error::connectionLost();
}

std::expected<xcb_atom_t, X11Error> X11Connection::atom(std::string_view name) const {
    if (const auto known = atoms_.find(name); known != atoms_.end()) {
        return known->second;
    }
    auto interned =
        reply("InternAtom", api_.xcb_intern_atom_reply,
              api_.xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()));
    if (!interned) {
        return std::unexpected{std::move(interned.error())};
    }
    const xcb_atom_t atom = (*interned)->atom;
    atoms_.emplace(std::string{name}, atom);
    atomNames_.emplace(atom, std::string{name});
    return atom;
}

std::expected<std::string, X11Error> X11Connection::atomName(xcb_atom_t atom) const {
    if (const auto known = atomNames_.find(atom); known != atomNames_.end()) {
        return known->second;
    }
    auto named =
        reply("GetAtomName", api_.xcb_get_atom_name_reply, api_.xcb_get_atom_name(connection_, atom));
    if (!named) {
        return std::unexpected{std::move(named.error())};
    }
    std::string name{api_.xcb_get_atom_name_name(named->get()),
                     static_cast<std::size_t>(api_.xcb_get_atom_name_name_length(named->get()))};
    atomNames_.emplace(atom, name);
    atoms_.emplace(name, atom);
    return name;
}

}  // namespace screenweaver::platform::x11
