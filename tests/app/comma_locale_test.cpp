// A system whose locale has a decimal comma.

#include <wx/button.h>
#include <wx/gauge.h>
#include <wx/html/htmlwin.h>
#include <wx/stattext.h>

#include <clocale>

#include "convert/Movie.h"
#include "support/frame_test.h"
#include "support/private_locales.h"
#include "web/version_request.h"

namespace {

constexpr const char* kLocale = "de_DE.UTF-8";

class CommaLocale : public FrameTest {
  protected:
    /// The program sets the locale on start.
    void SetUp() override {
        ASSERT_TRUE(locales.make(kLocale));
        PrivateLocales::environment("LANG", kLocale);
        start();
        ASSERT_STREQ(std::setlocale(LC_TIME, nullptr), kLocale);
    }

    PrivateLocales locales;
};

}  // namespace

TEST_F(CommaLocale, ReadsTheToolsNumbers) {
    report(
        "  Duration: 00:02:00.50, start: 0.000000, bitrate: 812 kb/s\n"
        "    Stream #0.0: Video: h264, yuv420p, 1280x720, 29.98 fps, 29.98 tbr, 1k tbn, 29.98 "
        "tbc\n");
    convert_prints("frame= 9 fps=1.5 q=2.0 size= 1kB time=30.04 bitrate= 1.0kbits/s\r");
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
    EXPECT_EQ(frame->currentLanguage, "Deutsch");
    EXPECT_TRUE(frame->htmlAbout->ToText().Contains("Vantreo 1.24"));
}
