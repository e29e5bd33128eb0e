// The smallest wxWidgets program with a window, as the baseline of start time and memory.

#include <wx/app.h>
#include <wx/frame.h>

class SmallestApp : public wxApp {
  public:
    bool OnInit() override { return (new wxFrame(nullptr, wxID_ANY, "Smallest"))->Show(); }
};

wxIMPLEMENT_APP(SmallestApp);
