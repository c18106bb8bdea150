#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <tuple>
#include <utility>
#include <variant>

#include "CoreTypes/Coding/JSONReader.hpp"
#include "CoreTypes/Coding/JSONWriter.hpp"

namespace screenweaver::coding {

/// The JSON form of an enum with payload, held as a `std::variant` of one record per case: an
/// object with one key, the case's name, holding the case's record as an object (`{}` for a case
/// without payload; an unlabelled payload under the key "_0"):
///
///     constexpr auto form = caseForm<DisplayRef>(
///         {"virtual", "physical"},
///         RecordForm{required("_0", &DisplayRef::Virtual::id)},
///         RecordForm{required("colorSyncUUID", &DisplayRef::Physical::colorSyncUUID)});
///
/// The names and the forms go in the order of the variant's alternatives.
template <class Enum, class... Forms>
class CaseForm {
public:
    static constexpr std::size_t caseCount = sizeof...(Forms);

    constexpr CaseForm(std::array<std::string_view, caseCount> names, Forms... forms)
        : names_{keys(names, std::index_sequence_for<Forms...>{})}, forms_{forms...} {}

    void write(JSONWriter& writer, const Enum& value) const {
        writer.beginObject();
        writer.key(names_[value.value.index()]);
        writeCase(writer, value, std::index_sequence_for<Forms...>{});
        writer.endObject();
    }

    /// Reads the case whose name is the object's one case key; other keys are ignored.
    bool read(JSONReader& reader, JSONValue& value, Enum& result) const {
        return reader.readCase(value, names_, [&](std::size_t index, JSONValue& payload) {
            return readCase(reader, payload, result, index, std::index_sequence_for<Forms...>{});
        });
    }

private:
    template <std::size_t... Index>
    static constexpr std::array<JSONKey, caseCount> keys(const std::array<std::string_view, caseCount>& names,
                                                         std::index_sequence<Index...>) {
        return {JSONKey{names[Index]}...};
    }

    template <std::size_t... Index>
    void writeCase(JSONWriter& writer, const Enum& value, std::index_sequence<Index...>) const {
        (void)((value.value.index() == Index &&
                (std::get<Index>(forms_).write(writer, std::get<Index>(value.value)), true)) ||
               ...);
    }

    template <std::size_t... Index>
    bool readCase(JSONReader& reader, JSONValue& payload, Enum& result, std::size_t index,
                  std::index_sequence<Index...>) const {
        bool read = true;
        (void)((index == Index &&
                (read = std::get<Index>(forms_).read(reader, payload, result.value.template emplace<Index>()),
                 true)) ||
               ...);
        return read;
    }

    std::array<JSONKey, caseCount> names_;
    std::tuple<Forms...> forms_;
};

/// The form of `Enum` from its case names and its cases' forms.
template <class Enum, class... Forms>
constexpr CaseForm<Enum, Forms...> caseForm(std::array<std::string_view, sizeof...(Forms)> names,
                                            Forms... forms) {
    return {names, forms...};
}

}  // namespace screenweaver::coding
