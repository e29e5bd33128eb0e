// The smallest wxWidgets program with a window: what the toolkit itself costs.

#include <wx/app.h>
#include <wx/frame.h>

class SmallestApp : public wxApp {
  public:
    bool OnInit() override { return (new wxFrame(nullptr, wxID_ANY, "Smallest"))->Show(); }
};

wxIMPLEMENT_APP(SmallestApp);
