// What the window shows in each phase of a run.

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/gauge.h>
#include <wx/listbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/utils.h>

#include "support/frame_test.h"

namespace {

class States : public FrameTest {
  protected:
    /// True when all ten inputs are enabled, or with `enabled` false all disabled.
    bool inputs(bool enabled) const {
        const wxWindow* const all[] = {frame->textMovies,        frame->buttonMovies,
                                       frame->textOutput,        frame->buttonOutput,
                                       frame->labelOptimize,     frame->comboboxOptimize,
                                       frame->labelLanguage,     frame->comboboxLanguages,
                                       frame->checkboxOverwrite, frame->checkboxHowToMove};
        return std::all_of(std::begin(all), std::end(all), [&](const wxWindow* input) {
            return input->IsThisEnabled() == enabled;
        });
    }

    /// Percent, elapsed and remaining as shown, and the gauge.
    wxString figures() const {
        return wxString::Format(
            "%i %s %s %s", frame->gaugeProgress->GetValue(), frame->labelPercent->GetLabel(),
            frame->labelElapsedTime->GetLabel(), frame->labelRemainingTime->GetLabel());
    }

    void show_figures() {
        frame->gaugeProgress->SetValue(42);
        frame->labelPercent->SetLabel("42%");
        frame->labelElapsedTime->SetLabel("00:01:00");
        frame->labelRemainingTime->SetLabel("00:02:00");
    }

    wxColour colour() const { return frame->labelStatus->GetForegroundColour(); }
    wxString caption() const { return frame->buttonConvert->GetLabel(); }

    /// The addresses opened in the browser so far.
    static wxString opened() {
        wxString log;
        wxGetEnv("BROWSER_LOG", &log);
        return file_text(log);
    }
};

const wxString kStartCaption = "3: Convert the Movie(s) to my iPhone!";

}  // namespace

TEST_F(States, ConvertingDisablesTheInputsAndOffersCancel) {
    start();
    show_figures();
    frame->layout_converting(0);
    EXPECT_TRUE(inputs(false));
    EXPECT_EQ(caption(), "Cancel");
    EXPECT_TRUE(frame->buttonConvert->IsThisEnabled());
    EXPECT_EQ(status(), "Conversion in progress...");
    EXPECT_EQ(colour(), wxColour(0, 0, 255));
    EXPECT_EQ(figures(), "0 0% 00:00:00 ??:??:??");
}

TEST_F(States, ConvertingShowsThePositionInAList) {
    start();
    add({"a", "b", "c"});
    frame->layout_converting(2);
    EXPECT_EQ(status(), "Conversion in progress... (2/3)");
    frame->layout_converting(0);
    EXPECT_EQ(status(), "Conversion in progress...");
}

TEST_F(States, ConvertingShowsNoPositionForASingleMovie) {
    start();
    add({"a"});
    frame->layout_converting(1);
    EXPECT_EQ(status(), "Conversion in progress...");
    frame->layout_subtitle(1);
    EXPECT_EQ(status(), "Conversion in progress... Adding Subtitles");
}

TEST_F(States, SubtitleShowsThePositionAndKeepsTheRest) {
    start();
    add({"a", "b", "c"});
    frame->layout_converting(2);
    show_figures();
    frame->layout_subtitle(2);
    EXPECT_EQ(status(), "Conversion in progress... (2/3) Adding Subtitles");
    EXPECT_EQ(figures(), "0 0% 00:00:00 ??:??:??");
    EXPECT_EQ(caption(), "Cancel");
    EXPECT_EQ(colour(), wxColour(0, 0, 255));
    EXPECT_TRUE(inputs(false));
    frame->layout_subtitle(0);
    EXPECT_EQ(status(), "Conversion in progress... Adding Subtitles");
}

TEST_F(States, ConvertedEmptiesTheListAndKeepsTheLastFigures) {
    start();
    add({"a", "b"});
    frame->layout_converting(2);
    show_figures();
    frame->layout_converted();
    EXPECT_EQ(status(), "Conversion completed!");
    EXPECT_EQ(colour(), wxColour(10, 201, 26));
    EXPECT_EQ(frame->textMovies->GetCount(), 0U);
    EXPECT_EQ(figures(), "42 42% 00:01:00 00:00:00");
    EXPECT_TRUE(inputs(true));
    EXPECT_EQ(caption(), kStartCaption);
}

TEST_F(States, ErrorClearsTheStatusAndKeepsTheRest) {
    start();
    frame->layout_converting(0);
    show_figures();
    frame->layout_error();
    EXPECT_EQ(status(), "");
    EXPECT_EQ(colour(), wxColour(0, 0, 255));
    EXPECT_EQ(figures(), "42 42% 00:01:00 00:02:00");
    EXPECT_TRUE(inputs(true));
    EXPECT_EQ(caption(), kStartCaption);
}

TEST_F(States, CanceledSaysSoInRedAndKeepsTheRest) {
    start();
    add({"a"});
    frame->layout_converting(1);
    show_figures();
    frame->layout_canceled();
    EXPECT_EQ(status(), "Conversion canceled");
    EXPECT_EQ(colour(), wxColour(255, 0, 0));
    EXPECT_EQ(figures(), "42 42% 00:01:00 00:02:00");
    EXPECT_EQ(frame->textMovies->GetCount(), 1U);
    EXPECT_TRUE(inputs(true));
    EXPECT_EQ(caption(), kStartCaption);
}

TEST_F(States, NormalChangesNothingButTheInputsAndTheCaption) {
    start();
    frame->layout_converting(0);
    show_figures();
    frame->layout_normal();
    EXPECT_TRUE(inputs(true));
    EXPECT_EQ(caption(), kStartCaption);
    EXPECT_EQ(status(), "Conversion in progress...");
    EXPECT_EQ(figures(), "42 42% 00:01:00 00:02:00");
}

TEST_F(States, ConvertedOpensNoPageUnlessAsked) {
    const wxString before = opened();
    start();
    frame->layout_converted();
    run_pending_events();
    // The next call opens the first page, so this one opened none.
    frame->config_write("HowToMove", "true");
    frame->layout_converted();
    ASSERT_TRUE(wait_until([&] { return opened() != before; }));
    EXPECT_EQ(opened().Mid(before.length()),
              "http://127.0.0.1:9/How_to_put_a_video_on_your_iPhone\n");
}

TEST_F(States, ConvertedOpensTheFrenchPageInFrench) {
    const wxString before = opened();
    setting("HowToMove", "true");
    setting("Language", L"Fran\u00e7ais");
    start();
    frame->layout_converted();
    ASSERT_TRUE(wait_until([&] { return opened() != before; }));
    EXPECT_EQ(opened().Mid(before.length()),
              "http://127.0.0.1:9/FR/Comment_mettre_une_video_sur_son_iPhone\n");
}
