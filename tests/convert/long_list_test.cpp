// A list of hundreds of movies: the process does not grow with the number of converted movies.

#include <wx/button.h>
#include <wx/listbox.h>

#include <filesystem>
#include <fstream>
#include <optional>

#include "support/frame_test.h"

namespace {

#ifdef __SANITIZE_ADDRESS__
// Under a sanitizer, processes start slowly and freed memory is kept for a while: only the order,
// the descriptors and the leak check at the end count.
constexpr size_t kMovies = 205;
constexpr size_t kLate = 200;
constexpr double kLargestGrowth = 10.0;
#else
constexpr size_t kMovies = 505;
constexpr size_t kLate = 500;
constexpr double kLargestGrowth = 1.1;
#endif
constexpr size_t kEarly = 100;

/// What the process uses at a given time.
struct Use {
    long pages = 0;  ///< resident memory
    long descriptors = 0;
};

Use current_use() {
    Use use;
    long all = 0;
    std::ifstream("/proc/self/statm") >> all >> use.pages;
    const std::filesystem::directory_iterator open_files("/proc/self/fd");
    use.descriptors = std::distance(begin(open_files), end(open_files));
    return use;
}

class LongList : public FrameTest {
  protected:
    void list_movies() {
        wxArrayString names;
        for (size_t i = 0; i < kMovies; ++i) {
            names.Add(movies.file(wxString::Format("%04zu.avi", i)));
            if (i % 10 == 0)
                movies.write(wxString::Format("%04zu.srt", i));
        }
        frame->textMovies->Append(names);
    }

    static std::vector<wxString> expected_steps() {
        std::vector<wxString> steps;
        for (size_t i = 0; i < kMovies; ++i)
            steps.push_back(wxString::Format("probe %04zu.avi", i));
        for (size_t i = 0; i < kMovies; ++i) {
            steps.push_back(wxString::Format("convert %04zu.avi", i));
            if (i % 10 == 0)
                steps.push_back(wxString::Format("mux %04zu.srt", i));
        }
        return steps;
    }

    /// Records what is used when `movie` starts; several may have passed since the last record.
    static void note(std::optional<Use>& use, size_t now, size_t movie) {
        if (!use && now >= movie)
            use = current_use();
    }

    /// Continues to the end of the run.
    void watch_run() {
        EXPECT_TRUE(wait_until(
            [&] {
                Phase& phase = status().Contains("/") ? converting : probing;
                note(phase.early, frame->movieIndex, kEarly);
                note(phase.late, frame->movieIndex, kLate);
                return !running();
            },
            110.0));
    }

    struct Phase {
        std::optional<Use> early;
        std::optional<Use> late;
    };

    static void expect_flat(const Phase& phase) {
        ASSERT_TRUE(phase.early && phase.late);
        EXPECT_LE(phase.late->descriptors, phase.early->descriptors + 3) << "the pipes of one tool";
        EXPECT_LE(static_cast<double>(phase.late->pages),
                  kLargestGrowth * static_cast<double>(phase.early->pages));
    }

    Phase probing;
    Phase converting;
};

}  // namespace

TEST_F(LongList, IsConvertedInOrderByOneToolAtATimeWithoutGrowth) {
    start();
    list_movies();
    press(frame->buttonConvert);
    watch_run();
    EXPECT_EQ(status(), "Conversion completed!");
    EXPECT_EQ(steps(), expected_steps());
    EXPECT_FALSE(std::filesystem::exists(doubles.file("overlap").utf8_string()));
    expect_flat(probing);
    expect_flat(converting);
}
