#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace screenweaver {

/// An absolute URL: `scheme://host/path`, kept in its encoded text form.
///
/// Only what the system needs: the update manifest's web address and the support folder's file URL.
class URL {
public:
    /// Parses an absolute URL with an authority (`https://example.org/release.json`). Nothing when the
    /// text is not one: no scheme, no `//`, an empty host, or characters that are not allowed
    /// unencoded in a URL (a blank, a control character, non-ASCII text, a stray `%`).
    static std::optional<URL> parse(std::string_view text);

    /// The file URL of an absolute file-system path. Characters outside a URL path's unreserved
    /// set are percent-encoded: `/Users/a b` gives `file:///Users/a%20b`.
    static URL fileURL(std::string_view absolutePath);

    /// The whole URL as text, encoded.
    [[nodiscard]] const std::string& absoluteString() const { return text_; }
    [[nodiscard]] std::string scheme() const;
    [[nodiscard]] std::string host() const;
    /// The path, percent-decoded: for a file URL, the plain file-system path.
    [[nodiscard]] std::string path() const;
    [[nodiscard]] bool isFileURL() const { return scheme() == "file"; }

    friend bool operator==(const URL&, const URL&) = default;

private:
    explicit URL(std::string text) : text_(std::move(text)) {}
    [[nodiscard]] std::string_view encodedPath() const;

    std::string text_;
};

}  // namespace screenweaver
