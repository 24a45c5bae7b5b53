# Finds the library of Gmsh; sets Gmsh_FOUND and makes the target Gmsh::Gmsh.
find_path(Gmsh_INCLUDE_DIR gmsh.h)
find_library(Gmsh_LIBRARY gmsh)
mark_as_advanced(Gmsh_INCLUDE_DIR Gmsh_LIBRARY)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Gmsh REQUIRED_VARS Gmsh_LIBRARY Gmsh_INCLUDE_DIR)

if(Gmsh_FOUND AND NOT TARGET Gmsh::Gmsh)
    add_library(Gmsh::Gmsh UNKNOWN IMPORTED)
    set_target_properties(
        Gmsh::Gmsh
        PROPERTIES IMPORTED_LOCATION ${Gmsh_LIBRARY}
                   INTERFACE_INCLUDE_DIRECTORIES ${Gmsh_INCLUDE_DIR})
endif()
