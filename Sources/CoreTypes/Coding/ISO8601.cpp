#include "CoreTypes/Coding/ISO8601.hpp"

#include <array>
#include <cstdint>
#include <fmt/format.h>

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

}  // namespace

std::optional<std::string> format(const Date& date) {
    const auto day = floor<days>(date);
    const year_month_day calendar{day};
    const int yearNumber = static_cast<int>(calendar.year());
    if (yearNumber < 0 || yearNumber > 9999) {
        return std::nullopt;
    }
    const hh_mm_ss time{date - day};
    std::string text =
        fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}", yearNumber,
                    static_cast<unsigned>(calendar.month()), static_cast<unsigned>(calendar.day()),
                    time.hours().count(), time.minutes().count(), time.seconds().count());
    auto fraction = time.subseconds().count();
    if (fraction != 0) {
        int width = 6;
        while (fraction % 10 == 0) {
            fraction /= 10;
            --width;
        }
        text += fmt::format(".{:0{}}", fraction, width);
    }
    text += 'Z';
    return text;
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
