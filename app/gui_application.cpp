#include "app/gui_application.h"

#include "app/app_texts.h"
#include "app/app_version.h"
#include "app/gui_main.h"
#include "raster/ft_font.h"

#include <wx/image.h>

#include <clocale>
#include <cstdio>

bool GuiApplication::OnInit()
{
    // The toolkit leaves the C locale at "C"; the user's character set is needed for
    // wxConvLibc to hand non-ASCII paths and texts to the C library and FreeType.
    std::setlocale(LC_CTYPE, "");

    try {
        m_font = new FTFont();
    } catch (const FTException& e) {
        std::printf("\nFreeType: %s\n\n", e.what());
        std::fflush(stdout);
        return false;
    }

    g_appTitle.Printf(kAppTitleFormat, kAppVersion);
    g_aboutText.Printf("%s\nTurns TrueType fonts into bitmap-font source code for small displays.", g_appTitle);

    // The main window decodes its icon from PNG data while it is built.
    wxImage::AddHandler(new wxPNGHandler);

    GuiMain* frame = new GuiMain(g_appTitle, m_font);
    frame->Show(true);
    SetTopWindow(frame);
    return true;
}

int GuiApplication::OnExit()
{
    delete m_font;
    m_font = nullptr;
    return 0;
}
