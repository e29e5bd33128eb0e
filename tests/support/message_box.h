#pragma once

#include <wx/string.h>
#include <wx/window.h>

#include <vector>

typedef struct _GtkWidget GtkWidget;

/// A question as the toolkit shows it in front of the window, as long as the object lives.
class MessageBox {
  public:
    explicit MessageBox(const wxWindow& parent);
    ~MessageBox();
    MessageBox(const MessageBox&) = delete;
    MessageBox& operator=(const MessageBox&) = delete;

    GtkWidget* widget() const { return box; }

    /// Of a line, in pixels.
    int text_height() const;

    int button_height() const;

    std::vector<wxString> misfits() const;

  private:
    GtkWidget* box;
};
