// The preview in the real main window: what reaches the screen, read back from the X
// server, against the picture worked out straight from FreeType (preview_reference.h).
// The composed picture's grid, overlaps and empty cases are checked in preview_image_test.
#include "gui_test_support.h"
#include "point_by_point_paint.h"
#include "preview_reference.h"
#include "raster/ft_font.h"

#include <gtest/gtest.h>
#include <wx/textctrl.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <numeric>
#include <string>

namespace {

const std::string kDejaVuSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

// Every channel of every pixel of the area on screen, read back with ImageMagick's
// `import`, within one grey level of the reference (the X server may round the other way).
testing::AssertionResult ScreenMatches(wxWindow& area, const GreyPicture& reference)
{
    const wxPoint at = area.GetScreenPosition();
    const wxSize size = area.GetSize();
    const std::string command = "import -window root -crop " + std::to_string(size.x) + "x" +
                                std::to_string(size.y) + "+" + std::to_string(at.x) + "+" +
                                std::to_string(at.y) + " +repage -depth 8 ppm:-";
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    uint32_t width = 0, height = 0;
    int maxValue = 0;
    if (!pipe || std::fscanf(pipe.get(), "P6 %u %u %d", &width, &height, &maxValue) != 3 ||
        maxValue != 255 || std::fgetc(pipe.get()) == EOF)
        return testing::AssertionFailure() << "no screenshot from: " << command;
    if (width != reference.width || height != reference.height)
        return testing::AssertionFailure() << "screenshot " << width << "x" << height;
    std::vector<uint8_t> rgb(size_t{3} * width * height);
    if (std::fread(rgb.data(), 1, rgb.size(), pipe.get()) != rgb.size())
        return testing::AssertionFailure() << "short screenshot from: " << command;
    for (size_t i = 0; i < rgb.size(); ++i) {
        const uint32_t x = i / 3 % width, y = i / 3 / width;
        if (std::abs(rgb[i] - reference.At(x, y)) > 1)
            return testing::AssertionFailure() << "pixel (" << x << ", " << y << ") is "
                                               << int(rgb[i]) << ", expected "
                                               << int(reference.At(x, y));
    }
    return testing::AssertionSuccess();
}

// Runs `action`, waits for the area's next paint and sends the drawing to the X server.
void PaintAfter(wxWindow& area, const std::function<void()>& action)
{
    int paints = 0;
    auto count = [&paints](wxPaintEvent& event) {
        ++paints;
        event.Skip();
    };
    area.Bind(wxEVT_PAINT, count);
    action();
    EXPECT_TRUE(guitest::WaitFor([&] { return paints > 0; })) << "no paint";
    area.Unbind(wxEVT_PAINT, count);
    area.Update();
}

TEST(PreviewWindowTest, ShowsWhatFreeTypeRenders)
{
    GuiMainProbe probe(*guitest::MainWindow());
    wxWindow& area = *probe.Preview();
    const uint32_t width = area.GetSize().x, height = area.GetSize().y;
    auto refresh = [&] { area.Refresh(); };

    // No face yet: all white.
    PaintAfter(area, refresh);
    EXPECT_TRUE(ScreenMatches(area, {width, height, std::vector<uint8_t>(size_t{width} * height, 255)}));

    FTFont& font = *probe.Font();
    font.LoadFace(kDejaVuSans.c_str());
    PaintAfter(area, refresh);
    CharCodeList defaultList(95);
    std::iota(defaultList.begin(), defaultList.end(), 32);
    EXPECT_TRUE(ScreenMatches(area, ReferencePreview(kDejaVuSans, defaultList, width, height)));

    // Enter repaints with the new list; 'j' and U+2031 reach into their neighbours' cells.
    const CharCodeList codes = {'A', 'j', 0x2031, 0x2588, '@', 0xE9};
    probe.CharsCtrl()->SetValue("65,0x6A,0x2031,0x2588,64,233");
    PaintAfter(area, [&] {
        wxCommandEvent enter(wxEVT_TEXT_ENTER, ID_CHARACTERS);
        enter.SetEventObject(probe.CharsCtrl());
        probe.CharsCtrl()->GetEventHandler()->ProcessEvent(enter);
    });
    ASSERT_EQ(probe.CharCodes(), codes);
    EXPECT_TRUE(ScreenMatches(area, ReferencePreview(kDejaVuSans, codes, width, height)));

    // The yardstick for the blending rule: the same list drawn the literal way, point by
    // point with translucent pens by the toolkit itself, shows the reference as well.
    auto literal = [&](wxPaintEvent&) { PaintPointByPoint(area, font, codes); };
    area.Bind(wxEVT_PAINT, literal);
    PaintAfter(area, refresh);
    area.Unbind(wxEVT_PAINT, literal);
    EXPECT_TRUE(ScreenMatches(area, ReferencePreview(kDejaVuSans, codes, width, height)));
}

} // namespace
