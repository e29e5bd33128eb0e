// Stands in for a bundle tool: records its arguments and does what files in a folder tell it.
//
// The folder is $TOOL_DOUBLE_DIR. "log" receives one line a start: the tool's name and its
// arguments, separated by unit separators (0x1F), so that any path stays one field. A probe
// ("-i FILE") of no file, or of one whose name holds "bad", prints nothing; any other prints
// "report". A transcode prints "convert" on the error stream, MP4Box prints "mux" on standard
// output. After that either waits until "hold" followed by the tool's name is gone.

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <thread>

namespace {

namespace fs = std::filesystem;

std::string content(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// One write, so that lines of two tools never mix.
void record(const fs::path& log, int argc, char** argv) {
    std::string line = fs::path(argv[0]).filename();
    for (int i = 1; i < argc; ++i)
        line += std::string("\x1F") + argv[i];
    std::ofstream(log, std::ios::app | std::ios::binary) << line + "\n";
}

void wait_while_held(const fs::path& hold) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (fs::exists(hold) && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

}  // namespace

int main(int argc, char** argv) {
    const fs::path folder = std::getenv("TOOL_DOUBLE_DIR");
    const std::string tool = fs::path(argv[0]).filename();
    record(folder / "log", argc, argv);
    const bool probe = argc == 3;
    if (probe) {
        const std::string film = fs::path(argv[2]).filename();
        if (!film.empty() && film.find("bad") == std::string::npos)
            std::cerr << content(folder / "report");
        return 0;
    }
    if (tool == "MP4Box")
        std::cout << content(folder / "mux") << std::flush;
    else
        std::cerr << content(folder / "convert");
    wait_while_held(folder / ("hold" + tool));
}
