#pragma once

#include <wx/string.h>

/// Base address of the product web site; always ends in "/". The environment variable
/// VANTREO_SITE, when set and not empty, wins over the address that the build was given.
wxString site_base();

/// The platform's name as the About page and the version check give it.
wxString platform_word();
