#include "CoreTypes/AppIdentity.hpp"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace screenweaver::AppIdentity {

namespace {

// The current user's home folder: $HOME when set, else the user database's entry.
std::string homeFolder() {
    if (const char* home = std::getenv("HOME"); home != nullptr && home[0] != '\0') {
        return home;
    }
    const long suggested = sysconf(_SC_GETPW_R_SIZE_MAX);
    std::vector<char> buffer(suggested > 0 ? static_cast<std::size_t>(suggested) : 16384);
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found != nullptr &&
        found->pw_dir != nullptr) {
        return found->pw_dir;
    }
    return "/";
}

}  // namespace

const std::optional<URL>& updateManifestURL() {
    static const std::optional<URL> url = URL::parse(updateManifestAddress);
    return url;
}

URL supportDirectoryURL() {
    std::string home = homeFolder();
    while (home.size() > 1 && home.back() == '/') {
        home.pop_back();
    }
    std::string path = std::string{supportDir};
    path.replace(0, 1, home == "/" ? "" : home);
    return URL::fileURL(path);
}

}  // namespace screenweaver::AppIdentity
