#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

/// The beginning of the page at `address`, at most `most` bytes of it. Plain http, through the
/// proxy that http_proxy names unless no_proxy excepts the server; this machine is asked directly.
/// A redirect is not followed: its own page counts.
///
/// Nothing for an error (a status of 400 and above), and when nothing of the page has come within
/// `limit`, the look-up of the name included. Of a page that is not complete then, what has come.
/// Blocks.
std::optional<std::string> beginning_of_page(const std::string& address, std::size_t most,
                                             std::chrono::milliseconds limit);
