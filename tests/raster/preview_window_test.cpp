// The preview in the real main window: what reaches the screen, read back from the X server,
// against the composed picture (whose pixels preview_image_test pins).
#include "gui_test_support.h"

#include "point_by_point_paint.h"
#include "raster/ft_font.h"
#include "raster/preview_image.h"
#include "test_support.h"

#include <gtest/gtest.h>
#include <wx/textctrl.h>

#include <cstdio>
#include <memory>

namespace {

// Every channel of every pixel of the area on screen, read back with ImageMagick's `import`,
// within one grey level of the picture (the X server may round the other way).
testing::AssertionResult ScreenShows(wxWindow& area, const PreviewImage& picture)
{
    const wxPoint at = area.GetScreenPosition();
    const std::string command = "import -window root -crop " + std::to_string(picture.width) + "x" +
                                std::to_string(picture.height) + "+" + std::to_string(at.x) + "+" +
                                std::to_string(at.y) + " +repage -depth 8 ppm:-";
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    uint32_t width = 0, height = 0;
    std::vector<uint8_t> rgb(picture.rgb.size());
    if (!pipe || std::fscanf(pipe.get(), "P6 %u %u 255", &width, &height) != 2 || std::fgetc(pipe.get()) == EOF ||
        width != picture.width || height != picture.height ||
        std::fread(rgb.data(), 1, rgb.size(), pipe.get()) != rgb.size())
        return testing::AssertionFailure() << "no screenshot of the area from: " << command;
    for (size_t i = 0; i < rgb.size(); ++i)
        if (std::abs(rgb[i] - picture.rgb[i]) > 1)
            return testing::AssertionFailure()
                   << "pixel " << i / 3 << " is " << int(rgb[i]) << ", expected " << int(picture.rgb[i]);
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

TEST(PreviewWindowTest, ShowsTheComposedPicture)
{
    GuiMainProbe probe(*guitest::MainWindow());
    wxWindow& area = *probe.Preview();
    FTFont& font = *probe.Font();
    const uint32_t width = area.GetSize().x, height = area.GetSize().y;
    auto expected = [&] {
        FTFont reference;
        if (font.HasFace())
            reference.LoadFace(kDejaVuSans.c_str());
        return PreviewComposer().Compose(reference, probe.CharCodes(), width, height);
    };
    auto refresh = [&] {
        area.Refresh();
    };

    PaintAfter(area, refresh);
    EXPECT_TRUE(ScreenShows(area, expected())) << "no face yet: white";
    font.LoadFace(kDejaVuSans.c_str());
    PaintAfter(area, refresh);
    EXPECT_TRUE(ScreenShows(area, expected())) << "the default list";

    // Enter repaints with the new list; 'j' and U+2031 reach into their neighbours' cells.
    probe.CharsCtrl()->SetValue("65,0x6A,0x2031,0x2588,64,233");
    PaintAfter(area, [&] {
        wxCommandEvent enter(wxEVT_TEXT_ENTER, ID_CHARACTERS);
        enter.SetEventObject(probe.CharsCtrl());
        probe.CharsCtrl()->GetEventHandler()->ProcessEvent(enter);
    });
    ASSERT_EQ(probe.CharCodes(), CharCodeList({'A', 'j', 0x2031, 0x2588, '@', 0xE9}));
    EXPECT_TRUE(ScreenShows(area, expected()));

    // The yardstick for the blending rule: the same list drawn point by point with
    // translucent pens by the toolkit itself shows the same picture.
    auto literal = [&](wxPaintEvent&) {
        PaintPointByPoint(area, font, probe.CharCodes());
    };
    area.Bind(wxEVT_PAINT, literal);
    PaintAfter(area, refresh);
    area.Unbind(wxEVT_PAINT, literal);
    EXPECT_TRUE(ScreenShows(area, expected())) << "point by point";
}

} // namespace
