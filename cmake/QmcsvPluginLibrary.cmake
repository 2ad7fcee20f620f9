# Link settings of the plug-in library that live outside the sources. The DLL's
# exports come from __declspec(dllexport) on the entry point; natively an export
# map does that job, whatever visibility the core was compiled with.
if(NOT QMCSV_WIN64)
  # Nothing but InitQMPlugin leaves libqmcsv.so (tests/build checks it).
  set(map "${CMAKE_CURRENT_LIST_DIR}/qmcsv.map")
  target_link_options(qmcsv PRIVATE "LINKER:--version-script=${map}")
  set_property(TARGET qmcsv APPEND PROPERTY LINK_DEPENDS "${map}")
endif()
