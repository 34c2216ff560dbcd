#include "export/kerning/harfbuzz_face.h"

#include <hb-aat.h>
#include <hb-ot.h>

#include FT_TRUETYPE_TABLES_H

#include <array>
#include <cstdlib>

HarfBuzzFace::HarfBuzzFace(FT_Face face) : ftFace(face), face(hb_face_create_for_tables(ReadTable, this, nullptr))
{
    hb_face_set_index(this->face, static_cast<unsigned>(face->face_index));
    hb_face_set_upem(this->face, face->units_per_EM);
    hb_face_make_immutable(this->face);
}

HarfBuzzFace::~HarfBuzzFace()
{
    hb_face_destroy(face);
}

hb_blob_t* HarfBuzzFace::ReadTable(hb_face_t*, hb_tag_t tag, void* self)
{
    auto* owner = static_cast<HarfBuzzFace*>(self);
    const std::lock_guard<std::mutex> hold(owner->lock);
    FT_ULong length = 0;
    if (FT_Load_Sfnt_Table(owner->ftFace, tag, 0, nullptr, &length) != 0 || length == 0)
        return nullptr; // HarfBuzz takes a missing table as empty
    auto* bytes = static_cast<FT_Byte*>(std::malloc(length));
    if (bytes == nullptr || FT_Load_Sfnt_Table(owner->ftFace, tag, 0, bytes, &length) != 0) {
        std::free(bytes);
        return nullptr;
    }
    return hb_blob_create(reinterpret_cast<const char*>(bytes), static_cast<unsigned>(length), HB_MEMORY_MODE_WRITABLE,
                          bytes, [](void* owned) { std::free(owned); });
}

bool HarfBuzzFace::HasGposKerning() const
{
    std::array<hb_tag_t, 64> tags;
    unsigned offset = 0;
    for (;;) {
        unsigned count = tags.size();
        const unsigned total = hb_ot_layout_table_get_feature_tags(face, HB_OT_TAG_GPOS, offset, &count, tags.data());
        for (unsigned i = 0; i < count; ++i)
            if (tags[i] == HB_TAG('k', 'e', 'r', 'n'))
                return true;
        offset += count;
        if (count == 0 || offset >= total)
            return false;
    }
}

bool HarfBuzzFace::HasAppleLayout() const
{
    return hb_aat_layout_has_substitution(face) || hb_aat_layout_has_positioning(face) ||
           hb_aat_layout_has_tracking(face);
}
