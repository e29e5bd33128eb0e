#include "i18n/program_locale.h"

#include <gtest/gtest.h>
#include <wx/utils.h>

#include <clocale>
#include <cstdlib>

#include "support/private_locales.h"

namespace {

class ProgramLocale : public testing::Test {
  protected:
    /// Sets the locale for a system whose LANG has that value.
    static void take_up(const wxString& lang) {
        PrivateLocales::environment("LANG", lang);
        take_up_system_locale();
    }

    static wxString category(int number) { return std::setlocale(number, nullptr); }

    PrivateLocales locales;
};

/// Values of LANG without a locale, or without one in UTF-8.
const char* const kPlainSystems[] = {"", "C", "POSIX", "C.UTF-8", "fr_FR.UTF-8", "xx"};

}  // namespace

TEST_F(ProgramLocale, IsTheSystemsExceptForDecimals) {
    ASSERT_TRUE(locales.make("de_DE.UTF-8"));
    take_up("de_DE.UTF-8");
    EXPECT_EQ(category(LC_CTYPE), "de_DE.UTF-8");
    EXPECT_EQ(category(LC_TIME), "de_DE.UTF-8");
    EXPECT_EQ(category(LC_MESSAGES), "de_DE.UTF-8");
    EXPECT_EQ(category(LC_NUMERIC), "C");
    EXPECT_EQ(std::strtod("1.5", nullptr), 1.5);
    EXPECT_EQ(wxString::Format("%.2f", 1.5), "1.50");
}

TEST_F(ProgramLocale, IsUtf8OnEverySystem) {
    ASSERT_TRUE(locales.make("lv_LV.ISO-8859-13"));
    const wxString name = L"\u00c9t\u00e9 \u0416";
    for (const wxString lang : {"", "C", "POSIX", "C.UTF-8", "fr_FR.UTF-8", "lv_LV.ISO-8859-13"}) {
        take_up(lang);
        ::setenv("VANTREO_TEST_NAME", name.utf8_str(), 1);
        wxString read;
        EXPECT_TRUE(wxGetEnv("VANTREO_TEST_NAME", &read));
        EXPECT_EQ(read, name) << lang;
        ::unsetenv("VANTREO_TEST_NAME");
    }
}

TEST_F(ProgramLocale, HasTheSameLetterCaseInEveryLanguage) {
    ASSERT_TRUE(locales.make("tr_TR.UTF-8"));
    ASSERT_TRUE(locales.make("de_DE.UTF-8"));
    for (const wxString lang : {"", "C", "xx", "de_DE.UTF-8", "tr_TR.UTF-8"}) {
        take_up(lang);
        EXPECT_EQ(wxString(L"\u00c9T\u00c9 \u0416 FILM").Lower(), L"\u00e9t\u00e9 \u0436 film")
            << lang;
        EXPECT_EQ(wxString("align").Upper(), "ALIGN") << lang;
    }
    EXPECT_EQ(category(LC_TIME), "tr_TR.UTF-8") << "only the letters are not Turkish";
}

TEST_F(ProgramLocale, TranslatesTextsWithoutALocaleOfTheirLanguage) {
    for (const wxString lang : kPlainSystems) {
        take_up(lang);
        const wxString messages = category(LC_MESSAGES);
        EXPECT_NE(messages, "C") << lang;
        EXPECT_FALSE(messages.StartsWith("C.")) << lang << ": " << messages;
    }
}
