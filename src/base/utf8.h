#pragma once

#include <wx/string.h>

#include <string_view>

/// The text that `bytes` hold in UTF-8; empty when they are not well-formed, as RFC 3629 has it.
wxString text_from_utf8(std::string_view bytes);
