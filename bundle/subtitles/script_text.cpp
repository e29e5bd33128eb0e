#include "subtitles/script_text.h"

#include <algorithm>

#include "core/lines.h"
#include "subtitles/text_encoding.h"

namespace bundle {

namespace {

bool is_ascii(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

}  // namespace

Result<ReadableText> readable_text(std::string_view bytes) {
    ReadableText readable;
    int in_utf8 = 0;
    for (std::string_view rest = bytes; !rest.empty();) {
        const std::string_view line = take_line(rest);
        if (is_utf8_text(line)) {
            in_utf8 += is_ascii(line) ? 0 : 1;
            readable.text.append(line).append(rest.empty() && !bytes.ends_with('\n') ? "" : "\n");
        } else {
            ++readable.damaged_lines;
        }
    }
    if (readable.damaged_lines <= in_utf8) {
        return readable;
    }
    auto text = text_in_utf8(bytes);
    return text ? Result<ReadableText>(ReadableText{*text}) : text.failure();
}

}  // namespace bundle
