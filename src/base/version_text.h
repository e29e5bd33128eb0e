#pragma once

#include <wx/string.h>

/// The program's version with two decimals and a point, in every locale: "1.24".
wxString version_text();
