#include "CoreTypes/Coding/ISO8601.hpp"

#include <array>
#include <cstdint>

namespace screenweaver::ISO8601 {

namespace {

using namespace std::chrono;

// Reads `count` decimal digits at `offset`, clearing `valid` if any is not a digit: one verdict
// for all the fields of a date.
int digits(std::string_view text, std::size_t offset, std::size_t count, bool& valid) {
    int value = 0;
    for (std::size_t index = offset; index < offset + count; ++index) {
        const char character = text[index];
        valid &= character >= '0' && character <= '9';
        value = value * 10 + (character - '0');
    }
    return value;
}

// The days from 1970-01-01 to `yearNumber`-`monthNumber`-`dayNumber`, a year of 0000 to 9999,
// clearing `valid` for a date the calendar does not have. The arithmetic of the proleptic
// Gregorian calendar in 400-year eras, every division by a constant: a document holds a date for
// every group, and the calendar types' own checks divide by a variable.
std::int64_t daysSinceEpoch(int yearNumber, int monthNumber, int dayNumber, bool& valid) {
    constexpr std::array<int, 13> monthLengths{0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool knownMonth = monthNumber >= 1 && monthNumber <= 12;
    const bool leap = yearNumber % 4 == 0 && (yearNumber % 100 != 0 || yearNumber % 400 == 0);
    const int monthLength = monthLengths[knownMonth ? static_cast<std::size_t>(monthNumber) : 0] +
                            (monthNumber == 2 && leap ? 1 : 0);
    valid &= knownMonth && dayNumber >= 1 && dayNumber <= monthLength;
    // Years begin in March here, so that the leap day ends one; the year 0000 is shifted by an
    // era to keep the divisions on positive numbers.
    const int shiftedYear = yearNumber - (monthNumber <= 2 ? 1 : 0) + 400;
    const int era = shiftedYear / 400;
    const int yearOfEra = shiftedYear - era * 400;
    const int dayOfYear =
        (153 * (monthNumber > 2 ? monthNumber - 3 : monthNumber + 9) + 2) / 5 + dayNumber - 1;
    const int dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    constexpr std::int64_t daysPerEra = 146097;
    // 0000-03-01 in the shifted calendar is 719468 days before 1970-01-01, plus the era added.
    return (era - 1) * daysPerEra + dayOfEra - 719468;
}

// Writes `value` as `count` decimal digits at `out`, leading zeros included.
char* writeDigits(char* out, std::int64_t value, std::size_t count) {
    for (std::size_t index = count; index > 0; --index) {
        out[index - 1] = static_cast<char>('0' + value % 10);
        value /= 10;
    }
    return out + count;
}

}  // namespace

std::size_t write(const Date& date, char* out) {
    const auto day = floor<days>(date);
    const year_month_day calendar{day};
    const int yearNumber = static_cast<int>(calendar.year());
    if (yearNumber < 0 || yearNumber > 9999) {
        return 0;
    }
    const hh_mm_ss time{date - day};
    char* next = writeDigits(out, yearNumber, 4);
    *next++ = '-';
    next = writeDigits(next, static_cast<unsigned>(calendar.month()), 2);
    *next++ = '-';
    next = writeDigits(next, static_cast<unsigned>(calendar.day()), 2);
    *next++ = 'T';
    next = writeDigits(next, time.hours().count(), 2);
    *next++ = ':';
    next = writeDigits(next, time.minutes().count(), 2);
    *next++ = ':';
    next = writeDigits(next, time.seconds().count(), 2);
    auto fraction = time.subseconds().count();
    if (fraction != 0) {
        std::size_t width = 6;
        while (fraction % 10 == 0) {
            fraction /= 10;
            --width;
        }
        *next++ = '.';
        next = writeDigits(next, fraction, width);
    }
    *next++ = 'Z';
    return static_cast<std::size_t>(next - out);
}

std::optional<std::string> format(const Date& date) {
    std::array<char, longestText> text{};
    const std::size_t length = write(date, text.data());
    if (length == 0) {
        return std::nullopt;
    }
    return std::string{text.data(), length};
}

std::optional<Date> parse(std::string_view text) {
    // YYYY-MM-DDTHH:MM:SS is 19 characters; the "Z" makes 20.
    constexpr std::size_t fixedLength = 19;
    // The refusals are the rare case, and marked so: otherwise GCC takes the arithmetic after
    // them for seldom run, compiles it for size, and divides by its constants with a division
    // instruction, several times a date.
    if (text.size() < fixedLength + 1 || text.back() != 'Z') [[unlikely]] {
        return std::nullopt;
    }
    if (text[4] != '-' || text[7] != '-' || text[10] != 'T' || text[13] != ':' || text[16] != ':')
        [[unlikely]] {
        return std::nullopt;
    }
    bool valid = true;
    const int yearNumber = digits(text, 0, 4, valid);
    const int monthNumber = digits(text, 5, 2, valid);
    const int dayNumber = digits(text, 8, 2, valid);
    const int hour = digits(text, 11, 2, valid);
    const int minute = digits(text, 14, 2, valid);
    const int second = digits(text, 17, 2, valid);
    const std::int64_t daysSince1970 = daysSinceEpoch(yearNumber, monthNumber, dayNumber, valid);
    if (!valid || hour > 23 || minute > 59 || second > 59) [[unlikely]] {
        return std::nullopt;
    }
    std::int64_t microsecondsPart = 0;
    const std::string_view rest = text.substr(fixedLength, text.size() - fixedLength - 1);
    if (!rest.empty()) {
        if (rest.front() != '.' || rest.size() < 2 || rest.size() > 7) {
            return std::nullopt;
        }
        bool validFraction = true;
        const int fraction = digits(rest, 1, rest.size() - 1, validFraction);
        if (!validFraction) {
            return std::nullopt;
        }
        constexpr std::array<std::int64_t, 7> scale{1, 100000, 10000, 1000, 100, 10, 1};
        microsecondsPart = fraction * scale[rest.size() - 1];
    }
    return Date{sys_days{days{daysSince1970}}} + hours{hour} + minutes{minute} + seconds{second} +
           microseconds{microsecondsPart};
}

}  // namespace screenweaver::ISO8601
