#include "app/gui_main.h"

// The Export button: validates the height, asks where to save and writes the files.
void GuiMain::OnExport(wxCommandEvent&)
{
}
