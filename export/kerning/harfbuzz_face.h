#pragma once

#include <hb.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <mutex>

// HarfBuzz's view of the face FreeType has open: the same file and face index, each table
// read through FreeType. HarfBuzz reads a table when it first needs it, from whichever
// thread that is, and a FreeType face is not thread-safe, so every read takes a lock.
// `face` must outlive this object.
class HarfBuzzFace
{
public:
    explicit HarfBuzzFace(FT_Face face);
    ~HarfBuzzFace();
    HarfBuzzFace(const HarfBuzzFace&) = delete;
    HarfBuzzFace& operator=(const HarfBuzzFace&) = delete;

    hb_face_t* Get() const { return face; }
    // Whether the face's GPOS table has a 'kern' feature, under any script or language.
    bool HasGposKerning() const;
    // Whether the face has Apple layout tables, which HarfBuzz then applies instead of or
    // beside the OpenType ones.
    bool HasAppleLayout() const;

private:
    static hb_blob_t* ReadTable(hb_face_t*, hb_tag_t tag, void* self);

    FT_Face ftFace;
    std::mutex lock;
    hb_face_t* face;
};
