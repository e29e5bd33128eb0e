// What all targets that use the toolkit share: its start, and failed toolkit assertions as
// findings.

#include <wx/debug.h>
#include <wx/init.h>
#include <wx/log.h>

#include <clocale>

#include "fuzz/require.h"

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    static wxInitializer toolkit;
    std::setlocale(LC_CTYPE, "C.UTF-8");
    wxSetAssertHandler([](const wxString& file, int line, const wxString& /*function*/,
                          const wxString& condition, const wxString& /*message*/) {
        require(false, condition.utf8_str(), file.utf8_str(), line);
    });
    wxLog::EnableLogging(false);
    return toolkit.IsOk() ? 0 : 1;
}
