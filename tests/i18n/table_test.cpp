#include "i18n/table.h"

#include <gtest/gtest.h>
#include <wx/arrstr.h>

#include <cwchar>
#include <map>
#include <set>
#include <vector>

#include "support/folder.h"

namespace {

/// Splits and keeps empty pieces.
std::vector<wxString> pieces(const wxString& text, wxChar separator) {
    std::vector<wxString> result(1);
    for (const auto c : text) {
        if (c == separator)
            result.emplace_back();
        else
            result.back() += c;
    }
    return result;
}

std::vector<std::vector<wxString>> records() {
    std::vector<std::vector<wxString>> result;
    for (const wxString& record : pieces(translation_table, L'\u00a7'))
        result.push_back(pieces(record, '|'));
    return result;
}

/// The text records' keys and English texts, in order. An empty text matches any.
const std::vector<std::pair<wxString, wxString>> kEnglish = {
    {"panelConvert", "Convert"},
    {"panelOptions", "Options"},
    {"panelAbout", "About"},
    {"confirmYes", "Yes"},
    {"confirmNo", "No"},
    {"buttonMovies", "1: Select movie(s) to convert..."},
    {"buttonOutput", "2: Select the output folder..."},
    {"labelOptimize", "Optimize for:"},
    {"buttonConvert", "3: Convert the Movie(s) to my iPhone!"},
    {"buttonConvert_cancel", "Cancel"},
    {"confirmOverwrite",
     "Destination file already exists. Are you sure you would like to overwrite it? If No, click "
     "'No' and select another directory."},
    {"confirmCancel", "A movie Conversion is being processed. Do you really want to Cancel it?"},
    {"labelConvert_ing", "Conversion in progress..."},
    {"labelSubtitle", "Adding Subtitles"},
    {"checkboxShutdown", "Shutdown computer after conversion"},
    {"labelConvert_ed", "Conversion completed!"},
    {"labelConvert_canceled", "Conversion canceled"},
    {"labelElapsed", "Time Elapsed:"},
    {"labelRemaining", "Time Remaining:"},
    {"labelLanguage", "Language:"},
    {"checkboxOverwrite", "Ask before overwriting destination file"},
    {"checkboxHowToMove", "After conversion, show me how to move the movie to my iPhone/iPod/iPad"},
    {"buttonGetNewVersion", "Download and Install..."},
    {"labelCheckVersion_ing", "Checking for new version of Vantreo..."},
    {"labelCheckVersion_nointernet",
     "Connection to Server not available. Can't check for new version."},
    {"labelCheckVersion_yes", "There is a new version of Vantreo!"},
    {"labelCheckVersion_no", "Your version of Vantreo is up to date."},
    {"error_ffmpeg", "Error: Can't find FFmpeg. Please reinstall Vantreo."},
    {"error_mp4box", "Error: Can't find MP4Box. Please reinstall Vantreo."},
    {"error_badOutput",
     "Error: The destination directory you have selected is not valid. Please select another one."},
    {"error_badMovies",
     "Error: The movie file you have selected is not valid. Please select another one."},
    {"error_MoviesOutputSame", "Error: The Movie file is the same as the destination file."},
    {"buttonDonate", "Donate"},
    {"htmlSubtitle", "Add subtitles"},
    {"htmlAboutTranslation", ""},
    {"htmlAboutContact", "Suggestions & Bug Reports:"},
    {"htmlAboutYouLike", "You like the software?"},
    {"htmlAboutDonate", "Offer me a coffee or a beer (preferred ;-)"},
    {"htmlAboutTranslations_1", "Translations:"},
    {"htmlAboutTranslations_2", "Great Thanks to all the contributors"},
    {"htmlTranslations",
     "Want to translate Vantreo in your own language or fix a translation mistake? It's easy, "
     "click here!"},
    {"labelDevice", "1: Select your device:"},
};

}  // namespace

TEST(TranslationTable, HasItsExactLength) {
    EXPECT_EQ(std::wcslen(translation_table), 14367U);
}

TEST(TranslationTable, NamesNineLanguagesInItsHeader) {
    const std::vector<wxString> header = records()[0];
    const wxString expected[] = {"English:English",
                                 L"Fran\u00e7ais:French",
                                 L"Espa\u00f1ol:Spanish",
                                 "Italiano:Italian",
                                 "Deutsch:German",
                                 "Polski:Polish",
                                 L"Portugu\u00eas:Portuguese",
                                 L"Rom\u00e2n\u0103:Romanian",
                                 L"русский язык:Russian"};
    EXPECT_EQ(header, std::vector<wxString>(std::begin(expected), std::end(expected)));
}

TEST(TranslationTable, ContainsTheKeysAndEnglishTextsInOrder) {
    const auto all = records();
    ASSERT_EQ(all.size(), 43U);
    for (size_t i = 0; i < kEnglish.size(); ++i) {
        const std::vector<wxString>& record = all[i + 1];
        ASSERT_EQ(record.size(), 10U) << kEnglish[i].first;
        EXPECT_EQ(record[0], kEnglish[i].first);
        if (kEnglish[i].second.empty())
            EXPECT_NE(record[1], "");
        else
            EXPECT_EQ(record[1], kEnglish[i].second);
    }
}

TEST(TranslationTable, LeavesExactlyTheUntranslatedCellsEmpty) {
    const std::set<wxString> untranslated = {
        "labelOptimize", "labelSubtitle",           "checkboxShutdown",        "error_ffmpeg",
        "error_mp4box",  "htmlAboutTranslations_1", "htmlAboutTranslations_2", "htmlTranslations",
        "labelDevice"};
    const auto all = records();
    for (size_t i = 1; i < all.size(); ++i) {
        const wxString key = all[i][0];
        for (size_t language = 0; language < all[0].size(); ++language) {
            const bool sparse = language == 3 || language == 6 || language == 7;
            EXPECT_EQ(all[i][language + 1].empty(), sparse && untranslated.contains(key))
                << key << " " << language;
        }
    }
}

TEST(TranslationTable, KeepsExactlyTheBlanksAtTheEdges) {
    using Place = std::pair<wxString, size_t>;
    const std::set<Place> trailing = {{"buttonConvert", 4},
                                      {"htmlTranslations", 4},
                                      {"labelConvert_ed", 5},
                                      {"error_badMovies", 5},
                                      {"htmlAboutDonate", 8}};
    const std::set<Place> leading = {{"error_mp4box", 5},
                                     {"htmlAboutTranslation", 5},
                                     {"htmlAboutContact", 5},
                                     {"htmlAboutDonate", 5},
                                     {"htmlAboutTranslations_2", 5}};
    std::set<Place> foundTrailing;
    std::set<Place> foundLeading;
    const auto all = records();
    for (size_t i = 1; i < all.size(); ++i) {
        for (size_t language = 0; language < all[0].size(); ++language) {
            const wxString& text = all[i][language + 1];
            if (text.EndsWith(" "))
                foundTrailing.insert({all[i][0], language});
            if (text.StartsWith(" "))
                foundLeading.insert({all[i][0], language});
        }
    }
    EXPECT_EQ(foundTrailing, trailing);
    EXPECT_EQ(foundLeading, leading);
}

TEST(TranslationTable, ContainsNoKeyAmongItsTexts) {
    const auto all = records();
    std::set<wxString> keys = {"tointialize"};
    for (size_t i = 1; i < all.size(); ++i)
        EXPECT_TRUE(keys.insert(all[i][0]).second) << all[i][0];
    for (size_t i = 1; i < all.size(); ++i) {
        for (size_t cell = 1; cell < all[i].size(); ++cell)
            EXPECT_FALSE(keys.contains(all[i][cell])) << all[i][0] << " " << cell;
    }
}

TEST(TranslationTable, NamesTheDeviceInEveryConvertCaptionButTheRomanian) {
    const auto all = records();
    for (const auto& record : all) {
        if (record[0] != "buttonConvert")
            continue;
        for (size_t language = 0; language < all[0].size(); ++language)
            EXPECT_EQ(record[language + 1].Contains("iPhone"), language != 7) << language;
    }
}
