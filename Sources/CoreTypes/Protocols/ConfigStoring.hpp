#pragma once

#include <expected>

#include "CoreTypes/Errors.hpp"
#include "CoreTypes/Model/Config.hpp"
#include "CoreTypes/Model/ConfigLoadOutcome.hpp"

namespace screenweaver {

/// Reads and writes the configuration document. With no document present, `load` gives
/// `Config::empty()` with `isFirstLaunch` set; an older schema is migrated to the current one or
/// fails with `migrationFailed`; a newer one fails with `unsupportedSchemaVersion` and leaves the
/// document untouched; a damaged document replaced from a backup comes with a `recoveryNote`.
class ConfigStoring {
public:
    virtual ~ConfigStoring() = default;

    [[nodiscard]] virtual std::expected<ConfigLoadOutcome, PersistenceError> load() = 0;

    [[nodiscard]] virtual std::expected<void, PersistenceError> save(const Config& config) = 0;

protected:
    ConfigStoring() = default;
    ConfigStoring(const ConfigStoring&) = default;
    ConfigStoring& operator=(const ConfigStoring&) = default;
};

}  // namespace screenweaver
