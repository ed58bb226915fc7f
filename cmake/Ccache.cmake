# Compiles through ccache where it is installed; nothing depends on it.
find_program (SOLVANE_CCACHE ccache)

if (SOLVANE_CCACHE)
    # What the cache must overlook to work with precompiled headers: their time macros, and macros defined after them.
    set (solvane_launcher "${CMAKE_COMMAND}" -E env CCACHE_SLOPPINESS=pch_defines,time_macros "${SOLVANE_CCACHE}")
    set (CMAKE_C_COMPILER_LAUNCHER "${solvane_launcher}")
    set (CMAKE_CXX_COMPILER_LAUNCHER "${solvane_launcher}")
endif()
