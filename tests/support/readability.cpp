#include "support/readability.h"

#include <gtk/gtk.h>
#include <wx/colour.h>
#include <wx/gdicmn.h>

#include <algorithm>
#include <map>

#include "app/contrast.h"

namespace {

struct Search {
    GtkWidget* window;
    GdkPixbuf* picture;
    wxString except;
    std::vector<wxString> found;
};

/// The place of the widget in the screenshot of the window.
wxRect place_of(GtkWidget* widget, const Search& search) {
    GtkAllocation size;
    gtk_widget_get_allocation(widget, &size);
    int x = 0;
    int y = 0;
    gtk_widget_translate_coordinates(widget, search.window, 0, 0, &x, &y);
    return wxRect(x, y, size.width, size.height)
        .Intersect(wxRect(0, 0, gdk_pixbuf_get_width(search.picture),
                          gdk_pixbuf_get_height(search.picture)));
}

/// The most common colour there: text covers the smaller part.
wxColour background_of(const wxRect& place, GdkPixbuf* picture) {
    std::map<wxUint32, int> counts;
    const int channels = gdk_pixbuf_get_n_channels(picture);
    for (int y = place.y; y < place.y + place.height; ++y) {
        const guchar* pixel = gdk_pixbuf_get_pixels(picture) +
                              y * gdk_pixbuf_get_rowstride(picture) + place.x * channels;
        for (int x = 0; x < place.width; ++x, pixel += channels)
            ++counts[wxColour(pixel[0], pixel[1], pixel[2]).GetRGB()];
    }
    const auto commonest = std::max_element(
        counts.begin(), counts.end(),
        [](const auto& one, const auto& other) { return one.second < other.second; });
    wxColour colour;
    colour.SetRGB(commonest->first);
    return colour;
}

/// The combined opacity of the widget and its ancestors.
double opacity_of(GtkWidget* widget) {
    double opacity = 1;
    for (; widget != nullptr; widget = gtk_widget_get_parent(widget)) {
        GtkStyleContext* const style = gtk_widget_get_style_context(widget);
        double own = 1;
        gtk_style_context_get(style, gtk_style_context_get_state(style), "opacity", &own, nullptr);
        opacity *= own;
    }
    return opacity;
}

unsigned char blend(double ink, unsigned char paper, double alpha) {
    return static_cast<unsigned char>(255 * ink * alpha + paper * (1 - alpha) + 0.5);
}

wxColour ink_of(GtkWidget* widget, const wxColour& paper) {
    GtkStyleContext* const style = gtk_widget_get_style_context(widget);
    GdkRGBA ink;
    gtk_style_context_get_color(style, gtk_style_context_get_state(style), &ink);
    const double alpha = ink.alpha * opacity_of(widget);
    return {blend(ink.red, paper.Red(), alpha), blend(ink.green, paper.Green(), alpha),
            blend(ink.blue, paper.Blue(), alpha)};
}

wxString text_of(GtkWidget* widget) {
    if (GTK_IS_LABEL(widget))
        return wxString::FromUTF8(gtk_label_get_text(GTK_LABEL(widget)));
    if (GTK_IS_ENTRY(widget))
        return wxString::FromUTF8(gtk_entry_get_text(GTK_ENTRY(widget)));
    if (GTK_IS_TREE_VIEW(widget))
        return "a list";
    return {};
}

void search_in(GtkWidget* widget, void* data) {
    if (gtk_widget_get_mapped(widget) == 0)
        return;
    Search& search = *static_cast<Search*>(data);
    const wxString text = text_of(widget);
    const wxRect place = place_of(widget, search);
    if (!text.empty() && text != search.except && gtk_widget_is_sensitive(widget) != 0 &&
        !place.IsEmpty()) {
        const wxColour paper = background_of(place, search.picture);
        const wxColour ink = ink_of(widget, paper);
        if (contrast(ink, paper) < kReadableContrast)
            search.found.push_back(text + ": " + ink.GetAsString(wxC2S_HTML_SYNTAX) + " on " +
                                   paper.GetAsString(wxC2S_HTML_SYNTAX));
    }
    if (GTK_IS_CONTAINER(widget))
        gtk_container_forall(GTK_CONTAINER(widget), search_in, data);
}

GdkPixbuf* picture_of(GtkWidget* window) {
    const int width = gtk_widget_get_allocated_width(window);
    const int height = gtk_widget_get_allocated_height(window);
    cairo_surface_t* const surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height);
    cairo_t* const painter = cairo_create(surface);
    gtk_container_check_resize(GTK_CONTAINER(window));  // changed widgets have no place yet
    gtk_widget_draw(window, painter);
    cairo_destroy(painter);
    GdkPixbuf* const picture = gdk_pixbuf_get_from_surface(surface, 0, 0, width, height);
    cairo_surface_destroy(surface);
    return picture;
}

}  // namespace

std::vector<wxString> unreadable_texts(GtkWidget* window, const wxString& except) {
    Search search{window, picture_of(window), except, {}};
    search_in(window, &search);
    g_object_unref(search.picture);
    return search.found;
}

wxRect drawing_in(GtkWidget* window, GtkWidget* widget, const wxRect& part) {
    const Search search{window, picture_of(window), "", {}};
    const wxPoint origin = place_of(widget, search).GetPosition();
    wxRect place = part;
    place.Offset(origin);
    const wxColour background = background_of(place, search.picture);
    wxRect drawing;
    for (int y = place.y; y < place.GetBottom() + 1; ++y)
        for (int x = place.x; x < place.GetRight() + 1; ++x)
            if (background_of(wxRect(x, y, 1, 1), search.picture) != background)
                drawing.Union(wxRect(x - origin.x, y - origin.y, 1, 1));
    g_object_unref(search.picture);
    return drawing;
}
