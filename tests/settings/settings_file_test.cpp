#include "settings/settings_file.h"

#include <gtest/gtest.h>
#include <wx/log.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "settings/settings.h"
#include "support/folder.h"

namespace {

namespace fs = std::filesystem;

const wxString kRussian = L"русский язык";
const std::string kRussianInUtf8 = kRussian.utf8_string();

/// The lines that go to the console.
class Console : public wxLog {
  public:
    wxString lines;

  private:
    void DoLogRecord(wxLogLevel /*level*/, const wxString& message,
                     const wxLogRecordInfo& /*info*/) override {
        lines += message + "\n";
    }
};

class SettingsFile : public testing::Test {
  protected:
    SettingsFile() : previous(wxLog::SetActiveTarget(&console)) {}
    ~SettingsFile() override { wxLog::SetActiveTarget(previous); }

    std::string ini() const { return folder / "Vantreo.ini"; }

    static void write_file(const std::string& path, const std::string& bytes) {
        std::ofstream(path, std::ios::binary) << bytes;
    }

    std::unique_ptr<wxFileConfig> open() const { return open_settings(wxString::FromUTF8(ini())); }

    /// What the program reads for `key` in a file of these bytes.
    wxString read(const std::string& bytes, const wxString& key) const {
        write_file(ini(), bytes);
        return read_setting(*open(), key, "English");
    }

    /// The file after the program has written one entry to a file of these bytes.
    std::string after_write(const std::string& bytes, const wxString& key,
                            const wxString& value) const {
        write_file(ini(), bytes);
        write_setting(*open(), key, value);
        return content_of(ini());
    }

    /// The value of `key` after it was written and the file was opened again.
    wxString written_and_read(const wxString& key, const wxString& value) const {
        write_setting(*open(), key, value);
        return read_setting(*open(), key, "English");
    }

    TemporaryFolder folder;
    Console console;
    wxLog* const previous;
};

std::string in_utf16(const std::string& ascii) {
    std::string bytes = "\xFF\xFE";
    for (const char c : ascii)
        bytes += {c, '\0'};
    return bytes;
}

}  // namespace

TEST_F(SettingsFile, KeepsManuallyWrittenLines) {
    EXPECT_EQ(after_write("# mine\n"
                          "\n"
                          "  Output =  /a b\n"
                          "; old\n"
                          "\tOptimize=2 # not a comment\n"
                          "Language = Deutsch\n"
                          "Other key=1\n"
                          "no entry\n"
                          "[Group] ; a comment\n"
                          "Optimize=1\n"
                          "[/Group/Inner]\n"
                          "Optimize=0",
                          "Language", kRussian),
              "# mine\n"
              "\n"
              "  Output =  /a b\n"
              "; old\n"
              "\tOptimize=2 # not a comment\n"
              "Language=" +
                  kRussianInUtf8 +
                  "\n"
                  "Other key=1\n"
                  "no entry\n"
                  "[Group] ; a comment\n"
                  "Optimize=1\n"
                  "[/Group/Inner]\n"
                  "Optimize=0\n");
}

TEST_F(SettingsFile, ReadsEntriesAsTheToolkitDoes) {
    EXPECT_EQ(read("  Output \t=  /a b\n", "Output"), "/a b");
    EXPECT_EQ(read("Output=\" /a \\\"b\\\"\"\n", "Output"), " /a \"b\"");
    EXPECT_EQ(read("Output=/a\\tb\n", "Output"), "/a\tb");
    EXPECT_EQ(read("OUTPUT=/a\n", "Output"), "/a");
    EXPECT_EQ(read("Output=/a\nOutput=/b\n", "Output"), "/b") << "the last one counts";
    EXPECT_EQ(read("Output=/a\r\nOptimize=2", "Output"), "/a");
    EXPECT_EQ(read("Output=/a\rOptimize=2\r", "Optimize"), "2");
    EXPECT_EQ(read("Output=/$HOME/${HOME}\n", "Output"), "/$HOME/${HOME}");
}

TEST_F(SettingsFile, ChangesNoEntryThatIsMarkedAsLocked) {
    EXPECT_EQ(read("!Optimize=1\n", "Optimize"), "1");
    EXPECT_EQ(after_write("!Optimize=1\n", "Optimize", "2"), "!Optimize=1\n");
}

TEST_F(SettingsFile, IgnoresEntriesOfGroups) {
    EXPECT_EQ(read("[Group]\nLanguage=Deutsch\n", "Language"), "English");
    EXPECT_EQ(content_of(ini()), "Language=English\n[Group]\nLanguage=Deutsch\n");
}

TEST_F(SettingsFile, KeepsLinesThatFailTheToolkitsAssertions) {
    const std::string lines =
        "=1\n"
        " \\ =2\n"
        "Output=\"/a\"b\"\n"
        "[Group]\n"
        "[group]\n"
        "=3\n";
    const wxAssertHandler_t handler = wxTheAssertHandler;
    EXPECT_EQ(read("Language=Deutsch\n" + lines, "Output"), "/ab");
    EXPECT_EQ(after_write("Language=Deutsch\n" + lines, "Language", "English"),
              "Language=English\n" + lines);
    EXPECT_EQ(wxTheAssertHandler, handler);
}

TEST_F(SettingsFile, ReadsOtherEncodingsAndWritesUtf8) {
    const std::string rest = "HowToMove=false\n";
    const std::string expected = "Language=" + kRussianInUtf8 + "\n" + rest;
    EXPECT_EQ(read("Language=Fran\xE7"
                   "ais\n",
                   "Language"),
              L"Fran\u00e7ais");
    EXPECT_EQ(after_write("Language=Fran\xE7"
                          "ais\n" +
                              rest,
                          "Language", kRussian),
              expected);
    EXPECT_EQ(read(in_utf16("Language=Deutsch\n" + rest), "Language"), "Deutsch");
    EXPECT_EQ(after_write(in_utf16("Language=Deutsch\n" + rest), "Language", kRussian), expected);
    EXPECT_EQ(after_write("\xEF\xBB\xBFLanguage=Deutsch\n" + rest, "Language", kRussian), expected);
}

TEST_F(SettingsFile, RenamesWhatIsNotText) {
    const std::string noise =
        "\x9C\x8B\x1F\x03\xD5\x7F\x11\xE2\x05\x99\x06\x41\x88\xB3\x0E\x17\n\xF1=\x90\x02";
    const std::string files[] = {std::string("Language=Deutsch\n") + '\0', noise,
                                 in_utf16("Language=Deutsch\n") + "x",
                                 "Language=Deutsch\nOutput=\xF4\xBC\xAA\xAD\n"};
    for (const std::string& bytes : files) {
        EXPECT_EQ(read(bytes, "Language"), "English") << testing::PrintToString(bytes);
        EXPECT_EQ(content_of(ini()), "Language=English\n");
        EXPECT_EQ(content_of(ini() + ".bad"), bytes);
        fs::remove(ini() + ".bad");
    }
}

TEST_F(SettingsFile, RenamesWhatIsTooLarge) {
    const std::string entry = "Language=Deutsch\n#";
    EXPECT_EQ(read(entry + std::string((1U << 20U) - entry.size(), 'x'), "Language"), "Deutsch");
    EXPECT_EQ(read(entry + std::string((1U << 20U) - entry.size() + 1, 'x'), "Language"),
              "English");
    EXPECT_EQ(fs::file_size(ini() + ".bad"), (1U << 20U) + 1U);
}

TEST_F(SettingsFile, ReportsTheNewNameAndOverwritesNoFile) {
    write_file(ini(), std::string(1, '\0'));
    write_file(ini() + ".bad", "an older one");
    fs::create_symlink("nowhere", ini() + ".bad2");
    open();
    EXPECT_EQ(content_of(ini() + ".bad"), "an older one");
    EXPECT_TRUE(fs::is_symlink(ini() + ".bad2"));
    EXPECT_EQ(content_of(ini() + ".bad3"), std::string(1, '\0'));
    EXPECT_EQ(console.lines, wxString::FromUTF8(ini()) +
                                 " is not text or larger than 1 MiB; it is renamed to " +
                                 wxString::FromUTF8(ini()) + ".bad3\n");
}

TEST_F(SettingsFile, RenamesNoTextFile) {
    const std::string files[] = {"", "\x01\x02\x03\x04=\x7F\n\t\v\f\r\n",
                                 "# caf\xE9 \x85\x93\t\v\f\r\n", "Output=/\xED\xA0\x80\n"};
    for (const std::string& bytes : files) {
        EXPECT_EQ(read(bytes + "Optimize=2\n", "Optimize"), "2") << testing::PrintToString(bytes);
        EXPECT_EQ(folder.names(), std::vector<std::string>{"Vantreo.ini"});
    }
}

TEST_F(SettingsFile, LeavesASymbolicLinkInPlace) {
    fs::create_directories(folder / "far/away");
    fs::create_directory(folder / "far/dots");
    write_file(folder / "far/dots/vantreo", "# mine\nOptimize=1\n");
    fs::permissions(folder / "far/dots/vantreo", fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink("far/away", folder / "near");
    fs::create_symlink("../dots/vantreo", folder / "near/second");
    fs::create_symlink(folder / "near/second", ini());
    EXPECT_EQ(written_and_read("Optimize", "2"), "2");
    EXPECT_EQ(fs::read_symlink(ini()), folder / "near/second");
    EXPECT_EQ(fs::read_symlink(folder / "near/second"), "../dots/vantreo");
    EXPECT_EQ(content_of(folder / "far/dots/vantreo"), "# mine\nOptimize=2\n");
    EXPECT_EQ(fs::status(folder / "far/dots/vantreo").permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(SettingsFile, CreatesTheTargetOfALink) {
    fs::create_directory(folder / "dots");
    fs::create_symlink("dots/vantreo", folder / "second");
    fs::create_symlink("second", ini());
    EXPECT_EQ(written_and_read("Optimize", "2"), "2");
    EXPECT_TRUE(fs::is_symlink(ini()));
    EXPECT_TRUE(fs::is_symlink(folder / "second"));
    EXPECT_EQ(content_of(folder / "dots/vantreo"), "Optimize=2\n");
}

TEST_F(SettingsFile, RenamesTheTargetOfALink) {
    write_file(folder / "target", std::string(1, '\0'));
    fs::create_symlink("target", ini());
    EXPECT_EQ(written_and_read("Optimize", "2"), "2");
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"Vantreo.ini", "target", "target.bad"}));
    EXPECT_TRUE(fs::is_symlink(ini()));
}

TEST_F(SettingsFile, LeavesADanglingLinkInPlace) {
    for (const char* target : {"no folder/vantreo", "Vantreo.ini", "."}) {
        fs::create_symlink(target, ini());
        const auto config = open();
        write_setting(*config, "Optimize", "2");
        EXPECT_EQ(read_setting(*config, "Optimize", ""), "2") << target;
        EXPECT_EQ(fs::read_symlink(ini()), target);
        EXPECT_EQ(folder.names(), std::vector<std::string>{"Vantreo.ini"});
        fs::remove(ini());
    }
}
