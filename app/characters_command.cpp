#include "app/gui_main.h"

#include "app/libc_text.h"
#include "charset/char_range_parser.h"

#include <wx/textctrl.h>

// Enter in the characters field: the list changes only now, never while typing.
// The event is not skipped, so Enter inserts no line break into the field.
void GuiMain::OnCharsEnter(wxCommandEvent&)
{
    ParseCharCodes(ToLibcText(m_charsCtrl->GetValue()));
    Refresh(true, nullptr);
}

// Replaces the whole list with the codes the text names.
void GuiMain::ParseCharCodes(const std::string& text)
{
    m_charCodes = ParseCharCodeText(text);
}
