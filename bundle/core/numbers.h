#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace bundle {

/// A fraction, as frame rates are written: 30000/1001.
struct Rational {
    std::int64_t numerator = 0;
    std::int64_t denominator = 1;

    double value() const {
        return static_cast<double>(numerator) / static_cast<double>(denominator);
    }
    bool operator==(const Rational&) const = default;
};

/// A whole decimal number; empty unless it is the whole text and fits.
std::optional<std::int64_t> parse_integer(std::string_view text);

/// A decimal number such as "12", "-0.5" or "1e3"; empty unless it is the whole text and finite.
std::optional<double> parse_decimal(std::string_view text);

/// "N" or "N/D" (or "N:D" with that separator), both above zero; empty for anything else.
std::optional<Rational> parse_rational(std::string_view text, char separator = '/');

/// At most two decimals, none of them a trailing zero: 25, 12.5, 29.97.
std::string two_decimals(double value);

}  // namespace bundle
