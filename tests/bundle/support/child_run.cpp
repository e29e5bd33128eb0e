#include "bundle/support/child_run.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <thread>

bool eventually(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + kDeadline;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

bool is_running(pid_t id) {
    std::ifstream file("/proc/" + std::to_string(id) + "/stat");
    std::string line;
    std::getline(file, line);
    // "ID (NAME) STATE ...", where the name may contain anything.
    const std::size_t state = line.rfind(") ");
    return state != std::string::npos && line[state + 2] != 'Z' && line[state + 2] != 'X';
}

ChildRun::ChildRun(const std::vector<std::string>& words, const Variables& variables,
                   const std::function<void()>& prepare) {
    const std::string output = streams_ / "output";
    const std::string errors = streams_ / "errors";
    id_ = ::fork();
    if (id_ != 0) {
        return;
    }
    for (const auto& [name, value] : variables) {
        ::setenv(name.c_str(), value.c_str(), 1);
    }
    constexpr int kFlags = O_WRONLY | O_CREAT | O_APPEND;
    ::dup2(::open(output.c_str(), kFlags, 0600), STDOUT_FILENO);
    ::dup2(::open(errors.c_str(), kFlags, 0600), STDERR_FILENO);
    if (prepare) {
        prepare();
    }
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (const std::string& word : words) {
        pointers.push_back(const_cast<char*>(word.c_str()));
    }
    pointers.push_back(nullptr);
    ::execvp(pointers[0], pointers.data());
    ::_exit(127);
}

ChildRun::~ChildRun() {
    if (!ended_) {
        send(SIGKILL);
        wait();
    }
}

void ChildRun::send(int signal) const {
    ::kill(id_, signal);
}

int ChildRun::wait() {
    int status = 0;
    if (!ended_ && eventually([&] { return ::waitpid(id_, &status, WNOHANG) == id_; })) {
        ended_ = true;
        status_ = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    }
    return status_;
}
