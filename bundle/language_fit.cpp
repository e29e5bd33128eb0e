#include "language_fit.h"

#include <unicode/uchar.h>
#include <unicode/ulocdata.h>
#include <unicode/uniset.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace bundle {

namespace {

constexpr UChar32 kReplacement = 0xFFFD;
constexpr UChar32 kPilcrow = 0xB6;
constexpr UChar32 kSection = 0xA7;

struct CloseLocaleData {
    void operator()(ULocaleData* data) const { ulocdata_close(data); }
};
using LocaleData = std::unique_ptr<ULocaleData, CloseLocaleData>;

/// The letters of a language in upper and lower case, the rarer ones of foreign words included.
const icu::UnicodeSet& letters_of(const std::string& language) {
    static std::map<std::string, icu::UnicodeSet> known;
    const auto [entry, is_new] = known.try_emplace(language);
    UErrorCode error = U_ZERO_ERROR;
    const LocaleData data(is_new ? ulocdata_open(language.c_str(), &error) : nullptr);
    if (!data || U_FAILURE(error)) {
        return entry->second;
    }
    for (const auto kind : {ULOCDATA_ES_STANDARD, ULOCDATA_ES_AUXILIARY}) {
        icu::UnicodeSet letters;
        ulocdata_getExemplarSet(data.get(), letters.toUSet(), USET_ADD_CASE_MAPPINGS, kind, &error);
        entry->second.addAll(letters);
    }
    return entry->second;
}

/// A character with those before and behind it, 0 where there is none.
struct Place {
    UChar32 before;
    UChar32 here;
    UChar32 behind;
};

Place place_at(const icu::UnicodeString& text, std::int32_t at) {
    const std::int32_t next = text.moveIndex32(at, 1);
    return {at > 0 ? text.char32At(text.moveIndex32(at, -1)) : 0, text.char32At(at),
            next < text.length() ? text.char32At(next) : 0};
}

bool is_mark(UChar32 c) {
    return u_ispunct(c) != 0 && c != kPilcrow && c != kSection;
}

bool belongs(const Place& place, const icu::UnicodeSet& letters) {
    if (place.here == kReplacement || u_iscntrl(place.here) != 0) {
        return false;
    }
    if (u_isalpha(place.here) != 0) {
        const bool is_late_capital = u_isupper(place.here) != 0 && u_islower(place.before) != 0;
        return letters.contains(place.here) != 0 && !is_late_capital;
    }
    const bool touches_a_letter = u_isalpha(place.before) != 0 || u_isalpha(place.behind) != 0;
    return is_mark(place.here) || !touches_a_letter;
}

}  // namespace

double foreign_share(const icu::UnicodeString& text, const char* language) {
    const icu::UnicodeSet& letters = letters_of(language);
    int all = 0;
    int foreign = 0;
    for (std::int32_t at = 0; at < text.length(); at = text.moveIndex32(at, 1)) {
        if (text.char32At(at) > 0x7F) {
            ++all;
            foreign += belongs(place_at(text, at), letters) ? 0 : 1;
        }
    }
    return all == 0 ? 0 : static_cast<double>(foreign) / all;
}

}  // namespace bundle
