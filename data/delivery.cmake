# The files that belong beside the program.

set(SPELLWICK_DATA_FOLDER ${CMAKE_CURRENT_LIST_DIR})

# spellwick_copy_data(TARGET): building the target copies SpellData.txt and ReadMe.wri beside it, and
# copies them again when they have changed or are missing.
function(spellwick_copy_data target)
    get_target_property(folder ${target} RUNTIME_OUTPUT_DIRECTORY)
    if(NOT folder)
        get_target_property(folder ${target} BINARY_DIR)
    endif()
    set(copies)
    foreach(file SpellData.txt ReadMe.wri GameClients.txt AssistTools.txt)
        add_custom_command(OUTPUT ${folder}/${file}
            COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
            COMMAND ${CMAKE_COMMAND} -E copy ${SPELLWICK_DATA_FOLDER}/${file} ${folder}/${file}
            DEPENDS ${SPELLWICK_DATA_FOLDER}/${file}
            VERBATIM)
        list(APPEND copies ${folder}/${file})
    endforeach()
    add_custom_target(${target}_data DEPENDS ${copies})
    add_dependencies(${target} ${target}_data)
endfunction()
