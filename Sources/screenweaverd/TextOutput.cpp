#include "screenweaverd/TextOutput.hpp"

#include <unistd.h>

#include <cerrno>

namespace screenweaver {

void FileDescriptorOutput::write(std::string_view bytes) {
    // One write(2) carries the whole text unless the descriptor takes less; the rest follows.
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            return;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

void report(TextOutput& error, std::string_view text) {
    std::string line{text};
    line += '\n';
    error.write(line);
}

}  // namespace screenweaver
