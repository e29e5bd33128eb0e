#pragma once

#include <wx/string.h>

#include <string_view>

/// `bytes` decoded as UTF-8; empty if they are not well-formed (RFC 3629).
wxString text_from_utf8(std::string_view bytes);
