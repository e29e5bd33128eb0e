#include "support/misfits.h"

#include <gtk/gtk.h>
#include <wx/gauge.h>
#include <wx/html/htmlcell.h>
#include <wx/html/htmlwin.h>
#include <wx/statbox.h>

namespace {

using Misfits = std::vector<wxString>;

wxString size_text(int width, int height) {
    return wxString::Format("%ix%i", width, height);
}

wxString described(const wxWindow& control) {
    wxString text = control.GetLabel();
    if (const auto* box = dynamic_cast<const wxHtmlWindow*>(&control))
        text = const_cast<wxHtmlWindow*>(box)->ToText();
    return wxString(control.GetClassInfo()->GetClassName()) + " \"" + text + "\"";
}

// ---- texts drawn by the toolkit

void check_text(PangoLayout* text, int width, int height, Misfits& found) {
    int textWidth = 0;
    int textHeight = 0;
    pango_layout_get_pixel_size(text, &textWidth, &textHeight);
    if (textWidth > width || textHeight > height || pango_layout_is_ellipsized(text) != 0)
        found.push_back("\"" + wxString::FromUTF8(pango_layout_get_text(text)) + "\" takes " +
                        size_text(textWidth, textHeight) + " of " + size_text(width, height));
}

void check_label(GtkWidget* label, Misfits& found) {
    GtkAllocation place;
    gtk_widget_get_allocation(label, &place);
    check_text(gtk_label_get_layout(GTK_LABEL(label)), place.width, place.height, found);

    // The label sticks out of a control that is too small for it.
    GtkWidget* const parent = gtk_widget_get_parent(label);
    GtkAllocation around;
    gtk_widget_get_allocation(parent, &around);
    GdkRectangle common;
    if (gtk_widget_get_has_window(parent) == 0 &&
        (gdk_rectangle_intersect(&place, &around, &common) == 0 || common.width < place.width ||
         common.height < place.height))
        found.push_back("\"" + wxString::FromUTF8(gtk_label_get_text(GTK_LABEL(label))) +
                        "\" sticks out of its control");
}

void check_entry(GtkWidget* entry, Misfits& found) {
    GdkRectangle area;
    gtk_entry_get_text_area(GTK_ENTRY(entry), &area);
    PangoLayout* const text = gtk_entry_get_layout(GTK_ENTRY(entry));
    // Typed text may be longer than the field, a choice may not.
    const bool typed = gtk_editable_get_editable(GTK_EDITABLE(entry)) != 0;
    check_text(text, typed ? G_MAXINT : area.width, area.height, found);
}

void check_texts(GtkWidget* widget, void* data) {
    if (gtk_widget_get_mapped(widget) == 0)
        return;
    Misfits& found = *static_cast<Misfits*>(data);
    if (GTK_IS_LABEL(widget))
        check_label(widget, found);
    else if (GTK_IS_ENTRY(widget))
        check_entry(widget, found);
    if (GTK_IS_CONTAINER(widget))
        gtk_container_forall(GTK_CONTAINER(widget), check_texts, data);
}

// ---- HTML boxes

/// Adds the places of the words, relative to the box, to `extent`.
void add_words(const wxHtmlCell* cell, wxRect& extent) {
    for (; cell != nullptr; cell = cell->GetNext()) {
        if (cell->IsTerminalCell() && !cell->IsFormattingCell())
            extent.Union(wxRect(cell->GetAbsPos(), wxSize(cell->GetWidth(), cell->GetHeight())));
        else
            add_words(cell->GetFirstChild(), extent);
    }
}

/// The place of the page's words in its box.
wxRect words_of(const wxHtmlWindow& box) {
    wxRect extent;
    add_words(box.GetInternalRepresentation()->GetFirstChild(), extent);
    return extent;
}

void check_html(const wxHtmlWindow& box, Misfits& found) {
    const wxRect words = words_of(box);
    const wxSize room = box.GetClientSize();
    if (!wxRect(room).Contains(words))
        found.push_back(described(box) + " ends at " +
                        size_text(words.GetRight() + 1, words.GetBottom() + 1) + " in a box of " +
                        size_text(room.x, room.y));
}

// ---- places

/// The visible place of the control.
wxRect visible_rect(const wxWindow& control) {
    const auto* const box = dynamic_cast<const wxHtmlWindow*>(&control);
    if (box == nullptr)
        return control.GetRect();
    wxRect words = words_of(*box);
    words.Offset(control.GetPosition());
    return words;
}

bool is_before_the_first_run(const wxWindow& control) {
    return dynamic_cast<const wxGauge*>(&control) != nullptr && control.GetSize().x < 100;
}

bool may_overlap(const wxWindow& control) {
    return dynamic_cast<const wxStaticBox*>(&control) != nullptr ||
           is_before_the_first_run(control);
}

void check_places(const wxPanel& page, Misfits& found) {
    const wxRect area(page.GetClientSize());
    const wxWindowList& controls = page.GetChildren();
    for (auto control = controls.begin(); control != controls.end(); ++control) {
        const wxRect rect = visible_rect(**control);
        if (!area.Contains(rect))
            found.push_back(described(**control) + " leaves the page");
        for (auto other = std::next(control); other != controls.end(); ++other) {
            if (rect.Intersects(visible_rect(**other)) && !may_overlap(**control) &&
                !may_overlap(**other))
                found.push_back(described(**control) + " overlaps " + described(**other));
        }
    }
}

}  // namespace

Misfits misfits(const wxPanel& page) {
    Misfits found;
    check_texts(page.GetHandle(), &found);
    for (const wxWindow* control : page.GetChildren()) {
        if (const auto* box = dynamic_cast<const wxHtmlWindow*>(control))
            check_html(*box, found);
    }
    check_places(page, found);
    return found;
}

Misfits misfits_of_texts(GtkWidget* widget) {
    Misfits found;
    check_texts(widget, &found);
    return found;
}

Misfits misfits_of_titles(wxNotebook& notebook) {
    Misfits found;
    GtkNotebook* const widget = GTK_NOTEBOOK(notebook.GetHandle());
    for (int page = 0; page < gtk_notebook_get_n_pages(widget); ++page)
        check_texts(gtk_notebook_get_tab_label(widget, gtk_notebook_get_nth_page(widget, page)),
                    &found);
    return found;
}
