# What Windows shows of a program: its icon, its version, and its manifest.

enable_language(RC)
find_package(Python3 REQUIRED COMPONENTS Interpreter)

# spellwick_resources(TARGET DESCRIPTION text IDENTITY name SIDES 16 32 ... [SCALES]): SIDES are the sizes of
# its icon. A program that SCALES draws itself at the scale of each monitor; else the system enlarges what it
# draws.
function(spellwick_resources target)
    cmake_parse_arguments(ARG "SCALES" "DESCRIPTION;IDENTITY" "SIDES" ${ARGN})
    get_target_property(name ${target} OUTPUT_NAME)
    if(NOT name)
        set(name ${target})
    endif()
    set(icon ${CMAKE_CURRENT_BINARY_DIR}/${name}.ico)
    set(manifest ${CMAKE_CURRENT_BINARY_DIR}/${name}.manifest)
    set(resources ${CMAKE_CURRENT_BINARY_DIR}/${name}.rc)
    list(TRANSFORM ARG_SIDES PREPEND ${CMAKE_SOURCE_DIR}/data/pictures/spellwick- OUTPUT_VARIABLE pictures)
    list(TRANSFORM pictures APPEND .png)
    add_custom_command(OUTPUT ${icon}
        COMMAND ${Python3_EXECUTABLE} ${CMAKE_SOURCE_DIR}/tools/make_ico ${icon} ${pictures}
        DEPENDS ${pictures} ${CMAKE_SOURCE_DIR}/tools/make_ico
        VERBATIM)
    set(schemas http://schemas.microsoft.com/SMI)
    if(ARG_SCALES)
        set(scaling "      <dpiAware xmlns=\"${schemas}/2005/WindowsSettings\">true/pm</dpiAware>
      <dpiAwareness xmlns=\"${schemas}/2016/WindowsSettings\">PerMonitorV2, PerMonitor</dpiAwareness>")
    else()
        set(scaling "      <gdiScaling xmlns=\"${schemas}/2017/WindowsSettings\">true</gdiScaling>")
    endif()
    configure_file(${CMAKE_SOURCE_DIR}/packaging/windows/program.manifest.in ${manifest} @ONLY)
    configure_file(${CMAKE_SOURCE_DIR}/packaging/windows/program.rc.in ${resources} @ONLY)
    set_source_files_properties(${resources} PROPERTIES OBJECT_DEPENDS "${icon};${manifest}")
    target_sources(${target} PRIVATE ${resources} ${icon})
endfunction()
