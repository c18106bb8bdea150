#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace screenweaver {

/// One live display as the control protocol reports it.
struct CLIDisplay {
    /// The display's reference in its key text ("physical:...", "virtual:...").
    std::string ref{};
    std::optional<std::string> name{};
    std::int64_t pixelWidth = 0;
    std::int64_t pixelHeight = 0;
    std::int64_t pointWidth = 0;
    std::int64_t pointHeight = 0;
    /// Hertz.
    double refreshRate = 0.0;
    bool isMain = false;
    /// A virtual display made by this product.
    bool isVirtual = false;
    bool isBuiltin = false;

    friend bool operator==(const CLIDisplay&, const CLIDisplay&) = default;
};

}  // namespace screenweaver
