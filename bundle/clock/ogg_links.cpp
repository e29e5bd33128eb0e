#include "clock/ogg_links.h"

#include <string_view>

namespace bundle {

namespace {

constexpr std::string_view kPage = "OggS";
constexpr std::size_t kTypeAt = 5;
constexpr std::size_t kSegmentsAt = 26;
constexpr std::size_t kHeader = 27;
constexpr std::int64_t kLongestHeader = 27 + 255;
constexpr unsigned char kOpensStream = 2;

unsigned char byte_at(const std::string& page, std::size_t at) {
    return static_cast<unsigned char>(page[at]);
}

/// How long a page is that begins so; 0 when it is none.
std::int64_t page_size(const std::string& page) {
    if (page.size() < kHeader || !page.starts_with(kPage)) {
        return 0;
    }
    const std::size_t end = kHeader + byte_at(page, kSegmentsAt);
    if (page.size() < end) {
        return 0;
    }
    std::int64_t size = static_cast<std::int64_t>(end);
    for (std::size_t i = kHeader; i < end; ++i) {
        size += byte_at(page, i);
    }
    return size;
}

}  // namespace

std::vector<ByteRange> ogg_links(std::int64_t size, const ReadBytes& read) {
    std::vector<ByteRange> links;
    bool is_open = false;
    std::int64_t at = 0;
    while (at < size) {
        const std::string page = read(at, kLongestHeader);
        const std::int64_t length = page_size(page);
        if (length == 0) {
            break;
        }
        const bool opens = (byte_at(page, kTypeAt) & kOpensStream) != 0;
        if (opens && !is_open) {
            links.push_back({at, at});
        }
        is_open = opens;
        at += length;
        if (!links.empty()) {
            links.back().to = at;
        }
    }
    return links;
}

}  // namespace bundle
