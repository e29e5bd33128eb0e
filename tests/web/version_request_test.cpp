#include "web/version_request.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#include <wx/utils.h>

#include <atomic>
#include <chrono>
#include <cstring>
#include <thread>

#include "support/environment.h"
#include "support/folder.h"
#include "web/page_server.h"

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using End = PageServer::End;

constexpr auto kEnough = 10s;
/// Much less than any limit that a test waits for.
constexpr auto kAtOnce = 2s;

const std::string kText = "CURRENT_VERSION=>1.25<=CURRENT_VERSION";
const std::string kHead = "HTTP/1.1 200 OK\r\n";
const std::string kLength = "Content-Length: " + std::to_string(kText.size()) + "\r\n";

/// The limit is counted in whole milliseconds.
constexpr auto kTick = 2ms;

std::atomic<int> slowLookUps = 0;

/// The environment has no proxies except the test's.
class VersionRequest : public testing::Test {
  protected:
    /// The reply of `server` as the program reads it; `elapsed` is the time that it took.
    std::optional<wxString> ask(const PageServer& server,
                                std::chrono::milliseconds limit = kEnough) {
        return ask("http://" + server.name() + "/page?a=b", limit);
    }

    std::optional<wxString> ask(const std::string& address, std::chrono::milliseconds limit) {
        const auto start = Clock::now();
        auto reply = request_reply(wxString::FromUTF8(address), limit);
        elapsed = Clock::now() - start;
        return reply;
    }

    Environment proxy{"http_proxy", ""};
    Environment upperProxy{"HTTP_PROXY", ""};
    Environment exceptions{"no_proxy", ""};
    Environment upperExceptions{"NO_PROXY", ""};
    Clock::duration elapsed{};
};

}  // namespace

/// Replaces the C library's: looking up this name takes longer than any test.
extern "C" int getaddrinfo(const char* host, const char* port, const addrinfo* hints,
                           addrinfo** found) {
    if (std::strcmp(host, "slow.invalid") == 0) {
        ++slowLookUps;
        std::this_thread::sleep_for(std::chrono::minutes(1));
        return EAI_AGAIN;
    }
    using Function = int (*)(const char*, const char*, const addrinfo*, addrinfo**);
    static const auto real = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "getaddrinfo"));
    return real(host, port, hints, found);
}

TEST_F(VersionRequest, AsksWithVersionAndPlatform) {
    wxSetEnv("VANTREO_SITE", "http://127.0.0.1:8080");
    EXPECT_EQ(version_request_address(),
              "http://127.0.0.1:8080/current_version.php?version=1.24&os=Linux");
    wxUnsetEnv("VANTREO_SITE");
}

TEST_F(VersionRequest, FindsTheNumberBetweenTheMarkers) {
    EXPECT_EQ(released_version("CURRENT_VERSION=>1.25<=CURRENT_VERSION"), 1.25);
    EXPECT_EQ(released_version("<html>\nCURRENT_VERSION=>1.3b<=CURRENT_VERSION\n</html>"), 1.3);
    EXPECT_GT(released_version("CURRENT_VERSION=>1.3<=CURRENT_VERSION"), 1.24);
}

TEST_F(VersionRequest, TreatsAnythingElseAsNoRelease) {
    for (const wxString reply :
         {"", "1.25", "CURRENT_VERSION=>1.25", "CURRENT_VERSION=><=CURRENT_VERSION",
          "CURRENT_VERSION=>new<=CURRENT_VERSION"})
        EXPECT_EQ(released_version(reply), 0.0) << reply.utf8_string();
}

TEST_F(VersionRequest, ReadsAReplyThatIsCutInsideACharacter) {
    EXPECT_EQ(reply_text("CURRENT_VERSION=>1.25<=CURRENT_VERSION \xE2\x82"),
              "CURRENT_VERSION=>1.25<=CURRENT_VERSION ");
    EXPECT_EQ(reply_text("CURRENT_VERSION=>1.25<=CURRENT_VERSION \xED\xB8\x96 page"), "");
}

// ---- the start of a page -----------------------------------------------------------------------

TEST_F(VersionRequest, UsesTheFirstOfTwoNumbers) {
    EXPECT_EQ(released_version("CURRENT_VERSION=>1.3<=CURRENT_VERSION\n"
                               "CURRENT_VERSION=>1.2<=CURRENT_VERSION"),
              1.3);
}

TEST_F(VersionRequest, ReadsAReplyThatBeginsWithAByteOrderMark) {
    EXPECT_EQ(released_version(reply_text("\xEF\xBB\xBF" + kText)), 1.25);
}

// ---- the request --------------------------------------------------------------------------------

TEST_F(VersionRequest, AsksTheSiteForThePage) {
    const PageServer server({kHead + kLength + "\r\n" + kText}, End::closes);
    EXPECT_EQ(ask(server), wxString(kText));
    EXPECT_EQ(server.request().substr(0, server.request().find("User-Agent")),
              "GET /page?a=b HTTP/1.1\r\nHost: " + server.name() + "\r\n");
}

TEST_F(VersionRequest, ReadsACompleteReplyAtOnceAlthoughTheConnectionStaysOpen) {
    const PageServer server({kHead + kLength + "Connection: keep-alive\r\n\r\n" + kText},
                            End::staysOpen);
    EXPECT_EQ(ask(server), wxString(kText));
    EXPECT_LT(elapsed, kAtOnce);
    EXPECT_TRUE(server.is_left_within(1s));
}

TEST_F(VersionRequest, ReadsAReplyWithoutALengthAtTheTimeout) {
    const PageServer server({kHead + "\r\n" + kText}, End::staysOpen);
    EXPECT_EQ(ask(server, 500ms), wxString(kText));
    EXPECT_GE(elapsed, 500ms - kTick);
    EXPECT_LT(elapsed, 500ms + kAtOnce);
    EXPECT_TRUE(server.is_left_within(1s));
}

TEST_F(VersionRequest, ReadsABodyThatComesLaterAndInPieces) {
    const PageServer server(
        {kHead, kLength, "\r\n", kText.substr(0, 10), kText.substr(10, 9), kText.substr(19)},
        End::staysOpen, 100ms);
    EXPECT_EQ(ask(server), wxString(kText));
    const PageServer closing({kHead + "\r\n", kText.substr(0, 10), kText.substr(10)}, End::closes,
                             100ms);
    EXPECT_EQ(ask(closing), wxString(kText));
}

TEST_F(VersionRequest, ReadsABodyInChunks) {
    const PageServer server(
        {kHead + "Transfer-Encoding: chunked\r\n\r\n", "5\r\n" + kText.substr(0, 5) + "\r\n",
         "21\r\n" + kText.substr(5) + "\r\n0\r\n\r\n"},
        End::staysOpen, 50ms);
    EXPECT_EQ(ask(server), wxString(kText));
    EXPECT_LT(elapsed, kAtOnce);
}

TEST_F(VersionRequest, ReadsNoMoreThanOneBlock) {
    const PageServer server({kHead + "\r\n" + kText + std::string(100'000, 'x')}, End::staysOpen);
    const auto reply = ask(server);
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->length(), 1024U);
    EXPECT_EQ(released_version(*reply), 1.25);
    EXPECT_LT(elapsed, kAtOnce);
}

TEST_F(VersionRequest, TreatsAnErrorAsNoAnswer) {
    const PageServer server({"HTTP/1.1 404 Not Found\r\n" + kLength + "\r\n" + kText},
                            End::staysOpen);
    EXPECT_FALSE(ask(server));
    EXPECT_LT(elapsed, kAtOnce);
}

TEST_F(VersionRequest, DoesNotFollowARedirect) {
    const PageServer target({kHead + kLength + "\r\n" + kText}, End::closes);
    const PageServer server({"HTTP/1.1 301 Moved Permanently\r\nLocation: http://" + target.name() +
                             "/\r\nContent-Length: 5\r\n\r\nmoved"},
                            End::staysOpen);
    EXPECT_EQ(ask(server), "moved");
    EXPECT_EQ(target.request(), "");
}

TEST_F(VersionRequest, DisconnectsFromASilentServerAtItsLimit) {
    const PageServer server({}, End::staysOpen);
    EXPECT_FALSE(ask(server, 300ms));
    EXPECT_GE(elapsed, 300ms - kTick);
    EXPECT_LT(elapsed, 300ms + kAtOnce);
    EXPECT_TRUE(server.is_left_within(1s));
}

TEST_F(VersionRequest, DisconnectsFromASlowServerAtItsLimit) {
    const std::string reply = kHead + kLength + "\r\n" + kText;
    std::vector<std::string> bytes;
    for (const char byte : reply)
        bytes.emplace_back(1, byte);
    const PageServer server(bytes, End::staysOpen, 50ms);
    EXPECT_FALSE(ask(server, 500ms));
    EXPECT_GE(elapsed, 500ms - kTick);
    EXPECT_LT(elapsed, 500ms + kAtOnce);
    EXPECT_TRUE(server.is_left_within(1s));
}

TEST_F(VersionRequest, GivesUpAtItsLimitWhenTheConnectionIsNotAccepted) {
    // A connection that is never accepted fills the queue, and the system drops the next ones.
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    const int listener = ::socket(AF_INET, SOCK_STREAM, 0);
    ASSERT_EQ(::bind(listener, reinterpret_cast<const sockaddr*>(&address), size), 0);
    ASSERT_EQ(::listen(listener, 0), 0);
    ASSERT_EQ(::getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size), 0);
    const int filler = ::socket(AF_INET, SOCK_STREAM, 0);
    ASSERT_EQ(::connect(filler, reinterpret_cast<const sockaddr*>(&address), size), 0);

    EXPECT_FALSE(ask("http://127.0.0.1:" + std::to_string(::ntohs(address.sin_port)) + "/", 300ms));
    EXPECT_GE(elapsed, 300ms - kTick);
    EXPECT_LT(elapsed, 300ms + kAtOnce);
    ::close(filler);
    ::close(listener);
}

TEST_F(VersionRequest, GivesUpAtItsLimitDuringASlowNameLookUp) {
    EXPECT_FALSE(ask("http://slow.invalid/", 300ms));
    EXPECT_EQ(slowLookUps, 1);
    EXPECT_GE(elapsed, 300ms - kTick);
    EXPECT_LT(elapsed, 300ms + kAtOnce);
}

TEST_F(VersionRequest, SupportsOnlyPlainHttp) {
    for (const char* address : {"https://127.0.0.1/", "ftp://127.0.0.1/", "file:///etc/passwd",
                                "127.0.0.1", "http://", ""}) {
        EXPECT_FALSE(ask(address, kEnough)) << address;
        EXPECT_LT(elapsed, kAtOnce) << address;
    }
}

TEST_F(VersionRequest, SendsNameAndPasswordOfTheAddress) {
    const PageServer server({kHead + kLength + "\r\n" + kText}, End::closes);
    EXPECT_TRUE(ask("http://me:a%20b@" + server.name() + "/", kEnough));
    EXPECT_NE(server.request().find("\r\nAuthorization: Basic bWU6YSBi\r\n"), std::string::npos)
        << server.request();
}

// ---- the proxy ----------------------------------------------------------------------------------

TEST_F(VersionRequest, AsksTheProxyForTheWholeAddressWithoutLookingItUp) {
    const PageServer server({kHead + kLength + "\r\n" + kText}, End::closes);
    const Environment through("http_proxy", "http://me:secret@" + server.name() + "/");
    EXPECT_EQ(ask("http://no-such-name.invalid:8080/page?a=b", kEnough), wxString(kText));
    const std::string& request = server.request();
    EXPECT_TRUE(
        request.starts_with("GET http://no-such-name.invalid:8080/page?a=b HTTP/1.1\r\n"
                            "Host: no-such-name.invalid:8080\r\n"))
        << request;
    EXPECT_NE(request.find("\r\nProxy-Authorization: Basic bWU6c2VjcmV0\r\n"), std::string::npos)
        << request;
}

TEST_F(VersionRequest, LeavesTheUsualPortOutOfTheAddress) {
    const PageServer server({kHead + kLength + "\r\n" + kText}, End::closes);
    const Environment through("HTTP_PROXY", server.name());
    EXPECT_TRUE(ask("http://no-such-name.invalid", kEnough));
    EXPECT_TRUE(
        server.request().starts_with("GET http://no-such-name.invalid/ HTTP/1.1\r\n"
                                     "Host: no-such-name.invalid\r\n"))
        << server.request();
}

TEST_F(VersionRequest, AsksThisMachineDirectly) {
    const PageServer server({kHead + kLength + "\r\n" + kText}, End::closes);
    const PageServer unused({kHead + kLength + "\r\n" + kText}, End::closes);
    const Environment through("http_proxy", unused.name());
    EXPECT_EQ(ask(server), wxString(kText));
    EXPECT_EQ(unused.request(), "");
}

TEST_F(VersionRequest, AsksAnExcludedServerDirectly) {
    const PageServer unused({kHead + kLength + "\r\n" + kText}, End::closes);
    const Environment through("http_proxy", unused.name());
    const Environment excepted("no_proxy", "invalid");
    EXPECT_FALSE(ask("http://no-such-name.invalid/", kEnough));
    EXPECT_EQ(unused.request(), "");
}

TEST_F(VersionRequest, AsksEveryServerDirectlyWhenAllAreExcluded) {
    const PageServer unused({kHead + kLength + "\r\n" + kText}, End::closes);
    const Environment through("http_proxy", unused.name());
    const Environment excepted("NO_PROXY", "*");
    EXPECT_FALSE(ask("http://no-such-name.invalid/", kEnough));
    EXPECT_EQ(unused.request(), "");
}

TEST_F(VersionRequest, AsksNoServerWhenTheProxyCannotBeUsed) {
    const Environment through("http_proxy", "socks5://127.0.0.1:1");
    EXPECT_FALSE(ask("http://no-such-name.invalid/", kEnough));
    EXPECT_LT(elapsed, kAtOnce);
}
