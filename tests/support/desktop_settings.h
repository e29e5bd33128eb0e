#pragma once

#include <wx/string.h>

#include "support/folder.h"

/// A desktop's settings service on the X display, as long as the object lives: what it says reaches
/// the toolkit as from GNOME's or Xfce's.
class DesktopSettings {
  public:
    /// `lines` are in xsettingsd's format: `Gtk/FontName "Sans 12"`, `Xft/DPI 122880`.
    explicit DesktopSettings(const wxString& lines);
    ~DesktopSettings();
    DesktopSettings(const DesktopSettings&) = delete;
    DesktopSettings& operator=(const DesktopSettings&) = delete;

    /// Lets it say this and nothing else. The toolkit hears of it in the event loop.
    void change(const wxString& lines);

  private:
    Folder folder;
    int process = 0;
};
