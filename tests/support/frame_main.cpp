#include <gtest/gtest.h>
#include <wx/evtloop.h>
#include <wx/init.h>

#include "app/MyApp.h"
#include "support/asserts.h"

namespace {

/// The program's own application object; each test creates its frame with the program's OnInit.
class TestApp : public MyApp {
  public:
    TestApp() { SetAppName("vantreo"); }
};

}  // namespace

wxIMPLEMENT_APP_NO_MAIN(TestApp);

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    fail_tests_on_toolkit_asserts();
    if (!wxEntryStart(argc, argv))
        return 1;
    wxTheApp->SetExitOnFrameDelete(false);
    int result = 1;
    {
        wxGUIEventLoop loop;
        const wxEventLoopActivator active(&loop);
        result = RUN_ALL_TESTS();
    }
    wxEntryCleanup();
    return result;
}
