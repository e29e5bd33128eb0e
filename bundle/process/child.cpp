#include "process/child.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <thread>
#include <utility>

#include "process/program_alias.h"

#ifdef __linux__
#include <sys/prctl.h>
#endif

namespace bundle {

namespace {

constexpr std::chrono::seconds kLongestEnd{2};

Failure start_failure(const Command& command, int error) {
    return {"cannot start " + command.program + ": " + std::strerror(error)};
}

/// What the new process needs, gathered before the fork: after it only async-signal-safe calls are
/// allowed.
struct Launch {
    std::vector<char*> arguments;  ///< the first is the program's path
    int input = -1;
    int output = -1;
    int errors = -1;
    int report = -1;  ///< closed by the exec, or receives its errno
    pid_t parent = 0;
    const std::vector<int>* inherited = nullptr;
};

[[noreturn]] void become(const Launch& launch) {
#ifdef __linux__
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != launch.parent) {
        ::_exit(128 + SIGKILL);
    }
#endif
    const int input = launch.input >= 0 ? launch.input : ::open("/dev/null", O_RDONLY);
    ::dup2(input, STDIN_FILENO);
    ::dup2(launch.output, STDOUT_FILENO);
    ::dup2(launch.errors, STDERR_FILENO);
    for (const int descriptor : *launch.inherited) {
        ::fcntl(descriptor, F_SETFD, 0);
    }
    restore_signals();
    ::execv(launch.arguments[0], launch.arguments.data());
    const int error = errno;
    [[maybe_unused]] const ssize_t written = ::write(launch.report, &error, sizeof error);
    ::_exit(127);
}

/// Forks with all signals blocked, so that none reaches this process's handlers in the child.
pid_t fork_into(const Launch& launch) {
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    ::sigprocmask(SIG_SETMASK, &all, &before);
    const pid_t id = ::fork();
    if (id == 0) {
        become(launch);
    }
    const int error = errno;
    ::sigprocmask(SIG_SETMASK, &before, nullptr);
    errno = error;
    return id;
}

/// Waits until the exec has closed the pipe. Its errno if it failed, else 0.
int exec_error(const UniqueFd& reader) {
    int error = 0;
    ssize_t count = 0;
    do {
        count = ::read(reader.get(), &error, sizeof error);
    } while (count < 0 && errno == EINTR);
    return count == static_cast<ssize_t>(sizeof error) ? error : 0;
}

int exit_status(int status) {
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

}  // namespace

Result<Pipe> open_pipe() {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) {
        return Failure{std::string("cannot open a pipe: ") + std::strerror(errno)};
    }
    Pipe pipe{UniqueFd(ends[0]), UniqueFd(ends[1])};
    for (const int end : ends) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
    }
    return pipe;
}

void end_with_maker() {
    std::signal(SIGTERM, SIG_DFL);
#ifdef __linux__
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
#endif
}

void restore_signals() {
    for (int signal = 1; signal < NSIG; ++signal) {
        struct sigaction action {};
        if (::sigaction(signal, nullptr, &action) == 0 &&
            (action.sa_handler != SIG_IGN || signal == SIGPIPE)) {
            action.sa_handler = SIG_DFL;
            action.sa_flags = 0;
            ::sigaction(signal, &action, nullptr);
        }
    }
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

std::vector<char*> argument_pointers(std::vector<std::string>& words) {
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

void kill_child(pid_t id) {
    ::kill(id, SIGKILL);
    const auto deadline = std::chrono::steady_clock::now() + kLongestEnd;
    while (::waitpid(id, nullptr, WNOHANG) == 0 && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

Result<Child> Child::start(const Command& command) {
    auto output = open_pipe();
    auto errors = open_pipe();
    auto report = open_pipe();
    for (const auto* pipe : {&output, &errors, &report}) {
        if (!*pipe) {
            return pipe->failure();
        }
    }
    std::vector<std::string> words{
        command.alias.empty() ? command.program : path_of_alias(command.program, command.alias)};
    words.insert(words.end(), command.arguments.begin(), command.arguments.end());
    const Launch launch{argument_pointers(words), command.input,        output->writer.get(),
                        errors->writer.get(),     report->writer.get(), ::getpid(),
                        &command.inherited};
    const pid_t id = fork_into(launch);
    if (id < 0) {
        return start_failure(command, errno);
    }
    for (auto* pipe : {&output, &errors, &report}) {
        (*pipe)->writer.reset();
    }
    ::fcntl(output->reader.get(), F_SETFL, O_NONBLOCK);
    ::fcntl(errors->reader.get(), F_SETFL, O_NONBLOCK);
    Child child(id, std::move(output->reader), std::move(errors->reader));
    if (const int error = exec_error(report->reader)) {
        return start_failure(command, error);
    }
    return child;
}

Child::Child(pid_t id, UniqueFd output, UniqueFd errors)
    : id_(id), output_(std::move(output)), errors_(std::move(errors)) {}

Child::Child(Child&& other) noexcept
    : id_(std::exchange(other.id_, 0)),
      output_(std::move(other.output_)),
      errors_(std::move(other.errors_)) {}

Child::~Child() {
    if (id_ > 0) {
        kill_child(id_);
    }
}

std::optional<int> Child::ended() {
    int status = 0;
    if (id_ <= 0 || ::waitpid(id_, &status, WNOHANG) != id_) {
        return std::nullopt;
    }
    id_ = 0;
    return exit_status(status);
}

}  // namespace bundle
