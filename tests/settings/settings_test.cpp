#include "settings/settings.h"

#include <gtest/gtest.h>
#include <wx/fileconf.h>
#include <wx/log.h>
#include <wx/stdpaths.h>

#include <memory>

#include "support/folder.h"

namespace {

class Settings : public testing::Test {
  protected:
    wxString read(const wxString& key) { return read_setting(*open(), key, defaultLanguage); }
    void write(const wxString& key, const wxString& value) { write_setting(*open(), key, value); }

    /// The file's value of `key`; "(none)" if there is no such entry.
    wxString stored(const wxString& key) { return open()->Read(key, "(none)"); }

    /// Opens the file again, so that only what was written is read.
    std::unique_ptr<wxFileConfig> open() {
        auto config = std::make_unique<wxFileConfig>("", "", folder.file("Vantreo.ini"), "",
                                                     wxCONFIG_USE_LOCAL_FILE, wxConvAuto());
        config->SetExpandEnvVars(false);
        return config;
    }

    Folder folder;
    wxString defaultLanguage = "English";
};

}  // namespace

TEST_F(Settings, FillTheFileWithTheirDefaults) {
    EXPECT_EQ(read("Overwrite"), "true");
    EXPECT_EQ(read("HowToMove"), "true");
    EXPECT_EQ(read("Optimize"), "0");
    EXPECT_EQ(stored("Overwrite"), "true");
    EXPECT_EQ(stored("HowToMove"), "true");
    EXPECT_EQ(stored("Optimize"), "0");
}

TEST_F(Settings, SendTheOutputToTheDocumentsFolder) {
    const wxString documents = wxStandardPaths::Get().GetDocumentsDir();
    EXPECT_EQ(read("Output"), documents);
    EXPECT_EQ(stored("Output"), documents);
    write("Output", "/somewhere/else");
    EXPECT_EQ(read("Output"), "/somewhere/else");
    write("Output", "");
    EXPECT_EQ(read("Output"), documents);
    EXPECT_EQ(stored("Output"), documents);
}

TEST_F(Settings, ReplaceALanguageStoredBeforeItWasKnown) {
    defaultLanguage = "";
    EXPECT_EQ(read("Language"), "");
    EXPECT_EQ(stored("Language"), "");
    defaultLanguage = L"Fran\u00e7ais";
    EXPECT_EQ(read("Language"), L"Fran\u00e7ais");
    EXPECT_EQ(stored("Language"), L"Fran\u00e7ais");
}

TEST_F(Settings, NeverShutTheComputerDown) {
    EXPECT_EQ(read("Shutdown"), "false");
    EXPECT_EQ(stored("Shutdown"), "");
    write("Shutdown", "true");
    EXPECT_EQ(read("Shutdown"), "false");
    EXPECT_EQ(stored("Shutdown"), "true");
}

TEST_F(Settings, StoreAnUnknownKeyEmpty) {
    EXPECT_EQ(read("NoSuchKey"), "");
    EXPECT_EQ(stored("NoSuchKey"), "");
}

TEST_F(Settings, ReturnAMalformedValueUnchanged) {
    write("Optimize", "7");
    write("Overwrite", "TRUE");
    EXPECT_EQ(read("Optimize"), "7");
    EXPECT_EQ(read("Overwrite"), "TRUE");
}

TEST_F(Settings, KeepEveryCharacterOfAPath) {
    const wxString path = L"/m/$HOME/${LANG} %x \"q\" \\b = # ; [x] русский \U0001F3AC ";
    write("Output", path);
    EXPECT_EQ(read("Output"), path);
    write("Language", L"русский язык");
    EXPECT_EQ(read("Output"), path);
    EXPECT_EQ(read("Language"), L"русский язык");
}

TEST_F(Settings, AreSeenAtOnceByTheSameObject) {
    const auto config = open();
    write_setting(*config, "Optimize", "2");
    EXPECT_EQ(read_setting(*config, "Optimize", ""), "2");
}

TEST_F(Settings, ReadAnUnwritableFileAsDefaults) {
    wxFileConfig config("", "", "/no/such/folder/Vantreo.ini", "", wxCONFIG_USE_LOCAL_FILE,
                        wxConvAuto());
    wxLogNull quiet;
    EXPECT_EQ(read_setting(config, "Overwrite", ""), "true");
    EXPECT_EQ(read_setting(config, "Overwrite", ""), "true");
}
