#pragma once

#include "charset/export_characters.h"
#include "export/export_options.h"
#include "export/kerning/kerning_pair.h"
#include "raster/ft_font.h"

#include <memory>
#include <vector>

// The kerning pairs of each exported character, from the source the options choose.
class KerningSource
{
public:
    virtual ~KerningSource() = default;
    // The pairs of `code` with every listed code as the character before it, in list
    // order, zero kerning left out; each delta clamped to -128..127.
    virtual std::vector<KerningPair> PairsOf(uint32_t code) = 0;
};

// How legacy kerning looks pairs up.
enum class LegacyLookup
{
    AsDesktop,   // the desktop program's way without a codepage: codes cut to char as characters
    ByCharacter, // between the characters the codes stand for
};

// Both `characters` and `font` must outlive the source, and the face must be set to the
// export size. Legacy kerning is looked up as the desktop does unless the options name a
// codepage, a code is past 255 (the desktop's codes are bytes) or `lookup` says otherwise;
// looked up by character, every pair is worked out here. So is every pair of a GPOS source
// (KerningMode::Gpos, or Auto for a face whose GPOS table has a 'kern' feature);
// KerningMode::None gives no pairs at all.
std::unique_ptr<KerningSource> MakeKerningSource(FTFont& font, const ExportCharacters& characters,
                                                 const ExportOptions& options,
                                                 LegacyLookup lookup = LegacyLookup::AsDesktop);

// The kerning of an export whose characters come from several fonts (ExportCharacter::font
// indexes `fonts`): pairs only between characters of the same font, from that font.
class KerningByFont
{
public:
    KerningByFont(const std::vector<FTFont*>& fonts, const ExportCharacters& characters, const ExportOptions& options);
    std::vector<KerningPair> PairsOf(const ExportCharacter& character) const;

private:
    std::vector<ExportCharacters> charactersOf; // per font
    std::vector<std::unique_ptr<KerningSource>> sources;
};

// Whether the face's GPOS table has a 'kern' feature, which KerningMode::Auto follows.
bool HasGposKerning(FT_Face face);
