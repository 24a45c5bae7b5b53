# A part of the tools that needs a package which not every machine has. The cache variable
# MOXWRITER_WITH_<NAME> says whether it is built: AUTO when the package is found, ON in any case, OFF
# never, and then the package isn't even looked for. MOXWRITER_HAS_<NAME> says, in every directory,
# what came of it.
#
# moxwriter_optional_component(NAME DEBIAN debian-packages PACKAGE argument of find_package...
#                              [ALSO argument of find_package...])
#
# ALSO is a second package that is needed with the first.
#
# A macro, so that what the package sets and imports is there for the caller.
macro(moxwriter_optional_component name)
    cmake_parse_arguments(component "" "DEBIAN" "PACKAGE;ALSO" ${ARGN})
    set(MOXWRITER_WITH_${name} AUTO CACHE STRING "Build what needs ${component_DEBIAN}: AUTO, ON or OFF")
    set_property(CACHE MOXWRITER_WITH_${name} PROPERTY STRINGS AUTO ON OFF)

    list(GET component_PACKAGE 0 component_package_name)
    set(component_found OFF)
    if(MOXWRITER_WITH_${name} STREQUAL "AUTO")
        find_package(${component_PACKAGE} QUIET)
        set(component_found ${${component_package_name}_FOUND})
        if(component_found AND component_ALSO)
            list(GET component_ALSO 0 component_package_name)
            find_package(${component_ALSO} QUIET)
            set(component_found ${${component_package_name}_FOUND})
        endif()
    elseif(MOXWRITER_WITH_${name})
        find_package(${component_PACKAGE} REQUIRED)
        if(component_ALSO)
            find_package(${component_ALSO} REQUIRED)
        endif()
        set(component_found ON)
    endif()

    if(component_found)
        set(MOXWRITER_HAS_${name} ON CACHE INTERNAL "")
    else()
        set(MOXWRITER_HAS_${name} OFF CACHE INTERNAL "")
        message(STATUS "Built without ${name}: Debian has it as ${component_DEBIAN}")
    endif()
endmacro()
