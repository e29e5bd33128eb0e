#include "support/frame_test.h"

#include <wx/button.h>
#include <wx/evtloop.h>
#include <wx/fileconf.h>
#include <wx/filename.h>
#include <wx/listbox.h>
#include <wx/msgdlg.h>
#include <wx/stattext.h>
#include <wx/stopwatch.h>
#include <wx/textctrl.h>
#include <wx/tokenzr.h>
#include <wx/utils.h>

#include <filesystem>

#include "app/MyApp.h"
#include "i18n/lookup.h"
#include "i18n/table.h"

namespace {

namespace fs = std::filesystem;

const wxString kResources = "Vantreo.app/Contents/Resources/";

wxString settings_path() {
    wxString folder;
    wxGetEnv("XDG_CONFIG_HOME", &folder);
    return folder + "/Vantreo.ini";
}

wxFileConfig settings() {
    return {"", "", settings_path(), "", wxCONFIG_USE_LOCAL_FILE, wxConvAuto()};
}

}  // namespace

bool wait_until(const std::function<bool()>& condition, double seconds) {
    const wxStopWatch watch;
    while (!condition()) {
        if (static_cast<double>(watch.Time()) > seconds * 1000.0)
            return false;
        wxYield();
        wxTheApp->ProcessIdle();
        wxMilliSleep(2);
    }
    return true;
}

void run_pending_events() {
    wxEventLoopBase* const loop = wxEventLoopBase::GetActive();
    do
        wxYield();
    while (loop->Pending() || wxTheApp->ProcessIdle());
    wxTheApp->ProcessIdle();
}

int DialogAnswers::Enter(wxDialog* dialog) {
    Shown entry{"", dialog->GetTitle(), dialog->GetWindowStyle(), dialog->GetParent()};
    if (const auto* message = dynamic_cast<wxMessageDialog*>(dialog))
        entry = {message->GetMessage(), message->GetCaption(), message->GetMessageDialogStyle(),
                 dialog->GetParent()};
    shown.push_back(entry);
    if (whileOpen)
        whileOpen();
    return shown.size() <= answers.size() ? answers[shown.size() - 1] : wxID_CANCEL;
}

FrameTest::FrameTest() {
    fs::remove(settings_path().utf8_string());
    fs::create_directories((program.path() + "/" + kResources).utf8_string());
    fs::current_path(program.path().utf8_string());
    restore_tool("ffmpeg");
    restore_tool("MP4Box");
    wxSetEnv("TOOL_DOUBLE_DIR", doubles.path());
    report(
        "  Duration: 00:02:00.00, start: 0.000000, bitrate: 812 kb/s\n"
        "    Stream #0.0: Video: h264, yuv420p, 1280x720, 25 fps, 25 tbr, 1k tbn, 25 tbc\n");
    setting("Output", out.path());
    setting("HowToMove", "false");
}

FrameTest::~FrameTest() {
    release();
    release("MP4Box");
    if (frame != nullptr)
        close();
    fs::current_path("/");
}

void FrameTest::start() {
    ASSERT_TRUE(wxTheApp->OnInit());
    frame = static_cast<Vantreo*>(wxTheApp->GetTopWindow());
    ASSERT_TRUE(wait_until([this] { return frame->IsShownOnScreen(); }));
    run_pending_events();
}

void FrameTest::close() {
    frame->Destroy();
    frame = nullptr;
    wxTheApp->SetTopWindow(nullptr);
    run_pending_events();
}

void FrameTest::setting(const wxString& key, const wxString& value) {
    wxFileConfig config = settings();
    config.Write(key, value);
    config.Flush();
}

wxString FrameTest::stored(const wxString& key) {
    return settings().Read(key, wxEmptyString);
}

void FrameTest::remove_tool(const wxString& name) {
    fs::remove((kResources + name).utf8_string());
}

void FrameTest::restore_tool(const wxString& name) {
    fs::create_symlink(TOOL_DOUBLE, (kResources + name).utf8_string());
}

void FrameTest::hold(const wxString& tool) {
    doubles.write("hold" + tool);
}

void FrameTest::release(const wxString& tool) {
    fs::remove(doubles.file("hold" + tool).utf8_string());
}

std::vector<wxString> FrameTest::calls() {
    std::vector<wxString> lines;
    wxStringTokenizer log(file_text(doubles.file("log")), "\n");
    while (log.HasMoreTokens())
        lines.push_back(log.GetNextToken());
    for (wxString& line : lines)
        line.Replace("\x1F", " ");
    return lines;
}

std::vector<wxString> FrameTest::steps() {
    std::vector<wxString> result;
    wxStringTokenizer log(file_text(doubles.file("log")), "\n");
    while (log.HasMoreTokens()) {
        wxStringTokenizer fields(log.GetNextToken(), "\x1F", wxTOKEN_RET_EMPTY_ALL);
        const wxString tool = fields.GetNextToken();
        const wxString first = fields.GetNextToken();
        wxString file = fields.GetNextToken();
        if (tool == "MP4Box")
            result.push_back("mux " + wxFileName(file.BeforeLast(':')).GetFullName());
        else if (first == "-i")
            result.push_back("probe " + wxFileName(file).GetFullName());
        else
            result.push_back("convert " + wxFileName(fields.GetNextToken()).GetFullName());
    }
    return result;
}

bool FrameTest::wait_for_steps(size_t count) {
    return wait_until([&] { return steps().size() >= count; });
}

void FrameTest::press(wxButton* button) {
    wxCommandEvent event(wxEVT_BUTTON, button->GetId());
    event.SetEventObject(button);
    button->GetEventHandler()->ProcessEvent(event);
}

void FrameTest::add(std::initializer_list<wxString> names) {
    for (const wxString& name : names)
        frame->textMovies->Append(movies.file(name));
}

void FrameTest::start_run(std::initializer_list<wxString> names) {
    hold();
    add(names);
    press(frame->buttonConvert);
    ASSERT_TRUE(wait_for_steps(names.size() + 1));
}

bool FrameTest::running() {
    return frame->buttonConvert->GetLabel() == "Cancel";
}

wxString FrameTest::status() {
    return frame->labelStatus->GetLabel();
}
