# Compiler, warnings, sanitizers, linker and compiler cache: what every target shares.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

find_program(VELMO_CCACHE ccache)
if(VELMO_CCACHE)
  set(CMAKE_C_COMPILER_LAUNCHER ${VELMO_CCACHE})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${VELMO_CCACHE})
endif()
find_program(VELMO_MOLD mold)
if(VELMO_MOLD)
  add_link_options(-fuse-ld=mold)
endif()

if(VELMO_SANITIZE)
  add_compile_options(-fsanitize=${VELMO_SANITIZE} -fno-omit-frame-pointer -O1)
  add_link_options(-fsanitize=${VELMO_SANITIZE})
  if(VELMO_SANITIZE MATCHES "undefined")
    add_compile_options(-fno-sanitize-recover=undefined)
  endif()
endif()

# Carried by every target of ours and by no target of others.
add_library(velmo_warnings INTERFACE)
target_compile_options(velmo_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion
  $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual>
  # With optimisation on, g++ 12 sees overlaps in its own library's text addition.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
  $<$<BOOL:${VELMO_WERROR}>:-Werror>)
