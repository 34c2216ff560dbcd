#pragma once

#include <wx/string.h>

// Formatted once by GuiApplication::OnInit and only read afterwards.
extern wxString g_appTitle;  // the main window's title
extern wxString g_aboutText; // the About box: the title and one line about the tool
