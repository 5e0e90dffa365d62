# The plug-ins of a static Qt, and beside them two image formats that drawings come in: TGA and PSD.
#
# Qt's own package compiles an import of each plug-in for each target, a thousand files for the whole
# tree. Here one file imports them all, compiled once and linked into whatever is loaded or run.

set(imports "#include <QtPlugin>\n")
foreach(plugin IN LISTS Qt5Gui_PLUGINS Qt5Widgets_PLUGINS)
  set_property(TARGET ${plugin} PROPERTY INTERFACE_SOURCES "")
  get_target_property(class ${plugin} QT_PLUGIN_CLASS_NAME)
  get_target_property(extends ${plugin} QT_PLUGIN_EXTENDS)
  if(NOT extends STREQUAL "-") # a plug-in that is linked only where it is asked for
    string(APPEND imports "Q_IMPORT_PLUGIN(${class})\n")
  endif()
endforeach()
foreach(class TGAPlugin PSDPlugin)
  string(APPEND imports "Q_IMPORT_PLUGIN(${class})\n")
endforeach()
set(imports_file ${CMAKE_BINARY_DIR}/StaticPlugins.cpp)
file(CONFIGURE OUTPUT ${imports_file} CONTENT "${imports}" @ONLY)

set(formats ${MORVEX_IMAGE_FORMATS_WIN64}/src/imageformats)
if(NOT EXISTS ${formats}/tga.cpp)
  message(FATAL_ERROR "No source of the image formats at \"${MORVEX_IMAGE_FORMATS_WIN64}\": "
    "use ./test windows, or eval \"$(tools/windows/setup)\"")
endif()
set(loaded_or_run EXECUTABLE MODULE_LIBRARY SHARED_LIBRARY)
function(vn_static_plugin target source)
  add_library(${target} OBJECT ${source})
  target_compile_definitions(${target} PRIVATE QT_STATICPLUGIN)
  target_link_libraries(${target} PRIVATE Qt5::Gui)
  set_target_properties(${target} PROPERTIES AUTOUIC OFF AUTORCC OFF)
  set_property(TARGET Qt5::Gui APPEND PROPERTY INTERFACE_SOURCES
    "$<$<IN_LIST:$<TARGET_PROPERTY:TYPE>,${loaded_or_run}>:$<TARGET_OBJECTS:${target}>>")
endfunction()

vn_static_plugin(vn_static_plugins ${imports_file})
vn_static_plugin(vn_static_tga ${formats}/tga.cpp)
vn_static_plugin(vn_static_psd ${formats}/psd.cpp)
