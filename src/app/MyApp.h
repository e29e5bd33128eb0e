#pragma once

#include <wx/app.h>

/// The application: creates the one frame and brings its window up.
class MyApp : public wxApp {
  public:
    /// Builds and shows the frame; always returns true.
    bool OnInit() override;
};
