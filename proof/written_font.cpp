#include "proof/written_font.h"

void WrittenFont::CharacterWritten(const WrittenCharacter& written)
{
    auto glyph = std::make_unique<WrittenGlyph>();
    glyph->w = written.glyph.bitmap->width;
    glyph->h = written.glyph.bitmap->rows;
    glyph->xoff = written.glyph.left;
    glyph->yoff = written.glyph.top;
    glyph->xadvance = written.glyph.advanceX;
    glyph->kerning = written.kerning;
    glyph->hasPixels = written.glyph.bitmap->buffer != nullptr;
    if (glyph->hasPixels)
        TurnGlyph(*written.glyph.bitmap, glyph->pixels);
    glyphs[written.code] = std::move(glyph);
}
