#pragma once

#include <wx/fileconf.h>
#include <wx/string.h>

#include <memory>

/// Opens the settings file `path`, which need not exist; never fails, whatever lies there.
///
/// A damaged file keeps its sound lines and is rewritten in UTF-8; one that is far too large is
/// renamed to `path` + ".bad". Where no file can be kept, the settings live in memory only. Causes
/// are told on the console.
std::unique_ptr<wxFileConfig> open_settings(const wxString& path);
