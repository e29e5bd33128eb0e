#include "core/numbers.h"

#include <charconv>
#include <cmath>
#include <cstdlib>

#include "core/formatted.h"

namespace bundle {

std::optional<std::int64_t> parse_integer(std::string_view text) {
    std::int64_t value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end) {
        return std::nullopt;
    }
    return value;
}

std::optional<double> parse_decimal(std::string_view text) {
    const std::string copy(text);
    char* stop = nullptr;
    const double value = std::strtod(copy.c_str(), &stop);
    if (copy.empty() || stop != copy.c_str() + copy.size() || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

std::optional<Rational> parse_rational(std::string_view text, char separator) {
    const std::size_t cut = text.find(separator);
    const auto numerator = parse_integer(text.substr(0, cut));
    const auto denominator = cut == std::string_view::npos ? std::optional<std::int64_t>(1)
                                                           : parse_integer(text.substr(cut + 1));
    if (!numerator || !denominator || *numerator <= 0 || *denominator <= 0) {
        return std::nullopt;
    }
    return Rational{*numerator, *denominator};
}

std::string two_decimals(double value) {
    std::string text = formatted("%.2f", value);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') {
        text.pop_back();
    }
    return text;
}

}  // namespace bundle
