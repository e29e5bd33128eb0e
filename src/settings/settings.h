#pragma once

#include <wx/confbase.h>
#include <wx/string.h>

// The settings: every value is a string, booleans are "true" (anything else is false), numbers are
// decimal text. An empty stored value counts as absent.

/// The value of `key`, or its default, which is then written back (unknown keys: "").
/// `defaultLanguage` is the default of `Language`. The reserved key `Shutdown` always reads
/// "false".
wxString read_setting(wxConfigBase& config, const wxString& key, const wxString& defaultLanguage);

/// Stores the pair and flushes the file at once. Failures are ignored.
void write_setting(wxConfigBase& config, const wxString& key, const wxString& value);
