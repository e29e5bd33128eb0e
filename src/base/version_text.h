#pragma once

#include <wx/string.h>

/// The program's version with two decimals and a point, whatever the locale: "1.24".
wxString version_text();
