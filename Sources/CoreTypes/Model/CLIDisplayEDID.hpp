#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "CoreTypes/Model/DisplayEDIDSummary.hpp"

namespace screenweaver {

/// The identification of one display as the control protocol reports it.
struct CLIDisplayEDID {
    /// Where the summary came from.
    enum class Source {
        /// Read from the display's own EDID.
        panel,
        /// Built from what the operating system reports.
        system,
    };

    /// The display asked about, in its key text.
    std::string ref{};
    DisplayEDIDSummary summary{};
    Source source = Source::panel;
    bool isVirtual = false;

    friend bool operator==(const CLIDisplayEDID&, const CLIDisplayEDID&) = default;
};

/// "panel" or "system": the JSON form.
std::string_view rawValue(CLIDisplayEDID::Source source);

/// The source whose raw value is exactly `raw`, or nothing.
std::optional<CLIDisplayEDID::Source> cliDisplayEDIDSourceFromRawValue(std::string_view raw);

}  // namespace screenweaver
