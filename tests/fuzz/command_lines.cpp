// From a path in the list to the tools' arguments: the command line as the program writes it, split
// as the toolkit splits it, read as the tools read it.

#include <wx/cmdline.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/utf8.h"
#include "convert/commands.h"
#include "ffmpeg/request.h"
#include "fuzz/require.h"
#include "mp4box/mux.h"

namespace {

/// The arguments that the tool gets, without its own name.
std::vector<std::string> arguments_of(const wxString& command) {
    std::vector<std::string> arguments;
    for (const wxString& word :
         wxCmdLineParser::ConvertStringToArgs(command, wxCMD_LINE_SPLIT_UNIX))
        arguments.push_back(word.utf8_string());
    REQUIRE(!arguments.empty());
    arguments.erase(arguments.begin());
    return arguments;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3)
        return 0;
    const std::string text(reinterpret_cast<const char*>(data) + 3, size - 3);
    // File names contain no NUL, and the program accepts only UTF-8.
    const wxString path = text.find('\0') == std::string::npos ? text_from_utf8(text) : "";
    if (path.empty())
        return 0;
    const wxString output = "/out/" + path;

    REQUIRE(arguments_of(probe_command(path)) == (std::vector<std::string>{"-i", text}));

    const FrameSize asked{2 + data[0] * 4, 2 + data[1] * 4};
    const auto transcode = bundle::parse_transcode(
        arguments_of(transcode_command(path, data[2] / 4.0, asked, output)));
    REQUIRE(static_cast<bool>(transcode));
    REQUIRE(transcode->input == text && transcode->output == "/out/" + text);
    REQUIRE(transcode->width == asked.width && transcode->height == asked.height);
    REQUIRE(transcode->rate.has_value() == (data[2] / 4.0 > 29.97));

    const auto mux = bundle::parse_subtitle_request(arguments_of(subtitle_command(path, output)));
    REQUIRE(static_cast<bool>(mux));
    REQUIRE(mux->subtitles == text && mux->mp4 == "/out/" + text);
    return 0;
}
