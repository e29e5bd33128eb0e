#include "web/version_request.h"

#include <wx/protocol/http.h>
#include <wx/regex.h>
#include <wx/socket.h>
#include <wx/stream.h>
#include <wx/url.h>
#include <wx/utils.h>

#include <array>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <utility>

#include "app/utf8.h"
#include "app/version_text.h"
#include "web/site.h"

namespace {

using Reply = std::optional<wxString>;

/// Nobody but the site itself is asked. The toolkit looks once, at its first address, for a proxy
/// in the environment; it finds none. (Taking one away from an address later breaks its
/// bookkeeping.)
void do_without_proxy(const wxString& address) {
    wxString proxy;
    if (wxGetEnv("HTTP_PROXY", &proxy)) {
        wxUnsetEnv("HTTP_PROXY");
        const wxURL first(address);
        wxSetEnv("HTTP_PROXY", proxy);  // for the browser
    }
}

/// Asks and reads one block; each wait on the network ends after `limit`.
Reply ask(const std::string& address, std::chrono::seconds limit) {
    wxURL url(wxString::FromUTF8(address));
    if (url.GetError() != wxURL_NOERR)
        return std::nullopt;
    url.GetProtocol().SetTimeout(static_cast<long>(limit.count()));
    const std::unique_ptr<wxInputStream> stream(url.GetInputStream());
    if (!stream)
        return std::nullopt;
    std::array<char, 1024> block{};
    const size_t length = stream->Read(block.data(), block.size()).LastRead();
    return reply_text({block.data(), length});
}

}  // namespace

wxString version_request_address() {
    return site_base() + "current_version.php?version=" + version_text() + "&os=" + platform_word();
}

std::optional<wxString> request_reply(const wxString& address, std::chrono::milliseconds limit) {
    // The toolkit bounds each single wait, not a server that sends a byte a second, nor the look-up
    // of a name. So a thread asks, and whatever it has not brought in time is forgotten.
    wxSocketBase::Initialize();
    do_without_proxy(address);
    std::promise<Reply> promise;
    std::future<Reply> reply = promise.get_future();
    const auto wait = std::chrono::ceil<std::chrono::seconds>(limit);
    std::thread([promise = std::move(promise), address = address.utf8_string(), wait]() mutable {
        promise.set_value(ask(address, wait));
    }).detach();
    if (reply.wait_for(limit) != std::future_status::ready)
        return std::nullopt;
    return reply.get();
}

wxString reply_text(std::string_view bytes) {
    constexpr int kLongestCut = 3;
    wxString text;
    for (int cut = 0; cut <= kLongestCut && text.empty() && !bytes.empty(); ++cut) {
        text = text_from_utf8(bytes);
        bytes.remove_suffix(1);
    }
    return text;
}

double released_version(const wxString& reply) {
    static const wxRegEx pattern("CURRENT_VERSION=>([0-9/.]*)b?<=CURRENT_VERSION");
    double version = 0.0;
    if (pattern.Matches(reply))
        pattern.GetMatch(reply, 1).ToCDouble(&version);
    return version;
}
