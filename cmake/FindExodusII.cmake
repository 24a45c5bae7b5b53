# Finds Sandia's Exodus library; sets ExodusII_FOUND and makes the target ExodusII::ExodusII.
#
# The static one is taken when it is there: Debian's shared one is bound to the netCDF that brings
# MPI, which is of no use here, and which takes time to load.
find_path(ExodusII_INCLUDE_DIR exodusII.h)
find_library(ExodusII_LIBRARY NAMES libexoIIv2c.a exoIIv2c exodus)
find_library(ExodusII_NETCDF_LIBRARY NAMES netcdf)
mark_as_advanced(ExodusII_INCLUDE_DIR ExodusII_LIBRARY ExodusII_NETCDF_LIBRARY)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(
    ExodusII REQUIRED_VARS ExodusII_LIBRARY ExodusII_NETCDF_LIBRARY ExodusII_INCLUDE_DIR)

if(ExodusII_FOUND AND NOT TARGET ExodusII::ExodusII)
    add_library(ExodusII::ExodusII UNKNOWN IMPORTED)
    set_target_properties(
        ExodusII::ExodusII
        PROPERTIES IMPORTED_LOCATION ${ExodusII_LIBRARY}
                   INTERFACE_INCLUDE_DIRECTORIES ${ExodusII_INCLUDE_DIR}
                   INTERFACE_LINK_LIBRARIES ${ExodusII_NETCDF_LIBRARY})
endif()
