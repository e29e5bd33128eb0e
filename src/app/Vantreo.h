#pragma once

#include <wx/arrstr.h>
#include <wx/fileconf.h>
#include <wx/frame.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "convert/MovieListener.h"

class Movie;
class wxButton;
class wxCheckBox;
class wxComboBox;
class wxDirDialog;
class wxFileDialog;
class wxGauge;
class wxHtmlLinkEvent;
class wxHtmlWindow;
class wxListBox;
class wxNotebook;
class wxPanel;
class wxStaticBox;
class wxStaticText;
class wxTextCtrl;

/// The main frame: has all state and every handler. Everything here runs on the GUI thread.
///
/// This header is the table of contents: each group below names the files that implement it, in the
/// folder of their subject.
///
/// The window tree owns the widgets. Their pointers are null until `layout` has created them (those
/// of the version screen: until `layout_checkVersion`).
class Vantreo : public wxFrame, public MovieListener {
  public:
    // ---- app/Vantreo.cpp: construction and closing ----------------------------------------------

    /// Opens the settings, fills the language lists and determines the language; creates no
    /// widgets.
    Vantreo(const wxString& title, const wxPoint& pos, const wxSize& size, long style);

    /// Detaches every job, so that no tick or termination reaches the frame later. Does not delete
    /// `config`: each write has been flushed.
    ~Vantreo() override;

    /// Closes at once when idle; during a run, only if the user confirms that it is cancelled.
    void OnClose(wxCloseEvent& event);

    // ---- app/layout.cpp: the notebook -----------------------------------------------------------

    /// Builds the notebook with all controls and connects their handlers. Call at most once.
    void layout();

    /// Hook called after each change of the movie list; does nothing.
    void layout_movies();

    // ---- app/states.cpp: the phases of a run ----------------------------------------------------

    /// Idle: all inputs enabled, the Convert caption on the button.
    void layout_normal();
    /// A movie is being transcoded. `index` counts from 1; 0 shows no position.
    void layout_converting(unsigned long index);
    /// Subtitles are being added to movie `index` (counted as above).
    void layout_subtitle(unsigned long index);
    /// The whole run has finished: empties the list, may open the how-to page.
    void layout_converted();
    /// The run stopped with nothing in the list: clears the status line.
    void layout_error();
    /// The run was cancelled or stopped at a problem.
    void layout_canceled();

    // ---- app/messages.cpp: message boxes --------------------------------------------------------

    /// Shows a modal message with an empty caption and returns the id of the button that answered
    /// it; a dismissed box counts as answered with "No", or with its only button.
    int ShowMessage(const wxString& text, long style);

    /// Runs `action` now or, if a message box is open, from the event loop once it is closed: the
    /// end of a tool never advances the queue behind an open question.
    void RunUnlessAsking(std::function<void()> action) override;

    // ---- i18n/translate.cpp, i18n/language_switch.cpp -------------------------------------------

    /// The text of `key` in the language of the `Language` setting, in English where that language
    /// has none, "" for an unknown key. `fill` is not a language: 1 also appends the table's
    /// language names to `languages` and `languagesEnglish`; everyone but the constructor passes 0.
    wxString Translate(const wxString& key, int fill);

    void OncomboboxLanguages(wxCommandEvent& event);

    // ---- settings/frame_settings.cpp ------------------------------------------------------------

    /// The stored value, or the key's default, which is written back.
    wxString config_read(const wxString& key);
    /// Stores the pair and flushes the file; failures are ignored.
    void config_write(const wxString& key, const wxString& value);

    // ---- convert/queue.cpp: the run -------------------------------------------------------------

    /// Starts a run if the button shows its start caption, otherwise asks whether to cancel.
    void OnbuttonConvert(wxCommandEvent& event);
    /// Null: probes entry `movieIndex`. A job: its probe has ended.
    void MovieInfos(Movie* movie) override;
    /// Null: transcodes entry `movieIndex`. A job: its transcode or subtitle step has ended.
    void MovieConvert(Movie* movie) override;
    /// Shows the job's progress in the title, the gauge and the labels.
    void MovieUpdate(Movie* movie) override;
    /// Asks whether to cancel; on "Yes" stops the running tool and returns true.
    bool Cancel();

    // ---- input/selection.cpp, input/options.cpp -------------------------------------------------

    void OnbuttonMovies(wxCommandEvent& event);
    void OntextMoviesKey(wxKeyEvent& event);
    void OnbuttonOutput(wxCommandEvent& event);
    void OntextOutput(wxCommandEvent& event);
    void OncomboboxOptimize(wxCommandEvent& event);
    void OncheckboxOverwrite(wxCommandEvent& event);
    void OncheckboxHowToMove(wxCommandEvent& event);

    // ---- web/version_check.cpp, web/links.cpp ---------------------------------------------------

    /// Shows the version screen: one panel with one line.
    void layout_checkVersion();
    /// Asks the site for the current release; blocks up to its limit. Builds the notebook, unless a
    /// newer release exists: then the version screen stays, with a button to get it.
    void checkVersion();
    void OnbuttonGetNewVersion(wxCommandEvent& event);
    void OnhtmlSubtitle(wxHtmlLinkEvent& event);
    void OnhtmlTranslations(wxHtmlLinkEvent& event);
    void OnhtmlAbout(wxHtmlLinkEvent& event);
    void OnbuttonDonate(wxCommandEvent& event);

    // ---- state ----------------------------------------------------------------------------------

    wxTextCtrl* textOutput = nullptr;
    bool reservedFlag;               ///< cleared by the constructor, used by nothing
    bool checkingVersion = false;    ///< the version screen is shown; no notebook exists
    wxArrayString languages;         ///< native names, in the order of the table's columns
    wxArrayString languagesEnglish;  ///< the same languages' English names
    wxString currentLanguage;        ///< entry of `languages`; empty when the setting names none
    wxString defaultLanguage;        ///< entry of `languages` for the system's language
    wxWindow* dialogParent;          ///< always the frame itself
    wxFileConfig* config;            ///< only used by config_read and config_write

    wxPanel* panelCheckVersion = nullptr;
    wxStaticText* labelCheckVersion = nullptr;
    wxButton* buttonGetNewVersion = nullptr;

    wxNotebook* notebook = nullptr;
    wxPanel* panelConvert = nullptr;
    wxPanel* panelOptions = nullptr;
    wxPanel* panelAbout = nullptr;
    wxListBox* textMovies = nullptr;
    wxButton* buttonMovies = nullptr;
    wxButton* buttonOutput = nullptr;
    wxStaticText* labelOptimize = nullptr;
    wxComboBox* comboboxOptimize = nullptr;
    wxHtmlWindow* htmlSubtitle = nullptr;
    wxWindow* reservedControl = nullptr;  ///< set and read by nothing
    wxButton* buttonConvert = nullptr;
    wxStaticBox* boxProgress = nullptr;
    wxGauge* gaugeProgress = nullptr;
    wxStaticText* labelElapsed = nullptr;
    wxStaticText* labelElapsedTime = nullptr;
    wxStaticText* labelRemaining = nullptr;
    wxStaticText* labelRemainingTime = nullptr;
    wxStaticText* labelPercent = nullptr;
    wxStaticText* labelLanguage = nullptr;
    wxStaticText* labelStatus = nullptr;
    wxFileDialog* dialogMovies = nullptr;  ///< the last one made; lives as long as the frame
    wxDirDialog* dialogOutput = nullptr;   ///< the last one made; lives as long as the frame
    wxComboBox* comboboxLanguages = nullptr;
    wxCheckBox* checkboxOverwrite = nullptr;
    wxCheckBox* checkboxHowToMove = nullptr;
    wxHtmlWindow* htmlTranslations = nullptr;
    wxHtmlWindow* htmlAbout = nullptr;
    wxButton* buttonDonate = nullptr;

    /// The queue: slot i is the job of list entry i, once the current run has started its probe.
    /// Cleared at the start of a run. Does not own.
    std::vector<Movie*> movies;
    std::uint32_t movieIndex = 0;  ///< slot of the job being worked on

  private:
    // app/layout.cpp
    using ButtonHandler = void (Vantreo::*)(wxCommandEvent&);
    void press_on_double_click(wxWindow& control, ButtonHandler handler);
    void layout_convert_page();
    void layout_options_page();
    void layout_about_page();
    void place_convert_page();
    void label_for_screen_readers();
    void order_for_keyboard();
    void show_html_pages();

    // app/states.cpp
    void enable_inputs(bool enable);
    void show_progress_start(const wxString& status);
    wxString position_text(unsigned long index) const;

    // convert/jobs.cpp
    Movie* new_job();
    bool is_current(const Movie* movie) const;
    void free_ended_jobs();

    // convert/queue.cpp
    void stop_at_error(const Movie& movie);

    // web/pages.cpp: what the three HTML controls show
    wxString translations_page();
    wxString subtitle_page(const wxWindow& background);
    wxString about_page();

    // web/links.cpp
    /// Opens the page in the browser; if none can be started, a message shows the address.
    void open_page(const wxString& address);
    /// The address of the French or the other page, by the `Language` setting.
    wxString page_address(const wxString& french, const wxString& other);

    // web/version_check.cpp
    void leave_check_screen();

    // app/messages.cpp
    void run_postponed();

    wxString lastMovieFolder;  ///< of the last choice in the movie dialog; empty before

    /// Every job that still exists, of this run and earlier ones. A job is freed with its runners
    /// at the start of a later run, or with the frame, if all its tools have ended and reported.
    /// The frame leaves jobs that still run then to the end of the program.
    std::vector<std::unique_ptr<Movie>> jobs;

    int openMessages = 0;
    std::vector<std::function<void()>> postponed;  ///< until the open message box is closed
};
