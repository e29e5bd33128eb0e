#pragma once

#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

/// Answers one request on loopback with these pieces, with a `pause` after each, and then closes
/// the connection or keeps it open until the other side closes it.
class PageServer {
  public:
    enum class End { closes, staysOpen };

    PageServer(std::vector<std::string> pieces, End end, std::chrono::milliseconds pause = {});
    PageServer(const PageServer&) = delete;
    PageServer& operator=(const PageServer&) = delete;
    ~PageServer();

    /// "127.0.0.1:PORT".
    std::string name() const;

    /// The request's head; complete once the first piece is sent.
    std::string request() const { return head; }

    /// Waits until the other side closes the connection; false at the deadline.
    bool is_left_within(std::chrono::milliseconds limit) const;

  private:
    void serve();
    void send_all(int connection);

    std::vector<std::string> answer;
    End atEnd;
    std::chrono::milliseconds between;
    int listener;
    std::string head;
    std::atomic<bool> ending = false;
    std::atomic<bool> left = false;
    std::thread thread;
};
