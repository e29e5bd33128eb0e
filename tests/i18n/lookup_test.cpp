#include "i18n/lookup.h"

#include <gtest/gtest.h>

#include <map>

#include "i18n/table.h"
#include "support/folder.h"

namespace {

class Lookup : public testing::Test {
  protected:
    wxString text(const wxString& key) {
        reads = 0;
        return lookup(translation_table, key, [this](const wxString& name) {
            if (name == "Language")
                ++reads;
            return settings[name];
        });
    }

    std::map<wxString, wxString> settings;
    int reads = 0;  ///< of the language, by the last text()
};

}  // namespace

TEST_F(Lookup, AnswersInTheLanguageNamedNatively) {
    settings["Language"] = L"Fran\u00e7ais";
    EXPECT_EQ(text("panelAbout"), "A propos");
    settings["Language"] = "Italiano";
    EXPECT_EQ(text("panelOptions"), "Opzioni");
}

TEST_F(Lookup, AnswersInEnglishForAnyOtherName) {
    for (const wxString language : {"French", "", "Klingon", "deutsch"}) {
        settings["Language"] = language;
        EXPECT_EQ(text("panelAbout"), "About") << language;
        EXPECT_EQ(text("buttonConvert_cancel"), "Cancel") << language;
    }
}

TEST_F(Lookup, FallsBackToEnglishWhereATranslationIsMissing) {
    settings["Language"] = "Italiano";
    EXPECT_EQ(text("labelOptimize"), "Optimize for:");
    EXPECT_EQ(text("panelConvert"), "Converti");
}

TEST_F(Lookup, AnswersNothingForAnUnknownKey) {
    EXPECT_EQ(text("no such key"), "");
}

TEST_F(Lookup, NamesTheChosenDeviceInTheConvertCaption) {
    settings["Language"] = "English";
    settings["Optimize"] = "1";
    EXPECT_EQ(text("buttonConvert"), "3: Convert the Movie(s) to my iPhone 4!");
    settings["Optimize"] = "2";
    EXPECT_EQ(text("buttonConvert"), "3: Convert the Movie(s) to my iPad!");
    for (const wxString none : {"0", "", "x", "7"}) {
        settings["Optimize"] = none;
        EXPECT_EQ(text("buttonConvert"), "3: Convert the Movie(s) to my iPhone!") << none;
    }
}

TEST_F(Lookup, NamesTheDeviceInOtherLanguagesToo) {
    settings["Language"] = "Deutsch";
    settings["Optimize"] = "2";
    EXPECT_EQ(text("buttonConvert"), L"3: Konvertiere Filmdatei(en) f\u00fcr mein iPad! ");
    settings["Optimize"] = "1";
    settings["Language"] = L"Rom\u00e2n\u0103";
    EXPECT_EQ(text("buttonConvert"), "3: Convertizare a filmelor pentru Iphonul meu!");
}

TEST_F(Lookup, NamesTheDeviceInNoOtherText) {
    settings["Optimize"] = "2";
    EXPECT_EQ(text("checkboxHowToMove"),
              "After conversion, show me how to move the movie to my iPhone/iPod/iPad");
}

TEST_F(Lookup, ReadsTheLanguageOncePerHeaderCell) {
    text("panelAbout");
    EXPECT_EQ(reads, 9);
}

TEST_F(Lookup, UsesTheLastColumnOfAShortRecordAsEnglish) {
    const wxString table = L"A:AA|B:BB|C:CC\u00a7key|one|two";
    const auto in = [&](const wxString& language) {
        return lookup(table, "key", [&](const wxString&) { return language; });
    };
    EXPECT_EQ(in("A"), "one");
    EXPECT_EQ(in("B"), "two");
    EXPECT_EQ(in("C"), "one");
}

TEST_F(Lookup, ComparesTheKeyWithEveryCell) {
    const auto english = [](const wxString&) { return wxString(); };
    EXPECT_EQ(lookup(L"A:AA|B:BB\u00a7one|two|three", "two", english), "three");
}

TEST_F(Lookup, NamesTheDeviceInTheEnglishFallback) {
    const auto setting = [](const wxString& name) {
        return name == "Language" ? wxString("B") : wxString("2");
    };
    EXPECT_EQ(lookup(L"A:AA|B:BB\u00a7buttonConvert|my iPhone|", "buttonConvert", setting),
              "my iPad");
}

TEST_F(Lookup, FillsTheLanguageListsOnlyWhenAsked) {
    wxArrayString native;
    wxArrayString english;
    const LanguageLists lists{native, english};
    const auto setting = [](const wxString&) { return wxString(); };
    EXPECT_EQ(lookup(L"A:AA|B:BB\u00a7key|one|two", "none", setting, &lists), "");
    ASSERT_EQ(native.size(), 2U);
    EXPECT_EQ(native[0] + native[1], "AB");
    EXPECT_EQ(english[0] + english[1], "AABB");
}
