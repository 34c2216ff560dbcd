#pragma once

#include <hb.h>

#include <optional>
#include <span>
#include <vector>

// The glyphs that shaping with `plans` can treat apart from others: every glyph a lookup of
// the plans' GSUB and GPOS features names, or a lookup such lookups call in turn (read from
// the tables, in whatever order they list them, and as HarfBuzz collects them), every glyph
// a class-based context or pair subtable gives a class other than 0, and those of the pairs
// of a 'kern' table, which HarfBuzz applies for a script whose GPOS features have no 'kern'.
//
// A glyph outside the set is, to every lookup, one of the crowd: it is covered by none, and
// where a rule matches "any glyph of class 0" it matches all of them. Indexed by glyph.
// Nothing when the face holds layout this does not see into: a 'kern' table with more than
// format-0 subtables, or GSUB or GPOS bytes that do not parse.
std::optional<std::vector<bool>> GlyphsLayoutReaches(hb_face_t* face, std::span<hb_shape_plan_t* const> plans);
