#include "cli/export_fonts.h"

#include "charset/codepage.h"
#include "cli/font_file_check.h"
#include "cli/gpos_kerning_hint.h"
#include "cli/missing_glyphs.h"
#include "cli/strike_heights.h"

namespace {

constexpr const char* kNoGlyphMessage = "No glyph for any of the characters !";
constexpr const char* kNoSetGlyphMessage = "No glyph for a character of --glyphs !";

// Opens the face, saying why when the file does not give it.
void LoadFont(FTFont& font, const std::string& path, long faceIndex, ExportReport& report)
{
    try {
        font.LoadFace(path.c_str(), faceIndex);
    } catch (const FTException&) {
        report.context.push_back(WhyFontCannotLoad(path, faceIndex));
        throw;
    }
    if (auto unknown = font.LookUpInOwnEncoding())
        report.warnings.push_back("the font is encoded in " + *unknown +
                                  ", which iconv does not know as an 8-bit encoding: no character finds its glyphs");
}

void SetSize(FTFont& font, const std::string& path, unsigned height, bool mainFont, ExportReport& report)
{
    try {
        font.SetPixelSize(height);
    } catch (const FTException&) {
        if (!mainFont)
            report.context.push_back("the size cannot be set in " + Quoted(path));
        for (const std::string& line :
             StrikeHeightsNote(font.Face(), mainFont ? std::nullopt : std::optional<std::string>(path)))
            report.context.push_back(line);
        throw;
    }
}

bool HasGlyph(const FTFont& font, const ExportCharacter& character)
{
    return font.GlyphIndex(character.character) != 0;
}

void UseFallbacks(const ExportPlan& plan, const ExportFonts& fonts, ExportCharacters& characters)
{
    for (ExportCharacter& character : characters) {
        if (character.font != 0 || HasGlyph(*fonts[0], character))
            continue;
        for (size_t fallback = plan.firstFallback; fallback < fonts.size(); ++fallback) {
            if (HasGlyph(*fonts[fallback], character)) {
                character.font = static_cast<unsigned>(fallback);
                break;
            }
        }
    }
}

// --gamma and --hinting shape rendered outlines; a font of bitmaps only keeps its pixels.
std::optional<std::string> BitmapFontWarning(const ExportRequest& request, const ExportPlan& plan,
                                             const ExportFonts& fonts)
{
    std::vector<std::string> options;
    if (request.render.gamma != 1)
        options.push_back("--gamma");
    if (request.render.hinting != Hinting::Native)
        options.push_back("--hinting");
    std::vector<std::string> bitmapFonts;
    for (size_t i = 0; i < fonts.size(); ++i) {
        if (!FT_IS_SCALABLE(fonts[i]->Face()))
            bitmapFonts.push_back(plan.fontPaths[i]);
    }
    if (options.empty() || bitmapFonts.empty())
        return std::nullopt;
    const std::string named = options.size() == 1 ? options[0] + " does" : options[0] + " and " + options[1] + " do";
    return named + " not apply to the bitmap font " + FontsTried(bitmapFonts) + ", which keeps its pixels";
}

} // namespace

void OpenFonts(const ExportPlan& plan, ExportFonts& fonts, ExportReport& report)
{
    for (size_t i = 0; i < plan.fontPaths.size(); ++i) {
        const std::string& path = plan.fontPaths[i];
        fonts.push_back(std::make_unique<FTFont>());
        LoadFont(*fonts.back(), path, plan.fontFaces[i], report);
        SetSize(*fonts.back(), path, plan.fontHeights[i], i == 0, report);
    }
}

std::optional<std::string> ChooseGlyphs(const ExportRequest& request, ExportPlan& plan, const ExportFonts& fonts,
                                        ExportReport& report)
{
    for (const ExportCharacter& character : plan.characters) {
        if (character.font != 0 && character.font < plan.firstFallback &&
            !HasGlyph(*fonts[character.font], character)) {
            report.context.push_back(Quoted(plan.fontPaths[character.font]) + " has no glyph for " +
                                     NamedCharacter(character.character));
            return kNoSetGlyphMessage;
        }
    }
    UseFallbacks(plan, fonts, plan.characters);
    if (auto warning = BitmapFontWarning(request, plan, fonts))
        report.warnings.push_back(*warning);
    const MissingGlyphs missing = FindMissingGlyphs(FontsOf(fonts), plan.characters, plan.options.codepage);
    // The main font and the fallbacks a missing character was looked for in.
    std::vector<std::string> tried = {request.fontPath};
    tried.insert(tried.end(), plan.fontPaths.begin() + static_cast<std::ptrdiff_t>(plan.firstFallback),
                 plan.fontPaths.end());
    if (missing.all) {
        report.context.push_back(FontsTried(tried) + (tried.size() == 1 ? " has" : " have") + " no glyph for any of " +
                                 missing.codes + missing.encodingNote);
        return kNoGlyphMessage;
    }
    if (auto warning = MissingGlyphWarning(missing, tried.size() == 1 ? "" : FontsTried(tried)))
        report.warnings.push_back(*warning);
    if (request.kerning == KerningMode::Legacy && !request.kerningGiven) {
        ExportCharacters mainCharacters;
        for (const ExportCharacter& character : plan.characters) {
            if (character.font == 0)
                mainCharacters.push_back(character);
        }
        if (auto warning = GposOnlyKerningWarning(*fonts[0], mainCharacters, plan.options))
            report.warnings.push_back(*warning);
    }
    return std::nullopt;
}

std::vector<FTFont*> FontsOf(const ExportFonts& fonts)
{
    std::vector<FTFont*> pointers;
    for (const auto& font : fonts)
        pointers.push_back(font.get());
    return pointers;
}
