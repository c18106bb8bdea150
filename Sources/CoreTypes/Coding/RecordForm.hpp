#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <tuple>
#include <utility>

#include "CoreTypes/Coding/JSONReader.hpp"
#include "CoreTypes/Coding/JSONWriter.hpp"

namespace screenweaver::coding {

/// How a member of a record's JSON object is written, and what its absence means on reading.
enum class Presence {
    /// Always written; a missing key fails with key-not-found, null with value-not-found.
    required,
    /// An optional field: written only when present; missing or null reads as absent.
    optional,
    /// Always written; missing or null keeps the value the record had before reading (its
    /// default).
    ifPresent,
    /// An optional field written always, null when absent; missing keeps the value the record
    /// had before reading, null makes it absent.
    nullable,
};

/// One member of a record: its key and the field that holds it.
template <class Record, class Field, Presence How>
struct Member {
    static constexpr Presence presence = How;
    std::string_view key;
    Field Record::*field;
};

template <class Record, class Field>
constexpr Member<Record, Field, Presence::required> required(std::string_view key, Field Record::*field) {
    return {key, field};
}

template <class Record, class Field>
constexpr Member<Record, std::optional<Field>, Presence::optional> optional(
    std::string_view key, std::optional<Field> Record::*field) {
    return {key, field};
}

template <class Record, class Field>
constexpr Member<Record, Field, Presence::ifPresent> ifPresent(std::string_view key, Field Record::*field) {
    return {key, field};
}

template <class Record, class Field>
constexpr Member<Record, std::optional<Field>, Presence::nullable> nullable(
    std::string_view key, std::optional<Field> Record::*field) {
    return {key, field};
}

/// The JSON form of a record as the list of its members, in the order they are written (which is
/// also the order in which a record reports its first failing member):
///
///     constexpr RecordForm keyCombo{
///         coding::required("keyCode", &KeyCombo::keyCode),
///         coding::required("modifiers", &KeyCombo::modifiers),
///     };
///     keyCombo.write(writer, combo);
///     keyCombo.read(reader, value, combo);
template <class... Members>
class RecordForm {
public:
    constexpr explicit RecordForm(Members... members)
        : members_{members...}, keys_{JSONKey{members.key}...} {}

    /// Writes `record` as an object, members in order, leaving out absent optional fields.
    template <class Record>
    void write(JSONWriter& writer, const Record& record) const {
        writer.beginObject();
        writeMembers(writer, record, std::index_sequence_for<Members...>{});
        writer.endObject();
    }

    /// Reads the object `value` into `record`, whose fields hold their defaults. Keys the record
    /// does not have are ignored. Of several failures, the one of the member that comes first in
    /// the list is reported: a missing required key or a value that does not read.
    template <class Record>
    bool read(JSONReader& reader, JSONValue& value, Record& record) const {
        static constexpr auto readers = memberReaders<Record>(std::index_sequence_for<Members...>{});
        const auto readMember = [&](std::size_t index, JSONValue& member) {
            return readers[index](reader, member, record, members_);
        };
        std::uint64_t seen = 0;
        std::size_t failedIndex = sizeof...(Members);
        std::optional<DecodingError> failure;
        bool read = false;
        if (reader.beginMembersInOrder(value)) {
            std::size_t expected = 0;
            bool more = true;
            read = readInOrder(reader, record, seen, failedIndex, failure, expected, more,
                               std::index_sequence_for<Members...>{}) &&
                   (more ? reader.readOtherMembers(keys_, expected, seen, readMember, failedIndex, failure)
                         : failedIndex == sizeof...(Members));
        } else {
            read = reader.readMembers(value, keys_, seen, readMember, failedIndex, failure);
        }
        if (reader.malformed() || (!read && failedIndex == sizeof...(Members))) {
            return false;
        }
        // The first required key missing, if it comes before the first failure.
        const std::uint64_t before =
            failedIndex < 64 ? (std::uint64_t{1} << failedIndex) - 1 : ~std::uint64_t{0};
        if (const std::uint64_t missing = requiredKeys_ & ~seen & before; missing != 0) {
            return reader.fail(DecodingError::keyNotFound(
                keys_[static_cast<std::size_t>(std::countr_zero(missing))].text()));
        }
        if (!read && failure) {
            return reader.fail(std::move(*failure));
        }
        return read;
    }

private:
    template <class Record, std::size_t... Index>
    void writeMembers(JSONWriter& writer, const Record& record, std::index_sequence<Index...>) const {
        (writeMember(writer, record, std::get<Index>(members_), keys_[Index]), ...);
    }

    template <class Record, class Field, Presence How>
    static void writeMember(JSONWriter& writer, const Record& record,
                            const Member<Record, Field, How>& member, const JSONKey& key) {
        const Field& field = record.*member.field;
        if constexpr (How == Presence::optional) {
            if (field) {
                writer.key(key);
                JSONForm<typename Field::value_type>::write(writer, *field);
            }
        } else if constexpr (How == Presence::nullable) {
            writer.key(key);
            if (field) {
                JSONForm<typename Field::value_type>::write(writer, *field);
            } else {
                writer.null();
            }
        } else {
            writer.key(key);
            JSONForm<Field>::write(writer, field);
        }
    }

    // The members as the writer writes them, read straight from their keys in order, each key
    // compared as a constant and each field read in place: most texts are written by this
    // system's own writer. An optional member may be missing. The first key that is not the one
    // expected (another order, a key of no member, other spacing) stops it, standing at that key,
    // with `more` set and `expected` the index to look for next; the rest of the object is then
    // read the ordinary way. False when the text is not JSON.
    template <class Record, std::size_t... Index>
    bool readInOrder(JSONReader& reader, Record& record, std::uint64_t& seen, std::size_t& failedIndex,
                     std::optional<DecodingError>& failure, std::size_t& expected, bool& more,
                     std::index_sequence<Index...>) const {
        bool inOrder = true;
        return ((!more || !inOrder ||
                 readInOrder<Index>(reader, record, seen, failedIndex, failure, expected, more, inOrder)) &&
                ...);
    }

    // One member of `readInOrder`: read if its key is next; else `inOrder` stays set only if the
    // member may be missing.
    template <std::size_t Index, class Record>
    bool readInOrder(JSONReader& reader, Record& record, std::uint64_t& seen, std::size_t& failedIndex,
                     std::optional<DecodingError>& failure, std::size_t& expected, bool& more,
                     bool& inOrder) const {
        const auto& member = std::get<Index>(members_);
        if (!reader.takeKeyInOrder(keys_[Index])) {
            inOrder = member.presence != Presence::required;
            return true;
        }
        seen |= std::uint64_t{1} << Index;
        expected = Index + 1;
        JSONValue value = reader.nextValue();
        if (!readField(reader, value, record, member)) {
            if (reader.malformed()) {
                return false;
            }
            if (failedIndex == sizeof...(Members)) {
                failedIndex = Index;
                failure = std::move(reader.takeError().prependKey(keys_[Index].text()));
            }
        }
        return reader.endOfMember(more);
    }

    // One reader a member, in order, for a jump by the member's index.
    template <class Record>
    using MemberReader = bool (*)(JSONReader&, JSONValue&, Record&, const std::tuple<Members...>&);

    template <class Record, std::size_t... Index>
    static constexpr std::array<MemberReader<Record>, sizeof...(Members)> memberReaders(
        std::index_sequence<Index...>) {
        return {
            [](JSONReader& reader, JSONValue& value, Record& record, const std::tuple<Members...>& members) {
                return readField(reader, value, record, std::get<Index>(members));
            }...};
    }

    template <class Record, class Field, Presence How>
    static bool readField(JSONReader& reader, JSONValue& value, Record& record,
                          const Member<Record, Field, How>& member) {
        Field& field = record.*member.field;
        if constexpr (How == Presence::required) {
            return reader.read(value, field);
        } else {
            if (reader.takeNull(value)) {
                if constexpr (How != Presence::ifPresent) {
                    field.reset();
                }
                return true;
            }
            if constexpr (How == Presence::ifPresent) {
                return reader.read(value, field);
            } else {
                return reader.read(value, field.emplace());
            }
        }
    }

    std::tuple<Members...> members_;
    std::array<JSONKey, sizeof...(Members)> keys_;
    // A bit for each member whose key must be there.
    std::uint64_t requiredKeys_ = requiredMask(std::index_sequence_for<Members...>{});

    template <std::size_t... Index>
    static constexpr std::uint64_t requiredMask(std::index_sequence<Index...>) {
        return ((Members::presence == Presence::required ? std::uint64_t{1} << Index : 0) | ... | 0);
    }
};

}  // namespace screenweaver::coding
