# What every target of this project is compiled with.
function(moxwriter_target_defaults target)
    moxwriter_target_flags(${target})
    get_target_property(type ${target} TYPE)
    # Programs are compiled as position-independent in another way than what they link.
    if(MOXWRITER_PRECOMPILE_HEADERS AND NOT type STREQUAL "EXECUTABLE")
        moxwriter_reuse_precompiled(${target} moxwriter_precompiled)
    endif()
endfunction()

# Headers that are read once for all targets that reuse them. Sources include what they use all the
# same: clang-tidy reads them without.
function(moxwriter_precompile target)
    moxwriter_target_flags(${target})
    moxwriter_show_precompiled(${target})
    target_precompile_headers(${target} PRIVATE ${ARGN})
endfunction()

function(moxwriter_reuse_precompiled target name)
    moxwriter_show_precompiled(${target})
    target_precompile_headers(${target} REUSE_FROM ${name})
endfunction()

# For targets whose sources are small beside the templates and headers that each of them needs: the compiler
# reads eight of them at a time. clang-tidy looks at each by itself.
function(moxwriter_compile_together target)
    if(NOT CMAKE_CXX_CLANG_TIDY)
        set_target_properties(${target} PROPERTIES UNITY_BUILD ON)
        moxwriter_allow_compiling_together(${target})
    endif()
endfunction()

# What is unnamed in a source that is read by way of another one is taken for a part of a header by GCC.
function(moxwriter_allow_compiling_together target)
    target_compile_options(
        ${target} PRIVATE $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-subobject-linkage>)
endfunction()

# Lets compiler caches see what is precompiled.
function(moxwriter_show_precompiled target)
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
endfunction()

function(moxwriter_target_flags target)
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
    if(CMAKE_UNITY_BUILD)
        moxwriter_allow_compiling_together(${target})
    endif()
    if(MOXWRITER_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${MOXWRITER_SANITIZE}
                                                 -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=${MOXWRITER_SANITIZE})
        # What a program in C links is in C++, and for that the sanitizers have a part of their own.
        set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX)
    endif()
endfunction()

# Installs cmake/NAME.pc.in, as a file that finds its prefix by where it lies. What a static library stands on
# is told with --static, and in any case where there is no other library.
function(moxwriter_install_pkg_config name)
    set(private_libraries " ${MOXWRITER_PRIVATE_LIBRARIES}")
    if(BUILD_SHARED_LIBS)
        set(private_libraries "\nLibs.private:${private_libraries}")
    endif()
    set(folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
    file(RELATIVE_PATH prefix_from_pc /${folder} /)
    string(REGEX REPLACE "/$" "" prefix_from_pc ${prefix_from_pc})
    configure_file(${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${folder})
endfunction()
