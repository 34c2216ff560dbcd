#pragma once

#include "charset/export_characters.h"
#include "export/export_listener.h"
#include "export/export_options.h"
#include "export/packed/packed_font.h"
#include "raster/ft_font.h"

// Renders every character as the source file's export does (each from its own font,
// kerning only within a font, line metrics from the main font, fonts[0]) and packs them
// as `options.packed` says. The listeners see each glyph as the packed font stores it:
// its coverage quantized and widened back to 8 bits. Every face must be set to the
// export size. Throws FTException when a glyph cannot be rendered, or when a value is
// too large for the packed font's fields.
PackedFont RenderPackedFont(const std::vector<FTFont*>& fonts, const ExportCharacters& characters,
                            const ExportOptions& options, const ExportListeners& listeners = {});
