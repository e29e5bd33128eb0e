// Every text of the window fits: in each language, for each device, on each page, in each state.

#include <gtk/gtk.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/html/htmlwin.h>
#include <wx/listbox.h>
#include <wx/notebook.h>
#include <wx/panel.h>
#include <wx/stattext.h>

#include "app/painting.h"
#include "support/frame_test.h"
#include "support/misfits.h"

namespace {

constexpr unsigned kMovies = 1000;  // the longest position in a status line

struct State {
    const char* name;
    std::function<void(Vantreo&)> show;
};

const State kStates[] = {
    {"normal", [](Vantreo& frame) { frame.layout_normal(); }},
    {"converting", [](Vantreo& frame) { frame.layout_converting(kMovies); }},
    {"subtitle", [](Vantreo& frame) { frame.layout_subtitle(kMovies); }},
    {"converted", [](Vantreo& frame) { frame.layout_converted(); }},
    {"error", [](Vantreo& frame) { frame.layout_error(); }},
    {"canceled", [](Vantreo& frame) { frame.layout_canceled(); }},
};

/// Sets a resolution that the program would undo.
void set_resolution_unheard(GdkScreen* screen, double dpi) {
    const guint changes = g_signal_lookup("notify", G_OBJECT_TYPE(screen));
    const GQuark resolution = g_quark_from_static_string("resolution");
    const auto heard =
        GSignalMatchType(G_SIGNAL_MATCH_ID | G_SIGNAL_MATCH_DETAIL | G_SIGNAL_MATCH_UNBLOCKED);
    std::vector<gulong> handlers;
    while (const gulong handler = g_signal_handler_find(screen, heard, changes, resolution, nullptr,
                                                        nullptr, nullptr)) {
        g_signal_handler_block(screen, handler);
        handlers.push_back(handler);
    }
    gdk_screen_set_resolution(screen, dpi);
    for (const gulong handler : handlers)
        g_signal_handler_unblock(screen, handler);
    gtk_style_context_reset_widgets(screen);
}

class Fit : public FrameTest {
  protected:
    wxPanel* page(size_t index) const {
        return static_cast<wxPanel*>(frame->notebook->GetPage(index));
    }

    void lay_out() const {
        run_pending_events();
        paint_now(*frame, 2);
    }

    void expect_fit(size_t index, const wxString& where) {
        frame->notebook->SetSelection(index);
        lay_out();
        for (const wxString& misfit : misfits(*page(index)))
            ADD_FAILURE() << where << ": " << misfit;
    }

    void expect_fit_in_every_state(const wxString& where) {
        frame->textMovies->Append(wxArrayString(kMovies, movies.file("a.avi")));
        for (const State& state : kStates) {
            state.show(*frame);
            expect_fit(0, where + ", " + state.name);
        }
    }

    void expect_fit_everywhere(const wxString& where) {
        lay_out();
        for (const wxString& misfit : misfits_of_titles(*frame->notebook))
            ADD_FAILURE() << where << ": " << misfit;
        expect_fit_in_every_state(where);
        expect_fit(1, where);
        expect_fit(2, where);
    }

    void expect_fit_from_the_start(const wxString& language, const wxString& device) {
        setting("Language", language);
        setting("Optimize", device);
        start();
        expect_fit_everywhere(language + ", device " + device);
        close();
    }

    /// `room` is the control's available size in pixels.
    void expect_misfit_when_too_long(wxWindow& control, int room, size_t index) {
        frame->notebook->SetSelection(index);
        const wxString text = control.GetLabel();
        wxString longer = text + " " + text;
        while (control.GetTextExtent(longer).x <= room)
            longer += " " + text;
        control.SetLabel(longer);
        lay_out();
        EXPECT_FALSE(misfits(*page(index)).empty()) << longer;
        control.SetLabel(text);
        lay_out();
        EXPECT_TRUE(misfits(*page(index)).empty()) << text;
    }

    void expect_misfit_when_tripled(wxHtmlWindow& box, size_t index) {
        frame->notebook->SetSelection(index);
        lay_out();
        EXPECT_TRUE(misfits(*page(index)).empty());
        const wxString text = box.ToText();
        box.SetPage("<a href=x>" + text + " " + text + " " + text + "</a>");
        lay_out();
        EXPECT_FALSE(misfits(*page(index)).empty()) << box.ToText();
    }
};

}  // namespace

TEST_F(Fit, EveryTextFitsInEveryLanguageForEveryDevice) {
    start();
    const wxArrayString languages = frame->languages;
    close();
    for (const wxString& language : languages) {
        for (const wxString device : {"0", "1", "2"})
            expect_fit_from_the_start(language, device);
    }
}

TEST_F(Fit, EveryLanguageAndEveryDeviceFitsInItsBox) {
    start();
    frame->notebook->SetSelection(1);
    for (wxComboBox* box : {frame->comboboxLanguages, frame->comboboxOptimize}) {
        for (unsigned entry = 0; entry < box->GetCount(); ++entry) {
            box->SetSelection(static_cast<int>(entry));
            expect_fit(1, box->GetString(entry));
        }
    }
}

TEST_F(Fit, EveryFontHasAReadableSize) {
    constexpr double kSmallest =
        75;  // dots per inch; the longest texts of all tested fonts fit at 77
    start();
    EXPECT_GE(gdk_screen_get_resolution(gdk_screen_get_default()), kSmallest);
}

TEST_F(Fit, ALargerTextWouldNotFit) {
    start();
    GdkScreen* const screen = gdk_screen_get_default();
    const double dpi = gdk_screen_get_resolution(screen);
    frame->notebook->SetSelection(1);
    lay_out();
    EXPECT_TRUE(misfits(*page(1)).empty());
    set_resolution_unheard(screen, dpi + 1);
    lay_out();
    EXPECT_FALSE(misfits(*page(1)).empty());
    set_resolution_unheard(screen, dpi);
}

TEST_F(Fit, ATextThatIsTooLongIsFound) {
    start();
    const wxArrayString languages = frame->languages;
    close();
    for (const wxString& language : languages) {
        setting("Language", language);
        start();
        expect_misfit_when_too_long(*frame->buttonMovies, 285, 0);
        expect_misfit_when_too_long(*frame->buttonOutput, 265, 0);
        expect_misfit_when_too_long(*frame->buttonConvert, 700, 0);
        expect_misfit_when_too_long(*frame->labelElapsed, 130, 0);
        expect_misfit_when_too_long(*frame->labelRemaining, 110, 0);
        expect_misfit_when_too_long(*frame->labelLanguage, 140, 1);
        expect_misfit_when_too_long(*frame->labelOptimize, 140, 1);
        expect_misfit_when_too_long(*frame->checkboxOverwrite, 700, 1);
        expect_misfit_when_too_long(*frame->checkboxHowToMove, 700, 1);
        expect_misfit_when_too_long(*frame->buttonDonate, 160, 2);
        expect_misfit_when_tripled(*frame->htmlTranslations, 1);
        close();
    }
}
