# Debian's Python, which has the packages that scripts/test installs, before any other on the path.
find_program(MOXWRITER_PYTHON python3 PATHS /usr/bin NO_DEFAULT_PATH)
find_program(MOXWRITER_PYTHON python3)

# Whether Python has these modules: moxwriter_find_python_modules(VARIABLE module...)
function(moxwriter_find_python_modules variable)
    list(JOIN ARGN ", " modules)
    set(status 1)
    if(MOXWRITER_PYTHON)
        execute_process(COMMAND ${MOXWRITER_PYTHON} -c "import ${modules}" RESULT_VARIABLE status
                        OUTPUT_QUIET ERROR_QUIET)
    endif()
    if(status EQUAL 0)
        set(${variable} TRUE PARENT_SCOPE)
    else()
        set(${variable} FALSE PARENT_SCOPE)
    endif()
endfunction()
