#include "web/page_server.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>

namespace {

using namespace std::chrono_literals;

constexpr int kRoundMillis = 10;

bool is_readable(int socket, int millis) {
    pollfd ready{socket, POLLIN, 0};
    return ::poll(&ready, 1, millis) > 0;
}

}  // namespace

PageServer::PageServer(std::vector<std::string> pieces, End end, std::chrono::milliseconds pause)
    : answer(std::move(pieces)),
      atEnd(end),
      between(pause),
      listener(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
    if (::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(listener, 1) != 0)
        ADD_FAILURE() << "no server on loopback";
    thread = std::thread(&PageServer::serve, this);
}

PageServer::~PageServer() {
    ending = true;
    thread.join();
    ::close(listener);
}

std::string PageServer::name() const {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    ::getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
    return "127.0.0.1:" + std::to_string(::ntohs(address.sin_port));
}

bool PageServer::is_left_within(std::chrono::milliseconds limit) const {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!left && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(1ms);
    return left;
}

void PageServer::serve() {
    while (!is_readable(listener, kRoundMillis))
        if (ending)
            return;
    const int connection = ::accept(listener, nullptr, nullptr);
    std::array<char, 1024> bytes{};
    while (head.find("\r\n\r\n") == std::string::npos) {
        const ssize_t count = ::recv(connection, bytes.data(), bytes.size(), 0);
        if (count <= 0)
            break;
        head.append(bytes.data(), static_cast<std::size_t>(count));
    }
    send_all(connection);
    if (atEnd == End::staysOpen)
        while (!ending && !left)
            if (is_readable(connection, kRoundMillis))
                left = ::recv(connection, bytes.data(), bytes.size(), 0) <= 0;
    ::close(connection);
}

void PageServer::send_all(int connection) {
    for (const std::string& piece : answer) {
        if (ending || left)
            return;
        ::send(connection, piece.data(), piece.size(), MSG_NOSIGNAL);
        // The pause ends early when the other side disconnects.
        if (between.count() > 0 && is_readable(connection, static_cast<int>(between.count())))
            left = true;
    }
}
