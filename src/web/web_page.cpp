#include "web/web_page.h"

#include <curl/curl.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "base/version_text.h"

namespace {

struct Closer {
    void operator()(CURL* request) const { curl_easy_cleanup(request); }
};

/// The part of a page that is wanted, as far as it has arrived.
struct Beginning {
    std::string bytes;
    std::size_t most;
};

/// Returning fewer bytes than offered ends the request.
std::size_t take(const char* bytes, std::size_t, std::size_t count, void* wanted) {
    auto& page = *static_cast<Beginning*>(wanted);
    const std::size_t taken = std::min(count, page.most - page.bytes.size());
    page.bytes.append(bytes, taken);
    return taken;
}

/// The value of the first of the two variables that is set and not empty, else "".
std::string environment(const char* name, const char* otherwise) {
    for (const char* variable : {name, otherwise}) {
        if (const char* value = std::getenv(variable); value != nullptr && *value != '\0')
            return value;
    }
    return {};
}

/// The servers that are contacted without the proxy: this machine, and those of no_proxy.
std::string proxy_exceptions() {
    const std::string named = environment("no_proxy", "NO_PROXY");
    return named == "*" ? named : "localhost,127.0.0.0/8,::1," + named;
}

}  // namespace

std::optional<std::string> beginning_of_page(const std::string& address, std::size_t most,
                                             std::chrono::milliseconds limit) {
    static const CURLcode ready = curl_global_init(CURL_GLOBAL_NOTHING);  // http needs no TLS
    const std::unique_ptr<CURL, Closer> request(ready == CURLE_OK ? curl_easy_init() : nullptr);
    if (!request)
        return std::nullopt;
    CURL* const curl = request.get();
    // libcurl itself leaves HTTP_PROXY alone, for the sake of scripts that a web server runs.
    const std::string proxy = environment("http_proxy", "HTTP_PROXY");
    const std::string agent = "Vantreo/" + version_text().utf8_string();
    Beginning page{{}, most};
    curl_easy_setopt(curl, CURLOPT_URL, address.c_str());
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "http");
    curl_easy_setopt(curl, CURLOPT_PROXY, proxy.c_str());
    curl_easy_setopt(curl, CURLOPT_NOPROXY, proxy_exceptions().c_str());
    curl_easy_setopt(curl, CURLOPT_USERAGENT, agent.c_str());
    curl_easy_setopt(curl, CURLOPT_FAILONERROR, 1L);
    curl_easy_setopt(curl, CURLOPT_TIMEOUT_MS, std::max(1L, static_cast<long>(limit.count())));
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl, CURLOPT_QUICK_EXIT,
                     1L);  // without waiting for the end of a name look-up
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, take);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &page);
    const CURLcode result = curl_easy_perform(curl);
    if (result != CURLE_OK && page.bytes.empty())
        return std::nullopt;
    return page.bytes;
}
