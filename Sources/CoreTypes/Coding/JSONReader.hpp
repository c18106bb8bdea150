#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

#include "CoreTypes/Coding/DecodingError.hpp"
#include "CoreTypes/Coding/JSONKey.hpp"
#include "CoreTypes/Coding/JSONText.hpp"

namespace simdjson::internal {
class dom_parser_implementation;
}

namespace screenweaver {

template <class T>
struct JSONForm;

/// A value of the document being read: the token it starts at. Reading a value consumes it; each
/// is read exactly once, in the order of the text.
struct JSONValue {
    std::uint32_t token = 0;
};

/// The text of one document and the positions of its tokens, as the parser's first stage found
/// them: every `{`, `}`, `[`, `]`, `:` and `,` outside strings, and the first character of every
/// string, number and literal. The first stage has already checked the UTF-8, that every string
/// is closed and that no string holds a raw control character; everything else is the reader's.
///
/// The reader reads a little past the token it stands at (keys a machine word at a time, strings
/// sixteen characters at a time, up to `readableAhead` characters), which the end of a text has
/// no room for, so it reads a copy of the text followed by zero bytes. Reading the text where it
/// stands, and only its last part from a copy, cost a choice between the two on every token: more
/// than the copy, on small documents and large ones alike.
struct JSONTokens {
    /// How far past the start of any token the reader may read.
    static constexpr std::uint32_t readableAhead = 64;

    /// A copy of the text, followed by at least `readableAhead` zero bytes.
    const char* text = nullptr;
    /// `count` positions in `text`, then one more: the text's length.
    const std::uint32_t* positions = nullptr;
    std::uint32_t count = 0;
    /// The parser that found the tokens, which also undoes the escapes of strings...
    const simdjson::internal::dom_parser_implementation* parser = nullptr;
    /// ...into this buffer, as long as the text and its padding.
    char* unescaped = nullptr;

    /// The characters of the text from the start of `token` on.
    [[nodiscard, gnu::always_inline]] const char* at(std::uint32_t token) const {
        return text + positions[token];
    }
};

/// The reading of one document: a parser's second stage that builds typed values instead of a
/// tree.
///
/// A document is read front to back in one pass, members in the order the text has them. Every
/// value in it is either read into the result or checked and passed over (`skip`), so text that
/// is not JSON fails the decode wherever it stands, in members nobody asked for too; once it has,
/// every read returns false at once and the decode reports the text as malformed. Numbers,
/// strings and literals are checked against the same rules as the parser's own tree-building
/// stage, whose verdict on what is JSON this reader shares.
///
/// A read that fails for any other reason (a wrong type, a missing key, an unknown raw value)
/// records its error here with the path inside the value it read, returns false, and leaves its
/// value consumed; the caller puts its own key or index in front and carries on checking the
/// rest, so that a record can report the failure of its first field in field order whatever the
/// order of the text.
class JSONReader {
public:
    /// The deepest nesting of objects and arrays that is still JSON, counted as the parser counts
    /// it: an empty object or array adds no level of its own, so 1023 levels of containers that
    /// hold something can have an empty one innermost. The parser refuses deeper documents.
    static constexpr std::size_t maximumDepth = 1024;

    /// A reader of nothing: a document whose text turned out not to be JSON before reading began.
    JSONReader() = default;

    /// Reads, from now on, the document of `tokens` from its first token. A new reader's fields are
    /// set in place: a reader built aside and copied in costs a stall of its own on every decode.
    [[gnu::always_inline]] void start(const JSONTokens& tokens) { tokens_ = tokens; }

    /// The text is not JSON; nothing more can be read.
    [[nodiscard]] bool malformed() const { return malformed_; }

    /// Marks the text as not JSON. Returns false, for the caller to return.
    bool markMalformed() {
        malformed_ = true;
        return false;
    }

    /// Records why the value being read failed. Returns false, for the caller to return.
    bool fail(DecodingError error) {
        error_ = std::move(error);
        return false;
    }

    /// The error recorded last, taken out.
    DecodingError takeError() { return std::move(error_); }

    /// Whether every token has been read.
    [[nodiscard]] bool atEnd() const { return position_ == tokens_.count; }

    /// The characters of the document from the next token on, for a form that recognises the
    /// writer's own spelling of a value by its characters: at least `JSONTokens::readableAhead`
    /// of them are readable, and every string can be read to its closing quote and sixteen
    /// characters past it.
    [[nodiscard]] const char* upcomingText() const { return nextText(); }

    /// Passes over the next `tokens` tokens, which the caller recognised by their characters as
    /// one whole value of `levels` nested containers that hold something; false, passing nothing,
    /// where the nesting would go deeper than JSON allows (the value then has to be read the
    /// ordinary way, which says so).
    bool passRecognised(std::uint32_t tokens, std::size_t levels) {
        if (depth_ + levels >= maximumDepth) {
            return false;
        }
        position_ += tokens;
        return true;
    }

    /// Reads `value` as a `T` into `result`.
    template <class T>
    bool read(JSONValue& value, T& result) {
        return JSONForm<T>::read(*this, value, result);
    }

    /// Checks that `value` is well-formed JSON and passes over it. False only when it is not.
    bool skip(JSONValue& value);

    /// Passes over `value` if it is `null`; false, consuming nothing, if it is anything else.
    /// Asked of every optional member, which is seldom null: the first character decides inline.
    bool takeNull(JSONValue&) { return next() == 'n' && takeNullLiteral(); }

    /// `value` as a string, its escapes undone; valid until the next string is read.
    bool string(JSONValue& value, std::string_view& text);
    /// `value` as `true` or `false`.
    bool boolean(JSONValue& value, bool& result);
    /// `value` as an integral number within [minimum, maximum], whatever its spelling (`60`,
    /// `60.0`, `1e2`, `-0`); the coder calls the type `typeName`.
    bool integer(JSONValue& value, std::string_view typeName, std::int64_t minimum, std::int64_t maximum,
                 std::int64_t& result);
    /// `value` as any number; `-0` reads as negative zero.
    bool number(JSONValue& value, double& result);

    /// Reads the elements of the array `value` in order with `readElement(element)`, counting
    /// them in `count`. The first element that fails is the error, at its index; the elements
    /// after it are only checked.
    template <class ReadElement>
    bool readArray(JSONValue& value, ReadElement readElement, std::size_t& count);

    /// Reads the members of the object `value` in text order. `readMember(index, member)` reads a
    /// member whose key is `keys[index]`. Members with a key the caller does not know, and repeats
    /// of a key already read, are only checked: the first occurrence of a key counts. `seen` gets
    /// a bit for every key found. Returns false when the text is malformed, when `value` is not an
    /// object (the reader holds that error), or when a member failed: `failedIndex` is then the
    /// smallest index that failed, with its error (its key in front) in `failure`.
    template <std::size_t Count, class ReadMember>
    bool readMembers(JSONValue& value, const std::array<coding::JSONKey, Count>& keys, std::uint64_t& seen,
                     ReadMember readMember, std::size_t& failedIndex, std::optional<DecodingError>& failure);

    /// What `readMembers` does after the first key, for a form that read the members it expected
    /// in their order first (`beginMembersInOrder`, `takeKeyInOrder`, `endOfMember`) and met
    /// something else at a key: the rest of the object, from that key on, with what was read so
    /// far in `seen`, `failedIndex` and `failure`; `hint` is the index of the key expected next.
    template <std::size_t Count, class ReadMember>
    bool readOtherMembers(const std::array<coding::JSONKey, Count>& keys, std::size_t hint,
                          std::uint64_t& seen, ReadMember readMember, std::size_t& failedIndex,
                          std::optional<DecodingError>& failure);

    /// Enters the object `value` for its members to be read in the order its form expects them:
    /// true when it is an object with at least one member, standing at the first key. False,
    /// taking nothing, for anything else, which `readMembers` then reads and judges.
    [[gnu::always_inline]] bool beginMembersInOrder(const JSONValue&) {
        if (next() != '{' || depth_ + 1 >= maximumDepth) {
            return false;
        }
        // A key right after the brace, as the writer puts it, is the next token.
        if (nextText()[1] != '"' && tokens_.at(position_ + 1)[0] == '}') {
            return false;
        }
        ++position_;
        ++depth_;
        return true;
    }
    /// Takes the next key, and its colon, if it is `key` spelled as the writer spells it; false,
    /// taking nothing, for anything else.
    [[gnu::always_inline]] bool takeKeyInOrder(const coding::JSONKey& key) {
        const char* text = nextText();
        if (text[0] != '"' || !key.matches(text + 1) || text[key.text().size() + 2] != ':') {
            return false;
        }
        position_ += 2;
        return true;
    }
    /// The value at the next token, for the member whose key was just taken.
    [[nodiscard]] JSONValue nextValue() const { return JSONValue{position_}; }
    /// After a member's value: a comma (`more` set) or the end of the object, which is left.
    /// False when neither follows: the text is not JSON.
    [[gnu::always_inline]] bool endOfMember(bool& more) {
        if (!separator('}', more)) {
            return false;
        }
        if (!more) {
            leave();
        }
        return true;
    }

    /// Reads an enum with payload from its object form: exactly one key that names a case (other
    /// keys are ignored; a repeated case key counts once, its first occurrence is read), holding
    /// the payload, which `readPayload(index, payload)` reads. No case key or several different
    /// ones fail with the type mismatch "Invalid number of keys found, expected one.".
    template <std::size_t Count, class ReadPayload>
    bool readCase(JSONValue& value, const std::array<coding::JSONKey, Count>& caseNames,
                  ReadPayload readPayload);

private:
    // The first character of the next token; a zero byte past the last one.
    // The steps every read takes are inlined always.
    [[nodiscard, gnu::always_inline]] char next() const { return *nextText(); }
    [[nodiscard, gnu::always_inline]] const char* nextText() const { return tokens_.at(position_); }
    // Takes the next token if it is `character`.
    [[gnu::always_inline]] bool take(char character) {
        if (next() != character) {
            return false;
        }
        ++position_;
        return true;
    }

    // Whether a number or a literal may end at `text`: whitespace, a structural character or the
    // end of the text follows.
    [[nodiscard]] bool tokenEndsAt(const char* text) const {
        return coding::text::endsAToken[static_cast<unsigned char>(*text)] ||
               text == tokens_.at(tokens_.count);
    }
    // The next token, which starts with `n`, if it is the literal `null`.
    bool takeNullLiteral();
    // The literal `literal` (`true`, `false`, `null`) at `text`.
    [[nodiscard]] bool isLiteral(const char* text, std::string_view literal) const {
        return std::memcmp(text, literal.data(), literal.size()) == 0 && tokenEndsAt(text + literal.size());
    }

    // The failure of reading `value` as the type a coder calls `expected` when it is another kind
    // of value: a type mismatch, or value-not-found for null; the value is checked and passed over.
    // A value that is no kind of value at all is malformed.
    bool wrongKind(JSONValue& value, std::string_view expected);

    // Opens a container; one more level of nesting, which `leave` gives back.
    bool enter(char open, char close, std::string_view expected, JSONValue& value) {
        if (next() != open) {
            return wrongKind(value, expected);
        }
        ++position_;
        if (++depth_ >= maximumDepth && next() != close) {
            return markMalformed();
        }
        return true;
    }
    void leave() { --depth_; }
    // After a member or an element: a comma (true, `more` set) or the closing character.
    [[gnu::always_inline]] bool separator(char close, bool& more) {
        more = take(',');
        return more || take(close) || markMalformed();
    }

    // The key of the next member, which is `keys[index]` or none of them (`index == Count`),
    // with its colon; `hint`, the key after the last one read, is tried first.
    template <std::size_t Count>
    [[gnu::always_inline]] bool key(const std::array<coding::JSONKey, Count>& keys, std::size_t hint,
                                    std::size_t& index);
    // The next token, which starts with a quote, as a string: the text's own characters when it
    // has no escapes, else the characters its escapes stand for.
    [[gnu::always_inline]] bool stringToken(std::string_view& text) {
        const char* start = nextText() + 1;
        const char* end = coding::text::quoteOrBackslash(start);
        if (*end != '"') {
            text = unescapedStringToken(start);
            return text.data() != nullptr;
        }
        text = {start, static_cast<std::size_t>(end - start)};
        ++position_;
        return true;
    }
    // A string token with escapes, from its first character on; no characters (a null pointer)
    // when an escape is invalid. Returned, not written through a reference: the string views of
    // the common path then stay in registers, where one written to memory in two halves and read
    // back whole would stall the read.
    std::string_view unescapedStringToken(const char* start);
    // The next token as a number: one of the three kinds a JSON number reads as.
    enum class NumberKind { signedInteger, unsignedInteger, real };
    struct Number {
        NumberKind kind = NumberKind::signedInteger;
        // The text starts with a minus sign (which the integer zero cannot keep).
        bool negative = false;
        std::int64_t signedValue = 0;
        std::uint64_t unsignedValue = 0;
        double realValue = 0.0;
    };
    // The next token, which starts with a minus sign or a digit, as a number.
    bool numberToken(Number& number) { return plainNumberToken(number) || otherNumberToken(number); }
    // The common spellings, read here: an integer of at most 18 digits, or a decimal fraction of
    // at most 15 digits without an exponent, which a double division gives exactly rounded. False,
    // taking nothing, for any other.
    bool plainNumberToken(Number& number);
    // Every other spelling, and everything that is not a number at all, goes to the parser's own
    // number reading, so both agree on what a number is and what it is worth.
    bool otherNumberToken(Number& number);
    // A number spelled otherwise than the common ways, read by the parser's own number reading.
    static bool numberTokenThroughParser(Number& number, const char* text, std::size_t length);
    // `integer` and `number` for every value the common way does not read: `number` holds what
    // was read already, when it was a plain number out of range.
    bool otherInteger(JSONValue& value, std::string_view typeName, std::int64_t minimum, std::int64_t maximum,
                      const Number& number, std::int64_t& result);
    bool otherNumber(JSONValue& value, double& result);

    JSONTokens tokens_;
    std::uint32_t position_ = 0;
    DecodingError error_;
    std::size_t depth_ = 0;
    bool malformed_ = false;
};

inline bool JSONReader::plainNumberToken(Number& number) {
    using coding::text::isDigit;
    const char* digit = nextText();
    number.negative = *digit == '-';
    digit += number.negative ? 1 : 0;
    const char* integerStart = digit;
    std::uint64_t mantissa = 0;
    while (isDigit(*digit)) {
        mantissa = mantissa * 10 + static_cast<std::uint64_t>(*digit - '0');
        ++digit;
    }
    const auto integerDigits = static_cast<std::size_t>(digit - integerStart);
    if (integerDigits == 0 || integerDigits > 18 || (integerDigits > 1 && *integerStart == '0')) {
        return false;
    }
    if (tokenEndsAt(digit)) {
        number.kind = NumberKind::signedInteger;
        number.signedValue =
            number.negative ? -static_cast<std::int64_t>(mantissa) : static_cast<std::int64_t>(mantissa);
        ++position_;
        return true;
    }
    if (*digit != '.') {
        return false;
    }
    const char* fractionStart = ++digit;
    while (isDigit(*digit)) {
        mantissa = mantissa * 10 + static_cast<std::uint64_t>(*digit - '0');
        ++digit;
    }
    const auto fractionDigits = static_cast<std::size_t>(digit - fractionStart);
    if (fractionDigits == 0 || integerDigits + fractionDigits > 15 || !tokenEndsAt(digit)) {
        return false;
    }
    const double magnitude = static_cast<double>(mantissa) / coding::text::exactPowersOfTen[fractionDigits];
    number.kind = NumberKind::real;
    number.realValue = number.negative ? -magnitude : magnitude;
    ++position_;
    return true;
}

inline bool JSONReader::string(JSONValue& value, std::string_view& text) {
    if (next() != '"') {
        return wrongKind(value, "String");
    }
    return stringToken(text);
}

inline bool JSONReader::integer(JSONValue& value, std::string_view typeName, std::int64_t minimum,
                                std::int64_t maximum, std::int64_t& result) {
    Number number;
    if ((next() == '-' || coding::text::isDigit(next())) && plainNumberToken(number) &&
        number.kind == NumberKind::signedInteger && number.signedValue >= minimum &&
        number.signedValue <= maximum) {
        result = number.signedValue;
        return true;
    }
    return otherInteger(value, typeName, minimum, maximum, number, result);
}

inline bool JSONReader::number(JSONValue& value, double& result) {
    Number number;
    if ((next() == '-' || coding::text::isDigit(next())) && plainNumberToken(number)) {
        if (number.kind == NumberKind::real) {
            result = number.realValue;
        } else {
            // The integer zero has no sign; the text's `-0` has one.
            result =
                number.negative && number.signedValue == 0 ? -0.0 : static_cast<double>(number.signedValue);
        }
        return true;
    }
    return otherNumber(value, result);
}

template <class ReadElement>
bool JSONReader::readArray(JSONValue& value, ReadElement readElement, std::size_t& count) {
    count = 0;
    if (!enter('[', ']', "Array<Any>", value)) {
        return false;
    }
    if (take(']')) {
        leave();
        return true;
    }
    bool failed = false;
    for (bool more = true; more;) {
        JSONValue element{position_};
        if (failed) {
            if (!skip(element)) {
                return false;
            }
        } else if (!readElement(element)) {
            if (malformed_) {
                return false;
            }
            error_.prependIndex(count);
            failed = true;
        }
        ++count;
        if (!separator(']', more)) {
            return false;
        }
    }
    leave();
    return !failed;
}

template <std::size_t Count>
inline bool JSONReader::key(const std::array<coding::JSONKey, Count>& keys, std::size_t hint,
                            std::size_t& index) {
    if (next() != '"') {
        return markMalformed();
    }
    const char* raw = nextText() + 1;
    index = Count;
    for (std::size_t tried = 0; tried < Count; ++tried) {
        const std::size_t candidate = hint + tried < Count ? hint + tried : hint + tried - Count;
        if (keys[candidate].matches(raw)) {
            index = candidate;
            // A colon right after the closing quote, as the writer puts it, is the next token.
            if (raw[keys[candidate].text().size() + 1] == ':') {
                position_ += 2;
                return true;
            }
            ++position_;
            return take(':') || markMalformed();
        }
    }
    // A key with escapes compares unequal as it stands; undone, it may still be one of them.
    std::string_view text;
    if (!stringToken(text)) {
        return false;
    }
    for (index = 0; index < Count && text != keys[index].text(); ++index) {
    }
    return take(':') || markMalformed();
}

template <std::size_t Count, class ReadMember>
bool JSONReader::readMembers(JSONValue& value, const std::array<coding::JSONKey, Count>& keys,
                             std::uint64_t& seen, ReadMember readMember, std::size_t& failedIndex,
                             std::optional<DecodingError>& failure) {
    static_assert(Count <= 64, "one bit per key");
    failedIndex = Count;
    if (!enter('{', '}', "Dictionary<String, Any>", value)) {
        return false;
    }
    if (take('}')) {
        leave();
        return true;
    }
    return readOtherMembers(keys, 0, seen, readMember, failedIndex, failure);
}

template <std::size_t Count, class ReadMember>
bool JSONReader::readOtherMembers(const std::array<coding::JSONKey, Count>& keys, std::size_t hint,
                                  std::uint64_t& seen, ReadMember readMember, std::size_t& failedIndex,
                                  std::optional<DecodingError>& failure) {
    for (bool more = true; more;) {
        std::size_t index = Count;
        if (!key(keys, hint, index)) {
            return false;
        }
        JSONValue member{position_};
        const std::uint64_t bit = index < Count ? std::uint64_t{1} << index : 0;
        if (bit == 0 || (seen & bit) != 0) {
            if (!skip(member)) {
                return false;
            }
        } else {
            seen |= bit;
            hint = index + 1;
            if (!readMember(index, member)) {
                if (malformed_) {
                    return false;
                }
                if (index < failedIndex) {
                    failedIndex = index;
                    failure = std::move(error_.prependKey(keys[index].text()));
                }
            }
        }
        if (!separator('}', more)) {
            return false;
        }
    }
    leave();
    return failedIndex == Count;
}

template <std::size_t Count, class ReadPayload>
bool JSONReader::readCase(JSONValue& value, const std::array<coding::JSONKey, Count>& caseNames,
                          ReadPayload readPayload) {
    std::uint64_t seen = 0;
    std::size_t found = Count;
    std::size_t failedIndex = Count;
    std::optional<DecodingError> failure;
    const bool read = readMembers(
        value, caseNames, seen,
        [&](std::size_t index, JSONValue& payload) {
            if (found != Count) {
                // A second case: the object is wrong whatever its payloads say.
                return skip(payload);
            }
            found = index;
            return readPayload(index, payload);
        },
        failedIndex, failure);
    if (malformed_ || (!read && failedIndex == Count)) {
        return false;
    }
    if (seen == 0 || (seen & (seen - 1)) != 0) {
        return fail(DecodingError::invalidNumberOfCaseKeys());
    }
    if (!read && failure) {
        return fail(std::move(*failure));
    }
    return read;
}

}  // namespace screenweaver
