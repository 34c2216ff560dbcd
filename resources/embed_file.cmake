# Turns a binary file into a C++ header holding its bytes, so the program carries
# its resources inside the executable.
# Usage: cmake -DINPUT=file -DOUTPUT=header.h -DSYMBOL=NAME -P embed_file.cmake
foreach(var INPUT OUTPUT SYMBOL)
  if(NOT DEFINED ${var})
    message(FATAL_ERROR "embed_file.cmake needs -D${var}=...")
  endif()
endforeach()

file(READ "${INPUT}" hex HEX)
string(LENGTH "${hex}" hex_length)
math(EXPR byte_count "${hex_length} / 2")
# 16 bytes per line keeps the generated header readable.
set(bytes "")
set(offset 0)
while(offset LESS hex_length)
  string(SUBSTRING "${hex}" ${offset} 32 line)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," line "${line}")
  string(APPEND bytes "    ${line}\n")
  math(EXPR offset "${offset} + 32")
endwhile()
get_filename_component(input_name "${INPUT}" NAME)

file(WRITE "${OUTPUT}"
"// Generated at build time from ${input_name}; do not edit.
#pragma once

inline constexpr unsigned char ${SYMBOL}[${byte_count}] = {
${bytes}};
")
