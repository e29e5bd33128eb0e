#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace bundle {

/// A fraction, such as the frame rate 30000/1001.
struct Rational {
    std::int64_t numerator = 0;
    std::int64_t denominator = 1;

    double value() const {
        return static_cast<double>(numerator) / static_cast<double>(denominator);
    }
    bool operator==(const Rational&) const = default;
};

/// A whole decimal number; empty unless the whole text is one that fits.
std::optional<std::int64_t> parse_integer(std::string_view text);

/// A decimal number such as "12", "-0.5" or "1e3"; empty unless the whole text is one, and finite.
std::optional<double> parse_decimal(std::string_view text);

/// "N" or "N/D" (or "N:D" with that separator), both above zero; empty for anything else.
std::optional<Rational> parse_rational(std::string_view text, char separator = '/');

/// With at most two decimals and no trailing zeros: 25, 12.5, 29.97.
std::string two_decimals(double value);

}  // namespace bundle
