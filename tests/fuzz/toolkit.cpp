// For all targets that use the toolkit: initialises it, and reports failed assertions as findings.

#include <wx/debug.h>
#include <wx/init.h>
#include <wx/log.h>

#include "fuzz/require.h"
#include "i18n/program_locale.h"

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    static wxInitializer toolkit;
    take_up_system_locale();
    wxSetAssertHandler([](const wxString& file, int line, const wxString& /*function*/,
                          const wxString& condition, const wxString& /*message*/) {
        require(false, condition.utf8_str(), file.utf8_str(), line);
    });
    wxLog::EnableLogging(false);
    return toolkit.IsOk() ? 0 : 1;
}
