# What every target of this project is compiled with.
function(moxwriter_target_defaults target)
    target_compile_features(${target} PUBLIC cxx_std_17)
    set_target_properties(
        ${target}
        PROPERTIES CXX_EXTENSIONS OFF
                   CXX_VISIBILITY_PRESET hidden
                   VISIBILITY_INLINES_HIDDEN ON
                   POSITION_INDEPENDENT_CODE ON)
    moxwriter_target_checks(${target})
endfunction()

# Warnings and sanitizers alone, for targets that choose their own language standard.
function(moxwriter_target_checks target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
    if(MOXWRITER_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(MOXWRITER_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${MOXWRITER_SANITIZE}
                                                 -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=${MOXWRITER_SANITIZE})
        # What a program in C links is in C++, and for that the sanitizers have a part of their own.
        set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX)
    endif()
endfunction()

# Installs cmake/NAME.pc.in, as a file that finds its prefix by where it lies.
function(moxwriter_install_pkg_config name)
    set(folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
    file(RELATIVE_PATH prefix_from_pc /${folder} /)
    string(REGEX REPLACE "/$" "" prefix_from_pc ${prefix_from_pc})
    configure_file(${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${folder})
endfunction()
