#include "movie/language_code.h"

#include <unicode/locid.h>

#include <algorithm>
#include <cctype>

namespace bundle {

namespace {

bool is_letter(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) != 0;
}

char lower(char c) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

/// The code before a region, a script or another language, in lower case.
std::string first_code(std::string_view text) {
    const auto end = std::find_if_not(text.begin(), text.end(), is_letter);
    std::string code(text.begin(), end);
    std::transform(code.begin(), code.end(), code.begin(), lower);
    return code;
}

/// Also of the bibliographic codes of ISO 639-2 ("ger"), which Matroska prefers.
std::string terminological(const std::string& code) {
    icu::Locale locale(code.c_str());
    UErrorCode error = U_ZERO_ERROR;
    locale.canonicalize(error);
    return U_SUCCESS(error) ? locale.getISO3Language() : "";
}

}  // namespace

std::string mp4_language(std::string_view language) {
    const std::string code = first_code(language);
    if (code.size() != 2 && code.size() != 3) {
        return "und";
    }
    const std::string known = terminological(code);
    if (!known.empty()) {
        return known;
    }
    return code.size() == 3 ? code : "und";
}

}  // namespace bundle
