#pragma once

#include <wx/app.h>

class FTFont;

// The toolkit's application object: owns the process's one FTFont and opens the main window.
class GuiApplication : public wxApp
{
public:
    bool OnInit() override;
    int OnExit() override;

private:
    FTFont* m_font = nullptr; // created by OnInit, deleted by OnExit after the window is gone
};
