# veltrane_add_bitmap_font(<target> FONT <file> [NAME <base>] [HEIGHT <h>] [CHARS <text>]
#                          [ROTATIONS <r>...] [OUTPUT_DIR <dir>] [PROOF <png>]
#                          [GLYPHS <file>:<list>[=><code>]...] [FALLBACK <file>...]
#                          [TEXT_FILES <file>...]
#                          [FORMAT ds|packed [BPP 1|2|4|8] [COMPRESS auto|runs|none]]
#                          [OPTIONS <exporter arguments>...])
#
# Exports the font at build time with veltrane-fontgen-export into <dir>/<base>.cpp and
# <dir>/<base>.h, adds the source to <target> and <dir> to its include directories, so
# that its code can `#include <base.h>` and use font_<base>_0 .. font_<base>_270 (those of
# ROTATIONS). The firmware provides ds_font.h itself, on <target>'s include path.
#
#   FONT        the font file (relative: to the current source directory)
#   NAME        the base name, letters, digits and "_" (default: the font's file name
#               without its extension, other characters made "_")
#   HEIGHT      pixel height (exporter default 16)
#   CHARS       character codes, e.g. 32-126,0xB0 (exporter default 32-126); a CMake
#               list, such as CHARS 32-126 0xB0 or "32-126;0xB0", is joined with commas
#   ROTATIONS   only these of 0, 90, 180 and 270, e.g. ROTATIONS 0 for a display of one
#               orientation, or ROTATIONS 0 180 (exporter default: all four)
#   OUTPUT_DIR  where the pair goes (relative: to the current binary directory;
#               default: veltrane_fonts there)
#   PROOF       also draw a proof image of the exported font, e.g. PROOF banner_font.png
#               (relative: to <dir>); its text can follow in OPTIONS --proof-text <text>
#   GLYPHS      characters from other fonts, each <file>:<list>[=><code>] as --glyphs takes
#               it, e.g. GLYPHS fonts/fontawesome-webfont.ttf:0xF240-0xF244=>0x80 (<file>
#               relative: to the current source directory; <file>#<face> a face of a
#               collection, <file>@<px> a height of its own)
#   FALLBACK    fonts to take a character from that FONT has no glyph for, in order, each
#               <file>[#<face>][@<px>] as GLYPHS has it, e.g. NotoSansCJK-Regular.ttc#2
#   TEXT_FILES  UTF-8 files, such as the firmware's strings, whose every character is
#               exported, as --text-file takes them (relative: to the current source
#               directory); with FORMAT packed any character, e.g. TEXT_FILES strings/zh.txt
#   FORMAT      packed writes <dir>/<base>.c and .h instead, a font_<base> drawn in all four
#               rotations by the C runtime, which <target> then links (veltrane::font_runtime;
#               the project must enable C); BPP (default 4) and COMPRESS (default auto) choose
#               its pixels, as --bpp and --compress do: COMPRESS auto stores each glyph in the
#               smallest coding, runs only in the run-length codings, which draw fastest, none
#               every pixel plainly
#   OPTIONS     further exporter arguments, passed as they are, e.g. OPTIONS --codepage CP1251;
#               the rendering choices too, e.g. OPTIONS --mono --hinting auto for a 1-bit
#               display, or OPTIONS --gamma 2.2. A quoted argument stays one argument with
#               its ";": OPTIONS --text "Volume; Menu" hands the exporter the text as typed
#
# HEIGHT, ROTATIONS, FORMAT, BPP, COMPRESS and the values of --height, --rotations, --kerning,
# --hinting, --format, --bpp and --compress in OPTIONS are checked at configure time, with the
# exporter's words.
#
# The export runs again when a font, a text file or the exporter changes. The exporter leaves files
# whose bytes do not change untouched, and the command's output is a stamp file with the
# pair as byproducts, so that neither make nor Ninja then recompiles the font.
include(${CMAKE_CURRENT_LIST_DIR}/VeltraneFontArguments.cmake)

# The packed fonts' C runtime, from the source tree or from where the package installed it.
if(NOT DEFINED VELTRANE_RUNTIME_DIR)
  get_filename_component(VELTRANE_RUNTIME_DIR "${CMAKE_CURRENT_LIST_DIR}/../runtime" ABSOLUTE)
endif()

# veltrane_add_font_runtime(): the target veltrane::font_runtime, the runtime that draws
# packed fonts, built with the project's own C compiler (a firmware's, when it cross
# compiles). The project must have enabled C. Made once; find_package makes it at once
# when C is enabled, veltrane_add_bitmap_font(... FORMAT packed) when first needed.
function(veltrane_add_font_runtime)
  if(TARGET veltrane::font_runtime)
    return()
  endif()
  get_property(languages GLOBAL PROPERTY ENABLED_LANGUAGES)
  if(NOT "C" IN_LIST languages)
    message(FATAL_ERROR "veltrane::font_runtime is C: enable C in the project, e.g. project(firmware C CXX)")
  endif()
  add_library(veltrane_font_runtime STATIC "${VELTRANE_RUNTIME_DIR}/veltrane_font.c")
  target_include_directories(veltrane_font_runtime PUBLIC "${VELTRANE_RUNTIME_DIR}")
  set_target_properties(veltrane_font_runtime PROPERTIES C_STANDARD 99 C_STANDARD_REQUIRED ON)
  add_library(veltrane::font_runtime ALIAS veltrane_font_runtime)
endfunction()

# An extra font as GLYPHS and FALLBACK take it, <file>[#<face>][@<px>]: the file, absolute
# (relative: to the current source directory), in <file_var>, and the exporter's argument,
# the same path with its suffixes, in <arg_var>.
function(_veltrane_extra_font typed file_var arg_var)
  set(suffix "")
  if(typed MATCHES "^(.*[^@])(@[0-9][0-9a-fA-FxX]*)$")
    set(typed "${CMAKE_MATCH_1}")
    set(suffix "${CMAKE_MATCH_2}")
  endif()
  if(typed MATCHES "^(.*[^#])(#[0-9]+)$")
    set(typed "${CMAKE_MATCH_1}")
    set(suffix "${CMAKE_MATCH_2}${suffix}")
  endif()
  get_filename_component(file "${typed}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_SOURCE_DIR}")
  set(${file_var} "${file}" PARENT_SCOPE)
  set(${arg_var} "${file}${suffix}" PARENT_SCOPE)
endfunction()

function(veltrane_add_bitmap_font target)
  set(flags)
  set(single_values FONT NAME HEIGHT OUTPUT_DIR PROOF FORMAT BPP COMPRESS)
  set(multi_values CHARS ROTATIONS GLYPHS FALLBACK TEXT_FILES OPTIONS)
  cmake_parse_arguments(PARSE_ARGV 1 arg "${flags}" "${single_values}" "${multi_values}")
  set(fn "veltrane_add_bitmap_font(${target})")
  if(arg_UNPARSED_ARGUMENTS)
    string(REPLACE ";" " " unknown "${arg_UNPARSED_ARGUMENTS}")
    message(FATAL_ERROR "${fn}: unknown arguments: ${unknown}")
  endif()
  foreach(keyword IN LISTS arg_KEYWORDS_MISSING_VALUES)
    # An empty ROTATIONS would write no font at all, an empty CHARS the exporter's default.
    if(NOT keyword IN_LIST multi_values OR keyword MATCHES "^(ROTATIONS|CHARS)$")
      message(FATAL_ERROR "${fn}: ${keyword} needs a value")
    endif()
  endforeach()
  if(NOT TARGET "${target}")
    message(FATAL_ERROR "${fn}: there is no target ${target}; call it after add_executable or add_library")
  endif()
  if(NOT DEFINED arg_FONT)
    message(FATAL_ERROR "${fn}: FONT <file> is required")
  endif()
  if(NOT TARGET VeltraneFontGen::veltrane-fontgen-export)
    message(FATAL_ERROR "${fn}: the exporter target VeltraneFontGen::veltrane-fontgen-export is missing; "
                        "use find_package(VeltraneFontGen) or add_subdirectory of its source")
  endif()

  get_filename_component(font "${arg_FONT}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_SOURCE_DIR}")
  get_source_file_property(font_is_generated "${font}" GENERATED)
  if(NOT EXISTS "${font}" AND NOT font_is_generated)
    message(FATAL_ERROR "${fn}: FONT ${font} does not exist")
  endif()
  if(DEFINED arg_NAME)
    set(name "${arg_NAME}")
    if(NOT name MATCHES "^[A-Za-z0-9_]+$")
      message(FATAL_ERROR "${fn}: NAME \"${name}\" must be letters, digits and _ only (it names C identifiers)")
    endif()
  else()
    get_filename_component(name "${font}" NAME_WE)
    string(REGEX REPLACE "[^A-Za-z0-9_]" "_" name "${name}")
  endif()
  if(name STREQUAL "ds_font")
    message(FATAL_ERROR "${fn}: the name ds_font would replace the firmware's ds_font.h; give another NAME")
  endif()
  if(NOT DEFINED arg_OUTPUT_DIR)
    set(arg_OUTPUT_DIR veltrane_fonts)
  endif()
  get_filename_component(dir "${arg_OUTPUT_DIR}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_BINARY_DIR}")

  set(exporter_args)
  foreach(choice IN ITEMS FORMAT BPP COMPRESS)
    if(DEFINED arg_${choice})
      string(TOLOWER "--${choice}" option)
      list(APPEND exporter_args ${option} "${arg_${choice}}")
    endif()
  endforeach()
  if(DEFINED arg_HEIGHT)
    list(APPEND exporter_args --height "${arg_HEIGHT}")
  endif()
  if(DEFINED arg_CHARS)
    string(REPLACE ";" "," chars "${arg_CHARS}")
    list(APPEND exporter_args --chars "${chars}")
  endif()
  if(DEFINED arg_ROTATIONS)
    list(JOIN arg_ROTATIONS "," rotations)
    list(APPEND exporter_args --rotations "${rotations}")
  endif()
  # Every file the export reads is a dependency, so that touching an icon font or editing a
  # strings file exports again.
  set(inputs "${font}")
  foreach(set IN LISTS arg_GLYPHS)
    if(NOT set MATCHES "^(.+):([^:]+)$")
      message(FATAL_ERROR "${fn}: GLYPHS \"${set}\" is not <file>:<list>[=><code>]")
    endif()
    set(list "${CMAKE_MATCH_2}")
    _veltrane_extra_font("${CMAKE_MATCH_1}" glyph_font glyph_font_arg)
    list(APPEND inputs "${glyph_font}")
    list(APPEND exporter_args --glyphs "${glyph_font_arg}:${list}")
  endforeach()
  foreach(fallback IN LISTS arg_FALLBACK)
    _veltrane_extra_font("${fallback}" fallback_font fallback_arg)
    list(APPEND inputs "${fallback_font}")
    list(APPEND exporter_args --fallback "${fallback_arg}")
  endforeach()
  foreach(text_file IN LISTS arg_TEXT_FILES)
    get_filename_component(text_file "${text_file}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_SOURCE_DIR}")
    list(APPEND inputs "${text_file}")
    list(APPEND exporter_args --text-file "${text_file}")
  endforeach()
  set(proof)
  if(DEFINED arg_PROOF)
    get_filename_component(proof "${arg_PROOF}" ABSOLUTE BASE_DIR "${dir}")
    list(APPEND exporter_args --proof "${proof}")
  endif()
  foreach(option IN LISTS arg_OPTIONS)
    _veltrane_list_item(option "${option}")
    list(APPEND exporter_args "${option}")
  endforeach()
  _veltrane_check_exporter_args("${fn}" "${exporter_args}")
  # A packed font (FORMAT packed, or --format packed among OPTIONS) is a .c file that the
  # runtime draws.
  _veltrane_format(format "${exporter_args}")
  set(source_extension cpp)
  foreach(option IN ITEMS --bpp --compress)
    if(NOT format STREQUAL "packed" AND option IN_LIST exporter_args)
      message(FATAL_ERROR "${fn}: ${option}: only packed fonts take it; add FORMAT packed")
    endif()
  endforeach()
  if(format STREQUAL "packed")
    set(source_extension c)
    veltrane_add_font_runtime()
  endif()

  set(stamp "${dir}/${name}.stamp")
  # Two calls writing the same file (or a PROOF named like a source) would overwrite one
  # font with another; say which calls, rather than leave it to CMake's message about a
  # second rule for the same output.
  foreach(output IN ITEMS "${stamp}" "${dir}/${name}.${source_extension}" "${dir}/${name}.h" ${proof})
    get_property(owner GLOBAL PROPERTY "veltrane_bitmap_font_output:${output}")
    if(owner)
      message(FATAL_ERROR "${fn}: ${output} is already written by veltrane_add_bitmap_font(${owner}); "
                          "give one of them another NAME, OUTPUT_DIR or PROOF")
    endif()
    set_property(GLOBAL PROPERTY "veltrane_bitmap_font_output:${output}" "${target}")
  endforeach()
  add_custom_command(
    OUTPUT "${stamp}"
    BYPRODUCTS "${dir}/${name}.${source_extension}" "${dir}/${name}.h" ${proof}
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${dir}"
    COMMAND VeltraneFontGen::veltrane-fontgen-export ${exporter_args} "${font}" "${dir}/${name}.${source_extension}"
    COMMAND "${CMAKE_COMMAND}" -E touch "${stamp}"
    DEPENDS ${inputs} VeltraneFontGen::veltrane-fontgen-export
    COMMENT "Exporting bitmap font ${name} from ${arg_FONT}"
    VERBATIM)
  target_sources("${target}" PRIVATE "${dir}/${name}.${source_extension}" "${dir}/${name}.h" "${stamp}")
  target_include_directories("${target}" PUBLIC "${dir}")
  if(format STREQUAL "packed")
    # Appended to the property, so that neither form of target_link_libraries() elsewhere
    # clashes with this one.
    set_property(TARGET "${target}" APPEND PROPERTY LINK_LIBRARIES veltrane::font_runtime)
  endif()
endfunction()

# find_package() gives the runtime target at once to a project that has enabled C.
get_property(_veltrane_languages GLOBAL PROPERTY ENABLED_LANGUAGES)
if("C" IN_LIST _veltrane_languages)
  veltrane_add_font_runtime()
endif()
