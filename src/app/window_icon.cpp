#include "app/window_icon.h"

#include <wx/bitmap.h>
#include <wx/icon.h>
#include <wx/image.h>
#include <wx/imagpng.h>

#include "window_icon_pictures.h"

wxIconBundle window_icon() {
    if (wxImage::FindHandler(wxBITMAP_TYPE_PNG) == nullptr)
        wxImage::AddHandler(new wxPNGHandler);
    wxIconBundle bundle;
    for (const PngPicture& picture : window_icon_pictures()) {
        wxIcon icon;
        icon.CopyFromBitmap(wxBitmap::NewFromPNGData(picture.bytes, picture.size));
        bundle.AddIcon(icon);
    }
    return bundle;
}
