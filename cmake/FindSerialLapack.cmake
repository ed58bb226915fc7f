# Finds a LAPACK that starts no threads of its own: a plug-in shares the host's cores with everything else.
# On Debian this is the serial flavour of OpenBLAS. The generic liblapack.so may be switched to any
# implementation by the system's administrator, so we link the serial one by its own path where it exists.
# Defines SerialLapack::SerialLapack.

find_library (SerialLapack_LIBRARY
    NAMES openblas
    PATHS /usr/lib/${CMAKE_LIBRARY_ARCHITECTURE}/openblas-serial
    NO_DEFAULT_PATH)

include (FindPackageHandleStandardArgs)

if (SerialLapack_LIBRARY)
    find_package_handle_standard_args (SerialLapack REQUIRED_VARS SerialLapack_LIBRARY)

    if (NOT TARGET SerialLapack::SerialLapack)
        get_filename_component (SerialLapack_DIR "${SerialLapack_LIBRARY}" DIRECTORY)
        add_library (SerialLapack::SerialLapack INTERFACE IMPORTED)
        target_link_libraries (SerialLapack::SerialLapack INTERFACE "${SerialLapack_LIBRARY}")
        target_link_options (SerialLapack::SerialLapack INTERFACE "-Wl,-rpath,${SerialLapack_DIR}")
    endif()
else()
    find_package (LAPACK REQUIRED)

    if (NOT TARGET SerialLapack::SerialLapack)
        add_library (SerialLapack::SerialLapack INTERFACE IMPORTED)
        target_link_libraries (SerialLapack::SerialLapack INTERFACE LAPACK::LAPACK)
    endif()
endif()
