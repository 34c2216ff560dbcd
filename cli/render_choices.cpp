#include "cli/render_choices.h"

#include "cli/named_choice.h"

#include <charconv>

namespace {

constexpr double kMinGamma = 0.25;
constexpr double kMaxGamma = 4;

Hinting ParseHinting(const std::string& text)
{
    return NamedChoice<Hinting>(
        "--hinting", text,
        {{"native", Hinting::Native}, {"light", Hinting::Light}, {"auto", Hinting::Auto}, {"none", Hinting::None}});
}

// A decimal number, read the same in every locale; "nan" and "inf" fail the range.
double ParseGamma(const std::string& text)
{
    double gamma = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, gamma);
    if (text.empty() || error != std::errc() || stop != end || !(gamma >= kMinGamma && gamma <= kMaxGamma))
        throw CLI::ValidationError("--gamma", "\"" + text + "\" is not a number from 0.25 to 4");
    return gamma;
}

} // namespace

void AddRenderOptions(CLI::App& app, ExportRequest& request)
{
    app.add_option_function<std::string>(
           "--hinting", [&request](const std::string& text) { request.render.hinting = ParseHinting(text); },
           "How outlines are fitted to the pixel grid: native (the font's own hinting, as the\n"
           "desktop program renders), light (vertical fitting only, shapes closest to the\n"
           "design), auto (FreeType's autohinter, often crisper at small sizes for fonts with poor\n"
           "hinting) or none (the outlines as designed), any letter case, e.g. --hinting auto\n"
           "(default native). Bitmap fonts keep their pixels")
        ->type_name("MODE");
    app.add_flag("--mono", request.render.mono,
                 "Render with FreeType's 1-bit rasteriser, for 1-bit displays (OLED, e-paper): every\n"
                 "pixel 0x00 or 0xFF, sharp edges instead of grey ones; with --hinting native, auto or\n"
                 "none, not with --gamma");
    app.add_option_function<std::string>(
           "--gamma", [&request](const std::string& text) { request.render.gamma = ParseGamma(text); },
           "Gamma of the grey pixels, 0.25 to 4: each value v becomes 255 x (v/255)^(1/G), so above\n"
           "1 thin strokes come out bolder, below 1 lighter, e.g. --gamma 2.2 (default 1: as\n"
           "rendered). Bitmap fonts keep their pixels")
        ->type_name("G");
}

void CheckRenderChoices(const CLI::App& app, ExportRequest& request)
{
    const bool gammaGiven = app.count("--gamma") > 0;
    request.renderGiven = app.count("--hinting") > 0 || request.render.mono || gammaGiven;
    if (!request.render.mono)
        return;
    if (request.render.hinting == Hinting::Light)
        throw CLI::ValidationError("--hinting", "light fits outlines for grey pixels and cannot go with --mono; "
                                                "give native, auto or none");
    // --gamma 1, the default, changes nothing, as a build script may pass it whatever the render.
    if (gammaGiven && request.render.gamma != 1)
        throw CLI::ValidationError("--gamma", "a --mono render has no grey pixels to correct; leave it out or give 1");
}
