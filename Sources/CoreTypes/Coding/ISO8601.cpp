#include "CoreTypes/Coding/ISO8601.hpp"

#include <array>
#include <cstdint>

namespace screenweaver::ISO8601 {

namespace {

using namespace std::chrono;

// Reads `count` decimal digits at `offset`; nothing if any is not a digit.
std::optional<int> digits(std::string_view text, std::size_t offset, std::size_t count) {
    int value = 0;
    for (std::size_t index = offset; index < offset + count; ++index) {
        const char character = text[index];
        if (character < '0' || character > '9') {
            return std::nullopt;
        }
        value = value * 10 + (character - '0');
    }
    return value;
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
    if (text.size() < fixedLength + 1 || text.back() != 'Z') {
        return std::nullopt;
    }
    if (text[4] != '-' || text[7] != '-' || text[10] != 'T' || text[13] != ':' || text[16] != ':') {
        return std::nullopt;
    }
    const auto yearNumber = digits(text, 0, 4);
    const auto monthNumber = digits(text, 5, 2);
    const auto dayNumber = digits(text, 8, 2);
    const auto hour = digits(text, 11, 2);
    const auto minute = digits(text, 14, 2);
    const auto second = digits(text, 17, 2);
    if (!yearNumber || !monthNumber || !dayNumber || !hour || !minute || !second) {
        return std::nullopt;
    }
    const year_month_day calendar{year{*yearNumber}, month{static_cast<unsigned>(*monthNumber)},
                                  day{static_cast<unsigned>(*dayNumber)}};
    if (!calendar.ok() || *hour > 23 || *minute > 59 || *second > 59) {
        return std::nullopt;
    }
    std::int64_t microsecondsPart = 0;
    const std::string_view rest = text.substr(fixedLength, text.size() - fixedLength - 1);
    if (!rest.empty()) {
        if (rest.front() != '.' || rest.size() < 2 || rest.size() > 7) {
            return std::nullopt;
        }
        const auto fraction = digits(rest, 1, rest.size() - 1);
        if (!fraction) {
            return std::nullopt;
        }
        constexpr std::array<std::int64_t, 7> scale{1, 100000, 10000, 1000, 100, 10, 1};
        microsecondsPart = *fraction * scale[rest.size() - 1];
    }
    return Date{sys_days{calendar}} + hours{*hour} + minutes{*minute} + seconds{*second} +
           microseconds{microsecondsPart};
}

}  // namespace screenweaver::ISO8601
