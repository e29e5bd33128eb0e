#include "web/version_request.h"

#include <wx/mstream.h>
#include <wx/protocol/protocol.h>
#include <wx/regex.h>
#include <wx/url.h>

#include <array>
#include <memory>
#include <string>
#include <utility>

#include "base/utf8.h"
#include "base/version_text.h"
#include "web/site.h"
#include "web/web_page.h"

namespace {

/// The most that is read of a reply, in bytes.
constexpr std::size_t kBlock = 1024;

class PageRequest : public wxProtocol {
  public:
    PageRequest(std::string page, std::chrono::milliseconds time)
        : address(std::move(page)), limit(time) {}

    wxInputStream* GetInputStream(const wxString&) override {
        const auto page = beginning_of_page(address, kBlock, limit);
        if (!page)
            return nullptr;
        wxMemoryOutputStream copied;
        copied.Write(page->data(), page->size());
        return new wxMemoryInputStream(copied);
    }

    wxString GetContentType() const override { return {}; }
    bool Abort() override { return true; }

  private:
    std::string address;
    std::chrono::milliseconds limit;
};

/// The toolkit's address class with another request. The toolkit's own one only limits single
/// waits, looks up the name of a site behind a proxy, drops the site's port on the way to a proxy,
/// and reads until the server closes the connection.
class PageAddress : public wxURL {
  public:
    PageAddress(const wxString& address, std::chrono::milliseconds limit)
        : wxURL(without_proxy(address)), request(address.utf8_string(), limit) {
        if (m_error != wxURL_NOERR)
            return;
        m_protocol->Destroy();
        m_protocol = &request;
        m_useProxy = true;  // so the toolkit neither connects nor owns
    }

  private:
    /// The toolkit's proxy from HTTP_PROXY would be freed too late, at the end of the program.
    static const wxString& without_proxy(const wxString& address) {
        ms_useDefaultProxy = false;
        return address;
    }

    PageRequest request;
};

}  // namespace

wxString version_request_address() {
    return site_base() + "current_version.php?version=" + version_text() + "&os=" + platform_word();
}

std::optional<wxString> request_reply(const wxString& address, std::chrono::milliseconds limit) {
    PageAddress url(address, limit);
    if (url.GetError() != wxURL_NOERR)
        return std::nullopt;
    const std::unique_ptr<wxInputStream> stream(url.GetInputStream());
    if (!stream)
        return std::nullopt;
    std::array<char, kBlock> block{};
    const size_t length = stream->Read(block.data(), block.size()).LastRead();
    return reply_text({block.data(), length});
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
