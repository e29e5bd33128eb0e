#include "core/stop_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <string>

#ifdef __linux__
#include <sys/prctl.h>
#endif

namespace bundle {

namespace {

// Signal handlers can use nothing but static storage. Neither end of the pipe blocks.
volatile std::sig_atomic_t first_signal = 0;
std::array<int, 2> wake_pipe{-1, -1};

int started_by = 0;

void wake() {
    const int saved = errno;
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(wake_pipe[1], &byte, 1);
    errno = saved;
}

extern "C" void remember_stop(int signal) {
    if (first_signal == 0) {
        first_signal = signal;
    }
    wake();
}

extern "C" void notice_child(int) {
    wake();
}

void set_handler(int signal, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART | (signal == SIGCHLD ? SA_NOCLDSTOP : 0);
    sigemptyset(&action.sa_mask);
    ::sigaction(signal, &action, nullptr);
}

void open_wake_pipe() {
    if (wake_pipe[0] >= 0 || ::pipe(wake_pipe.data()) != 0) {
        return;
    }
    for (const int end : wake_pipe) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, O_NONBLOCK);
    }
}

/// Else a file opened later could become a standard stream that was closed at the start.
void fill_standard_streams() {
    int descriptor = ::open("/dev/null", O_RDWR);
    while (descriptor >= 0 && descriptor <= STDERR_FILENO) {
        descriptor = ::open("/dev/null", O_RDWR);
    }
    ::close(descriptor);
}

}  // namespace

StopSignals::StopSignals(std::initializer_list<int> stopping, std::initializer_list<int> ignored) {
    fill_standard_streams();
    open_wake_pipe();
    set_handler(SIGPIPE, SIG_IGN);
    // Writing beyond a size limit then fails with a message, also in programs started from here.
    set_handler(SIGXFSZ, SIG_IGN);
    set_handler(SIGCHLD, notice_child);
    for (const int signal : ignored) {
        set_handler(signal, SIG_IGN);
    }
    for (const int signal : stopping) {
        set_handler(signal, remember_stop);
    }
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

int StopSignals::received() const {
    return first_signal;
}

Failure StopSignals::failure() const {
    return {
        "stopped by signal " + std::to_string(received()) + " (" + ::strsignal(received()) + ")",
        128 + received(),
        {},
        Cause::kEnded};
}

int StopSignals::wake_descriptor() const {
    return wake_pipe[0];
}

void StopSignals::drain() const {
    std::array<char, 64> bytes{};
    while (::read(wake_pipe[0], bytes.data(), bytes.size()) > 0) {
    }
}

int first_parent() {
    if (started_by == 0) {
        started_by = ::getppid();
    }
    return started_by;
}

void end_with_parent(int parent) {
    started_by = parent;
#ifdef __linux__
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() != parent) {
        std::_Exit(128 + SIGTERM);
    }
#endif
}

}  // namespace bundle
