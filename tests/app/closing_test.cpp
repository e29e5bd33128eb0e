// Closing the window.

#include <wx/app.h>
#include <wx/msgdlg.h>
#include <wx/weakref.h>

#include "support/frame_test.h"

namespace {

class Closing : public FrameTest {
  protected:
    /// Closes as a user does; true when the window closes.
    bool close_window() {
        const wxWeakRef<Vantreo> window(frame);
        frame->Close();
        run_pending_events();
        if (!window) {
            frame = nullptr;
            wxTheApp->SetTopWindow(nullptr);
        }
        return !window;
    }
};

}  // namespace

TEST_F(Closing, AsksNothingWhileIdle) {
    start();
    EXPECT_TRUE(close_window());
    EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(Closing, AsksNothingWhileTheVersionScreenStands) {
    start();
    frame->checkingVersion = true;
    frame->buttonConvert = nullptr;  // does not exist on the version screen
    EXPECT_TRUE(close_window());
    EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(Closing, AsksDuringARunAndGoesOnAfterNo) {
    start();
    start_run({"a.avi"});
    dialogs.answers = {wxID_NO};
    EXPECT_FALSE(close_window());
    ASSERT_EQ(dialogs.shown.size(), 1U);
    EXPECT_EQ(dialogs.shown[0].text,
              "A movie Conversion is being processed. Do you really want to Cancel it?");
    EXPECT_TRUE(running());
    release();
    EXPECT_TRUE(wait_until([this] { return status() == "Conversion completed!"; }));
}

TEST_F(Closing, CancelsTheRunAfterYes) {
    start();
    start_run({"a.avi"});
    dialogs.answers = {wxID_YES};
    EXPECT_TRUE(close_window());
    release();
    run_pending_events();
}
