// The version check at start-up: until it ends, the frame shows the version screen only.

#include <wx/button.h>
#include <wx/panel.h>
#include <wx/stattext.h>
#include <wx/utils.h>

#include "app/Vantreo.h"
#include "app/painting.h"
#include "base/build_facts.h"
#include "web/version_request.h"

namespace {

const wxColour kAnswerColour(10, 201, 26);

}  // namespace

void Vantreo::layout_checkVersion() {
    panelCheckVersion = new wxPanel(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                    wxTAB_TRAVERSAL | wxNO_BORDER);
    panelCheckVersion->SetFont(wxFont(wxFontInfo(10).Family(wxFONTFAMILY_DEFAULT)));
    labelCheckVersion = new wxStaticText(
        panelCheckVersion, wxID_ANY, Translate("labelCheckVersion_ing", 0), wxPoint(0, 120),
        wxSize(730, 20), wxALIGN_CENTRE_HORIZONTAL | wxALIGN_CENTRE_VERTICAL | wxST_NO_AUTORESIZE);
    checkingVersion = true;
}

void Vantreo::checkVersion() {
    const auto reply = request_reply(version_request_address(), kVersionRequestLimit);
    if (!reply) {
        leave_check_screen();
        return;
    }
    labelCheckVersion->SetForegroundColour(kAnswerColour);
    if (released_version(*reply) > VERSION) {
        labelCheckVersion->SetLabel(Translate("labelCheckVersion_yes", 0));
        buttonGetNewVersion =
            new wxButton(panelCheckVersion, wxID_ANY, Translate("buttonGetNewVersion", 0),
                         wxPoint(210, 145), wxSize(300, 45));
        buttonGetNewVersion->Bind(wxEVT_BUTTON, &Vantreo::OnbuttonGetNewVersion, this);
        buttonGetNewVersion->SetDefault();
        buttonGetNewVersion->SetFocus();
        paint_now(*this);
    } else {
        labelCheckVersion->SetLabel(Translate("labelCheckVersion_no", 0));
        paint_now(*this);
        wxMilliSleep(500);
        leave_check_screen();
    }
}

void Vantreo::leave_check_screen() {
    panelCheckVersion->Destroy();
    panelCheckVersion = nullptr;
    labelCheckVersion = nullptr;
    layout();
}

void Vantreo::OnbuttonGetNewVersion(wxCommandEvent&) {
    // Presses during the wait are handled after it.
    buttonGetNewVersion->Unbind(wxEVT_BUTTON, &Vantreo::OnbuttonGetNewVersion, this);
    open_page(page_address("FR/Telecharger", "Download"));
    wxMilliSleep(3000);
    Close();
}
