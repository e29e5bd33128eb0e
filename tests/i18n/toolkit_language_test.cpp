#include "i18n/toolkit_language.h"

#include <gtest/gtest.h>
#include <libintl.h>
#include <wx/utils.h>

#include "i18n/program_locale.h"
#include "i18n/system_language.h"
#include "support/private_locales.h"

namespace {

class ToolkitLanguage : public testing::Test {
  protected:
    ToolkitLanguage() {
        const wxString names[][2] = {{"English", "English"},
                                     {L"Fran\u00e7ais", "French"},
                                     {"Deutsch", "German"},
                                     {L"Portugu\u00eas", "Portuguese"}};
        for (const auto& name : names) {
            native.Add(name[0]);
            english.Add(name[1]);
        }
    }

    /// The toolkit's label of a button when the window has that language.
    wxString no_in(const wxString& language) {
        set_toolkit_language(native, english, language);
        return wxString::FromUTF8(dgettext("gtk30", "_No"));
    }

    static wxString variable() {
        wxString value;
        return wxGetEnv("LANGUAGE", &value) ? value : wxString("(unset)");
    }

    PrivateLocales locales;
    wxArrayString native;
    wxArrayString english;
};

}  // namespace

TEST_F(ToolkitLanguage, IsThatOfTheWindowOnAnySystem) {
    bind_textdomain_codeset("gtk30", "UTF-8");
    ASSERT_TRUE(locales.make("de_DE.UTF-8"));
    for (const wxString lang : {"", "C", "C.UTF-8", "xx", "de_DE.UTF-8"}) {
        PrivateLocales::environment("LANG", lang);
        take_up_system_locale();
        EXPECT_EQ(no_in("Deutsch"), "_Nein") << lang;
        EXPECT_EQ(no_in(L"Fran\u00e7ais"), "_Non") << lang;
        EXPECT_EQ(no_in("English"), "_No") << lang;
        EXPECT_EQ(no_in(L"Portugu\u00eas"), L"_N\u00e3o") << lang;
        EXPECT_EQ(no_in("Klingon"), "_No") << lang;
    }
}

TEST_F(ToolkitLanguage, IsHiddenFromStartedPrograms) {
    const wxString atStart = variable();
    set_toolkit_language(native, english, "Deutsch");
    EXPECT_EQ(variable(), "de");
    {
        const UserEnvironment outer;
        EXPECT_EQ(variable(), atStart);
        const UserEnvironment inner;
        EXPECT_EQ(variable(), atStart);
    }
    EXPECT_EQ(variable(), "de");
}

TEST_F(ToolkitLanguage, GoesWithTheEncodingOfFileNamesThatTheUserSet) {
    wxString encoding;
    ASSERT_TRUE(wxGetEnv("G_FILENAME_ENCODING", &encoding));
    {
        const UserEnvironment environment;
        EXPECT_FALSE(wxGetEnv("G_FILENAME_ENCODING", nullptr));
    }
    wxString after;
    EXPECT_TRUE(wxGetEnv("G_FILENAME_ENCODING", &after));
    EXPECT_EQ(after, encoding);
}

TEST_F(ToolkitLanguage, IsNotMistakenForTheSystems) {
    PrivateLocales::environment("LANG", "fr_FR.UTF-8");
    set_toolkit_language(native, english, "Deutsch");
    EXPECT_EQ(system_language_name().BeforeFirst(' '), "French");
}
