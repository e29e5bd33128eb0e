// The frame's message boxes, and what waits for them to close.

#include <wx/msgdlg.h>

#include <utility>

#include "app/Vantreo.h"

int Vantreo::ShowMessage(const wxString& text, long style) {
    ++openMessages;
    const int answer =
        wxMessageDialog(this, text, wxEmptyString, style, wxDefaultPosition).ShowModal();
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
