#include "i18n/system_language.h"

#include <gtest/gtest.h>
#include <wx/utils.h>

#include <map>

#include "support/folder.h"

namespace {

/// Sets the locale variables for one test and restores them.
class SystemLanguage : public testing::Test {
  protected:
    ~SystemLanguage() override {
        for (const auto& [name, value] : before)
            set(name, value);
    }

    void environment(const wxString& all, const wxString& messages, const wxString& lang,
                     const wxString& language = "") {
        change("LC_ALL", all);
        change("LC_MESSAGES", messages);
        change("LANG", lang);
        change("LANGUAGE", language);
    }

    static wxString detected() {
        const wxString names[][2] = {{"English", "English"},
                                     {L"Fran\u00e7ais", "French"},
                                     {"Deutsch", "German"},
                                     {L"Portugu\u00eas", "Portuguese"},
                                     {L"Rom\u00e2n\u0103", "Romanian"},
                                     {L"Espa\u00f1ol", "Spanish"}};
        wxArrayString native;
        wxArrayString english;
        for (const auto& name : names) {
            native.Add(name[0]);
            english.Add(name[1]);
        }
        return default_language(native, english, system_language_name());
    }

  private:
    static void set(const wxString& name, const wxString& value) {
        if (value.empty())
            wxUnsetEnv(name);
        else
            wxSetEnv(name, value);
    }

    void change(const wxString& name, const wxString& value) {
        wxString old;
        wxGetEnv(name, &old);
        before.emplace(name, old);
        set(name, value);
    }

    std::map<wxString, wxString> before;
};

wxString default_of(const wxString& systemName) {
    wxArrayString native;
    wxArrayString english;
    native.Add("English");
    native.Add(L"Fran\u00e7ais");
    native.Add(L"Portugu\u00eas");
    english.Add("English");
    english.Add("French");
    english.Add("Portuguese");
    return default_language(native, english, systemName);
}

}  // namespace

TEST(DefaultLanguage, IsFoundByTheLanguageAlone) {
    EXPECT_EQ(default_of("French"), L"Fran\u00e7ais");
    EXPECT_EQ(default_of("French (France)"), L"Fran\u00e7ais");
    EXPECT_EQ(default_of("Portuguese (Brazil)"), L"Portugu\u00eas");
    EXPECT_EQ(default_of("English (United States)"), "English");
}

TEST(DefaultLanguage, IsEnglishForAnUnsupportedLanguage) {
    EXPECT_EQ(default_of("Japanese"), "English");
    EXPECT_EQ(default_of("Frenchish"), "English");
    EXPECT_EQ(default_of(""), "English");
}

TEST(DefaultLanguage, UsesTheLaterOfTwoEqualEntries) {
    wxArrayString native;
    wxArrayString english;
    native.Add("a");
    native.Add("b");
    english.Add("Same");
    english.Add("Same");
    EXPECT_EQ(default_language(native, english, "Same"), "b");
}

TEST_F(SystemLanguage, FollowsTheEnvironmentWithOrWithoutAnInstalledLocale) {
    environment("", "", "fr_FR.UTF-8");
    EXPECT_EQ(detected(), L"Fran\u00e7ais");
    environment("", "", "fr_BE");
    EXPECT_EQ(detected(), L"Fran\u00e7ais");
    environment("", "", "fr");
    EXPECT_EQ(detected(), L"Fran\u00e7ais");
    environment("", "", "pt_BR.UTF-8");
    EXPECT_EQ(detected(), L"Portugu\u00eas");
    environment("", "", "de_AT@euro");
    EXPECT_EQ(detected(), "Deutsch");
    environment("", "", "ro_RO.UTF-8");
    EXPECT_EQ(detected(), L"Rom\u00e2n\u0103");
    environment("", "", "es");
    EXPECT_EQ(detected(), L"Espa\u00f1ol");
}

TEST_F(SystemLanguage, PrefersTheMoreSpecificVariable) {
    environment("", "de_DE.UTF-8", "fr_FR.UTF-8");
    EXPECT_EQ(detected(), "Deutsch");
    environment("es_ES.UTF-8", "de_DE.UTF-8", "fr_FR.UTF-8");
    EXPECT_EQ(detected(), L"Espa\u00f1ol");
}

TEST_F(SystemLanguage, IsTheFirstOfTheUsersListOfLanguages) {
    environment("", "", "de_DE.UTF-8", "fr:en");
    EXPECT_EQ(detected(), L"Fran\u00e7ais");
    environment("", "", "de_DE.UTF-8", "es_MX");
    EXPECT_EQ(detected(), L"Espa\u00f1ol");
    environment("", "", "de_DE.UTF-8", "ja:fr");
    EXPECT_EQ(detected(), "English");
    environment("", "", "ja_JP.UTF-8", "fr");
    EXPECT_EQ(detected(), L"Fran\u00e7ais");
}

TEST_F(SystemLanguage, IgnoresTheListIfTheLocaleHasNoLanguage) {
    for (const wxString lang : {"C", "POSIX", "C.UTF-8"}) {
        environment("", "", lang, "fr");
        EXPECT_EQ(detected(), "English") << lang;
    }
}

TEST_F(SystemLanguage, IsEnglishIfNothingIsKnown) {
    for (const wxString lang : {"", "C", "POSIX", "C.UTF-8", "ja_JP.UTF-8", "xx_YY", "."}) {
        environment("", "", lang);
        EXPECT_EQ(detected(), "English") << lang;
    }
}
