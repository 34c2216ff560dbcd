#include "app/gui_main.h"

#include "app/libc_text.h"
#include "charset/exportable_codes.h"
#include "export/desktop/export_settings.h"
#include "export/export_font.h"
#include "raster/ft_font.h"

#include <wx/filedlg.h>
#include <wx/msgdlg.h>
#include <wx/textctrl.h>
#include <wx/utils.h>

#include <optional>
#include <string>

namespace {

constexpr long ERROR_BOX_STYLE = wxOK | wxICON_ERROR;
static_assert(ERROR_BOX_STYLE == 0x204);
constexpr long SAVE_DIALOG_STYLE = wxFD_SAVE | wxFD_OVERWRITE_PROMPT;
static_assert(SAVE_DIALOG_STYLE == 6);

void ShowError(wxWindow* parent, const wxString& message)
{
    wxMessageDialog box(parent, message, "Error", ERROR_BOX_STYLE);
    box.ShowModal();
}

// The path of the .cpp file chosen in the save dialog, or nothing when cancelled.
std::optional<wxString> AskSourcePath(wxWindow* parent)
{
    wxFileDialog* dialog = new wxFileDialog(parent, "Choose File to Save Data To", "", "",
                                            "C Source File (*.cpp)|*.cpp", SAVE_DIALOG_STYLE);
    std::optional<wxString> path;
    if (dialog->ShowModal() == wxID_OK)
        path = dialog->GetPath();
    dialog->Destroy();
    return path;
}

} // namespace

// The Export button: validates the height, asks where to save and writes the files.
// Every fault the user can fix is reported before the save dialog opens, so that no
// file name is asked for in vain.
void GuiMain::OnExport(wxCommandEvent&)
{
    unsigned height = 0;
    if (const auto error = ParseFontHeight(ToLibcText(m_heightCtrl->GetValue()), height)) {
        ShowError(this, FromLibcText(error->c_str()));
        return;
    }
    if (const auto error = FindUnexportableCode(m_charCodes)) {
        ShowError(this, FromLibcText(error->c_str()));
        return;
    }
    // Without a face FreeType would only say "cannot set char size".
    if (!m_font->HasFace()) {
        ShowError(this, "No font loaded !");
        return;
    }

    const std::optional<wxString> path = AskSourcePath(this);
    if (!path)
        return;
    // GTK's GetDirectory() names the folder the dialog showed, not one typed into the
    // name field, so both parts come from the full path.
    const std::string narrowPath = ToLibcText(*path);
    if (narrowPath.empty()) {
        // A name the C locale cannot spell cannot be opened either; without this the
        // files would land as ".cpp" in the current directory.
        ShowError(this, kWriteFailedMessage);
        return;
    }
    OutputLocation location = SplitOutputPath(narrowPath, FontFormat::Ds);

    bool written = false;
    std::optional<wxString> failure;
    try {
        wxBusyCursor busy;
        written = ExportFont(m_font, location.baseName, location.directory, height, &m_charCodes);
    } catch (const FTException& error) {
        // A glyph FreeType cannot load or render; the busy cursor is gone by now.
        failure = FromLibcText(error.what());
    }
    if (failure)
        ShowError(this, *failure);
    else if (!written)
        ShowError(this, kWriteFailedMessage);
}
