// Entry point of every in-process GUI test program: starts the real application as the
// program would, runs the tests, then shuts it down the same way.
#include "gui_test_support.h"

#include "app/gui_application.h"

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/init.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS(); // listing needs no display

    wxApp::SetInstance(new GuiApplication);
    // A failed toolkit assertion would open a modal dialog and hang the test.
    wxSetAssertHandler([](const wxString& file, int line, const wxString& func, const wxString& cond,
                          const wxString& msg) {
        ADD_FAILURE_AT(file.utf8_str().data(), line) << "toolkit assertion in " << func << ": " << cond << " " << msg;
    });
    if (!wxEntryStart(argc, argv) || !wxTheApp->CallOnInit()) {
        fprintf(stderr, "cannot start the application (no display?)\n");
        return 2;
    }
    // The tests pump the toolkit's events themselves, which needs an active event loop.
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
