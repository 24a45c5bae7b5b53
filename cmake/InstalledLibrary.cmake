# A library that others link: moxwriter_install_library(TARGET EXPORT set [OBJECTS target...]).
#
# A shared one gets its SONAME and the version of its symbols. Where it is shared and MOXWRITER_INSTALL_STATIC
# says so, a static one of the same objects is installed beside it, for hosts that ask pkg-config for --static.
# OBJECTS are the targets that have the objects, where they are not the library's own.
function(moxwriter_install_library target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "EXPORT" "OBJECTS")
    set_target_properties(${target} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
    install(TARGETS ${target} EXPORT ${arg_EXPORT})
    if(NOT BUILD_SHARED_LIBS)
        return()
    endif()
    moxwriter_version_symbols(${target})
    if(NOT MOXWRITER_INSTALL_STATIC)
        return()
    endif()

    if(NOT arg_OBJECTS)
        set(arg_OBJECTS ${target})
    endif()
    add_library(${target}_static STATIC)
    foreach(objects IN LISTS arg_OBJECTS)
        target_sources(${target}_static PRIVATE $<TARGET_OBJECTS:${objects}>)
        add_dependencies(${target}_static ${objects})
    endforeach()
    get_target_property(language ${target} LINKER_LANGUAGE)
    if(NOT language)
        set(language CXX)
    endif()
    get_target_property(name ${target} OUTPUT_NAME)
    if(NOT name)
        set(name ${target})
    endif()
    set_target_properties(${target}_static PROPERTIES LINKER_LANGUAGE ${language} OUTPUT_NAME ${name})
    install(TARGETS ${target}_static ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
endfunction()

# The set of symbols is that which the sources mark as exported, without what the compiler makes of templates
# of others; the version is the one that the SONAME began with, because a host asks for the one that it was
# linked against.
function(moxwriter_version_symbols target)
    string(TOUPPER ${target} symbol_version)
    string(APPEND symbol_version _${MOXWRITER_ABI_SINCE})
    set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/symbols.map.in ${script} @ONLY)
    target_link_options(${target} PRIVATE LINKER:--version-script=${script})
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${script})
endfunction()
