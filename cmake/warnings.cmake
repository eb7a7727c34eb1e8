# Warnings are errors. GCC 12 sees overlaps in std::string that aren't there, so -Wrestrict is off.
add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_compile_options(-Wno-restrict)
endif()
