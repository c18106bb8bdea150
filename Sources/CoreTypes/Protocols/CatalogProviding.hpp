#pragma once

#include <expected>
#include <optional>
#include <string_view>
#include <vector>

#include "CoreTypes/Errors.hpp"
#include "CoreTypes/Model/CatalogEntry.hpp"
#include "CoreTypes/Model/CatalogFamily.hpp"

namespace screenweaver {

/// A source of catalog entries. A source whose document does not decode reports
/// `CatalogError::invalidJSON` with the decoder's reason; one that cannot find its document
/// reports `bundledCatalogMissing`.
class CatalogProviding {
public:
    virtual ~CatalogProviding() = default;

    /// Every entry, in the document's order.
    [[nodiscard]] virtual std::expected<std::vector<CatalogEntry>, CatalogError> allEntries() const = 0;

    /// The entries of one family, in the document's order.
    [[nodiscard]] virtual std::expected<std::vector<CatalogEntry>, CatalogError> entries(
        CatalogFamily family) const = 0;

    /// The entry whose `id` is `id`, or nothing when there is none.
    [[nodiscard]] virtual std::expected<std::optional<CatalogEntry>, CatalogError> entry(
        std::string_view id) const = 0;

protected:
    CatalogProviding() = default;
    CatalogProviding(const CatalogProviding&) = default;
    CatalogProviding& operator=(const CatalogProviding&) = default;
};

}  // namespace screenweaver
