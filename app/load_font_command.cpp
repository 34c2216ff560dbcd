#include "app/gui_main.h"

#include "app/libc_text.h"
#include "raster/ft_font.h"

#include <wx/filedlg.h>
#include <wx/msgdlg.h>

// File > Load Font: asks for a font file and makes it the current face. The extension is
// not checked: whatever FreeType can open is accepted. Only the face changes; the fields
// and the character list stay as they are.
void GuiMain::OnLoadFont(wxCommandEvent&)
{
    auto* dialog = new wxFileDialog(this, "Choose File to Load Font From", "", "", "Font File (*.ttf)|*.ttf",
                                    wxFD_OPEN | wxFD_FILE_MUST_EXIST);
    if (dialog->ShowModal() == wxID_OK) {
        // A path the locale cannot represent becomes empty, which FreeType then refuses.
        const std::string path = ToLibcText(dialog->GetPath());
        try {
            m_font->LoadFace(path.c_str());
        } catch (const FTException& e) {
            wxMessageDialog box(this, FromLibcText(e.what()), "Error", wxOK | wxICON_ERROR);
            box.ShowModal();
        }
    }
    dialog->Destroy();
    // The preview shows the new face, or the earlier one after a failure or cancel.
    Refresh(true, nullptr);
}
