#include "subtitles/language_fit.h"

#include <unicode/uchar.h>
#include <unicode/ulocdata.h>
#include <unicode/uniset.h>
#include <unicode/uscript.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace bundle {

namespace {

constexpr UChar32 kReplacement = 0xFFFD;
constexpr UChar32 kPilcrow = 0xB6;
constexpr UChar32 kSection = 0xA7;

// Most languages borrow nearly all letters of their neighbours.
constexpr double kBorrowed = 0.25;

struct CloseLocaleData {
    void operator()(ULocaleData* data) const { ulocdata_close(data); }
};
using LocaleData = std::unique_ptr<ULocaleData, CloseLocaleData>;

/// The letters of a language in upper and lower case.
struct Letters {
    icu::UnicodeSet own;
    icu::UnicodeSet borrowed;  ///< those of names and foreign words
};

const Letters& letters_of(const std::string& language) {
    static std::map<std::string, Letters> known;
    const auto [entry, is_new] = known.try_emplace(language);
    UErrorCode error = U_ZERO_ERROR;
    const LocaleData data(is_new ? ulocdata_open(language.c_str(), &error) : nullptr);
    if (!data || U_FAILURE(error)) {
        return entry->second;
    }
    const auto fill = [&](icu::UnicodeSet& letters, ULocaleDataExemplarSetType kind) {
        ulocdata_getExemplarSet(data.get(), letters.toUSet(), USET_ADD_CASE_MAPPINGS, kind, &error);
    };
    fill(entry->second.own, ULOCDATA_ES_STANDARD);
    fill(entry->second.borrowed, ULOCDATA_ES_AUXILIARY);
    return entry->second;
}

/// A character with its neighbours, 0 where there is none.
struct Place {
    UChar32 before;
    UChar32 here;
    UChar32 after;
};

Place place_at(const icu::UnicodeString& text, std::int32_t at) {
    const std::int32_t next = text.moveIndex32(at, 1);
    return {at > 0 ? text.char32At(text.moveIndex32(at, -1)) : 0, text.char32At(at),
            next < text.length() ? text.char32At(next) : 0};
}

bool is_mark(UChar32 c) {
    return u_ispunct(c) != 0 && c != kPilcrow && c != kSection;
}

bool is_ascii_letter(UChar32 c) {
    return c < 0x80 && u_isalpha(c) != 0;
}

bool is_latin(UChar32 c) {
    UErrorCode error = U_ZERO_ERROR;
    return uscript_getScript(c, &error) == USCRIPT_LATIN;
}

/// How foreign a letter is to the language, from 0 to 1.
double foreignness_of_letter(const Place& place, const Letters& letters) {
    const bool is_late_capital = u_isupper(place.here) != 0 && u_islower(place.before) != 0;
    const bool touches_ascii = is_ascii_letter(place.before) || is_ascii_letter(place.after);
    if (is_late_capital || (touches_ascii && !is_latin(place.here))) {
        return 1;
    }
    if (letters.own.contains(place.here) != 0) {
        return 0;
    }
    return letters.borrowed.contains(place.here) != 0 ? kBorrowed : 1;
}

double foreignness(const Place& place, const Letters& letters) {
    if (place.here == kReplacement || u_iscntrl(place.here) != 0) {
        return 1;
    }
    if (u_isalpha(place.here) != 0) {
        return foreignness_of_letter(place, letters);
    }
    const bool touches_a_letter = u_isalpha(place.before) != 0 || u_isalpha(place.after) != 0;
    return is_mark(place.here) || !touches_a_letter ? 0 : 1;
}

}  // namespace

double foreign_share(const icu::UnicodeString& text, const char* language) {
    const Letters& letters = letters_of(language);
    int all = 0;
    double foreign = 0;
    for (std::int32_t at = 0; at < text.length(); at = text.moveIndex32(at, 1)) {
        if (text.char32At(at) > 0x7F) {
            ++all;
            foreign += foreignness(place_at(text, at), letters);
        }
    }
    return all == 0 ? 0 : foreign / all;
}

}  // namespace bundle
