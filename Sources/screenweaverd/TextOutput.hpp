#pragma once

#include <string>
#include <string_view>

namespace screenweaver {

/// Where the service writes its own text: standard output for the help text and the self-test's
/// report, standard error for its diagnostic lines. Tests substitute a capturing output.
class TextOutput {
public:
    virtual ~TextOutput() = default;
    /// Writes `bytes` as they are, unbuffered.
    virtual void write(std::string_view bytes) = 0;
};

/// A file descriptor, written with write(2) and no buffering of our own.
class FileDescriptorOutput final : public TextOutput {
public:
    explicit FileDescriptorOutput(int descriptor) : descriptor_(descriptor) {}
    void write(std::string_view bytes) override;

private:
    int descriptor_;
};

/// Keeps everything written, for tests.
class CapturedOutput final : public TextOutput {
public:
    void write(std::string_view bytes) override { text_ += bytes; }
    [[nodiscard]] const std::string& text() const { return text_; }

private:
    std::string text_;
};

/// Writes one diagnostic line of the service: `text` and a line feed, in one write. No log entry.
void report(TextOutput& error, std::string_view text);

}  // namespace screenweaver
