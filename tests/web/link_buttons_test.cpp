// Reaching and following links without a pointer.

#include <gtk/gtk.h>
#include <wx/combobox.h>
#include <wx/html/htmlcell.h>
#include <wx/html/htmlwin.h>
#include <wx/notebook.h>

#include "support/frame_test.h"
#include "support/html_links.h"

namespace {

// From a link's words to the outer edge of its mark.
const wxSize kMark(2, 1);

using Names = std::vector<wxString>;

void add_link_words(const wxHtmlCell* cell, const wxString& address, std::vector<wxRect>& words) {
    for (; cell != nullptr; cell = cell->GetNext()) {
        add_link_words(cell->GetFirstChild(), address, words);
        if (cell->IsTerminalCell() && cell->GetLink() != nullptr &&
            cell->GetLink()->GetHref() == address)
            words.emplace_back(cell->GetAbsPos(), wxSize(cell->GetWidth(), cell->GetHeight()));
    }
}

/// The place of the link's text in the box.
wxRect words_of_link(const wxHtmlWindow& box, const wxString& address) {
    std::vector<wxRect> words;
    add_link_words(box.GetInternalRepresentation(), address, words);
    wxRect all;
    for (const wxRect& word : words)
        all.Union(word);
    return all;
}

void collect_buttons(GtkWidget* widget, gpointer data) {
    if (GTK_IS_LINK_BUTTON(widget))
        static_cast<std::vector<GtkWidget*>*>(data)->push_back(widget);
    else if (GTK_IS_CONTAINER(widget))
        gtk_container_forall(GTK_CONTAINER(widget), collect_buttons, data);
}

std::vector<GtkWidget*> buttons_of(const wxHtmlWindow& box) {
    std::vector<GtkWidget*> buttons;
    collect_buttons(box.GetHandle(), &buttons);
    return buttons;
}

wxString address_of(GtkWidget* button) {
    return wxString::FromUTF8(gtk_link_button_get_uri(GTK_LINK_BUTTON(button)));
}

wxRect place_of(GtkWidget* widget) {
    GtkAllocation place;
    gtk_widget_get_allocation(widget, &place);
    return {place.x, place.y, place.width, place.height};
}

wxString name_of(GtkWidget* widget) {
    const char* const name = atk_object_get_name(gtk_widget_get_accessible(widget));
    return name == nullptr ? wxString() : wxString::FromUTF8(name);
}

class LinkButtons : public FrameTest {
  protected:
    GtkWidget* focus() const { return gtk_window_get_focus(GTK_WINDOW(frame->GetHandle())); }

    bool tab(GtkDirectionType direction = GTK_DIR_TAB_FORWARD) const {
        return gtk_widget_child_focus(frame->GetHandle(), direction) != 0;
    }

    /// The Tab order of the page: links by name, other controls by kind.
    Names stops(size_t page) const {
        frame->notebook->SetSelection(page);
        run_pending_events();
        gtk_widget_grab_focus(frame->notebook->GetHandle());
        Names names;
        while (tab() && !GTK_IS_NOTEBOOK(focus()))
            names.push_back(GTK_IS_LINK_BUTTON(focus()) ? name_of(focus())
                                                        : wxString(G_OBJECT_TYPE_NAME(focus())));
        return names;
    }

    /// The button moves with the next frame.
    void expect_buttons_over_links(const wxHtmlWindow& box) {
        run_pending_events();
        Links addresses;
        for (GtkWidget* button : buttons_of(box)) {
            addresses.push_back(address_of(button));
            wxRect link = words_of_link(box, address_of(button));
            link.Inflate(kMark).Intersect(box.GetClientSize());
            EXPECT_TRUE(wait_until([&] { return place_of(button) == link; }))
                << address_of(button) << " at " << place_of(button).x << ", " << place_of(button).y;
        }
        EXPECT_EQ(addresses, links_of(&box));
    }

    /// Records the addresses of followed links and opens none.
    void record(wxHtmlWindow& box, Links& followed) {
        box.Bind(wxEVT_HTML_LINK_CLICKED, [&followed](wxHtmlLinkEvent& event) {
            followed.push_back(event.GetLinkInfo().GetHref());
        });
    }

    void choose_language(const wxString& language) {
        frame->comboboxLanguages->SetStringSelection(language);
        wxCommandEvent event(wxEVT_COMBOBOX);
        event.SetEventObject(frame->comboboxLanguages);
        frame->comboboxLanguages->GetEventHandler()->ProcessEvent(event);
        run_pending_events();
    }
};

}  // namespace

TEST_F(LinkButtons, AreReachedByTabInReadingOrder) {
    start();
    EXPECT_EQ(stops(1), (Names{"GtkEntry", frame->Translate("htmlTranslations", 0), "GtkEntry",
                               "Add subtitles", "GtkCheckButton", "GtkCheckButton"}));
    EXPECT_EQ(stops(2), (Names{"Great Thanks to all the contributors", "http://127.0.0.1:9/Contact",
                               "GtkButton"}));
}

TEST_F(LinkButtons, ArePlacedOverTheirLinks) {
    start();
    const wxArrayString languages = frame->languages;
    for (const wxString& language : languages) {
        choose_language(language);
        frame->notebook->SetSelection(1);
        expect_buttons_over_links(*frame->htmlTranslations);
        expect_buttons_over_links(*frame->htmlSubtitle);
        frame->notebook->SetSelection(2);
        expect_buttons_over_links(*frame->htmlAbout);
    }
}

TEST_F(LinkButtons, FollowALinkThatIsLaidOutAgain) {
    start();
    frame->notebook->SetSelection(1);
    expect_buttons_over_links(*frame->htmlTranslations);
    const wxRect before = place_of(buttons_of(*frame->htmlTranslations).at(0));

    const wxString page = *frame->htmlTranslations->GetParser()->GetSource();
    frame->htmlTranslations->SetBorders(3);
    frame->htmlTranslations->SetPage(page);
    expect_buttons_over_links(*frame->htmlTranslations);
    EXPECT_EQ(place_of(buttons_of(*frame->htmlTranslations).at(0)).GetPosition(),
              before.GetPosition() - wxPoint(7, 7));

    frame->htmlTranslations->SetSize(200, 60);
    expect_buttons_over_links(*frame->htmlTranslations);
    EXPECT_GT(place_of(buttons_of(*frame->htmlTranslations).at(0)).height, before.height)
        << "a link of two lines";
}

TEST_F(LinkButtons, FollowTheNumberOfLinks) {
    start();
    frame->notebook->SetSelection(2);
    for (const wxString page : {"<a href=a>one</a> <a href=b>two</a> or <a href=b>two again</a>",
                                "none", "<a href=c>c</a>"}) {
        frame->htmlAbout->SetPage(page);
        run_pending_events();
        EXPECT_EQ(buttons_of(*frame->htmlAbout).size(), static_cast<size_t>(page.Freq('/')))
            << page;
    }
}

TEST_F(LinkButtons, FollowTheirLinkOnceWhenPressed) {
    start();
    Links followed;
    for (wxHtmlWindow* box : {frame->htmlTranslations, frame->htmlSubtitle, frame->htmlAbout}) {
        frame->notebook->SetSelection(box == frame->htmlAbout ? 2 : 1);
        run_pending_events();
        record(*box, followed);
        for (GtkWidget* button : buttons_of(*box)) {
            followed.clear();
            gtk_widget_grab_focus(button);
            gtk_widget_activate(button);
            EXPECT_TRUE(wait_until([&] { return !followed.empty(); }));
            run_pending_events();
            EXPECT_EQ(followed, Links{address_of(button)});
        }
    }
}

TEST_F(LinkButtons, KeepTheFocusWhenTheLanguageChanges) {
    start();
    frame->notebook->SetSelection(2);
    run_pending_events();
    GtkWidget* const contact = buttons_of(*frame->htmlAbout).at(1);
    gtk_widget_grab_focus(contact);
    choose_language("Deutsch");
    choose_language(L"Fran\u00e7ais");
    EXPECT_EQ(address_of(focus()), "http://127.0.0.1:9/FR/Contact");

    frame->notebook->SetSelection(1);
    frame->comboboxLanguages->SetFocus();
    run_pending_events();
    GtkWidget* const languages = focus();
    choose_language("Polski");
    EXPECT_EQ(focus(), languages);
}

TEST_F(LinkButtons, LeaveTheFocusToTheBoxThatIsClicked) {
    start();
    frame->notebook->SetSelection(2);
    run_pending_events();
    const auto focus_box = [this] {
        frame->htmlAbout->SetFocus();
        run_pending_events();
        EXPECT_EQ(wxWindow::FindFocus(), frame->htmlAbout);
    };
    focus_box();
    tab();
    EXPECT_EQ(focus(), buttons_of(*frame->htmlAbout).at(0));
    focus_box();
    tab(GTK_DIR_TAB_BACKWARD);
    EXPECT_EQ(focus(), frame->notebook->GetHandle());
}
