# The plug-in's file for Windows: its name, what it shows, and the property list as a resource.
#
# This linker looks into morvex.map only where it exports everything by itself.
target_link_options(morvex PRIVATE LINKER:--export-all-symbols)

# A host reads the list out of the file before it loads it. The bytes are those of PropertyList.cpp,
# taken out of its object file, so that they are written down once.
set_target_properties(morvex PROPERTIES SUFFIX .aex)
set_source_files_properties(PropertyList.cpp PROPERTIES COMPILE_OPTIONS -fdata-sections)

set(list ${CMAKE_CURRENT_BINARY_DIR}/PropertyList.bin)
set(resource ${CMAKE_CURRENT_BINARY_DIR}/PropertyList.rc)
add_custom_command(OUTPUT ${resource}
  COMMAND ${CMAKE_OBJCOPY} --output-target=binary --only-section=.rdata$kPropertyList
    $<FILTER:$<TARGET_OBJECTS:morvex_entry>,INCLUDE,/PropertyList[.]cpp> ${list}
  COMMAND ${CMAKE_COMMAND} -D LIST=${list} -D HEADER=${CMAKE_CURRENT_SOURCE_DIR}/PropertyList.h
    -D RESOURCE=${resource} -P ${CMAKE_CURRENT_SOURCE_DIR}/WriteResource.cmake
  DEPENDS morvex_entry PropertyList.h WriteResource.cmake
  COMMENT "Writing the property list as a resource"
  VERBATIM)
target_sources(morvex PRIVATE ${resource})
