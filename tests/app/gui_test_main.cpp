// Entry point of every in-process GUI test program: starts the real application as the
// program would, runs the tests, then shuts it down the same way.
#include "gui_test_support.h"

#include "app/gui_application.h"

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/init.h>

namespace {

// A failed toolkit assertion would open a modal dialog and hang the test; make it a
// test failure instead.
void FailOnAssert(const wxString& file, int line, const wxString& func, const wxString& cond,
                  const wxString& msg)
{
    ADD_FAILURE_AT(file.utf8_str().data(), line)
        << "toolkit assertion in " << func << ": " << cond << " " << msg;
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS(); // listing needs no display

    wxApp::SetInstance(new GuiApplication);
    if (!wxEntryStart(argc, argv)) {
        fprintf(stderr, "cannot start the toolkit (no display?)\n");
        return 2;
    }
    wxSetAssertHandler(FailOnAssert);
    if (!wxTheApp->CallOnInit()) {
        fprintf(stderr, "GuiApplication::OnInit failed\n");
        wxEntryCleanup();
        return 2;
    }
    // The tests pump the toolkit's events themselves (guitest::ProcessEvents), which
    // needs an active event loop, as MainLoop would provide.
    wxGUIEventLoop loop;
    wxEventLoopActivator activateLoop(&loop);
    guitest::ProcessEvents();

    const int result = RUN_ALL_TESTS();

    // Shut down as the program does: the window goes first, then OnExit frees the font.
    if (GuiMain* window = guitest::MainWindow())
        window->Destroy();
    guitest::ProcessEvents();
    wxTheApp->OnExit();
    wxEntryCleanup();
    return result;
}
