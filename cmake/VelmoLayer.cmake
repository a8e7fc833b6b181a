# A layer is a folder of sources and one static library made of it. Its headers are reached by others
# as "<layer>/<header>.h", through an include root of its own that holds nothing else: a source that
# names a layer which its own layer does not use finds no such file.
#
#   velmo_layer(core DIR src/core USES ports SOURCES modINI.cpp ... [PRIVATE_LINK Qt6::Widgets])
#
# A layer without SOURCES holds headers only. What a layer uses, its users may name too.

function(velmo_layer name)
  cmake_parse_arguments(LAYER "" "DIR" "USES;SOURCES;LINK;PRIVATE_LINK" ${ARGN})
  set(root ${CMAKE_BINARY_DIR}/layers/${name})
  file(MAKE_DIRECTORY ${root})
  file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${LAYER_DIR} ${root}/${name} SYMBOLIC)
  list(TRANSFORM LAYER_USES PREPEND velmo_)
  if(LAYER_SOURCES)
    list(TRANSFORM LAYER_SOURCES PREPEND ${PROJECT_SOURCE_DIR}/${LAYER_DIR}/)
    add_library(velmo_${name} STATIC ${LAYER_SOURCES})
    target_include_directories(velmo_${name} PUBLIC ${root})
    target_link_libraries(velmo_${name}
      PUBLIC ${LAYER_USES} ${LAYER_LINK}
      PRIVATE velmo_warnings ${LAYER_PRIVATE_LINK})
  else()
    add_library(velmo_${name} INTERFACE)
    target_include_directories(velmo_${name} INTERFACE ${root})
    target_link_libraries(velmo_${name} INTERFACE ${LAYER_USES} ${LAYER_LINK})
  endif()
endfunction()
