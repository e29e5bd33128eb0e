#include "subtitles/encoding_guess.h"

#include <unicode/ucnv.h>
#include <unicode/ucsdet.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "subtitles/language_fit.h"

namespace bundle {

namespace {

/// An encoding, the name by which ICU's detector reports it (null: it does not; empty: nor is the
/// encoding common), and the languages written in it. When two fit equally well, the first is
/// taken.
struct Encoding {
    const char* name;
    const char* detected_as;
    std::vector<const char*> languages;
};

const std::vector<Encoding>& known_encodings() {
    const std::vector<const char*> western{"en", "fr", "de", "es", "it", "pt", "nl",
                                           "sv", "da", "nb", "fi", "is", "ca"};
    const std::vector<const char*> central{"pl", "cs", "sk", "hu", "ro", "hr", "sl"};
    const std::vector<const char*> baltic{"lt", "lv", "et"};
    const std::vector<const char*> cyrillic{"ru", "uk", "bg", "sr"};
    static const std::vector<Encoding> encodings{
        {"windows-1252", "ISO-8859-1", western},
        {"ISO-8859-15", "ISO-8859-1", western},
        {"windows-1250", "ISO-8859-2", central},
        {"ISO-8859-2", "ISO-8859-2", central},
        {"windows-1251", "windows-1251", cyrillic},
        {"KOI8-R", "KOI8-R", cyrillic},
        {"KOI8-U", "KOI8-R", {"uk"}},
        {"ISO-8859-5", "ISO-8859-5", cyrillic},
        {"windows-1254", "ISO-8859-9", {"tr"}},
        {"windows-1253", "ISO-8859-7", {"el"}},
        {"ISO-8859-7", "ISO-8859-7", {"el"}},
        {"windows-1257", nullptr, baltic},
        {"ISO-8859-13", nullptr, baltic},
        {"ISO-8859-4", "", baltic},
        {"ISO-8859-3", "", {"mt", "eo"}},
        {"ISO-8859-14", "", {"cy", "ga"}},
        {"windows-1255", "ISO-8859-8-I", {"he"}},
        {"windows-1256", "windows-1256", {"ar"}},
        {"GB18030", "GB18030", {"zh"}},
        {"Big5", "Big5", {"zh_Hant"}},
        {"Shift_JIS", "Shift_JIS", {"ja"}},
        {"EUC-JP", "EUC-JP", {"ja"}},
        {"EUC-KR", "EUC-KR", {"ko"}},
    };
    return encodings;
}

template <typename T, void (*close)(T*)>
struct Closer {
    void operator()(T* object) const { close(object); }
};
using Converter = std::unique_ptr<UConverter, Closer<UConverter, ucnv_close>>;
using Detector = std::unique_ptr<UCharsetDetector, Closer<UCharsetDetector, ucsdet_close>>;

/// The encodings that ICU's detector considers, with its confidence from 0 to 100.
std::map<std::string, int> detected(std::string_view bytes) {
    std::map<std::string, int> confidence;
    UErrorCode error = U_ZERO_ERROR;
    const Detector detector(ucsdet_open(&error));
    ucsdet_setText(detector.get(), bytes.data(), static_cast<std::int32_t>(bytes.size()), &error);
    std::int32_t count = 0;
    const UCharsetMatch** matches = ucsdet_detectAll(detector.get(), &count, &error);
    for (std::int32_t at = 0; U_SUCCESS(error) && at < count; ++at) {
        const char* name = ucsdet_getName(matches[at], &error);
        const int value = ucsdet_getConfidence(matches[at], &error);
        confidence[name] = std::max(confidence[name], value);
    }
    return confidence;
}

// Measured on translated messages in nearly fifty languages; other values near these do as well.
constexpr double kWeightOfLetters = 3;
constexpr int kUnknownToIcu = 10;

/// How well the encoding fits the text; above 0 when most of the text fits.
double fitness(const icu::UnicodeString& text, const Encoding& encoding, int confidence) {
    double least = 1;
    for (const char* language : encoding.languages) {
        least = std::min(least, foreign_share(text, language));
    }
    return confidence / 100.0 + kWeightOfLetters * (0.5 - least);
}

/// ICU reports the Windows encoding when a text uses the codes of an ISO encoding's controls.
int confidence_in(const Encoding& encoding, const std::map<std::string, int>& found) {
    if (encoding.detected_as == nullptr) {
        return kUnknownToIcu;
    }
    int confidence = 0;
    for (const char* name : {encoding.name, encoding.detected_as}) {
        const auto entry = found.find(name);
        confidence = std::max(confidence, entry == found.end() ? 0 : entry->second);
    }
    return confidence;
}

/// Lines that are not ASCII, no more than are needed.
std::string lines_beyond_ascii(std::string_view bytes) {
    constexpr std::size_t kEnough = 65536;
    std::string lines;
    while (!bytes.empty() && lines.size() < kEnough) {
        const std::size_t end = std::min(bytes.find_first_of("\r\n"), bytes.size() - 1) + 1;
        const std::string_view line = bytes.substr(0, end);
        if (std::any_of(line.begin(), line.end(), [](char c) { return (c & 0x80) != 0; })) {
            lines.append(line.substr(0, kEnough));
        }
        bytes.remove_prefix(end);
    }
    return lines;
}

/// UTF-8 with a few invalid characters is still UTF-8.
bool is_nearly_utf8(std::string_view bytes) {
    const auto text = decoded(bytes, "UTF-8");
    int foreign = 0;
    int broken = 0;
    for (std::int32_t at = 0; text && at < text->length(); at = text->moveIndex32(at, 1)) {
        foreign += text->char32At(at) > 0x7F ? 1 : 0;
        broken += text->char32At(at) == 0xFFFD ? 1 : 0;
    }
    return broken * 10 < foreign;
}

const char* best_encoding(std::string_view bytes) {
    if (is_nearly_utf8(bytes)) {
        return "UTF-8";
    }
    const auto found = detected(bytes);
    const char* best = nullptr;
    double best_fitness = 0;
    for (const Encoding& encoding : known_encodings()) {
        const auto text = decoded(bytes, encoding.name);
        const double now = text ? fitness(*text, encoding, confidence_in(encoding, found)) : 0;
        if (now > best_fitness) {
            best = encoding.name;
            best_fitness = now;
        }
    }
    return best;
}

}  // namespace

std::optional<icu::UnicodeString> decoded(std::string_view bytes, const char* encoding) {
    UErrorCode error = U_ZERO_ERROR;
    const Converter converter(ucnv_open(encoding, &error));
    if (U_FAILURE(error)) {
        return std::nullopt;
    }
    icu::UnicodeString text(bytes.data(), static_cast<std::int32_t>(bytes.size()), converter.get(),
                            error);
    return U_SUCCESS(error) ? std::optional(text) : std::nullopt;
}

const char* likely_encoding(std::string_view bytes) {
    return best_encoding(lines_beyond_ascii(bytes));
}

}  // namespace bundle
