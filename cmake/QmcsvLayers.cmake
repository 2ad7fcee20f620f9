# qmcsv_layer(<name> [INTERFACE] SOURCES ... [LINKS ...]): the library of one
# folder of src/, qmcsv_<name>.
#
# A layer sees its own headers and those of the layers it links, nothing else:
# its include root (build/layers/<name>) holds one link, <name> -> src/<name>,
# so `#include "<name>/x.h"` resolves there, and an include of a layer it
# does not link fails to compile. LINKS name the layers below (and other
# libraries); they are public, as a layer's headers use the ones below.
function(qmcsv_layer name)
  cmake_parse_arguments(L "INTERFACE" "" "SOURCES;LINKS" ${ARGN})
  set(target qmcsv_${name})
  set(root ${CMAKE_BINARY_DIR}/layers/${name})
  file(MAKE_DIRECTORY ${root})
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${root}/${name} SYMBOLIC)
  if(L_INTERFACE)
    add_library(${target} INTERFACE)
    target_include_directories(${target} INTERFACE ${root})
    target_link_libraries(${target} INTERFACE ${L_LINKS})
  else()
    add_library(${target} STATIC ${L_SOURCES})
    target_include_directories(${target} PUBLIC ${root})
    target_link_libraries(${target} PUBLIC ${L_LINKS} PRIVATE qmcsv_warnings)
  endif()
endfunction()
