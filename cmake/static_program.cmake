# ZONTARA_STATIC_PROGRAM links `zontara` from static libraries alone. Loading the shared ones would take longer than a
# short command does.
option(ZONTARA_STATIC_PROGRAM "Link zontara from static libraries alone" OFF)

# Debian's package of fmt has no static library. In its headers are the functions too.
set(ZONTARA_FMT fmt::fmt)
if(ZONTARA_STATIC_PROGRAM)
  set(ZONTARA_FMT fmt::fmt-header-only)
endif()

function(zontara_static_program target)
  if(NOT ZONTARA_STATIC_PROGRAM)
    return()
  endif()
  target_link_options(${target} PRIVATE -static-pie)
  # Debian's SQLite can load extensions, which the linker warns of. Nothing here does.
  include(CheckLinkerFlag)
  check_linker_flag(CXX LINKER:--no-warnings ZONTARA_LINKER_CAN_BE_SILENT)
  if(ZONTARA_LINKER_CAN_BE_SILENT)
    target_link_options(${target} PRIVATE LINKER:--no-warnings)
  endif()
endfunction()
