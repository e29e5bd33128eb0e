// Faulty systems: the window opens and works anyway.

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <wx/button.h>
#include <wx/combobox.h>
#include <wx/listbox.h>
#include <wx/stattext.h>
#include <wx/stopwatch.h>
#include <wx/textctrl.h>
#include <wx/utils.h>

#include <filesystem>
#include <fstream>

#include "convert/Movie.h"
#include "support/environment.h"
#include "support/frame_test.h"

namespace {

namespace fs = std::filesystem;

const wxString kRussian = L"русский язык";

/// Makes permissions apply to root too, during its lifetime.
class OrdinaryRights {
  public:
    OrdinaryRights() {
        ::syscall(SYS_capget, &header, before);
        __user_cap_data_struct fewer[2] = {before[0], before[1]};
        fewer[0].effective &= ~((1U << CAP_DAC_OVERRIDE) | (1U << CAP_DAC_READ_SEARCH));
        ::syscall(SYS_capset, &header, fewer);
    }
    ~OrdinaryRights() { ::syscall(SYS_capset, &header, before); }
    OrdinaryRights(const OrdinaryRights&) = delete;
    OrdinaryRights& operator=(const OrdinaryRights&) = delete;

  private:
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct before[2]{};
};

class BadSystem : public FrameTest {
  protected:
    BadSystem() { fs::create_directory(config.path().utf8_string()); }

    ~BadSystem() override {
        if (frame != nullptr)
            close();
        fs::permissions(config.path().utf8_string(), fs::perms::owner_all);
    }

    wxString settings_file() const { return config.file("Vantreo.ini"); }

    void write_settings(const std::string& bytes) const {
        std::ofstream(settings_file().utf8_string(), std::ios::binary) << bytes;
    }

    /// The content of the file.
    std::string settings_bytes() const { return content_of(settings_file().utf8_string()); }

    void choose_language(const wxString& language) {
        frame->comboboxLanguages->SetValue(language);
        wxCommandEvent event(wxEVT_COMBOBOX, frame->comboboxLanguages->GetId());
        event.SetEventObject(frame->comboboxLanguages);
        frame->comboboxLanguages->GetEventHandler()->ProcessEvent(event);
    }

    /// The window, its texts in another language and back, and a conversion; no message appears.
    void expect_works() {
        choose_language(kRussian);
        EXPECT_EQ(frame->buttonConvert->GetLabel(), L"3: Конвертировать фильмы для моего iPhone!");
        choose_language("English");
        EXPECT_EQ(frame->buttonConvert->GetLabel(), "3: Convert the Movie(s) to my iPhone!");
        frame->textOutput->SetValue(out.path());
        movies.write("a.srt");
        add({"a.avi"});
        press(frame->buttonConvert);
        EXPECT_TRUE(wait_until([this] { return status() == "Conversion completed!"; }));
        EXPECT_EQ(steps(), (std::vector<wxString>{"probe a.avi", "convert a.avi", "mux a.srt"}));
        EXPECT_TRUE(dialogs.shown.empty());
    }

    Folder config;
    Environment configHome{"XDG_CONFIG_HOME", config.path()};
};

}  // namespace

TEST_F(BadSystem, ShowsNoAssertionForDamagedLinesOfTheSettingsFile) {
    const std::string damage = "=\n[Group]\n[Group]\n\x01\x02=\"a\"b\"\n";
    write_settings("HowToMove=false\nLanguage=Deutsch\n" + damage);
    start();
    EXPECT_EQ(frame->currentLanguage, "Deutsch");
    expect_works();
    EXPECT_TRUE(settings_bytes().starts_with("HowToMove=false\nLanguage=English\n=\n"));
    EXPECT_TRUE(settings_bytes().ends_with(damage.substr(2)));
}

TEST_F(BadSystem, SetsAHugeSettingsFileAside) {
    std::ofstream(settings_file().utf8_string()) << "Language=Deutsch\nHowToMove=false\n";
    fs::resize_file(settings_file().utf8_string(), 1UL << 32U);
    const wxStopWatch watch;
    start();
    EXPECT_LT(watch.Time(), 5000);
    frame->config_write("HowToMove", "false");
    expect_works();
    EXPECT_EQ(stored("Language"), "English");
    EXPECT_EQ(fs::file_size(config.file("Vantreo.ini.bad").utf8_string()), 1UL << 32U);
}

TEST_F(BadSystem, WorksWithAFolderInPlaceOfTheSettingsFile) {
    fs::create_directory(settings_file().utf8_string());
    start();
    frame->config_write("HowToMove", "false");
    expect_works();
    close();
    EXPECT_TRUE(fs::is_directory(settings_file().utf8_string()));
    const fs::directory_iterator left(config.path().utf8_string());
    EXPECT_EQ(std::distance(begin(left), end(left)), 1) << "nothing is left beside it";
}

TEST_F(BadSystem, ReplacesAReadOnlySettingsFile) {
    write_settings("HowToMove=false\n");
    fs::permissions(settings_file().utf8_string(), fs::perms::owner_read);
    const OrdinaryRights rights;
    start();
    expect_works();
    EXPECT_EQ(stored("Language"), "English");
}

TEST_F(BadSystem, LeavesTheSettingsOfAReadOnlyFolderUnchanged) {
    const std::string settings = "Language=Deutsch\nHowToMove=false\n";
    for (const bool isText : {true, false}) {
        const std::string bytes = isText ? settings : settings + '\0';
        write_settings(bytes);
        fs::permissions(config.path().utf8_string(), fs::perms::owner_read | fs::perms::owner_exec);
        const OrdinaryRights rights;
        start();
        EXPECT_EQ(frame->currentLanguage, isText ? "Deutsch" : "English");
        choose_language(kRussian);
        EXPECT_EQ(frame->config_read("Language"), kRussian);
        if (isText)
            expect_works();
        close();
        EXPECT_EQ(settings_bytes(), bytes);
        fs::permissions(config.path().utf8_string(), fs::perms::owner_all);
    }
}

TEST_F(BadSystem, LeavesAnUnreadableSettingsFileUnchanged) {
    const std::string settings = "Language=Deutsch\n";
    write_settings(settings);
    fs::permissions(settings_file().utf8_string(), fs::perms::none);
    {
        const OrdinaryRights rights;
        start();
        frame->config_write("HowToMove", "false");
        expect_works();
    }
    fs::permissions(settings_file().utf8_string(), fs::perms::owner_read);
    EXPECT_EQ(settings_bytes(), settings);
}

TEST_F(BadSystem, WorksWithAnUnwritableHome) {
    const Environment home("HOME", "/proc/no/home");
    const Environment inIt("XDG_CONFIG_HOME", "/proc/no/home/.config");
    start();
    frame->config_write("HowToMove", "false");
    expect_works();
}

TEST_F(BadSystem, OffersTheMissingDocumentsFolderUntilAnotherIsChosen) {
    const Environment home("HOME", out.file("no home"));
    start();
    frame->config_write("HowToMove", "false");
    EXPECT_FALSE(frame->textOutput->GetValue().empty());
    dialogs.answers = {wxID_OK};
    add({"a.avi"});
    press(frame->buttonConvert);
    ASSERT_TRUE(wait_until([this] { return status() == "Conversion canceled"; }));
    EXPECT_TRUE(dialogs.shown[0].text.Contains("The destination directory"));
    frame->textMovies->Clear();
    dialogs.shown.clear();
    doubles.remove("log");
    expect_works();
}

TEST_F(BadSystem, CancelsWithoutKillall) {
    start();
    frame->config_write("HowToMove", "false");
    frame->textOutput->SetValue(out.path());
    {
        const Environment path("PATH", out.path());
        start_run({"a.avi"});
        const Movie* const job = frame->movies[0];
        dialogs.answers = {wxID_YES};
        const wxStopWatch watch;
        press(frame->buttonConvert);
        EXPECT_EQ(status(), "Conversion canceled");
        EXPECT_LT(watch.Time(), 3000) << "nothing but the tool is waited for";
        EXPECT_TRUE(wait_until([&] { return job->Ended(); }, 3.0)) << "the tool has ended";
        release();
        doubles.remove("log");
        dialogs.shown.clear();
        frame->textMovies->Clear();
        expect_works();
    }
}
