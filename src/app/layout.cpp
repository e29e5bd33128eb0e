// The notebook: every control, its first texts and values, its handlers and its place.

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/gauge.h>
#include <wx/html/htmlwin.h>
#include <wx/listbox.h>
#include <wx/notebook.h>
#include <wx/panel.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "app/Vantreo.h"
#include "app/accessibility.h"
#include "convert/devices.h"
#include "input/DnDtextMovies.h"
#include "input/DnDtextOutput.h"
#include "web/pages.h"
#ifdef __WXGTK__
#include "web/gtk_link_buttons.h"
#endif

namespace {

/// Places a control; height 0 means the ordinary height of a button.
void place(wxWindow& control, int x, int y, int width, int height) {
    if (height == 0)
        height = wxButton::GetDefaultSize(control.GetParent()).GetHeight();
    control.SetSize(x, y, width, height, wxSIZE_AUTO);
}

/// Moves a control and keeps `size`.
void place(wxWindow& control, const wxPoint& position, const wxSize& size) {
    control.SetSize(wxRect(position, size), wxSIZE_AUTO);
}

wxStaticText* label(wxWindow* parent, const wxString& text, const wxPoint& position) {
    return new wxStaticText(parent, wxID_ANY, text, position);
}

wxHtmlWindow* html_box(wxWindow* parent, const wxPoint& position, const wxSize& size,
                       const wxString& page) {
    auto* box =
        new wxHtmlWindow(parent, wxID_ANY, position, size, wxHW_SCROLLBAR_NEVER, "htmlWindow");
    show_page(*box, page);
#ifdef __WXGTK__
    reach_links_by_keyboard(*box);
#endif
    return box;
}

wxArrayString device_names() {
    wxArrayString names;
    for (const Device& device : kDevices)
        names.Add(device.name);
    return names;
}

}  // namespace

void Vantreo::layout() {
    checkingVersion = false;

    notebook = new wxNotebook(this, wxID_ANY, wxDefaultPosition, wxSize(730, 306), 0);
    const auto new_page = [this] {
        return new wxPanel(notebook, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                           wxTAB_TRAVERSAL | wxNO_BORDER);
    };
    panelConvert = new_page();
    panelOptions = new_page();
    panelAbout = new_page();
    notebook->AddPage(panelConvert, Translate("panelConvert", 0), true);
    notebook->AddPage(panelOptions, Translate("panelOptions", 0), false);
    notebook->AddPage(panelAbout, Translate("panelAbout", 0), false);

    const wxFont font(wxFontInfo(10).Family(wxFONTFAMILY_DEFAULT));
    panelConvert->SetFont(font);
    panelOptions->SetFont(font);
    panelAbout->SetFont(font);

    layout_convert_page();
    layout_options_page();
    layout_about_page();
    place_convert_page();
    label_for_screen_readers();
    order_for_keyboard();
    make_one_button(*comboboxLanguages);
    make_one_button(*comboboxOptimize);
    // A changed theme: what the HTML boxes show is written in the colours of the old one.
    Bind(wxEVT_SYS_COLOUR_CHANGED, [this](wxSysColourChangedEvent& event) {
        show_html_pages();
        event.Skip();
    });
    SendSizeEvent();  // the notebook, now the frame's only child, fills it
}

void Vantreo::press_on_double_click(wxWindow& control, ButtonHandler handler) {
    control.Bind(wxEVT_LEFT_DCLICK, [this, handler](wxMouseEvent&) {
        wxCommandEvent press(wxEVT_BUTTON);
        (this->*handler)(press);
    });
}

void Vantreo::layout_convert_page() {
    wxPanel* const page = panelConvert;

    textMovies = new wxListBox(page, wxID_ANY, wxPoint(10, 23), wxSize(410, 20));
    press_on_double_click(*textMovies, &Vantreo::OnbuttonMovies);
    textMovies->Bind(wxEVT_KEY_DOWN, &Vantreo::OntextMoviesKey, this);
    textMovies->SetDropTarget(new DnDtextMovies(this, textMovies));

    textOutput = new wxTextCtrl(page, wxID_ANY, config_read("Output"), wxPoint(10, 57));
    press_on_double_click(*textOutput, &Vantreo::OnbuttonOutput);
    textOutput->Bind(wxEVT_TEXT, &Vantreo::OntextOutput, this);
    textOutput->SetDropTarget(new DnDtextOutput(textOutput));
    textOutput->SetFocus();
    textMovies->SetFocus();

    buttonMovies = new wxButton(page, wxID_ANY, Translate("buttonMovies", 0), wxPoint(425, 20),
                                wxSize(285, 25));
    buttonMovies->Bind(wxEVT_BUTTON, &Vantreo::OnbuttonMovies, this);
    buttonOutput = new wxButton(page, wxID_ANY, Translate("buttonOutput", 0), wxPoint(425, 55),
                                wxSize(285, 25));
    buttonOutput->Bind(wxEVT_BUTTON, &Vantreo::OnbuttonOutput, this);
    buttonConvert = new wxButton(page, wxID_ANY, Translate("buttonConvert", 0), wxPoint(10, 90),
                                 wxSize(700, 60));
    buttonConvert->Bind(wxEVT_BUTTON, &Vantreo::OnbuttonConvert, this);

    boxProgress = new wxStaticBox(page, wxID_ANY, "", wxPoint(10, 165));
    labelStatus = label(page, "", wxDefaultPosition);
    gaugeProgress =
        new wxGauge(page, wxID_ANY, 100, wxPoint(20, 200), wxSize(633, 15), wxGA_HORIZONTAL);
    gaugeProgress->SetRange(100);
    labelPercent = label(page, "0%", wxPoint(665, 200));
    labelElapsed = label(page, Translate("labelElapsed", 0), wxPoint(20, 230));
    labelElapsedTime = label(page, "00:00:00", wxPoint(150, 230));
    labelRemaining = label(page, Translate("labelRemaining", 0), wxPoint(480, 230));
    labelRemainingTime = label(page, "00:00:00", wxPoint(590, 230));
}

void Vantreo::layout_options_page() {
    wxPanel* const page = panelOptions;

    labelLanguage = label(page, Translate("labelLanguage", 0), wxPoint(20, 28));
    comboboxLanguages = new wxComboBox(page, wxID_ANY, currentLanguage, wxPoint(160, 25),
                                       wxDefaultSize, languages, wxCB_SORT | wxCB_READONLY);
    comboboxLanguages->Bind(wxEVT_COMBOBOX, &Vantreo::OncomboboxLanguages, this);

    htmlTranslations = html_box(page, wxPoint(295, 10), wxSize(400, 60), translations_page());
    htmlTranslations->Bind(wxEVT_HTML_LINK_CLICKED, &Vantreo::OnhtmlTranslations, this);

    labelOptimize = label(page, Translate("labelOptimize", 0), wxPoint(20, 75));
    const size_t device = known_device(wxAtoi(config_read("Optimize")));
    comboboxOptimize = new wxComboBox(page, wxID_ANY, kDevices[device].name, wxPoint(160, 72),
                                      wxSize(210, 22), device_names(), wxCB_READONLY);
    comboboxOptimize->Bind(wxEVT_COMBOBOX, &Vantreo::OncomboboxOptimize, this);

    htmlSubtitle = html_box(page, wxPoint(380, 65), wxSize(200, 25), subtitle_page(*panelOptions));
    htmlSubtitle->Bind(wxEVT_HTML_LINK_CLICKED, &Vantreo::OnhtmlSubtitle, this);

    checkboxOverwrite = new wxCheckBox(page, wxID_ANY, Translate("checkboxOverwrite", 0),
                                       wxPoint(20, 120), wxSize(700, 20));
    checkboxOverwrite->SetValue(config_read("Overwrite") == "true");
    checkboxOverwrite->Bind(wxEVT_CHECKBOX, &Vantreo::OncheckboxOverwrite, this);

    checkboxHowToMove = new wxCheckBox(page, wxID_ANY, Translate("checkboxHowToMove", 0),
                                       wxPoint(20, 140), wxSize(700, 20));
    checkboxHowToMove->SetValue(config_read("HowToMove") == "true");
    checkboxHowToMove->Bind(wxEVT_CHECKBOX, &Vantreo::OncheckboxHowToMove, this);
}

void Vantreo::layout_about_page() {
    wxPanel* const page = panelAbout;

    htmlAbout = html_box(page, wxPoint(0, 7), wxSize(720, 200), about_page());
    htmlAbout->Bind(wxEVT_HTML_LINK_CLICKED, &Vantreo::OnhtmlAbout, this);

    buttonDonate = new wxButton(page, wxID_ANY, Translate("buttonDonate", 0), wxPoint(280, 225),
                                wxSize(160, 35));
    buttonDonate->Bind(wxEVT_BUTTON, &Vantreo::OnbuttonDonate, this);
}

void Vantreo::place_convert_page() {
    place(*notebook, 20, 20, 640, 325);
    place(*textMovies, 7, 18, 410, 100);
    place(*textOutput, 10, 129, 405, 20);
    place(*buttonOutput, 425, 128, 265, 0);
    place(*buttonConvert, 10, 165, 700, 0);
    place(*labelStatus, 10, 195, 700, 20);
    place(*boxProgress, 10, 215, 700, 60);
    // The percent label's size on purpose: the progress views give the gauge its working size.
    place(*gaugeProgress, wxPoint(20, 225), labelPercent->GetSize());
    place(*labelPercent, wxPoint(665, 224), labelPercent->GetSize());
    place(*labelElapsed, wxPoint(20, 245), labelElapsed->GetSize());
    place(*labelElapsedTime, wxPoint(150, 245), labelElapsedTime->GetSize());
    place(*labelRemaining, wxPoint(480, 245), labelRemaining->GetSize());
    place(*labelRemainingTime, wxPoint(590, 245), labelRemainingTime->GetSize());
}

void Vantreo::label_for_screen_readers() {
    label_control(*textMovies, {buttonMovies});
    label_control(*textOutput, {buttonOutput});
    label_control(*gaugeProgress, {labelStatus, labelPercent});
    label_by_page_title(*boxProgress, *notebook, 0);
    label_control(*comboboxLanguages, {labelLanguage});
    label_control(*comboboxOptimize, {labelOptimize});
}

void Vantreo::order_for_keyboard() {
    buttonMovies->MoveAfterInTabOrder(textMovies);  // row by row, as one reads
    make_one_tab_stop(*comboboxLanguages);
    make_one_tab_stop(*comboboxOptimize);
}

void Vantreo::show_html_pages() {
    show_page(*htmlTranslations, translations_page());
    show_page(*htmlSubtitle, subtitle_page(*panelOptions));
    show_page(*htmlAbout, about_page());
}

void Vantreo::layout_movies() {}
