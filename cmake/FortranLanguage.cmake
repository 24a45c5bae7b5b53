# Enables Fortran where there is a compiler. The cache variable MOXWRITER_BUILD_FORTRAN says whether the
# module is built: AUTO where one is found, ON in any case, OFF never. MOXWRITER_HAS_FORTRAN says what came
# of it.
set(MOXWRITER_BUILD_FORTRAN AUTO CACHE STRING "Build what needs gfortran: AUTO, ON or OFF")
set_property(CACHE MOXWRITER_BUILD_FORTRAN PROPERTY STRINGS AUTO ON OFF)
set(MOXWRITER_HAS_FORTRAN OFF CACHE INTERNAL "")

# Another project has asked for none.
if(MOXWRITER_BUILD_FORTRAN STREQUAL "AUTO")
    if(PROJECT_IS_TOP_LEVEL)
        include(CheckLanguage)
        check_language(Fortran)
        if(CMAKE_Fortran_COMPILER)
            set(MOXWRITER_HAS_FORTRAN ON CACHE INTERNAL "")
        else()
            message(STATUS "Built without Fortran: Debian has it as gfortran")
        endif()
    endif()
elseif(MOXWRITER_BUILD_FORTRAN)
    set(MOXWRITER_HAS_FORTRAN ON CACHE INTERNAL "")
endif()
if(MOXWRITER_HAS_FORTRAN)
    enable_language(Fortran)
endif()

# What every target in Fortran is compiled with. Where the library is sanitized, the programs take the
# sanitizers' runtime from the compiler of C++, which serves what gfortran makes as well.
function(moxwriter_fortran_target target)
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON
                                               Fortran_MODULE_DIRECTORY
                                               ${CMAKE_CURRENT_BINARY_DIR}/${target}.modules)
    if(CMAKE_Fortran_COMPILER_ID STREQUAL "GNU")
        target_compile_options(${target} PRIVATE -std=f2008 -Wall -Wextra -pedantic)
        if(MOXWRITER_WARNINGS_AS_ERRORS)
            target_compile_options(${target} PRIVATE -Werror)
        endif()
    endif()
    if(MOXWRITER_SANITIZE)
        set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX)
        target_compile_options(${target} PRIVATE -fsanitize=${MOXWRITER_SANITIZE}
                                                 -fno-sanitize-recover=all)
        target_link_options(${target} PRIVATE -fsanitize=${MOXWRITER_SANITIZE})
    endif()
endfunction()
