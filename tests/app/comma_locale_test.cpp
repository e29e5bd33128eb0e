// A system whose locale writes a comma in its decimals.

#include <wx/button.h>
#include <wx/gauge.h>
#include <wx/html/htmlwin.h>
#include <wx/stattext.h>
#include <wx/utils.h>

#include <clocale>
#include <cstdlib>
#include <memory>

#include "convert/Movie.h"
#include "support/frame_test.h"
#include "web/version_request.h"

namespace {

constexpr const char* kLocale = "de_DE.UTF-8";

class CommaLocale : public FrameTest {
  protected:
    /// Makes the locale; that takes a second.
    static void SetUpTestSuite() {
        locales = std::make_unique<Folder>();
        const wxString command = "localedef -i de_DE -f UTF-8 \"" + locales->file(kLocale) + "\"";
        ASSERT_EQ(wxExecute(command, wxEXEC_SYNC | wxEXEC_NOEVENTS), 0);
    }
    static void TearDownTestSuite() { locales.reset(); }

    void SetUp() override {
        wxSetEnv("LOCPATH", locales->path());
        wxSetEnv("LANG", kLocale);
        ASSERT_NE(std::setlocale(LC_ALL, kLocale), nullptr);
        ASSERT_EQ(std::strtod("1,5", nullptr), 1.5);
    }
    void TearDown() override {
        std::setlocale(LC_ALL, "C.UTF-8");
        wxSetEnv("LANG", "C.UTF-8");
        wxUnsetEnv("LOCPATH");
    }

    static std::unique_ptr<Folder> locales;
};

std::unique_ptr<Folder> CommaLocale::locales;

}  // namespace

TEST_F(CommaLocale, ReadsTheToolsNumbers) {
    report(
        "  Duration: 00:02:00.50, start: 0.000000, bitrate: 812 kb/s\n"
        "    Stream #0.0: Video: h264, yuv420p, 1280x720, 29.98 fps, 29.98 tbr, 1k tbn, 29.98 "
        "tbc\n");
    convert_prints("frame= 9 fps=1.5 q=2.0 size= 1kB time=30.04 bitrate= 1.0kbits/s\r");
    start();
    start_run({"a.avi"});
    EXPECT_EQ(frame->movies[0]->fps, 29.98);
    EXPECT_TRUE(calls()[1].Contains(" -r 30000/1001 -s 480x270 "));
    EXPECT_TRUE(wait_until([this] { return frame->gaugeProgress->GetValue() == 25; }));
    EXPECT_EQ(frame->labelPercent->GetLabel(), "25%");
    release();
    EXPECT_TRUE(wait_until([this] { return frame->labelPercent->GetLabel() == "100%"; }));
}

TEST_F(CommaLocale, ComparesAndShowsTheVersionWithAPoint) {
    EXPECT_EQ(released_version("CURRENT_VERSION=>1.25<=CURRENT_VERSION"), 1.25);
    EXPECT_TRUE(version_request_address().Contains("version=1.24&"));
    start();
    EXPECT_EQ(frame->currentLanguage, "Deutsch");
    EXPECT_TRUE(frame->htmlAbout->ToText().Contains("Vantreo 1.24"));
}
