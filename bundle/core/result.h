#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "core/cause.h"

namespace bundle {

/// Exit statuses of both tools; after a signal it is 128 plus the signal's number.
inline constexpr int kStatusFailed = 1;
inline constexpr int kStatusUsage = 2;

/// Why a step failed: a sentence for the console, and the tool's exit status.
struct Failure {
    std::string message;
    int status = kStatusFailed;
    std::string details = {};  ///< the last lines of the tool that failed; may be empty
    Cause cause = Cause::kUnknown;
};

/// A failure with a known cause.
inline Failure failure_by(Cause cause, std::string message) {
    return {std::move(message), kStatusFailed, {}, cause};
}

/// The failure with `what` in front of its message.
inline Failure about(const std::string& what, Failure failure) {
    failure.message = what + ": " + failure.message;
    return failure;
}

/// The outcome of a step without a value; empty after a success. Unlike a `Result` it is true for a
/// failure, for `if (auto failure = step()) { return failure; }`.
using MaybeFailure = std::optional<Failure>;

/// The outcome of a step: its value, or why it failed.
template <typename T>
class [[nodiscard]] Result {
  public:
    Result(T value) : outcome_(std::move(value)) {}
    Result(Failure failure) : outcome_(std::move(failure)) {}

    explicit operator bool() const { return std::holds_alternative<T>(outcome_); }

    /// The value; only after the test for success.
    T& operator*() { return std::get<T>(outcome_); }
    const T& operator*() const { return std::get<T>(outcome_); }
    T* operator->() { return &std::get<T>(outcome_); }
    const T* operator->() const { return &std::get<T>(outcome_); }

    /// The reason; only after the test for failure.
    const Failure& failure() const { return std::get<Failure>(outcome_); }

  private:
    std::variant<T, Failure> outcome_;
};

}  // namespace bundle
