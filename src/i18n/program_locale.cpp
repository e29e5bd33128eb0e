#include "i18n/program_locale.h"

#ifdef __linux__

#include <langinfo.h>
#include <wx/strconv.h>
#include <wx/utils.h>

#include <clocale>
#include <cstring>
#include <cwctype>

namespace {

constexpr const char* kUtf8Locale = "C.UTF-8";

// C.UTF-8 as the C library finds it for a country that has no locale. In locales named "C" and
// "C.UTF-8" gettext ignores LANGUAGE and translates nothing.
constexpr const char* kTranslatableLocale = "C_XX.UTF-8";

bool is_untranslatable(const char* locale) {
    return std::strcmp(locale, "C") == 0 || std::strncmp(locale, "C.", 2) == 0;
}

/// The toolkit and GTK take file names to be in the encoding that LANG names.
void read_file_names_as_utf8() {
    static wxConvBrokenFileNames utf8("UTF-8");  // keeps the bytes of other names
    wxConvFileName = &utf8;
    wxSetEnv("G_FILENAME_ENCODING", "UTF-8");
}

}  // namespace

void take_up_system_locale() {
    const bool isInstalled = std::setlocale(LC_ALL, "") != nullptr;
    if (!isInstalled || std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0)
        std::setlocale(LC_ALL, kUtf8Locale);
    if (std::towlower(L'I') != L'i')  // Turkish: the HTML boxes would not know their own attributes
        std::setlocale(LC_CTYPE, kUtf8Locale);
    if (is_untranslatable(std::setlocale(LC_MESSAGES, nullptr)))
        std::setlocale(LC_MESSAGES, kTranslatableLocale);
    std::setlocale(LC_NUMERIC, "C");
    read_file_names_as_utf8();
}

#else

void take_up_system_locale() {}

#endif
