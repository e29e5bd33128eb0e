// Replaces a bundle tool: records its arguments and follows instructions in files of a folder.
//
// The folder is $TOOL_DOUBLE_DIR. "log" gets one line per start: the tool's name and its
// arguments, separated by unit separators (0x1F), so that any path stays one field. A probe
// ("-i FILE") of no file, or of one whose name holds "bad", prints nothing; any other prints
// "report". A transcode prints "convert" on the error stream, MP4Box prints "mux" on standard
// output, over and over while there is a file "flood" followed by the tool's name. With a file
// "close" either then closes its streams. After that it waits until "hold" followed by the tool's
// name is gone. A start while another tool runs leaves a file "overlap".

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

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

/// Takes the lock that every tool holds until it exits.
void note_overlap(const fs::path& folder) {
    const int lock = ::open((folder / "lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (::flock(lock, LOCK_EX | LOCK_NB) != 0)
        std::ofstream(folder / "overlap");
}

/// Floods in pieces as large as a pipe.
void print(std::ostream& stream, const std::string& text, const fs::path& flood) {
    stream << text << std::flush;
    std::string piece;
    while (piece.size() < 65536 && !text.empty())
        piece += text;
    while (fs::exists(flood) && stream)
        stream << piece << std::flush;
}

void close_streams() {
    for (const int descriptor : {0, 1, 2})
        ::close(descriptor);
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
    note_overlap(folder);
    record(folder / "log", argc, argv);
    const bool probe = argc == 3;
    if (probe) {
        const std::string movie = fs::path(argv[2]).filename();
        if (!movie.empty() && movie.find("bad") == std::string::npos)
            std::cerr << content(folder / "report");
        return 0;
    }
    if (tool == "MP4Box")
        print(std::cout, content(folder / "mux"), folder / ("flood" + tool));
    else
        print(std::cerr, content(folder / "convert"), folder / ("flood" + tool));
    if (fs::exists(folder / "close"))
        close_streams();
    wait_while_held(folder / ("hold" + tool));
}
