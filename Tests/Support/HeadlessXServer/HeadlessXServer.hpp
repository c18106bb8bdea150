#pragma once

#include <expected>
#include <memory>
#include <string>
#include <sys/types.h>
namespace screenweaver::testing {

/// A real X server for the X backend's tests: Xorg with the dummy video driver, headless, from the
/// repository's configuration (Resources/X11/headless-xorg.conf), on a display number it picks
/// itself (so it never takes one that is in use). Stopped when destroyed.
class HeadlessXServer {
public:
    /// Starts the server and waits until it accepts connections. Fails with what went wrong, the
    /// end of the server's log included.
    [[nodiscard]] static std::expected<std::unique_ptr<HeadlessXServer>, std::string> start();

    ~HeadlessXServer();
    HeadlessXServer(const HeadlessXServer&) = delete;
    HeadlessXServer& operator=(const HeadlessXServer&) = delete;

    /// ":N", the value for `DISPLAY`.
    [[nodiscard]] const std::string& displayName() const { return displayName_; }

private:
    HeadlessXServer(pid_t pid, std::string directory, std::string displayName);

    pid_t pid_;
    std::string directory_;
    std::string displayName_;
};

}  // namespace screenweaver::testing
