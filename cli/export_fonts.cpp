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
        if (auto note = StrikeHeightsNote(font.Face()))
            report.context.push_back(*note);
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

} // namespace

void OpenFonts(const ExportRequest& request, const ExportPlan& plan, ExportFonts& fonts, ExportReport& report)
{
    for (size_t i = 0; i < plan.fontPaths.size(); ++i) {
        const std::string& path = plan.fontPaths[i];
        fonts.push_back(std::make_unique<FTFont>());
        LoadFont(*fonts.back(), path, i == 0 ? request.faceIndex : 0, report);
        SetSize(*fonts.back(), path, plan.height, i == 0, report);
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
    const MissingGlyphs missing = FindMissingGlyphs(FontsOf(fonts), plan.characters, plan.options.codepage);
    if (missing.all) {
        report.context.push_back(Quoted(request.fontPath) + " has no glyph for any of " + missing.ranges +
                                 missing.encodingNote);
        return kNoGlyphMessage;
    }
    if (auto warning = MissingGlyphWarning(missing))
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
