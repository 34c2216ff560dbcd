// Paint time of the glyph preview in the real main window (run under an X server, see
// `make bench-preview`): the tool's paint of DejaVu Sans for the default list 32-126,
// the same pixels drawn the literal way (one point with a pen of its own per coverage
// pixel), and the tool's paint for the list 0-65535; each once as a repeated paint and
// once as the first paint with a new face. Prints the figures.
#include "app/gui_main.h"
#include "raster/ft_font.h"
#include "raster/preview_image.h"
#include "tests/raster/point_by_point_paint.h"

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/image.h>
#include <wx/init.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

namespace {

const char* const kDejaVuSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
const char* const kDejaVuSansBold = "/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf";

using Clock = std::chrono::steady_clock;

void ProcessEvents()
{
    wxEventLoopBase* loop = wxEventLoopBase::GetActive();
    while (loop->Pending())
        loop->Dispatch();
    wxTheApp->ProcessIdle();
}

// The plain child window the preview is painted on.
wxWindow* PreviewArea(GuiMain& window)
{
    for (wxWindow* child : window.GetChildren())
        if (child->GetClassInfo() == wxCLASSINFO(wxWindow))
            return child;
    return nullptr;
}

// Types a list into the characters field and presses Enter there.
void EnterCharacters(GuiMain& window, const wxString& text)
{
    auto* field = wxDynamicCast(window.FindWindow(ID_CHARACTERS), wxTextCtrl);
    field->SetValue(text);
    wxCommandEvent enter(wxEVT_TEXT_ENTER, ID_CHARACTERS);
    enter.SetEventObject(field);
    field->GetEventHandler()->ProcessEvent(enter);
    ProcessEvents();
}

// Before each timed paint: another face, so that neither the glyphs nor the picture of
// the paint before can be used again. Alternates DejaVu Sans and its bold.
std::function<void()> FaceSwap(FTFont& font)
{
    return [&font, turn = 0]() mutable {
        font.LoadFace(++turn % 2 ? kDejaVuSansBold : kDejaVuSans);
    };
}

// Median wall time of `runs` synchronous repaints of the area, in milliseconds;
// `prepare` runs untimed before each.
double PaintMilliseconds(
    wxWindow& area, int runs, const std::function<void()>& prepare = [] {})
{
    int paints = 0;
    auto count = [&paints](wxPaintEvent& event) {
        ++paints;
        event.Skip();
    };
    area.Bind(wxEVT_PAINT, count);
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        prepare();
        const int before = paints;
        const Clock::time_point start = Clock::now();
        area.Refresh();
        area.Update();
        const Clock::time_point end = Clock::now();
        if (paints == before) {
            std::fprintf(stderr, "preview_bench: the area was not repainted\n");
            std::exit(1);
        }
        times.push_back(std::chrono::duration<double, std::milli>(end - start).count());
    }
    area.Unbind(wxEVT_PAINT, count);
    std::nth_element(times.begin(), times.begin() + runs / 2, times.end());
    return times[runs / 2];
}

int RunBenchmark()
{
    FTFont font;
    font.LoadFace(kDejaVuSans);
    auto* window = new GuiMain("preview benchmark", &font);
    window->Show();
    wxWindow* area = PreviewArea(*window);
    const Clock::time_point deadline = Clock::now() + std::chrono::seconds(10);
    while (!area->IsShownOnScreen() && Clock::now() < deadline)
        ProcessEvents();
    ProcessEvents();

    std::vector<uint32_t> defaultList;
    for (uint32_t code = 32; code <= 126; ++code)
        defaultList.push_back(code);

    const wxSize size = area->GetSize();
    std::printf("Preview area %dx%d, DejaVu Sans at %u px\n", size.GetWidth(), size.GetHeight(), PREVIEW_PIXEL_SIZE);
    const double fast = PaintMilliseconds(*area, 31);
    const double fastCold = PaintMilliseconds(*area, 31, FaceSwap(font));
    font.LoadFace(kDejaVuSans);

    auto literal = [&](wxPaintEvent&) {
        PaintPointByPoint(*area, font, defaultList);
    };
    area->Bind(wxEVT_PAINT, literal);
    const double slow = PaintMilliseconds(*area, 5);
    const double slowCold = PaintMilliseconds(*area, 5, FaceSwap(font));
    font.LoadFace(kDejaVuSans);
    area->Unbind(wxEVT_PAINT, literal);

    EnterCharacters(*window, "0-65535");
    const double full = PaintMilliseconds(*area, 31);
    const double fullCold = PaintMilliseconds(*area, 31, FaceSwap(font));

    std::printf("Median of repeated paints (glyphs and picture kept from the paint before):\n");
    std::printf("  32-126, composed picture:   %8.2f ms per paint\n", fast);
    std::printf("  32-126, point by point:     %8.2f ms per paint (%.0fx slower)\n", slow, slow / fast);
    std::printf("  0-65535, composed picture:  %8.2f ms per paint (%.2fx the default list)\n", full, full / fast);
    std::printf("First paint with another face (nothing kept; DejaVu Sans and Bold in turn):\n");
    std::printf("  32-126, composed picture:   %8.2f ms per paint\n", fastCold);
    std::printf("  32-126, point by point:     %8.2f ms per paint (%.0fx slower)\n", slowCold, slowCold / fastCold);
    std::printf("  0-65535, composed picture:  %8.2f ms per paint (%.2fx the default list)\n", fullCold,
                fullCold / fastCold);
    window->Destroy();
    ProcessEvents();
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    wxApp::SetInstance(new wxApp);
    if (!wxEntryStart(argc, argv)) {
        std::fprintf(stderr, "preview_bench: cannot start the toolkit (no display?)\n");
        return 2;
    }
    wxImage::AddHandler(new wxPNGHandler); // the window icon is a PNG
    int result;
    {
        wxGUIEventLoop loop;
        wxEventLoopActivator activate(&loop);
        result = RunBenchmark();
    }
    wxEntryCleanup();
    return result;
}
