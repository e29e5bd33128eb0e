#pragma once

#include <wx/string.h>
#include <wx/window.h>

#include <vector>

typedef struct _GtkWidget GtkWidget;

/// A question of the toolkit in front of the window, during the object's lifetime.
class MessageBox {
  public:
    explicit MessageBox(const wxWindow& parent);
    ~MessageBox();
    MessageBox(const MessageBox&) = delete;
    MessageBox& operator=(const MessageBox&) = delete;

    GtkWidget* widget() const { return box; }

    /// The height of a line, in pixels.
    int text_height() const;

    int button_height() const;

    std::vector<wxString> misfits() const;

  private:
    GtkWidget* box;
};
