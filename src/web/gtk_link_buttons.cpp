#include "web/gtk_link_buttons.h"

#include <gtk/gtk.h>
#include <wx/html/htmlwin.h>
#include <wx/panel.h>

#include <memory>
#include <vector>

#include "web/page_links.h"

namespace {

// In pixels. Above and below the words there is no gap: the next line of the page begins there.
constexpr int kMarkWidth = 1;
constexpr int kMarkGap = 1;

// Nothing of the button is drawn, so it may be as small as the shortest link.
constexpr const char* kButtonStyle =
    "* { min-width: 0; min-height: 0; margin: 0; padding: 0; border-width: 0; }";

/// The widget that the box draws on, and that has the buttons as children.
GtkWidget* canvas_of(const wxHtmlWindow& box) {
    return gtk_bin_get_child(GTK_BIN(box.GetHandle()));
}

/// Where the mark of the link's lines ends, inside the box.
std::vector<wxRect> marked_lines(const PageLink& link, const wxHtmlWindow& box) {
    std::vector<wxRect> lines = link.lines;
    for (wxRect& line : lines)
        line.Inflate(kMarkGap + kMarkWidth, kMarkWidth).Intersect(box.GetClientSize());
    return lines;
}

using RegionPtr = std::unique_ptr<cairo_region_t, decltype(&cairo_region_destroy)>;

RegionPtr region_of(const std::vector<wxRect>& lines, int inset) {
    RegionPtr region(cairo_region_create(), cairo_region_destroy);
    for (const wxRect& line : lines) {
        const wxRect rect = wxRect(line).Deflate(inset);
        const cairo_rectangle_int_t part{rect.x, rect.y, rect.width, rect.height};
        cairo_region_union_rectangle(region.get(), &part);
    }
    return region;
}

/// A button over one link.
class LinkButton {
  public:
    explicit LinkButton(wxHtmlWindow& page) : box(page), widget(gtk_link_button_new("")) {
        // The words that are seen are those of the page.
        gtk_container_remove(GTK_CONTAINER(widget), gtk_bin_get_child(GTK_BIN(widget)));
        gtk_widget_set_has_tooltip(widget, FALSE);
        atk_object_set_role(accessible(), ATK_ROLE_LINK);
        remove_extent();
        g_signal_connect(widget, "key-press-event", G_CALLBACK(on_key), nullptr);
        g_signal_connect(widget, "draw", G_CALLBACK(on_draw), this);
        g_signal_connect(widget, "activate-link", G_CALLBACK(on_activate), this);
        g_signal_connect(widget, "state-flags-changed", G_CALLBACK(gtk_widget_queue_draw), nullptr);
        g_signal_connect_after(widget, "realize", G_CALLBACK(let_pointer_through), nullptr);
        gtk_widget_show(widget);
        gtk_container_add(GTK_CONTAINER(canvas_of(box)), widget);
    }

    /// Takes the button out of the box.
    void remove() { gtk_widget_destroy(widget); }

    void show(const PageLink& shown) {
        if (link.info.GetHref() != shown.info.GetHref())
            gtk_link_button_set_uri(GTK_LINK_BUTTON(widget), shown.info.GetHref().utf8_str());
        if (link.text != shown.text)
            atk_object_set_name(accessible(), shown.text.utf8_str());
        link = shown;
        gtk_widget_queue_resize(widget);
    }

    void place() {
        wxRect around;
        for (const wxRect& line : marked_lines(link, box))
            around.Union(line);
        GtkAllocation allocation{around.x, around.y, around.width, around.height};
        gtk_widget_get_preferred_size(widget, nullptr, nullptr);  // which has to be asked first
        gtk_widget_size_allocate(widget, &allocation);
    }

  private:
    AtkObject* accessible() const { return gtk_widget_get_accessible(widget); }

    void remove_extent() {
        GtkCssProvider* const style = gtk_css_provider_new();
        gtk_css_provider_load_from_data(style, kButtonStyle, -1, nullptr);
        gtk_style_context_add_provider(gtk_widget_get_style_context(widget),
                                       GTK_STYLE_PROVIDER(style), GTK_STYLE_PROVIDER_PRIORITY_USER);
        g_object_unref(style);
    }

    static void let_pointer_through(GtkWidget* widget, gpointer) {
        gdk_window_set_pass_through(gtk_button_get_event_window(GTK_BUTTON(widget)), TRUE);
    }

    /// The window's keys, which press a control and move the focus, before the canvas sees them: it
    /// takes the space bar for typing.
    static gboolean on_key(GtkWidget* widget, GdkEventKey* event, gpointer) {
        return gtk_bindings_activate_event(G_OBJECT(gtk_widget_get_toplevel(widget)), event);
    }

    static gboolean on_draw(GtkWidget*, cairo_t* context, gpointer data) {
        static_cast<LinkButton*>(data)->draw(context);
        return TRUE;
    }

    static gboolean on_activate(GtkLinkButton*, gpointer data) {
        const LinkButton& button = *static_cast<LinkButton*>(data);
        // A copy: the page, and this with it, may be another one before the call returns.
        const wxHtmlLinkInfo info = button.link.info;
        button.box.OnLinkClicked(info);
        return TRUE;
    }

    void draw(cairo_t* context) const {
        if (gtk_widget_has_visible_focus(widget) == 0)
            return;
        const std::vector<wxRect> lines = marked_lines(link, box);
        const RegionPtr mark = region_of(lines, 0);
        cairo_region_subtract(mark.get(), region_of(lines, kMarkWidth).get());

        GtkAllocation place;
        gtk_widget_get_allocation(widget, &place);
        cairo_translate(context, -place.x, -place.y);
        gdk_cairo_region(context, mark.get());
        const wxColour ink = wxPanel::GetClassDefaultAttributes().colFg;
        gdk_cairo_set_source_rgba(context, ink);
        cairo_fill(context);
    }

    wxHtmlWindow& box;
    GtkWidget* widget;  ///< owned by the canvas
    PageLink link;
};

/// The buttons of one box, which outlives them.
class LinkButtons {
  public:
    explicit LinkButtons(wxHtmlWindow& page) : box(page) {
        GtkWidget* const canvas = canvas_of(box);
        g_signal_connect_after(canvas, "size-allocate", G_CALLBACK(on_allocate), this);
        g_signal_connect(canvas, "focus", G_CALLBACK(on_focus), nullptr);
        // The box shows its whole page. Keys that would scroll it also change the notebook's pages.
        box.DisableKeyboardScrolling();
        g_signal_connect(box.GetHandle(), "scroll-child", G_CALLBACK(on_scroll_key), nullptr);
    }

    void follow_page() {
        const std::vector<PageLink> links = links_on_page(box);
        if (links == shown)
            return;
        for (; buttons.size() > links.size(); buttons.pop_back())
            buttons.back()->remove();
        while (buttons.size() < links.size())
            buttons.push_back(std::make_unique<LinkButton>(box));
        for (size_t index = 0; index < links.size(); ++index)
            buttons[index]->show(links[index]);
        shown = links;
    }

  private:
    /// The canvas gives children that it was not asked to place a pixel in its corner.
    static void on_allocate(GtkWidget*, GtkAllocation*, gpointer data) {
        for (const auto& button : static_cast<LinkButtons*>(data)->buttons)
            button->place();
    }

    /// Tab goes to the links, not also to the canvas, which is focused by a click.
    static gboolean on_focus(GtkWidget* canvas, GtkDirectionType direction, gpointer) {
        if (direction == GTK_DIR_TAB_BACKWARD && gtk_widget_is_focus(canvas) != 0)
            return FALSE;
        gtk_widget_set_can_focus(canvas, FALSE);
        const gboolean moved = GTK_WIDGET_GET_CLASS(canvas)->focus(canvas, direction);
        gtk_widget_set_can_focus(canvas, TRUE);
        g_signal_stop_emission_by_name(canvas, "focus");
        return moved;
    }

    static gboolean on_scroll_key(GtkWidget* pane, GtkScrollType, gboolean, gpointer) {
        g_signal_stop_emission_by_name(pane, "scroll-child");
        return FALSE;
    }

    wxHtmlWindow& box;
    std::vector<PageLink> shown;
    std::vector<std::unique_ptr<LinkButton>> buttons;
};

}  // namespace

void reach_links_by_keyboard(wxHtmlWindow& box) {
    const auto buttons = std::make_shared<LinkButtons>(box);
    // No event reports that the box has laid out its page.
    box.Bind(wxEVT_IDLE, [buttons](wxIdleEvent& event) {
        buttons->follow_page();
        event.Skip();
    });
}
