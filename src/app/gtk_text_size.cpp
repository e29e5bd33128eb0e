#include "app/gtk_text_size.h"

#include <gtk/gtk.h>
#include <wx/string.h>

#include <algorithm>
#include <memory>

namespace {

// The controls' places were drawn for a screen where 10 points are 10 pixels. This is the largest
// resolution at which every text fits in every language with DejaVu Sans, the font of most systems:
// at the next one the longest device name no longer fits its box.
constexpr int kLargestDpi = 85;
constexpr int kSmallestDpi = 50;

/// The texts that fill their places most, in pixels, and the height of a line in an HTML box.
struct Room {
    const char* text;
    int width;
    int height;
};
constexpr Room kRooms[] = {
    {"iPhone 2g/3g/3gs & iPod touch", 181, 17},
    {"1: Seleccionar pel\u00edculas para convertir...", 260, 17},
};

/// The pages' own font, for HTML and page titles, which have no other.
constexpr const char* kFont = "Sans 10";

constexpr double kOrdinaryDpi = 96;
constexpr double kSettingUnits = 1024;  // of gtk-xft-dpi, in a dot per inch

constexpr const char* kDesktopParts = "messagedialog, dialog, .titlebar";

struct FreeFont {
    void operator()(PangoFontDescription* font) const { pango_font_description_free(font); }
};
using Font = std::unique_ptr<PangoFontDescription, FreeFont>;

bool has_room_for_texts(PangoLayout* layout) {
    return std::all_of(std::begin(kRooms), std::end(kRooms), [layout](const Room& room) {
        int width = 0;
        int height = 0;
        pango_layout_set_text(layout, room.text, -1);
        pango_layout_get_pixel_size(layout, &width, &height);
        return width <= room.width && height <= room.height;
    });
}

/// The largest resolution at which the texts fit in the installed font.
int fitting_dpi(GdkScreen* screen) {
    const Font font(pango_font_description_from_string(kFont));
    PangoContext* const context = gdk_pango_context_get_for_screen(screen);
    PangoLayout* const layout = pango_layout_new(context);
    pango_layout_set_font_description(layout, font.get());
    int dpi = kLargestDpi + 1;
    do {
        pango_cairo_context_set_resolution(context, --dpi);
        pango_layout_context_changed(layout);
    } while (dpi > kSmallestDpi && !has_room_for_texts(layout));
    g_object_unref(layout);
    g_object_unref(context);
    return dpi;
}

/// The desktop's value of a setting that the program has overridden; false if the desktop has no
/// settings service.
bool read_desktop_setting(const char* name, GValue* value) {
    return gdk_screen_get_setting(gdk_screen_get_default(), name, value) != FALSE;
}

/// The desktop's setting for its resolution, in gtk-xft-dpi's units.
double resolution_setting() {
    GValue value = G_VALUE_INIT;
    g_value_init(&value, G_TYPE_INT);
    const int found = read_desktop_setting("gtk-xft-dpi", &value) ? g_value_get_int(&value) : 0;
    g_value_unset(&value);
    return found > 0 ? found : kOrdinaryDpi * kSettingUnits;
}

wxString font_setting(const wxString& fallback) {
    GValue value = G_VALUE_INIT;
    g_value_init(&value, G_TYPE_STRING);
    const bool found = read_desktop_setting("gtk-font-name", &value);
    const char* const name = found ? g_value_get_string(&value) : nullptr;
    const wxString font = name == nullptr ? fallback : wxString::FromUTF8(name);
    g_value_unset(&value);
    return font;
}

/// CSS for a font description such as "Cantarell Bold 11".
wxString font_css(const wxString& description) {
    const Font font(pango_font_description_from_string(description.utf8_str()));
    wxString css;
    if (const char* const family = pango_font_description_get_family(font.get()))
        css << "font-family: \"" << wxString::FromUTF8(family) << "\"; ";
    const double size = pango_font_description_get_size(font.get()) / double{PANGO_SCALE};
    const bool is_absolute = pango_font_description_get_size_is_absolute(font.get()) != FALSE;
    if (size > 0)
        css << "font-size: " << wxString::FromCDouble(size, 2) << (is_absolute ? "px; " : "pt; ");
    return css << "font-weight: " << pango_font_description_get_weight(font.get()) << "; ";
}

class TextSize {
  public:
    TextSize()
        : screen(gdk_screen_get_default()),
          settings(gtk_settings_get_default()),
          provider(gtk_css_provider_new()),
          dpi(fitting_dpi(screen)) {
        const double resolution = gdk_screen_get_resolution(screen);
        firstResolution = resolution > 0 ? resolution : kOrdinaryDpi;
        firstSetting = resolution_setting();
        char* font = nullptr;
        g_object_get(settings, "gtk-font-name", &font, nullptr);
        firstFont = wxString::FromUTF8(font);
        g_free(font);

        g_object_set(settings, "gtk-font-name", kFont, nullptr);
        gdk_screen_set_resolution(screen, dpi);
        gtk_style_context_add_provider_for_screen(screen, GTK_STYLE_PROVIDER(provider),
                                                  GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
        show_desktop_parts();
        const auto follow = +[](TextSize* size) { size->follow_desktop(); };
        g_signal_connect_swapped(screen, "notify::resolution", G_CALLBACK(follow), this);
        g_signal_connect_swapped(settings, "notify::gtk-xft-dpi", G_CALLBACK(follow), this);
        g_signal_connect_swapped(settings, "notify::gtk-font-name", G_CALLBACK(follow), this);
    }

  private:
    void follow_desktop() {
        if (gdk_screen_get_resolution(screen) != dpi) {
            gdk_screen_set_resolution(screen, dpi);
            gtk_style_context_reset_widgets(screen);
        }
        show_desktop_parts();
    }

    void show_desktop_parts() {
        const double resolution = firstResolution * resolution_setting() / firstSetting;
        const wxString style_sheet = wxString(kDesktopParts) +
                                     " { -gtk-dpi: " + wxString::FromCDouble(resolution, 2) + "; " +
                                     font_css(font_setting(firstFont)) + "}";
        if (style_sheet == shown)
            return;
        shown = style_sheet;
        gtk_css_provider_load_from_data(provider, style_sheet.utf8_str(), -1, nullptr);
    }

    GdkScreen* screen;
    GtkSettings* settings;
    GtkCssProvider* provider;
    int dpi;                 ///< the window's
    double firstResolution;  ///< the desktop's, at the start
    double firstSetting;     ///< what its setting was
    wxString firstFont;      ///< the desktop's own
    wxString shown;
};

}  // namespace

void fix_text_size() {
    static auto& size = *new TextSize;
    static_cast<void>(size);
}
