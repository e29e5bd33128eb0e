// Stands in for the system's ffmpeg: writes an MP4 file to its last argument, leaves its
// process id in a file, and goes on only when it is let go.
//
// STAND_IN_FOLDER   where it writes "arguments" (one a line) and then "id", and waits for "go"
// STAND_IN_FILM     the movie that it writes
// STAND_IN_REPORTS  number of progress reports that it prints first
// STAND_IN_STUBBORN set: SIGTERM does not end it

#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <thread>

namespace {

constexpr std::chrono::seconds kPatience{30};

std::string setting(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

void print_reports(int count) {
    for (int report = 1; report <= count; ++report) {
        std::cout << "frame=" << report << "\nout_time_us=" << report << "0000\nprogress=continue\n"
                  << std::flush;
    }
}

bool wait_for(const std::filesystem::path& file) {
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (!std::filesystem::exists(file)) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

}  // namespace

int main(int count, char** arguments) {
    const std::filesystem::path folder = setting("STAND_IN_FOLDER");
    if (!setting("STAND_IN_STUBBORN").empty()) {
        std::signal(SIGTERM, SIG_IGN);
    }
    std::ofstream words(folder / "arguments");
    for (int at = 0; at < count; ++at) {
        words << arguments[at] << "\n";
    }
    words.close();
    std::string output = arguments[count - 1];
    if (output.starts_with("file:")) {
        std::ofstream(output.substr(5)) << std::ifstream(setting("STAND_IN_FILM")).rdbuf();
    }
    const std::string reports = setting("STAND_IN_REPORTS");
    print_reports(reports.empty() ? 1 : std::stoi(reports));
    std::ofstream(folder / "id.new") << ::getpid();
    std::filesystem::rename(folder / "id.new", folder / "id");
    return wait_for(folder / "go") ? 0 : 1;
}
