#pragma once

#include "export/ds/rotations.h"
#include "proof/grey_image.h"
#include "proof/proof_text.h"
#include "proof/written_font.h"

#include <cstdint>

// Where the proof's panels go. Panel 0 is the text as the firmware draws it unturned:
// a margin of m (the export height) all round, line i's baseline at m + ascender + i * height
// (the font record's values), each line's pen starting at x = m. The panels of 90 and 270
// are panel 0's size turned.
struct ProofLayout
{
    int64_t margin = 0;
    int64_t panelWidth = 0;                  // of panel 0: 2m + the largest line advance
    int64_t panelHeight = 0;                 // of panel 0: 2m + lines * line height
    RotationList rotations = AllRotations(); // the panels of the picture, left to right

    // The panels of `rotations` side by side in its order, m columns apart.
    int64_t PictureWidth() const;
    int64_t PictureHeight() const;
};

// The layout of a proof whose picture shows the panels of `rotations`, in that order.
ProofLayout LayOutProof(const WrittenFont& font, const ProofLines& lines, unsigned exportHeight,
                        const RotationList& rotations = AllRotations());

// One panel on its own: white (255), each glyph pixel 255 - coverage, the darker value
// where glyphs overlap, drawn from the rotation's own pixel arrays with every position
// turned as the arrays are (90 a quarter turn anticlockwise). Rotation is 0, 90, 180 or 270.
GreyImage DrawProofPanel(const WrittenFont& font, const ProofLines& lines, const ProofLayout& layout,
                         unsigned rotation);

// The whole proof: the layout's panels top-aligned on light grey (0xE0), so that their edges show.
GreyImage DrawProof(const WrittenFont& font, const ProofLines& lines, const ProofLayout& layout);
