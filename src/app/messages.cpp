// The frame's message boxes, and what waits for them to close.

#include <wx/msgdlg.h>

#include <utility>

#include "app/Vantreo.h"

namespace {

/// A box that is dismissed, by Escape or its close button, is answered with the harmless button:
/// "No" to a question, the only one of an error.
int harmless_if_dismissed(int answer, long style) {
    if (answer != wxID_CANCEL)
        return answer;
    return (style & wxYES_NO) != 0 ? wxID_NO : wxID_OK;
}

}  // namespace

int Vantreo::ShowMessage(const wxString& text, long style) {
    ++openMessages;
    wxMessageDialog box(this, text, wxEmptyString, style, wxDefaultPosition);
    const int answer = harmless_if_dismissed(box.ShowModal(), style);
    --openMessages;
    if (!postponed.empty())
        CallAfter(&Vantreo::run_postponed);
    return answer;
}

void Vantreo::RunUnlessAsking(std::function<void()> action) {
    if (openMessages > 0)
        postponed.push_back(std::move(action));
    else
        action();
}

void Vantreo::run_postponed() {
    for (auto& action : std::exchange(postponed, {}))
        RunUnlessAsking(std::move(action));  // the one before may have opened a message again
}
