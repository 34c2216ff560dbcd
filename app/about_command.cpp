#include "app/app_texts.h"
#include "app/gui_main.h"

#include <wx/msgdlg.h>

void GuiMain::OnAbout(wxCommandEvent&)
{
    wxMessageDialog dialog(this, g_aboutText, "About", wxOK);
    dialog.ShowModal();
}
