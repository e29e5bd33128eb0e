// The option controls save immediately.

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>

#include "support/frame_test.h"

namespace {

class Options : public FrameTest {
  protected:
    void choose_device(int index) {
        frame->comboboxOptimize->SetSelection(index);
        send(frame->comboboxOptimize, wxEVT_COMBOBOX);
    }

    static void check(wxCheckBox* box, bool checked) {
        box->SetValue(checked);
        send(box, wxEVT_CHECKBOX);
    }

  private:
    static void send(wxWindow* control, wxEventType type) {
        wxCommandEvent event(type);
        event.SetEventObject(control);
        control->GetEventHandler()->ProcessEvent(event);
    }
};

}  // namespace

TEST_F(Options, KeepTheDeviceForTheNextStart) {
    start();
    for (const int index : {2, 0, 1}) {
        choose_device(index);
        EXPECT_EQ(stored("Optimize"), wxString::Format("%i", index));
        close();
        start();
        EXPECT_EQ(frame->comboboxOptimize->GetSelection(), index);
    }
}

TEST_F(Options, NameTheDeviceInTheConvertCaptionInEveryLanguage) {
    start();
    for (const wxString& language : frame->languages) {
        frame->config_write("Language", language);
        choose_device(0);
        const wxString first = frame->buttonConvert->GetLabel();
        const wxString names[] = {"iPhone", "iPhone 4", "iPad"};
        for (const int index : {1, 2}) {
            choose_device(index);
            wxString expected = first;
            expected.Replace("iPhone", names[index]);
            EXPECT_EQ(frame->buttonConvert->GetLabel(), expected);
        }
        EXPECT_EQ(first.Contains("iPhone"), language != L"Rom\u00e2n\u0103");
    }
}

TEST_F(Options, RewriteTheConvertCaptionWhateverTheState) {
    start();
    frame->layout_converting(0);
    choose_device(2);
    EXPECT_EQ(frame->buttonConvert->GetLabel(), "3: Convert the Movie(s) to my iPad!");
}

TEST_F(Options, KeepTheCheckBoxesForTheNextStart) {
    start();
    for (const bool checked : {false, true}) {
        check(frame->checkboxOverwrite, checked);
        check(frame->checkboxHowToMove, !checked);
        EXPECT_EQ(stored("Overwrite"), checked ? "true" : "false");
        EXPECT_EQ(stored("HowToMove"), checked ? "false" : "true");
        close();
        start();
        EXPECT_EQ(frame->checkboxOverwrite->IsChecked(), checked);
        EXPECT_EQ(frame->checkboxHowToMove->IsChecked(), !checked);
    }
}
