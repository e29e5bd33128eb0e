#pragma once

#include <wx/fileconf.h>
#include <wx/string.h>

#include <memory>

/// Opens the settings file `path`, which need not exist. Never fails.
///
/// What wxFileConfig reads is read, and a write keeps all lines but those of the entries written,
/// in UTF-8. A symbolic link stays, and its target is written. A file that is not text, or
/// larger than 1 MiB, is renamed to `path` + ".bad" (".bad2", ...). Where no file can be kept, the
/// settings live in memory only. Causes are reported on the console.
std::unique_ptr<wxFileConfig> open_settings(const wxString& path);
