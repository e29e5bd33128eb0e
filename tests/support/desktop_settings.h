#pragma once

#include <wx/string.h>

#include "support/folder.h"

/// A desktop's settings service on the X display during the object's lifetime. Its values reach the
/// toolkit like those of GNOME's or Xfce's.
class DesktopSettings {
  public:
    /// `lines` are in xsettingsd's format: `Gtk/FontName "Sans 12"`, `Xft/DPI 122880`.
    explicit DesktopSettings(const wxString& lines);
    ~DesktopSettings();
    DesktopSettings(const DesktopSettings&) = delete;
    DesktopSettings& operator=(const DesktopSettings&) = delete;

    /// Replaces all its values. The toolkit gets them in the event loop.
    void change(const wxString& lines);

  private:
    Folder folder;
    int process = 0;
};
