// The preview in the real main window: what reaches the screen, read back from the X
// server, against the picture worked out straight from FreeType.
#include "gui_test_support.h"
#include "point_by_point_paint.h"
#include "preview_reference.h"
#include "raster/ft_font.h"

#include <gtest/gtest.h>
#include <wx/textctrl.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace {

const std::string kDejaVuSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

struct Screenshot
{
    uint32_t width = 0;
    uint32_t height = 0;
    std::vector<uint8_t> rgb;
};

// Reads the area's pixels back from the X server with ImageMagick's `import`.
Screenshot ScreenshotOf(wxWindow& area)
{
    const wxPoint at = area.GetScreenPosition();
    const wxSize size = area.GetSize();
    const std::string command = "import -window root -crop " + std::to_string(size.GetWidth()) +
                                "x" + std::to_string(size.GetHeight()) + "+" + std::to_string(at.x) +
                                "+" + std::to_string(at.y) + " +repage -depth 8 ppm:-";
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    Screenshot shot;
    int maxValue = 0;
    if (!pipe || std::fscanf(pipe.get(), "P6 %u %u %d", &shot.width, &shot.height, &maxValue) != 3 ||
        maxValue != 255 || std::fgetc(pipe.get()) == EOF) {
        ADD_FAILURE() << "no screenshot from: " << command;
        return {};
    }
    shot.rgb.resize(size_t{3} * shot.width * shot.height);
    if (std::fread(shot.rgb.data(), 1, shot.rgb.size(), pipe.get()) != shot.rgb.size())
        ADD_FAILURE() << "short screenshot from: " << command;
    return shot;
}

// Every channel of every pixel within one grey level of the reference (the X server's
// blending may round the other way).
testing::AssertionResult MatchesWithinOne(const Screenshot& shot, const GreyPicture& reference)
{
    if (shot.width != reference.width || shot.height != reference.height)
        return testing::AssertionFailure() << "screenshot " << shot.width << "x" << shot.height
                                           << ", reference " << reference.width << "x"
                                           << reference.height;
    for (uint32_t y = 0; y < shot.height; ++y) {
        for (uint32_t x = 0; x < shot.width; ++x) {
            for (int channel = 0; channel < 3; ++channel) {
                const int actual = shot.rgb[3 * (size_t{y} * shot.width + x) + channel];
                const int expected = reference.At(x, y);
                if (std::abs(actual - expected) > 1)
                    return testing::AssertionFailure()
                           << "pixel (" << x << ", " << y << ") channel " << channel << " is "
                           << actual << ", expected " << expected;
            }
        }
    }
    return testing::AssertionSuccess();
}

// Asks for a repaint and waits until it has been painted and sent to the X server.
void Repaint(wxWindow& area)
{
    int paints = 0;
    auto count = [&paints](wxPaintEvent& event) {
        ++paints;
        event.Skip();
    };
    area.Bind(wxEVT_PAINT, count);
    area.Refresh();
    EXPECT_TRUE(guitest::WaitFor([&] { return paints > 0; })) << "no paint";
    area.Unbind(wxEVT_PAINT, count);
    area.Update(); // flushes the drawing to the X server
}

class PreviewWindow : public testing::Test
{
protected:
    GuiMain& window = *guitest::MainWindow();
    GuiMainProbe probe{window};
    wxWindow& area = *probe.Preview();

    uint32_t Width() const { return area.GetSize().GetWidth(); }
    uint32_t Height() const { return area.GetSize().GetHeight(); }
};

TEST_F(PreviewWindow, ShowsTheDefaultListAsFreeTypeRendersIt)
{
    probe.Font()->LoadFace(kDejaVuSans.c_str());
    Repaint(area);
    CharCodeList defaultList;
    for (uint32_t code = 32; code <= 126; ++code)
        defaultList.push_back(code);
    EXPECT_TRUE(MatchesWithinOne(ScreenshotOf(area),
                                 ReferencePreview(kDejaVuSans, defaultList, Width(), Height())));
}

// The yardstick for the blending rule: the same list drawn point by point with
// translucent pens by the toolkit itself.
TEST_F(PreviewWindow, PointByPointPaintShowsTheSamePicture)
{
    FTFont& font = *probe.Font();
    font.LoadFace(kDejaVuSans.c_str());
    const CharCodeList codes = {'A', 'j', 0x2031, 0x2588, '@', 0xE9};
    auto literal = [&](wxPaintEvent&) { PaintPointByPoint(area, font, codes); };
    area.Bind(wxEVT_PAINT, literal);
    Repaint(area);
    area.Unbind(wxEVT_PAINT, literal);
    EXPECT_TRUE(MatchesWithinOne(ScreenshotOf(area),
                                 ReferencePreview(kDejaVuSans, codes, Width(), Height())));
}

TEST_F(PreviewWindow, FollowsTheCharactersFieldAfterEnter)
{
    probe.Font()->LoadFace(kDejaVuSans.c_str());
    probe.CharsCtrl()->SetValue("0x41,66,0x2588");
    wxCommandEvent enter(wxEVT_TEXT_ENTER, ID_CHARACTERS);
    enter.SetEventObject(probe.CharsCtrl());
    probe.CharsCtrl()->GetEventHandler()->ProcessEvent(enter);
    Repaint(area);
    EXPECT_TRUE(MatchesWithinOne(ScreenshotOf(area),
                                 ReferencePreview(kDejaVuSans, {'A', 'B', 0x2588}, Width(), Height())));
}

} // namespace
