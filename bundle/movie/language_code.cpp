#include "movie/language_code.h"

#include <unicode/locid.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

namespace bundle {

namespace {

/// The languages with two codes in ISO 639-2: that of libraries, which Matroska prefers, and that
/// of everybody else.
constexpr std::array<std::pair<std::string_view, std::string_view>, 20> kLibraryCodes{
    {{"alb", "sqi"}, {"arm", "hye"}, {"baq", "eus"}, {"bur", "mya"}, {"chi", "zho"},
     {"cze", "ces"}, {"dut", "nld"}, {"fre", "fra"}, {"geo", "kat"}, {"ger", "deu"},
     {"gre", "ell"}, {"ice", "isl"}, {"mac", "mkd"}, {"mao", "mri"}, {"may", "msa"},
     {"per", "fas"}, {"rum", "ron"}, {"slo", "slk"}, {"tib", "bod"}, {"wel", "cym"}}};

bool is_letter(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) != 0;
}

char in_small(char c) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

/// The letters before a region, a script or another language.
std::string first_code(std::string_view text) {
    const auto end = std::find_if_not(text.begin(), text.end(), is_letter);
    std::string code(text.begin(), end);
    std::transform(code.begin(), code.end(), code.begin(), in_small);
    return code;
}

}  // namespace

std::string mp4_language(std::string_view language) {
    std::string code = first_code(language);
    if (code.size() == 2) {
        code = icu::Locale(code.c_str()).getISO3Language();
    }
    const auto* known = std::find_if(kLibraryCodes.begin(), kLibraryCodes.end(),
                                     [&code](const auto& entry) { return entry.first == code; });
    if (known != kLibraryCodes.end()) {
        return std::string(known->second);
    }
    return code.size() == 3 ? code : "und";
}

}  // namespace bundle
