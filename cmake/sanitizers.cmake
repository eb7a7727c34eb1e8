# ZONTARA_SANITIZE=address,undefined builds everything with those sanitizers; a finding ends the program.
set(ZONTARA_SANITIZE "" CACHE STRING "Sanitizers to build with, separated by commas")
if(ZONTARA_SANITIZE)
  add_compile_options(-fsanitize=${ZONTARA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${ZONTARA_SANITIZE})
endif()
