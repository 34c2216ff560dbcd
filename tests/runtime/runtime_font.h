#pragma once
// A packed font as the runtime takes it, straight from the packer: no source to compile.

#include "export/packed/packed_font.h"

#include <veltrane_font.h>

// The vt_font_t the generated source would initialise, pointing into `font`.
inline vt_font_t RuntimeFont(const PackedFont& font)
{
    vt_font_t v{};
    v.records = font.records.data();
    v.pixels = font.pixels.data();
    v.blocks = font.blocks.data();
    v.kerning = font.kerning.empty() ? nullptr : font.kerning.data();
    v.kerning_rights = font.kerningRights;
    v.model = font.model.empty() ? nullptr : font.model.data();
    v.model_bits = static_cast<uint8_t>(font.modelBits);
    v.model_value_bits = static_cast<uint8_t>(font.modelValueBits);
    for (int i = 0; i < 3; ++i) {
        v.model_width[i] = static_cast<uint8_t>(font.modelWidth[i]);
        v.model_shift[i] = static_cast<uint8_t>(font.modelShift[i]);
    }
    v.kerning_deltas = font.kerningDeltas;
    v.height = static_cast<int16_t>(font.metrics.height);
    v.ascender = static_cast<int16_t>(font.metrics.ascender);
    v.descender = static_cast<int16_t>(font.metrics.descender);
    for (int f = 0; f < VT_RECORD_FIELDS; ++f) {
        v.field_min[f] = static_cast<int16_t>(font.fieldMin[f]);
        v.field_bits[f] = static_cast<uint8_t>(font.fieldBits[f]);
    }
    v.keys = static_cast<uint8_t>(font.keys);
    v.block_count = font.blockCount;
    v.block_bits = static_cast<uint8_t>(font.blockBits);
    for (int f = 0; f < VT_BLOCK_FIELDS; ++f)
        v.block_field_bits[f] = static_cast<uint8_t>(font.blockFieldBits[f]);
    v.glyph_bits = static_cast<uint8_t>(font.glyphBits);
    v.kerning_entries[0] = font.kerningEntries[0];
    v.kerning_entries[1] = font.kerningEntries[1];
    v.kerning_columns = static_cast<uint16_t>(font.kerningColumns);
    v.record_bits = static_cast<uint8_t>(font.recordBits);
    v.pixel_shift = static_cast<uint8_t>(font.pixelShift);
    v.bpp = static_cast<uint8_t>(font.bpp);
    v.coverage_scale = static_cast<uint8_t>(font.coverageScale);
    v.kerning_form = static_cast<uint8_t>(font.kerningForm);
    v.kerning_class_bits[0] = static_cast<uint8_t>(font.kerningClassBits[0]);
    v.kerning_class_bits[1] = static_cast<uint8_t>(font.kerningClassBits[1]);
    v.kerning_delta_bits = static_cast<uint8_t>(font.kerningDeltaBits);
    v.kerning_delta_min = static_cast<int8_t>(font.kerningDeltaMin);
    return v;
}
